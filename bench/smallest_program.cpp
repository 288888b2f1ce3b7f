// The smallest program of a window with a text: what every program with Qt Widgets costs.

#include <QApplication>
#include <QLabel>
#include <QVBoxLayout>

int main(int argc, char **argv) {
    const QApplication application(argc, argv);
    QWidget window;
    auto *layout = new QVBoxLayout(&window);
    layout->addWidget(new QLabel(QStringLiteral("Not Connected"), &window));
    window.show();
    return QApplication::exec();
}
