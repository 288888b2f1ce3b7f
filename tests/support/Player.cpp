#include "support/Player.h"

#include "protocol/Text.h"

#include <sstream>

namespace {

// clang-format off
/// What is clicked on the panel, a slot's number follows.
const std::map<std::string, std::string> Marks{
    {"iB", "InputVideoAudioButtons"}, {"iV", "InputVideoButtons"}, {"iA", "InputAudioButtons"},
    {"oB", "OutputVidAudButtons"}, {"oV", "OutputVideoButtons"}, {"oA", "OutputAudioButtons"}, {"m", "MuteButton"},
    {"v", "OutputVolumeValue"}, {"take", "TakeButton"}, {"escape", "ClearButton"}, {"presets", "GoToPresets"},
    {"exit", "ExitButton"}, {"up", "VolumeUpButton"}, {"down", "VolumeDownButton"}};

const std::string UnitA = "KVN NAME = A\r\nKVN TYPE = SERIAL\r\n";
const std::string UnitB = "KVN NAME = B\r\nKVN TYPE = ETHER\r\nKVN IP = 192.168.1.20  \r\n";

/// What is long in a log and what stands for it.
const Rows Shorter{
    {"CFG ?\r\n", "CFG;"}, {"STA O A\rSTA O A\r", "Q"}, {"\r", ";"}, {"CFG;Q", "#"},
    {"Please make sure the Zarn is connected to the Comm Port ", "!"},
    {" failed: the port was opened or closed meanwhile.", " failed meanwhile"},
    {"Connecting to 10.11.12.13", "dialling"}, {" Cable before proceeding!", ""}, {"Not Connected", "down"},
    {"Connected on ", "on "}, {"Connected to ", "to "}, {"Connect to ...", "idle"},
    {"Connecting to 10.0.0.5", "dialling"}, {"Found Comm Ports", "found"}, {"Comm1 Comm7 Comm20", "all"},
    {"Waiting for Connection.", "connecting"}, {"Waiting for Configuration.", "asking"},
    {"Loading Controls.", "loading"}, {"Deleted Corvane from Disk", "deleted"}, {"Added Corvane to Disk", "added"},
    {"Setting up save", "saving"},
    {"There are no COM ports available for updating;\nClose any serial communications programs in use, or connect "
     "a USB to Serial Adapter Cable.",
        "no ports"}, {"Unable to connect using that IP address, check the address and try again.", "no answer"},
    {"Unable to get Corvane Configuration", "no config"},
    {"No Response Received from CommPort 7;\nPlease check cabling and Try Again ", "no response"},
    {": can be opened", "+"}, {": the device is gone", ": gone"},
    {"Plug in what is gone, then choose Serial Port again.", "plug"},
    {"End the program that holds a port, then choose Serial Port again.", "end"},
    {"Writing to COM7 failed: the port is not open.", "failed"},
    {"Sending to 10.11.12.13 port 23 failed: the remote host closed the connection.", "failed"},
    {"Sending to 10.11.12.13 port 23 failed: the connection is closed.", "failed"},
    {"Sending to 10.11.12.13 port 23 failed: the host did not take the connection.", "failed"},
    {"Full.\nIf the program's folder cannot be written, copy it to a place of your own, such as your home folder, and "
     "start the program there.", "unsaved"},
    {"Maximum number of corvanes saved!", "full"}, {"Saved Changes to Disk", "saved"},
    {"incomplete ip address can't save to block.", "incomplete"}, {"Are you sure you want to delete ", "delete "},
    {"Add Corvane=Add Corvane", "Add"}, {"Edit Corvane=Edit Corvane", "Edit"}, {"AvailCorvanesList", "list"},
    {"Control Corvane=Control Corvane", "Control"}, {"Delete Corvane=Delete Corvane", "Delete"},
    {"options OptionsCommand_0", "options"}, {"OptionsCommand_", ""}, {"KVN NAME = ", ""}, {";\nKVN TYPE = ", ":"}, {";\nKVN IP = ", ":"},
    {";\n", " "}, {"10.0.0.5", "IP"}, {"10.11.12.13", "IP"}};
// clang-format on

std::string replaced(std::string text, const std::string &old, const std::string &by) {
    for (auto at = text.find(old); at != text.npos; at = text.find(old, at + by.size()))
        text.replace(at, old.size(), by);
    return text;
}

std::string times(int count, const std::string &text) {
    return count <= 0 ? "" : text + times(count - 1, text);
}

std::string shortened(std::string text) {
    if (text.empty())
        return text;
    for (const auto &[old, by] : Shorter)
        text = replaced(text, old, by);
    return text;
}

/// A command or a reply: "_" is a blank, "^" the end of a line, "|" the first half of that.
std::string unmarked(const std::string &text) {
    return replaced(replaced(replaced(text, "_", " "), "^", "\r\n"), "|", "\r");
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

} // namespace

std::string marks(std::initializer_list<std::pair<char, bool>> flags) {
    std::string text;
    for (const auto &[letter, set] : flags)
        text += set ? letter : '-';
    return text;
}

// clang-format off
Player::Player(bool network, UnitOptions options)
    : FakeMachine(std::move(options)),
      overNetwork(network),
      windows{{"main", views.main.form, program.startForm}, {"panel", panel.form, program.panelForm},
              {"presets", views.presets.form, program.panelForm.presetsForm()},
              {"units", views.units.form, program.unitsForm}, {"connect", views.connect.form, program.connectForm},
              {"splash", views.setup, program.setupForm}, {"help", views.help[1], program.helpForms[1]},
              {"message", views.messages.dlgOK.form, program.messages.dlgOK()},
              {"box", views.messages.plainBox.form, program.messages.plainBox()},
              {"question", views.messages.dlgYesNo.form, program.messages.dlgYesNo()}} {
    // clang-format on
    learnWords();
    learnLooks();
    program.start();
    serialPort.facts[1].adapter = "FTDI";
    serialPort.facts[8].presence = SerialDeviceFacts::Presence::There;
    serialPort.failures[8] = LinkFailure::NotPermitted;
    serialPort.holderName = "minicom";
    pump.eachTurn = [this] { turn(); };
    serialPort.wire.pieceDelay = 0.0625;
    pump.show = [this] { noteStatus(); };
    for (FakeWire *wire : {&serialPort.wire, &socket.wire})
        wire->device = [this, unitAnswer = wire->device](std::string_view command) {
            const auto reply = std::ranges::find_if(
                replies, [&](auto &entry) { return command.starts_with(entry.first); });
            return reply == replies.end() ? unitAnswer(command) : reply->second;
        };
}

void Player::play(const std::string &script, bool through) {
    std::istringstream list(script);
    std::optional<double> due;
    const auto run = [this](const std::string &word) {
        if (!careful || can(word))
            see(shortened(failureOf<std::runtime_error>([&] { act(word); })));
    };
    for (std::string word; list >> word;) {
        const auto colon = word.find(':');
        const auto group = [this, text = replaced(word.substr(colon + 1), "/", " ")] {
            play(text);
        };
        if (word == "&")
            due = 0.0;
        else if (word[0] == '@' && colon == word.npos)
            due = std::stod(word.substr(1));
        else if (word[0] == '@')
            pump.in(std::stod(word.substr(1)) * second, group);
        else if (word[0] == '~')
            onceSeen.emplace(word.substr(1, colon - 1), group);
        else if (due)
            pump.in(std::exchange(*due, *due + 0.1), [run, word] { run(word); });
        else
            run(word);
    }
    if (due && through)
        pump.runFor(200.0, [] { return false; });
}

void Player::turn() {
    const LinkState &link = program.link;
    const auto due = std::ranges::find_if(onceSeen, [&](auto &entry) {
        return entry.first == "search" ? link.FindingPortsFlag && link.PortsFoundCount == 1
                                       : rowNamed(windows, entry.first)->view.loaded;
    });
    if (due != onceSeen.end())
        return onceSeen.extract(due).mapped()();
    const auto &[message, box, question] = views.messages;
    hear(0, message.form, {"{", message.OKLabel.text, "}"}, onMessage);
    hear(1, box.form, {"[", box.OKLabel.text, "]"}, onMessage.empty() ? "" : "-box");
    hear(2, question.form, {"<", question.YesNoText.text, ">"}, onQuestion);
}

void Player::hear(std::size_t from, const FormView &form,
                  const std::array<std::string_view, 3> &text, const std::string &reaction) {
    if (std::exchange(said[from], form.raised) == form.raised || !form.loaded)
        return;
    see(shortened(std::string(text[0]).append(text[1]).append(text[2])));
    play(reaction);
}

void Player::noteStatus() {
    const UnitsView &units = views.units;
    const std::string now = units.StatusLabel.text + (units.AddCorvaneFrame.enabled ? "" : "*");
    if (units.StatusLabel.visible && std::exchange(status, now) != now)
        see(shortened(now));
}

const Control &Player::marked(const std::string &name, const std::string &slot) const {
    const auto array = rowNamed(SlotArrays, name);
    return array == SlotArrays.end() ? panel.*rowNamed(SingleControls, name)->control
                                     : (panel.*array->controls)[std::stoi(slot)];
}

void Player::click(const std::string &name, const std::string &slot) {
    const Control &control = marked(name, slot);
    if (!panel.form.loaded || !control.visible || !control.enabled)
        see("no " + name + slot);
    const auto array = rowNamed(SlotArrays, name);
    array == SlotArrays.end() ? (program.panelForm.*rowNamed(SingleControls, name)->clicked)()
                              : (program.panelForm.*array->clicked)(std::stoi(slot));
}

void Player::act(const std::string &word) {
    if (word[0] == '?')
        return see(look(word.substr(1)));
    if (word[0] == '-')
        return rowNamed(windows, word.substr(1))->form.unload();
    if (word[0] == '+')
        return rowNamed(windows, word.substr(1))->form.present();
    const std::string verb = split(word);
    Marks.contains(verb) ? click(Marks.at(verb), rest) : words.at(verb).act();
}

std::string Player::split(const std::string &word) {
    const auto end = std::min(word.find_first_of("0123456789="), word.size());
    rest = word.substr(end + (word[end] == '=' ? 1 : 0));
    number = static_cast<int>(leadingNumber(rest));
    return word.substr(0, end);
}

bool Player::isFree(const std::string &name) const {
    const auto loaded = [this](const char *window) {
        return rowNamed(windows, window)->view.loaded;
    };
    const bool overAll =
        name == "message" || name == "box" || name == "question" || name == "connect";
    return loaded(name.c_str()) && (overAll || (!loaded("box") && !loaded("connect")));
}

bool Player::can(const std::string &word) {
    if (word[0] == '-')
        return isFree(word.substr(1));
    if (word[0] == '+')
        return isFree("panel");
    const std::string verb = split(word);
    if (Marks.contains(verb)) {
        const Control &control = marked(Marks.at(verb), rest);
        return isFree("panel") && control.visible && control.enabled;
    }
    const auto &[act, window, controls] = words.at(verb);
    return window.empty() || (isFree(window) && std::ranges::all_of(controls, [](auto *control) {
                                  return control->visible && control->enabled;
                              }));
}

void Player::learnWords() {
    frmMain &main = program.startForm;
    dlgConnect &connect = program.connectForm;
    dlgControlExisting &units = program.unitsForm;
    dlgPresets &presets = program.panelForm.presetsForm();
    Messages &user = program.messages;
    const auto &ports = views.connect.SerialPortsCombo.entries;
    const UnitsView &u = views.units;
    const ConnectView &c = views.connect;
    const Control *const frame = &u.AddCorvaneFrame;
    // clang-format off
    words = {
        // The start window; all the way from there to an open panel.
        {"find", {[&] { main.MainControlButton_Click(0); }, "main", {&views.main.MainControlButton_0}}},
        {"new", {[&] { main.addUnit(); }, "main"}},
        {"units", {[&] { main.MainControlButton_Click(2); }, "main", {&views.main.MainControlButton_2}}},
        {"min", {[&] { main.minimise(true); }}}, {"label", {[&] { main.ZarnConnectedLabel_Click(); }, "main"}},
        {"start", {[&] { program.start(); }}},
        {"open", {[&] { play(overNetwork ? "~connect:ethernet/ip=10.11.12.13/dial find note" :
            "~connect:serial/~message:-message/port7/done find note"); }}},
        // The connection dialog; "dial" is Enter in the last box.
        {"ethernet", {[&] { connect.ConnectIPOption_Click(); }, "connect", {&c.ConnectIPOption}}},
        {"serial", {[&] { connect.ConnectSerialOption_Click(); }, "connect", {&c.ConnectSerialOption}}},
        {"ip", {[&] { connect.IPAddressQuadConnect_Change({0, 0, 0}, rest); }, "connect", {&c.IPAddressFrame}}},
        {"dial", {[&] { connect.IPAddressQuadConnect_Enter(3); }, "connect", {&c.IPAddressFrame}}},
        {"call", {[&] { play("ethernet ip=10.0.0.5 dial"); }}},
        {"port", {[&] { connect.SerialPortsCombo_Click(static_cast<int>(std::ranges::find(ports, "Comm" + rest) -
            ports.begin())); }, "connect", {&c.SerialConnectionFrame, &c.SerialPortsCombo.control}}},
        {"done", {[&] { connect.Connect2SerialButton_Click(); }, "connect", {&c.SerialConnectionFrame,
            &c.Connect2SerialButton}}},
        // The panel: "step" though the button is hidden. Its presets.
        {"step", {[&] { program.panelForm.VolumeUpButton_Click(); }}},
        {"p", {[&] { presets.NewPresetButton_Click(number); }, "presets"}},
        {"execute", {[&] { presets.ExecutePresetButton_Click(); }, "presets"}},
        {"close", {[&] { presets.ExitPresets_Click(); }, "presets"}},
        // The saved units; rows count from 0, "quad2=7" is typed over the third number.
        {"add", {[&] { units.OptionsCommand_Click(Operation::Add); }, "units", {&u.OptionsFrame}}},
        {"edit", {[&] { units.OptionsCommand_Click(Operation::Edit); }, "units", {&u.OptionsFrame}}},
        {"control", {[&] { units.OptionsCommand_Click(Operation::Control); }, "units", {&u.OptionsFrame}}},
        {"delete", {[&] { units.OptionsCommand_Click(Operation::Delete); }, "units", {&u.OptionsFrame}}},
        {"back", {[&] { units.OKButton_Click(); }, "units", {&u.OptionsFrame}}},
        {"name", {[&] { units.Text3_Change(rest); }, "units", {frame, &u.Text3}}},
        {"unit", {[&] { units.AvailCorvanesList_Click(number); }, "units", {frame, &u.AvailCorvanesList.control}}},
        {"double", {[&] { units.AvailCorvanesList_DoubleClick(number); }, "units", {frame,
            &u.AvailCorvanesList.control}}},
        {"kind", {[&] { units.ConnectChoiceList_Click(number); }, "units", {frame, &u.ConnectChoiceList.control}}},
        {"quad", {[&] { units.CntrlIPAddressQuad_Change({number, 0, 3}, rest.substr(2)); }, "units", {frame,
            &u.IPAddressFrame}}},
        {"go", {[&] { units.AddCorvaneCommand_Click(); }, "units", {frame, &u.AddCorvaneCommand}}},
        {"esc", {[&] { units.Escape(); }, "units"}},
        {"cancel", {[&] { units.CancelCommand_Click(); }, "units", {frame}}},
        // Messages and questions: asked, answered, and the words that answer those to come.
        {"tell", {[&] { user.ShowMessage(rest), see("told"); }}},
        {"box", {[&] { user.ShowPlainBox(rest), see("told"); }}},
        {"ask", {[&] { user.AskYesNo(rest), see(user.answered() ? "yes" : "no"); }}},
        {"ok", {[&] { act("-message"); }, "message"}}, {"yes", {[&] { user.answer(true); }, "question"}},
        {"no", {[&] { user.answer(false); }, "question"}}, {"message", {[&] { onMessage = rest; }}},
        {"question", {[&] { onQuestion = rest; }}},
        {"raise", {[&] { program.panelForm.OutputVolumeValue_StepUp(number); }, "panel"}},
        {"lower", {[&] { program.panelForm.OutputVolumeValue_StepDown(number); }, "panel"}},
        // The machine: the device or peer goes, or does not tell so; these ports open, COM7 is another
        // device; the host's manner, seconds to its answer, seconds to send; what is replied, how
        // late, in pieces of how many bytes, or well again.
        {"lose", {[&] { overNetwork ? socket.peerCloses() : serialPort.vanish(); }}},

        {"network", {[&] { overNetwork = rest.empty(); }}}, {"swap", {[&] { serialPort.devices[7] = "another"; }}},
        {"slow", {[&] { socket.connectDelay = std::stod(rest); }}},
        {"sending", {[&] { socket.sendDelay = std::stod(rest); }}},

        {"split", {[&] { serialPort.wire.split = socket.wire.split = std::stoul(rest); }}},
        {"ports", {[&] { serialPort.present.clear(); std::istringstream list(replaced(rest, ",", " ")); for (int port =
            0; list >> port;) serialPort.present.insert(port); }}},
        {"host", {[&] { socket.host = static_cast<FakeTcpSocket::Host>(number); }}},
        {"raw", {[&] { replies[""] = unmarked(rest); }}},

        {"CFG", {[&] { replies["CFG"] = rest; }}}, {"silent", {[&] { replies["STA"].clear(); }}},
        {"STA", {[&] { replies["STA"] = "\r\nSTA O A\r\n  Output 1 (A," + rest + ")\r\n"; }}},
        {"VOL", {[&] { replies["VOL L 1?"] = "\r\nVOL L 1 " + rest + "\r\n"; }}},
        {"late", {[&] { serialPort.wire.delay = socket.wire.delay = std::stod(rest) * second; }}},
        {"well", {[&] { replies.clear(), serialPort.wire.delay = socket.wire.delay = 0.01; }}},
        // Another unit; a level that it reports.
        {"model", {[&] { unit = Unit({.model = "KVN-" + rest}), play("exit open"); }}},
        {"level", {[&] { play("STA=U,0,V," + rest + ",1,D,1 take v1 note"); }}},
        // The file of saved units: its text, so many units in it, no file, failures.
        {"file", {[&] { files.contentsOf[FileOfUnits] = rest.empty() ? UnitA + UnitB : rest; }}},
        {"holds", {[&] { files.contentsOf[FileOfUnits] = times(number, UnitA); }}},
        {"gone", {[&] { files.contentsOf.clear(); }}}, {"save", {[&] { files.failure = rest; }}},
        {"read", {[&] { files.readFailure = rest; }}},
        // Time passes; what was sent is forgotten.
        {"note", {[&] { takeWritten(), start = pump.now(); }}},
        {"wait", {[&] { pump.runFor(rest.empty() ? 5.0 : std::stod(rest) * second, [] { return false; }); }}}};
    // clang-format on
}

std::string Player::look(const std::string &what) {
    told.clear();
    portOpen = serialPort.isOpen(), connected = socket.state() == SocketState::Connected;
    return what.starts_with("tip=") ? tip(what.substr(4)) : looks.at(what)();
}

void Player::learnLooks() {
    const LinkState &link = program.link;
    // clang-format off
    looks = {
        {"sent", [&] { return shortened(takeWritten()); }},
        {"file", [&] { return shortened(files.contentsOf[FileOfUnits]); }},
        {"backup", [&] { return shortened(files.contentsOf["program/KVNConfigurator.bak"]); }},
        {"forms", [&] { for (const auto &[name, view, form] : windows)
                            told += !view.loaded ? "" : (view.minimised ? " min-" : " ") + name;
                        return told.substr(told.empty() ? 0 : 1); }},
        // The link, as start window, saved units, connection dialog and panel show it, "?" where
        // caption and picture differ; then what is open, "!" where a flag says something else.
        {"link", [&] { for (const auto *shown : {&views.main.status, &views.units.status, &views.connect.status,
                                                 &panel.status})
                           told += shown->linkUp == (shown->caption == "Not Connected") ? "?"
                                   : shown->showsConnected() ? "+" : "-";
                       told += (portOpen ? "o" : "") + std::string(connected ? "o" : "");
                       return told + (link.SerialPortOpen == portOpen && link.IPLinkOpenFlag == connected ? "" : "!"); }},
        {"time", [&] { std::ostringstream stream; stream << (pump.now() - start) / second; return stream.str(); }},
        {"log", [&] { for (const std::string &line : serialPort.log) told += (told.empty() ? "" : " ") + line; return
            told; }},
        {"caption", [&] { return shortened(views.main.status.caption); }},
        {"kind", [&] { return link.LinkKind == NoLinkKind ? "-" : std::string(1, link.LinkKind); }},
        {"flags", [&] { const MessageState &shown = program.messageState; return replaced(marks({{'I',
            link.IPConnectingFlag}, {'F', link.FindingPortsFlag}, {'W', program.savedUnits.WaitingForConnectionFlag},
            {'P', program.panel.PanelFromSavedUnits}, {'M', shown.MessageShowing}, {'B', shown.PlainBoxShowing}, {'Q',
            shown.YesNoShowing}}), "-", ""); }},
        // The ports that were opened for use, and how often a host was dialled.
        {"used", [&] { for (const std::string &entry : serialPort.log)
                           if (entry.ends_with(" 38400,N,8,1")) told += entry.substr(5, entry.find(' ', 5) - 4);
                       return told + "x" + std::to_string(std::ranges::count_if(socket.log, [](auto &entry) { return entry.starts_with("connect");
            })); }}, {"dialog", [&] { return dialog(); }}, {"why", [&] { return why(); }},
        {"operation", [&] { return shortened(operation()); }},
        {"list", [&] { return textOf({.entries = views.units.AvailCorvanesList.entries}); }},
        // The volume controls and the hint that are seen; the levels of two outputs.
        {"volume", [&] { told = marks({{'U', panel.VolumeUpButton.visible}, {'D', panel.VolumeDownButton.visible},
            {'O', panel.OutputVolumeLabel.visible}, {'L', panel.Label1.visible}}); told += told[0] == 'U' ? " " +
            panel.OutputVolumeLabel.text : ""; return told; }},
        {"levels", [&] { const auto &level = panel.OutputVolumeValue; return replaced(level[1].text + "," +
            level[2].text, "Vol ", "") + "," + program.unit.routing.Outputs[1].VolumeText; }},
        // The presets that are marked, "!" while one is recalled.
        {"presets", [&] { for (const Control &button : views.presets.NewPresetButton)
                              told += button.face == Face::Neutral ? "" : button.text;
                          const Face face = views.presets.ExecutePresetButton.face;
                          return told + (face == Face::Busy ? "!" : ""); }},
        {"take", [&] { return panel.TakeButton.face == Face::Busy ? "busy" : "idle"; }},
        {"name", [&] { return panel.KVNNameLabel.visible ? panel.KVNNameLabel.text : "nameless"; }},
        {"type", [&] { return panel.CorvaneTypeLabel.text + " " + panel.form.focus; }},
        {"slots", [&] { return slotsOf(Side::Input) + ", " + slotsOf(Side::Output); }},
        {"outputs", [&] { return outputIn(1) + ", " + outputIn(2); }},
        // The buttons that are marked as what the next take sends.
        {"marked", [&] { program.panelForm.describe(); for (const char *const mark : {"iB", "iV", "iA", "oB", "oV",
            "oA"}) { const auto array = rowNamed(SlotArrays, Marks.at(mark)); for (const auto &[slot, button] :
            seen(panel.*array->controls)) told += button.picked ? " " + (mark + std::to_string(slot)) : ""; } return
            told.substr(told.empty() ? 0 : 1); }}, {"picked", [&] { return picked(); }},
        {"left", [&] { return left(); }}};
    // clang-format on
}

/// The connection dialog: the option, what its frame shows, "+" for a button that can be clicked,
/// the link.
std::string Player::dialog() const {
    const ConnectView &view = views.connect;
    std::string text = view.ConnectIPOption.lit ? "E" : view.ConnectSerialOption.lit ? "S" : "-";
    if (view.IPAddressFrame.visible)
        text += " " + textOf(view.IPAddressQuadConnect) + " " + view.Label2.text +
                (view.Connect2IPButton.enabled ? "+" : "");
    if (view.SerialConnectionFrame.visible)
        text += " " + view.Label1.text + (view.SerialPortsCombo.control.visible ? ": " : " ") +
                textOf(view.SerialPortsCombo) + (view.Connect2SerialButton.enabled ? "+" : "");
    if (view.status.labelVisible)
        text += " " + view.status.caption;
    return "(" + shortened(text) + (view.status.colour == LinkColour::SerialDown ? " dark)" : ")");
}

/// What the pointer and a screen reader tell beside the message, or the serial option and its list.
std::string Player::why() const {
    const Control &ports = views.connect.SerialPortsCombo.control;
    const Control &message = views.messages.dlgOK.OKLabel,
                  &option = views.connect.ConnectSerialOption;
    const Control &shown = views.messages.dlgOK.form.loaded ? message : option;
    if (shown.toolTip != shown.description || option.toolTip != ports.toolTip ||
        option.description != ports.description)
        return "not the same everywhere";
    return "(" + replaced(shortened(shown.toolTip), "\n", "|") + ")";
}

/// The saved units: title, focus and what is enabled, then name, kind, the chosen rows, address
/// and status.
std::string Player::operation() const {
    const UnitsView &view = views.units;
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
    if (view.IPAddressFrame.visible)
        text += " " + textOf(view.CntrlIPAddressQuad);
    return text + (view.StatusLabel.visible ? " " + view.StatusLabel.text : "");
}

static void check(bool overNetwork, double second, const Rows &rows, const std::string &before,
                  const std::string &after) {
    for (const auto &[given, expected] : rows) {
        const bool one = given.find(':') == 1;
        if (one && given[0] != (overNetwork ? 'E' : 'S'))
            continue;
        Player player(overNetwork);
        player.second = second;
        player.play(before + " " + given.substr(one ? 2 : 0));
        player.play(after);
        checkRows({{given, expected}}, [&](auto &) { return player.log; });
    }
}

void checkPlays(const Rows &rows, const std::string &before, const std::string &after) {
    check(false, 1.0, rows, before, after);
}

void checkOnBothLinks(const Rows &rows, const std::string &before, const std::string &after) {
    check(false, 0.3, rows, before, after);
    check(true, 0.8, rows, before, after);
}
