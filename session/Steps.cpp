#include "Steps.h"

#include <QAbstractButton>
#include <QAction>
#include <QApplication>
#include <QComboBox>

#include <cstdio>
#include <cstdlib>

namespace {

template <class Control> Control &control(const char *window, const char *name) {
    auto *found = sessionWindow(window).findChild<Control *>(QLatin1String(name));
    if (!found) {
        std::fprintf(stderr, "Session: %s has no %s.\n", window, name);
        std::exit(1);
    }
    return *found;
}

void click(const char *window, const char *name) { control<QAbstractButton>(window, name).click(); }

void choose(const char *window, const char *menuItem) {
    control<QAction>(window, menuItem).trigger();
}

void choosePort(const char *port) {
    auto &ports = control<QComboBox>("dlgConnect", "SerialPortsCombo");
    const int item = ports.findText(QLatin1String(port));
    ports.setCurrentIndex(item);
    Q_EMIT ports.activated(item);
}

std::function<bool()> shows(const char *window) {
    return [window] { return sessionWindow(window).isVisible(); };
}

std::function<bool()> offers(const char *window, const char *button) {
    return [window, button] {
        const auto &control = ::control<QWidget>(window, button);
        return control.isVisible() && control.isEnabled();
    };
}

Step helpStep(const char *name, const char *window, std::function<void()> then) {
    return {QLatin1String(name), shows(window), window, [window, then] {
                sessionWindow(window).close();
                then();
            }};
}

} // namespace

std::vector<Step> sessionSteps(const std::function<bool()> &idle) {
    const char *panel = "KVN32x32Audio";
    return {
        {QStringLiteral("start"), shows("frmMain"), "frmMain",
         [] { click("frmMain", "MainControlButton_0"); }},
        {QStringLiteral("connect"), shows("dlgConnect"), "dlgConnect",
         [] { click("dlgConnect", "ConnectSerialOption"); }},
        {QStringLiteral("ports"), offers("dlgConnect", "SerialPortsCombo"), "dlgConnect",
         [] { choosePort("Comm7"); }},
        {QStringLiteral("message"), shows("dlgOK"), "dlgOK", [] { click("dlgOK", "OKButton"); }},
        {QStringLiteral("connected"), offers("dlgConnect", "Connect2SerialButton"), "dlgConnect",
         [] { click("dlgConnect", "Connect2SerialButton"); }},
        {QStringLiteral("setup"), shows("dlgSetup"), "dlgSetup", [] {}},
        {QStringLiteral("panel"), idle, panel,
         [panel] {
             click(panel, "InputVideoAudioButtons_3");
             click(panel, "OutputVidAudButtons_1");
             click(panel, "OutputVidAudButtons_2");
         }},
        {QStringLiteral("selected"), idle, panel, [panel] { click(panel, "TakeButton"); }},
        {QStringLiteral("taking"), [idle] { return !idle(); }, panel, [] {}},
        {QStringLiteral("routed"), idle, panel,
         [panel] {
             click(panel, "OutputVidAudButtons_2");
             click(panel, "TakeButton");
         }},
        {QStringLiteral("disconnected"), idle, panel, [panel] { choose(panel, "ConnectionHelp"); }},
        helpStep("help-connecting", "dlgInputConnect",
                 [panel] { choose(panel, "disconnectHelp"); }),
        helpStep("help-disconnecting", "dlgDisconnect",
                 [panel] { choose(panel, "AdjustingVolumes"); }),
        helpStep("help-volumes", "VolumeHelpDialog",
                 [] { choose("frmMain", "AboutCorvaneController"); }),
        helpStep("about", "frmAbout", [panel] { click(panel, "ExitButton"); }),
        {QStringLiteral("left"), idle, "frmMain", [] { sessionWindow("frmMain").close(); }},
    };
}
