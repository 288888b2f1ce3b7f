#include "support/ProgramFixture.h"

#include "ProgramLook.h"

#include <QApplication>

ProgramFixture::ProgramFixture(UnitOptions options) : Player(false, std::move(options)) {
    applyProgramLook();
    onMessage.clear(), onQuestion.clear();
    pump.eachTurn = [this] {
        QCoreApplication::processEvents();
        turn();
    };
    windows.refresh();
}

QWidget *ProgramFixture::window(const std::string &name) {
    for (QWidget *candidate : QApplication::topLevelWidgets()) {
        if (candidate->objectName().toStdString() == name)
            return candidate;
    }
    return nullptr;
}

std::string ProgramFixture::visibleWindows() {
    QStringList names;
    for (const QWidget *candidate : QApplication::topLevelWidgets())
        names += candidate->isVisible() ? candidate->objectName() : QString();
    names.sort();
    return names.join(QLatin1Char(' ')).trimmed().toStdString();
}

void ProgramFixture::click(const char *windowName, const std::string &name) {
    auto *button = part<QAbstractButton>(windowName, name);
    QVERIFY2(button && button->isVisible() && button->isEnabled(), name.c_str());
    QTest::mouseClick(button, Qt::LeftButton);
}

void ProgramFixture::openPanel(bool network) {
    onMessage = "-message";
    overNetwork = network;
    play("open");
    windows.refresh();
}
