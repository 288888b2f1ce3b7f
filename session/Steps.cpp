#include "Steps.h"

#include "Hands.h"

#include <QStringList>

using hands::click;
using hands::offers;
using hands::shows;

namespace {

constexpr const char *Panel = "KVN32x32Audio";
constexpr const char *Units = "dlgControlExisting";
const QString UnitName = QStringLiteral("Rack 2");

Step step(const char *name, std::function<bool()> ready, const char *pictureOf,
          std::function<void()> act) {
    return {QLatin1String(name), std::move(ready), pictureOf, std::move(act)};
}

Step helpStep(const char *name, const char *window, const std::function<void()> &then) {
    return step(name, shows(window), window, [window, then] {
        sessionWindow(window).close();
        then();
    });
}

std::vector<Step> connectSteps(const QString &port) {
    return {
        step("start", shows("frmMain"), "frmMain", [] { click("frmMain", "MainControlButton_0"); }),
        step("connect", shows("dlgConnect"), "dlgConnect",
             [] { click("dlgConnect", "ConnectSerialOption"); }),
        step("ports", offers("dlgConnect", "SerialPortsCombo"), "dlgConnect",
             [port] { hands::choosePort(port); }),
        step("message", shows("dlgOK"), "dlgOK", [] { click("dlgOK", "OKButton"); }),
        step("connected", offers("dlgConnect", "Connect2SerialButton"), "dlgConnect",
             [] { click("dlgConnect", "Connect2SerialButton"); }),
        step("setup", shows("dlgSetup"), "dlgSetup", [] {}),
    };
}

std::vector<Step> routeSteps(const std::function<bool()> &idle) {
    return {
        step("panel", idle, Panel,
             [] {
                 click(Panel, "InputVideoAudioButtons_3");
                 click(Panel, "OutputVidAudButtons_1");
                 click(Panel, "OutputVidAudButtons_2");
             }),
        step("selected", idle, Panel, [] { click(Panel, "TakeButton"); }),
        step(
            "taking", [idle] { return !idle(); }, Panel, [] {}),
        step("routed", idle, Panel,
             [] {
                 click(Panel, "OutputVidAudButtons_2");
                 click(Panel, "TakeButton");
             }),
        step("disconnected", idle, Panel, [] { click(Panel, "MuteButton_4"); }),
    };
}

std::vector<Step> levelAndPresetSteps(const std::function<bool()> &idle) {
    return {
        step("muted", idle, Panel,
             [] {
                 hands::pointAt(Panel, "OutputVolumeValue_5");
                 click(Panel, "VolumeUpButton");
             }),
        step(
            "volume-waiting", [idle] { return !idle(); }, Panel, [] {}),
        step("volume-up", idle, Panel, [] { click(Panel, "VolumeDownButton"); }),
        step("volume-down", idle, Panel, [] { click(Panel, "GoToPresets"); }),
        step("presets", shows("dlgPresets"), nullptr,
             [] { click("dlgPresets", "NewPresetButton_6"); }),
        step("preset-chosen", idle, "dlgPresets",
             [] { click("dlgPresets", "ExecutePresetButton"); }),
        step("preset-executed", idle, "dlgPresets", [] { click("dlgPresets", "ExitPresets"); }),
        step("panel-again", idle, Panel, [] { hands::chooseMenu(Panel, "ConnectionHelp"); }),
    };
}

std::vector<Step> lookAroundSteps() {
    return {
        helpStep("help-connecting", "dlgInputConnect",
                 [] { hands::chooseMenu(Panel, "disconnectHelp"); }),
        helpStep("help-disconnecting", "dlgDisconnect",
                 [] { hands::chooseMenu(Panel, "AdjustingVolumes"); }),
        helpStep("help-volumes", "VolumeHelpDialog",
                 [] { hands::chooseMenu("frmMain", "AboutCorvaneController"); }),
        helpStep("about", "frmAbout", [] { click(Panel, "ExitButton"); }),
    };
}

std::vector<Step> ethernetSteps(const std::function<bool()> &idle) {
    return {
        step("left", idle, "frmMain", [] { click("frmMain", "MainControlButton_0"); }),
        step("connect-again", shows("dlgConnect"), nullptr,
             [] { click("dlgConnect", "ConnectIPOption"); }),
        step("ethernet", offers("dlgConnect", "Connect2IPButton"), "dlgConnect",
             [] { sessionWindow("dlgConnect").close(); }),
    };
}

void append(std::vector<Step> &steps, const std::vector<Step> &more) {
    steps.insert(steps.end(), more.begin(), more.end());
}

void defineUnit(const QString &address) {
    hands::type(Units, "Text3", UnitName);
    hands::chooseInList(Units, "ConnectChoiceList", QStringLiteral("ETHER"));
    const QStringList numbers = address.split(QLatin1Char('.'));
    for (int box = 0; box < numbers.size(); ++box)
        hands::type(Units, qPrintable(QStringLiteral("CntrlIPAddressQuad_%1").arg(box)),
                    numbers.at(box));
}

void pickUnit() { hands::chooseInList(Units, "AvailCorvanesList", UnitName); }

} // namespace

std::vector<Step> serialSteps(const std::function<bool()> &idle, int port) {
    std::vector<Step> steps = connectSteps(QStringLiteral("Comm%1").arg(port));
    append(steps, routeSteps(idle));
    append(steps, levelAndPresetSteps(idle));
    append(steps, lookAroundSteps());
    append(steps, ethernetSteps(idle));
    return steps;
}

std::vector<Step> savedUnitSteps(const std::function<bool()> &idle, const QString &address) {
    return {
        step("main-again", idle, nullptr, [] { click("frmMain", "MainControlButton_2"); }),
        step("units", shows(Units), Units, [] { click(Units, "OptionsCommand_0"); }),
        step("unit-adding", idle, nullptr, [address] { defineUnit(address); }),
        step("unit-defined", idle, Units, [] { click(Units, "AddCorvaneCommand"); }),
        step("unit-added", idle, Units,
             [] {
                 click(Units, "OptionsCommand_2");
                 pickUnit();
             }),
        step("unit-picked", idle, Units, [] { click(Units, "AddCorvaneCommand"); }),
        step("unit-panel", shows(Panel), Panel, [] { click(Panel, "ExitButton"); }),
        step("unit-left", idle, nullptr, [] { click("frmMain", "MainControlButton_2"); }),
        step("unit-deleting", shows(Units), nullptr,
             [] {
                 click(Units, "OptionsCommand_3");
                 pickUnit();
                 click(Units, "AddCorvaneCommand");
             }),
        step("unit-question", shows("dlgYesNo"), "dlgYesNo",
             [] { click("dlgYesNo", "YesButton"); }),
        step(
            "unit-deleted", [idle] { return !idle() && !shows("dlgYesNo")(); }, Units, [] {}),
        step("units-again", idle, Units, [] { click(Units, "OKButton"); }),
    };
}

std::vector<Step> leavingSteps(const std::function<bool()> &idle) {
    return {step("leaving", idle, "frmMain", [] { sessionWindow("frmMain").close(); })};
}
