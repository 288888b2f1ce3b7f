#include "Steps.h"

namespace {

using enum When;

const QByteArray Panel = "KVN32x32Audio";
const QByteArray Units = "dlgControlExisting";
const QByteArrayList Opening{"CFG ?", "STA O A", "STA O A"};

/// What is sent for a change of the routing or of a mute.
QByteArrayList change(const QByteArray &command) { return {command, "STA O A", "STA O A"}; }

} // namespace

// clang-format off
QList<Step> serialSteps() {
    return {
        {"start", Usable, "frmMain", {"MainControlButton_0"}, {"ZarnConnectedLabel=Not Connected"}},
        {"connect", Usable, "dlgConnect", {"ConnectSerialOption"}},
        {"ports", Usable, "dlgConnect", {"SerialPortsCombo=Comm7"}, {"SerialPortsCombo=1"}},
        {"message", Usable, "dlgOK", {"OKButton"}},
        {"connected", Usable, "dlgConnect", {"Connect2SerialButton"}},
        {"setup", Usable, "dlgSetup"},
        {"panel", Idle, Panel,
         {"InputVideoAudioButtons_3", "OutputVidAudButtons_1", "OutputVidAudButtons_2"},
         {"ZarnConnectedLabel=Connected on COM7", "InputVideoConnected_1=1"}, Opening},
        {"selected", Idle, Panel, {"TakeButton"},
         {"InputVideoLamp_3=lit", "InputAudioLamp_4=unlit", "OutputVideoIndicator_1=lit",
          "OutputAudioIndicator_2=lit", "OutputVideoIndicator_3=lit", "OutputAudioIndicator_4=unlit"}},
        {"taking", Waiting, Panel},
        {"routed", Idle, Panel, {"OutputVidAudButtons_2", "TakeButton"},
         {"InputVideoLamp_3=unlit", "OutputAudioIndicator_2=unlit", "InputVideoConnected_1=3"},
         change("Con 3(1,2)3F (1,2)")},
        {"disconnected", Idle, Panel, {"MuteButton_4"}, {"InputAudioConnected_2=NC"},
         change("DIS 2,2F")},
        {"muted", Idle, Panel, {"OutputVolumeValue_5", "VolumeUpButton"}, {"MuteButton_4=MUTED"},
         change("MUT M 4")},
        {"volume-waiting", Waiting, Panel, {}, {"OutputVolumeLabel=Wait..."}},
        {"volume-up", Idle, Panel, {"VolumeDownButton"},
         {"OutputVolumeLabel=Output 5 volume", "OutputVolumeValue_5=Vol -19"},
         {"VOL L 5 -19", "VOL L 5?"}},
        {"volume-down", Idle, Panel, {"GoToPresets"}, {}, {"VOL L 5 -20", "VOL L 5?"}},
        {"presets", Idle, "dlgPresets", {"NewPresetButton_6"}},
        {"preset-chosen", Idle, "dlgPresets", {"ExecutePresetButton"}},
        {"preset-executed", Idle, "dlgPresets", {"ExitPresets"}, {}, {"PST X 6"}},
        // The panel asks what the preset did when it asks next.
        {"panel-again", Idle, Panel, {"MuteButton_4"}, {"InputVideoConnected_7=7"}},
        {"unmuted", Idle, Panel, {"ConnectionHelp"}, {"InputVideoConnected_7=6"}, change("MUT U 4")},
        {"help-connecting", Idle, "dlgInputConnect", {"frame", "KVN32x32Audio/disconnectHelp"}},
        {"help-disconnecting", Idle, "dlgDisconnect", {"frame", "KVN32x32Audio/AdjustingVolumes"}},
        {"help-volumes", Idle, "VolumeHelpDialog", {"frame", "frmMain/AboutCorvaneController"}},
        {"about", Idle, "frmAbout", {"frame", "KVN32x32Audio/ExitButton"}},
        {"left", Idle, "frmMain", {"MainControlButton_0"}, {"ZarnConnectedLabel=Not Connected"}},
        {"connect-again", Usable, "dlgConnect", {"ConnectIPOption"}},
        {"ethernet", Usable, "dlgConnect", {"frame"}},
    };
}

QList<Step> networkSteps() {
    return {
        {"main-again", Idle, "frmMain", {"MainControlButton_2"}},
        {"units", Idle, Units, {"OptionsCommand_0"}},
        {"unit-adding", Idle, Units,
         {"Text3=Rack 2", "ConnectChoiceList=ETHER", "CntrlIPAddressQuad_0=127",
          "CntrlIPAddressQuad_1=0", "CntrlIPAddressQuad_2=0", "CntrlIPAddressQuad_3=23"}},
        {"unit-defined", Idle, Units, {"AddCorvaneCommand"}},
        {"unit-added", Idle, Units, {"OptionsCommand_2", "AvailCorvanesList=Rack 2"}},
        {"unit-picked", Idle, Units, {"AddCorvaneCommand"}, {"AvailCorvanesList=1"}},
        {"unit-panel", InPanel, Panel,
         {"InputVideoAudioButtons_5", "OutputVidAudButtons_7", "TakeButton"},
         {"KVNNameLabel=Rack 2", "ZarnConnectedLabel=Connected to " + UnitAddress}, Opening},
        {"unit-routed", InPanel, Panel, {"ExitButton"}, {"InputAudioConnected_7=5"},
         change("Con 5(7)5F (7)")},
        {"unit-left", Idle, "frmMain", {"MainControlButton_2"}, {"ZarnConnectedLabel=Not Connected"}},
        {"unit-deleting", Idle, Units,
         {"OptionsCommand_3", "AvailCorvanesList=Rack 2", "AddCorvaneCommand"}},
        {"unit-question", Usable, "dlgYesNo", {"YesButton"}},
        {"unit-deleted", Waiting, Units, {}, {"StatusLabel=Deleted Corvane from Disk"}},
        {"units-again", Idle, Units, {"OptionsCommand_2"}},
        {"no-unit", Idle, Units, {"CancelCommand", "OKButton"}, {"AvailCorvanesList=0"}},
    };
}

QList<Step> leavingSteps() { return {{"leaving", Idle, "frmMain", {"frame"}}}; }
// clang-format on
