#include "app/dlgSetup.h"

#include <QLabel>
#include <QVBoxLayout>

dlgSetup::dlgSetup(EventPump &eventPump, LinkState &linkState)
    : Form("dlgSetup", eventPump, nullptr), link(linkState) {
    setWindowTitle(QStringLiteral("Initializing Display"));
    setWindowFlag(Qt::Dialog);
    auto *layout = new QVBoxLayout(this);
    layout->setContentsMargins(32, 24, 32, 24);
    layout->setSpacing(10);
    const auto addLabel = [this, layout](const char *name, const char *text) {
        auto *label = new QLabel(QLatin1String(text), this);
        label->setObjectName(QLatin1String(name));
        label->setAlignment(Qt::AlignCenter);
        layout->addWidget(label);
    };
    addLabel("SettingOutputLabel", "Setting Output");
    addLabel("SettingInputLabel", "Setting Input");
    setFixedSize(300, 110);
}

void dlgSetup::closeEvent(QCloseEvent *event) {
    link.IPConnectingFlag = false;
    Form::closeEvent(event);
}
