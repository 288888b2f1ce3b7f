#include "support/Player.h"

#include <sstream>

// What a player sees.

namespace {

/// The letters of the flags that are set, "-" for the others.
std::string marks(std::initializer_list<std::pair<char, bool>> flags) {
    std::string text;
    for (const auto &[letter, set] : flags)
        text += set ? letter : '-';
    return text;
}

std::string textOf(const ListControl &list) {
    std::string text;
    for (const std::string &entry : list.entries)
        text += (text.empty() ? "" : " ") + entry;
    return text + (list.chosen < 0 ? "" : "#" + std::to_string(list.chosen));
}

std::string textOf(const AddressView &address) {
    const auto &boxes = address.boxes;
    return boxes[0].text + "." + boxes[1].text + "." + boxes[2].text + "." + boxes[3].text;
}

/// The connection dialog: the option, what its frame shows, "+" for a button that can be clicked,
/// the link.
std::string dialog(const ConnectView &view) {
    std::string text = view.ConnectIPOption.lit ? "E" : view.ConnectSerialOption.lit ? "S" : "-";
    if (view.IPAddressFrame.visible)
        text += " " + textOf(view.IPAddressQuadConnect) + " " + view.Label2.text +
                (view.Connect2IPButton.enabled ? "+" : "");
    if (view.SerialConnectionFrame.visible)
        text += " " + view.Label1.text + (view.SerialPortsCombo.control.visible ? ": " : " ") +
                textOf(view.SerialPortsCombo) + (view.Connect2SerialButton.enabled ? "+" : "");
    if (view.status.labelVisible)
        text += " " + view.status.caption;
    return "(" + text + (view.status.colour == LinkColour::SerialDown ? " dark)" : ")");
}

/// What the pointer and a screen reader tell beside the message, or the serial option and its list.
std::string why(const Views &views) {
    const Control &ports = views.connect.SerialPortsCombo.control;
    const Control &option = views.connect.ConnectSerialOption;
    const auto &[form, message, button] = views.messages.dlgOK;
    const Control &shown = form.loaded ? message : option;
    const bool same = shown.toolTip == shown.description && option.toolTip == ports.toolTip &&
                      option.description == ports.description;
    return same ? "(" + replaced(shown.toolTip, "\n", "|") + ")" : "not the same everywhere";
}

/// The saved units: title, focus and what is enabled, then name, kind, the chosen rows, address
/// and status.
std::string operation(const UnitsView &view) {
    std::string text = view.OptionsFrame.visible ? "options" : "";
    if (view.AddCorvaneFrame.visible)
        text += view.AddCorvaneFrame.text + "=" + view.AddCorvaneCommand.text;
    text += " " + view.form.focus + " ";
    for (const Control *control : {&view.AddCorvaneFrame, &view.Label2_0, &view.Text3,
                                   &view.Label2_1, &view.AvailCorvanesList.control,
                                   &view.ConnectChoiceList.control, &view.AddCorvaneCommand})
        text += control->enabled ? '+' : '-';
    text += " " + view.Text3.text + "/" + view.ControlledbyText.text + "/" +
            std::to_string(view.AvailCorvanesList.chosen) + "/" +
            std::to_string(view.ConnectChoiceList.chosen);
    text += view.IPAddressFrame.visible ? " " + textOf(view.CntrlIPAddressQuad) : "";
    return text + (view.StatusLabel.visible ? " " + view.StatusLabel.text : "");
}

/// The slots of an array that are seen.
std::map<int, Control> seen(const SlotControls &controls) {
    std::map<int, Control> shown;
    for (int slot = 0; slot <= 32; ++slot)
        if (controls[slot].visible)
            shown[slot] = controls[slot];
    return shown;
}

/// "iB", "iV", "iA", "oB", "oV" or "oA" for buttons that pick and for lamps.
std::string markOf(const SlotArray &array) {
    const std::string kind = array.spoken;
    return (array.side == Side::Input ? "i" : "o") + std::string(kind == "video and audio" ? "B"
                                                                 : kind[0] == 'v'          ? "V"
                                                                                           : "A");
}

/// The buttons that are marked as what the next take sends.
std::string marked(const PanelView &panel) {
    std::string text;
    for (const SlotArray &array : SlotArrays)
        for (const auto &[slot, button] : seen(panel.*array.controls))
            text += button.picked ? " " + markOf(array) + std::to_string(slot) : "";
    return text.substr(text.empty() ? 0 : 1);
}

/// What is picked: "BVA BVA" for the groups of inputs and outputs, with "-" for a disabled one and
/// "?" for one that is neither; then the lamps that are lit; then the three lists.
std::string picked(const PanelView &panel) {
    std::string groups, lamps;
    for (const SlotArray &array : SlotArrays) {
        const auto shown = seen(panel.*array.controls);
        const auto enabled =
            std::ranges::count_if(shown, [](auto &entry) { return entry.second.enabled; });
        const std::string mark = markOf(array);
        for (const auto &[slot, lamp] : shown)
            lamps += lamp.lit ? " " + mark + std::to_string(slot) : "";
        if (array.kind == ControlKind::Button && *array.spoken != 'm')
            groups += enabled == std::ssize(shown) ? mark[1] : enabled == 0 ? '-' : '?';
        groups += groups.size() == 3 ? " " : "";
    }
    return groups + lamps + " " + panel.SelectedOutputsHolder.text + "|" +
           panel.SelectedAudioOutputsHolder.text + "|" + panel.CurrentInputHolder.text;
}

/// What an output shows: its sources, and with audio its mute and its level.
std::string output(const PanelView &panel, int slot) {
    const Control &mute = panel.MuteButton[slot];
    const char *const faces[] = {" grey|", "|", "|", " red|", " green|"};
    return panel.InputVideoConnected[slot].text +
           (mute.visible
                ? "|" + panel.InputAudioConnected[slot].text + "|" + mute.text +
                      faces[static_cast<int>(mute.face)] + panel.OutputVolumeValue[slot].text
                : "");
}

/// What is left of a selection or a take, and the outputs that show what the unit has not. Empty
/// when all is ready for the next.
std::string left(const PanelView &panel, const PanelState &state, const Unit &unit) {
    std::string all = picked(panel) == "BVA BVA ||" ? "" : picked(panel);
    all += panel.TakeButton.face == Face::Neutral ? "" : " TAKE is armed";
    all += state.CurrentInput == 0 ? "" : " an input is picked";
    for (const std::string &output : state.SelectedOutputs)
        all += output.empty() ? "" : " output " + output + " is picked";
    const auto source = [](int input) {
        return input == Unit::NotConnected ? "NC" : std::to_string(input);
    };
    for (int number = 1; const auto &[slot, label] : seen(panel.OutputNumberLabel)) {
        std::string is = source(unit.videoInput(number));
        if (panel.MuteButton[slot].visible)
            is += "|" + source(unit.audioInput(number)) +
                  (unit.muted(number) ? "|MUTED red|Vol " : "|MUTE green|Vol ") +
                  unit.volume(number);
        const std::string shows = output(panel, slot);
        all += shows == is ? "" : " " + label.text + " shows " + shows;
        ++number;
    }
    return all;
}

/// The slots of a side that are seen; the first and last text of each array, "o" for none.
std::string slotsOf(const PanelView &panel, Side side) {
    std::string text;
    for (const SlotArray &array : SlotArrays) {
        const auto shown = seen(panel.*array.controls);
        if (array.side != side || shown.empty())
            continue;
        const auto &[first, control] = *shown.begin();
        const auto &[last, lastControl] = *shown.rbegin();
        const std::string range = std::to_string(first) + "-" + std::to_string(last);
        text += (text.starts_with(range) ? " " : range + " ") +
                (control.text.empty() ? "o" : control.text) +
                (control.text == lastControl.text ? "" : ".." + lastControl.text);
        const auto &numbers = side == Side::Input ? panel.InputShown : panel.OutputShown;
        for (int slot = 0; slot <= 32; ++slot)
            text += numbers[slot] == (shown.contains(slot) ? slot - first + 1 : 0) ? "" : "!";
    }
    return text;
}

} // namespace

std::string Player::look(const std::string &what) {
    const auto end = what.find('=');
    rest = what.substr(end + 1);
    return looks.at(what.substr(0, end))();
}

void Player::learnLooks() {
    const LinkState &link = program.link;
    // clang-format off
    looks = {
        {"sent", [&] { return takeWritten(); }}, {"file", [&] { return files.contentsOf[FileOfUnits]; }},
        {"backup", [&] { return files.contentsOf["program/KVNConfigurator.bak"]; }},
        {"forms", [&] { ListControl open;
                        for (const auto &[name, view, form] : forms)
                            if (view.loaded) open.entries.push_back((view.minimised ? "min-" : "") + name);
                        return textOf(open); }},
        // The link, as start window, saved units, connection dialog and panel show it, "?" where
        // caption and picture differ; then what is open, "!" where a flag says something else.
        {"link", [&] { const bool port = serialPort.isOpen(), host = socket.state() == SocketState::Connected;
                       std::string all;
                       for (const auto *at : {&views.main.status, &views.units.status, &views.connect.status,
                                              &panel.status})
                           all += at->linkUp == (at->caption == "Not Connected") ? '?'
                                                                    : at->showsConnected() ? '+' : '-';
                       return all + (port ? "o" : "") + (host ? "o" : "") +
                           (link.SerialPortOpen == port && link.IPLinkOpenFlag == host ? "" : "!"); }},
        {"time", [&] { std::ostringstream text; text << (pump.now() - start) / second; return text.str(); }},
        {"log", [&] { return textOf(ListControl{.entries = serialPort.log}); }},
        {"caption", [&] { return views.main.status.caption; }},
        {"kind", [&] { return link.LinkKind == NoLinkKind ? "-" : std::string(1, link.LinkKind); }},
        {"flags", [&] { const MessageState &shown = program.messageState;
                        return replaced(marks({{'I', link.IPConnectingFlag}, {'F', link.FindingPortsFlag},
                            {'W', program.savedUnits.WaitingForConnectionFlag},
                            {'P', program.panel.PanelFromSavedUnits}, {'M', shown.MessageShowing},
                            {'B', shown.PlainBoxShowing}, {'Q', shown.YesNoShowing}}), "-", ""); }},
        // What is red, waits, is busy, disabled or open for a while only.
        {"passing", [&] { const bool isOpen = panel.form.loaded && !pump.ended();
                          const auto &[button, label] = std::tie(panel.TakeButton, panel.OutputVolumeLabel);
                          const PresetsView &presets = views.presets;
                          return replaced(marks({{'T', isOpen && button.face == Face::Busy},
                              {'W', isOpen && label.visible && label.text == "Wait..."},
                              {'P', presets.form.loaded && presets.ExecutePresetButton.face == Face::Busy},
                              {'U', !isOpen && views.units.form.loaded && !views.units.AddCorvaneFrame.enabled},
                              {'C', !views.connect.Connect2IPButton.enabled}, {'S', views.setup.loaded}}), "-", ""); }},
        // The ports that were opened for use, and how often a host was dialled.
        {"used", [&] { std::string all;
                       for (const std::string &entry : serialPort.log)
                           if (entry.ends_with(" 38400,N,8,1")) all += entry.substr(5, entry.find(' ', 5) - 4);
                       const auto dialled = [](auto &entry) { return entry.starts_with("connect"); };
                       return all + "x" + std::to_string(std::ranges::count_if(socket.log, dialled)); }},
        {"dialog", [&] { return dialog(views.connect); }}, {"why", [&] { return why(views); }},
        {"operation", [&] { return operation(views.units); }},
        {"list", [&] { return textOf(ListControl{.entries = views.units.AvailCorvanesList.entries}); }},
        // The volume controls and the hint that are seen; the levels of two outputs.
        {"volume", [&] { const Control &label = panel.OutputVolumeLabel;
                         return marks({{'U', panel.VolumeUpButton.visible}, {'D', panel.VolumeDownButton.visible},
                             {'O', label.visible}, {'L', panel.Label1.visible}}) +
                             (panel.VolumeUpButton.visible ? " " + label.text : ""); }},
        {"levels", [&] { const auto &level = panel.OutputVolumeValue;
                         return replaced(level[1].text + "," + level[2].text, "Vol ", "") + "," +
                             program.unit.routing.Outputs[1].VolumeText; }},
        // The presets that are marked, "!" while one is recalled.
        {"presets", [&] { std::string all;
                          for (const Control &button : views.presets.NewPresetButton)
                              all += button.face == Face::Neutral ? "" : button.text;
                          return all + (views.presets.ExecutePresetButton.face == Face::Busy ? "!" : ""); }},
        {"take", [&] { return panel.TakeButton.face == Face::Busy ? "busy" : "idle"; }},
        {"name", [&] { return panel.KVNNameLabel.visible ? panel.KVNNameLabel.text : "nameless"; }},
        {"type", [&] { return panel.CorvaneTypeLabel.text + " " + panel.form.focus; }},
        {"slots", [&] { return slotsOf(panel, Side::Input) + ", " + slotsOf(panel, Side::Output); }},
        {"outputs", [&] { return output(panel, 1) + ", " + output(panel, 2); }},
        {"marked", [&] { program.panelForm.describe(); return marked(panel); }},
        {"picked", [&] { return picked(panel); }}, {"left", [&] { return left(panel, program.panel, unit); }},
        // What the pointer shows over a control of the panel, and what is spoken if that differs.
        {"tip", [&] { program.panelForm.describe();
                      const auto line = rest.find('_');
                      const Control &over = *onPanel(rest.substr(0, line), rest.substr(line + 1)).controls.front();
                      return over.toolTip + (over.toolTip == over.description ? "" : "|" + over.description); }}};
    // clang-format on
}
