#include "SetupWindow.h"

#include "ProgramLook.h"

#include <QVBoxLayout>

SetupWindow::SetupWindow(Form &setupForm, const FormView &setupView)
    : Window("dlgSetup", setupForm, setupView) {
    setWindowTitle(QStringLiteral("Initializing Display"));
    setWindowFlag(Qt::Dialog);
    auto *layout = new QVBoxLayout(this);
    layout->setContentsMargins(grown(QMargins(32, 24, 32, 24)));
    layout->setSpacing(grown(10));
    const auto addLabel = [this, layout](const char *name, const char *text) {
        auto *label = named(new QLabel(QLatin1String(text), this), name);
        label->setAlignment(Qt::AlignCenter);
        layout->addWidget(label);
    };
    addLabel("SettingOutputLabel", "Setting Output");
    addLabel("SettingInputLabel", "Setting Input");
    setFixedSize(grown(QSize(300, 110)));
}
