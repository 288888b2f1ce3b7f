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

const std::string FileOfUnits = "program/KVNConfigurator.ini";
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
     "a USB to Serial Adapter Cable.", "no ports"},
    {"Unable to connect using that IP address, check the address and try again.", "no answer"},
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

std::string shortened(std::string text) {
    for (const auto &[old, by] : Shorter)
        text = replaced(text, old, by);
    return text;
}

/// A command or a reply: "_" is a blank, "^" the end of a line, "|" the first half of that.
std::string unmarked(const std::string &text) {
    return replaced(replaced(replaced(text, "_", " "), "^", "\r\n"), "|", "\r");
}

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

} // namespace

// clang-format off
Player::Player(bool network)
    : overNetwork(network),
      windows{{"main", views.main.form, program.startForm}, {"panel", panel.form, program.panelForm},
              {"presets", views.presets.form, program.panelForm.presetsForm()},
              {"units", views.units.form, program.unitsForm}, {"connect", views.connect.form, program.connectForm},
              {"splash", views.setup, program.setupForm}, {"help", views.help[1], program.helpForms[1]},
              {"message", views.messages.dlgOK.form, program.messages.dlgOK()},
              {"box", views.messages.plainBox.form, program.messages.plainBox()},
              {"question", views.messages.dlgYesNo.form, program.messages.dlgYesNo()}} {
    // clang-format on
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

void Player::play(const std::string &script) {
    std::istringstream words(script);
    std::optional<double> due;
    const auto run = [this](const std::string &word) {
        see(shortened(failureOf<std::runtime_error>([&] { act(word); })));
    };
    for (std::string word; words >> word;) {
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
    if (due)
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
    hear(said[0], message.form, "{" + message.OKLabel.text + "}", onMessage);
    hear(said[1], box.form, "[" + box.OKLabel.text + "]", onMessage.empty() ? "" : "-box");
    hear(said[2], question.form, "<" + question.YesNoText.text + ">", onQuestion);
}

void Player::hear(int &heard, const FormView &form, const std::string &text,
                  const std::string &reaction) {
    if (std::exchange(heard, form.raised) == form.raised || !form.loaded)
        return;
    see(shortened(text));
    play(reaction);
}

void Player::noteStatus() {
    const UnitsView &units = views.units;
    const std::string now = units.StatusLabel.text + (units.AddCorvaneFrame.enabled ? "" : "*");
    if (units.StatusLabel.visible && std::exchange(status, now) != now)
        see(shortened(now));
}

void Player::click(const std::string &name, const std::string &slot) {
    const auto array = rowNamed(SlotArrays, name);
    const auto one = rowNamed(SingleControls, name);
    const bool single = array == SlotArrays.end();
    const int at = single ? 0 : std::stoi(slot);
    const Control &control = single ? panel.*one->control : (panel.*array->controls)[at];
    if (!panel.form.loaded || !control.visible || !control.enabled)
        see("no " + name + slot);
    single ? (program.panelForm.*one->clicked)() : (program.panelForm.*array->clicked)(at);
}

void Player::act(const std::string &word) {
    if (word[0] == '?')
        return see(look(word.substr(1)));
    if (word[0] == '-')
        return rowNamed(windows, word.substr(1))->form.unload();
    if (word[0] == '+')
        return rowNamed(windows, word.substr(1))->form.present();
    const auto end = std::min(word.find_first_of("0123456789="), word.size());
    const std::string verb = word.substr(0, end);
    const std::string rest = word.substr(end + (word[end] == '=' ? 1 : 0));
    const int number = static_cast<int>(leadingNumber(rest));
    if (Marks.contains(verb))
        return click(Marks.at(verb), rest);
    frmMain &main = program.startForm;
    dlgConnect &connect = program.connectForm;
    dlgControlExisting &units = program.unitsForm;
    dlgPresets &presets = program.panelForm.presetsForm();
    Messages &user = program.messages;
    LinkState &link = program.link;
    UnitTalk &talk = program.talk;
    const auto &ports = views.connect.SerialPortsCombo.entries;
    std::string text;
    const auto reply = [&](const std::string &known) {
        const std::string &answer = program.unit.exchange.ResponseText;
        return answer.size() > 1000 ? std::to_string(answer.size()) + " bytes"
                                    : std::to_string(program.unit.exchange.ReplyStatus) + known +
                                          "'" + shortened(answer) + "'";
    };
    // clang-format off
    const std::map<std::string, std::function<void()>> acts{
        // The start window; all the way from there to an open panel.
        {"find", [&] { main.MainControlButton_Click(0); }}, {"new", [&] { main.addUnit(); }},
        {"units", [&] { main.MainControlButton_Click(2); }}, {"min", [&] { main.minimise(true); }},
        {"label", [&] { main.ZarnConnectedLabel_Click(); }}, {"start", [&] { program.start(); }},
        {"open", [&] { play(overNetwork ? "~connect:ethernet/ip=10.11.12.13/dial find note"
                            : "~connect:serial/~message:-message/port7/done find note"); }},
        // The connection dialog; "dial" is Enter in the last box.
        {"ethernet", [&] { connect.ConnectIPOption_Click(); }},
        {"serial", [&] { connect.ConnectSerialOption_Click(); }},
        {"ip", [&] { connect.IPAddressQuadConnect_Change({0, 0, 0}, rest); }},
        {"dial", [&] { connect.IPAddressQuadConnect_Enter(3); }},
        {"call", [&] { play("ethernet ip=10.0.0.5 dial"); }},
        {"port", [&] { connect.SerialPortsCombo_Click(static_cast<int>(
                           std::ranges::find(ports, "Comm" + rest) - ports.begin())); }},
        {"done", [&] { connect.Connect2SerialButton_Click(); }},
        // The panel: "step" though the button is hidden. Its presets.
        {"step", [&] { program.panelForm.VolumeUpButton_Click(); }},
        {"p", [&] { presets.NewPresetButton_Click(number); }},
        {"execute", [&] { presets.ExecutePresetButton_Click(); }}, {"close", [&] { presets.ExitPresets_Click(); }},
        // The saved units; rows count from 0, "quad2=7" is typed over the third number.
        {"add", [&] { units.OptionsCommand_Click(Operation::Add); }},
        {"edit", [&] { units.OptionsCommand_Click(Operation::Edit); }},
        {"control", [&] { units.OptionsCommand_Click(Operation::Control); }},
        {"delete", [&] { units.OptionsCommand_Click(Operation::Delete); }}, {"back", [&] { units.OKButton_Click(); }},
        {"name", [&] { units.Text3_Change(rest); }}, {"unit", [&] { units.AvailCorvanesList_Click(number); }},
        {"double", [&] { units.AvailCorvanesList_DoubleClick(number); }},
        {"kind", [&] { units.ConnectChoiceList_Click(number); }},
        {"quad", [&] { units.CntrlIPAddressQuad_Change({number, 0, 3}, rest.substr(2)); }},
        {"go", [&] { units.AddCorvaneCommand_Click(); }}, {"esc", [&] { units.Escape(); }},
        {"cancel", [&] { units.CancelCommand_Click(); }},
        // Messages and questions: asked, answered, and the words that answer those to come.
        {"tell", [&] { user.ShowMessage(rest), see("told"); }},
        {"box", [&] { user.ShowPlainBox(rest), see("told"); }},
        {"ask", [&] { user.AskYesNo(rest), see(user.answered() ? "yes" : "no"); }}, {"ok", [&] { act("-message"); }},
        {"yes", [&] { user.answer(true); }}, {"no", [&] { user.answer(false); }},
        {"message", [&] { onMessage = rest; }}, {"question", [&] { onQuestion = rest; }},
        // The links themselves, opened as the dialog does it, and what the program does to them. "link"
        // opens both and uses one, for a unit of which other things are known; then time counts anew.
        {"link", [&] { program.unit.model.ModelDescription = "before";
                       program.unit.model.NumInputs = 32, program.unit.model.NumOutputs = 2;
                       program.unit.routing.Outputs.fill({"9", 'a', 'U', "b", 'c', "-7", "3", 'd', "4"});
                       play("pick7 setup use=" + std::string(1, own())), start = pump.now(); }},
        {"use", [&] { link.LinkKind = rest[0]; }},
        {"pick", [&] { link.LinkKind = SerialLinkKind, program.serial.OpenSerialPort(number); }},
        {"setup", [&] { link.LinkKind = NetworkLinkKind, link.RemoteIPAddress = "10.11.12.13";
                        program.network.SetupConnectIP(); }},
        {"test", [&] { program.serial.TestCommPort(number); }}, {"reopen", [&] { talk.OpenLink(); }},
        {"shut", [&] { talk.CloseLink(); }}, {"disconnect", [&] { talk.DisconnectLink(); }},
        {"send", [&] { talk.SendCommand(unmarked(rest) + "\r"); }},
        {"cmd", [&] { talk.SendCommandGetResponse(unmarked(rest) + "\r"); see(reply("")); }},
        {"config", [&] { talk.GetParseConfiguration();
                         see(reply(" " + std::string(program.unit.model.ModelDescription))); }},
        {"status", [&] { talk.RequestOutputStatus(program.aboutForm);
                         for (const int output : {1, 2, 3}) {
                             const OutputStatusRecord &is = program.unit.routing.Outputs[output];
                             see(is.OutputNumberText + is.MuteFlag + is.VolumeText + "/" + is.AudioInputText + "/" +
                                 is.VideoInputText); } }},
        // An action of the user, whose form closes; the program ends.
        {"guard", [&] { program.guard.run(program.aboutForm, [&] { act(rest); }); }},
        {"leave", [&] { program.aboutForm.unload(); }}, {"end", [&] { pump.end(); }},
        // The machine: the device or peer goes, or does not tell so; these ports open, COM7 is another
        // device; the host's manner, seconds to its answer, seconds to send; what is replied, how
        // late, in pieces of how many bytes, or well again.
        {"lose", [&] { overNetwork ? socket.peerCloses() : serialPort.vanish(); }},
        {"drop", [&] { overNetwork ? socket.close() : serialPort.close(); }},
        {"network", [&] { overNetwork = rest.empty(); }}, {"swap", [&] { serialPort.devices[7] = "another"; }},
        {"slow", [&] { socket.connectDelay = std::stod(rest); }},
        {"sending", [&] { socket.sendDelay = std::stod(rest); }},
        {"forget", [&] { link.IPConnectedFlag = false; }},
        {"split", [&] { serialPort.wire.split = socket.wire.split = std::stoul(rest); }},
        {"ports", [&] { serialPort.present.clear();
                        std::istringstream list(replaced(rest, ",", " "));
                        for (int port = 0; list >> port;) serialPort.present.insert(port); }},
        {"host", [&] { socket.host = static_cast<FakeTcpSocket::Host>(number); }},
        {"raw", [&] { replies[""] = unmarked(rest); }},
        {"endless", [&] { replies[""] = "\r\nOk" + std::string(3'000'000, 'x'); }},
        {"CFG", [&] { replies[verb] = rest; }}, {"silent", [&] { replies["STA"].clear(); }},
        {"STA", [&] { replies[verb] = "\r\nSTA O A\r\n  Output 1 (A," + rest + ")\r\n"; }},
        {"VOL", [&] { replies["VOL L 1?"] = "\r\nVOL L 1 " + rest + "\r\n"; }},
        {"late", [&] { serialPort.wire.delay = socket.wire.delay = std::stod(rest) * second; }},
        {"well", [&] { replies.clear(), serialPort.wire.delay = socket.wire.delay = 0.01; }},
        // Another unit; a level that it reports.
        {"model", [&] { play("exit"), unit = Unit({.model = "KVN-" + rest}), play("open"); }},
        {"level", [&] { play("STA=U,0,V," + rest + ",1,D,1 take v1 note"); }},
        // The file of saved units: its text, so many units in it, no file, failures.
        {"file", [&] { files.contentsOf[FileOfUnits] = rest.empty() ? UnitA + UnitB : rest; }},
        {"holds", [&] { for (int at = 0; at < number; ++at) text += UnitA; files.contentsOf[FileOfUnits] = text; }},
        {"gone", [&] { files.contentsOf.clear(); }}, {"save", [&] { files.failure = rest; }},
        {"read", [&] { files.readFailure = rest; }},
        // Time passes; what was sent is forgotten.
        {"note", [&] { takeWritten(); }},
        {"wait", [&] { pump.runFor(rest.empty() ? 5.0 : std::stod(rest) * second, [] { return false; }); }}};
    // clang-format on
    acts.at(verb)();
}

std::string Player::look(const std::string &what) {
    if (what.starts_with("tip="))
        return tip(what.substr(4));
    const LinkState &link = program.link;
    const bool port = serialPort.isOpen(), connected = socket.state() == SocketState::Connected;
    const bool wait = program.savedUnits.WaitingForConnectionFlag;
    std::string text;
    // clang-format off
    const std::map<std::string, std::function<std::string()>> looks{
        {"sent", [&] { return shortened(takeWritten()); }},
        {"file", [&] { return shortened(files.contentsOf[FileOfUnits]); }},
        {"backup", [&] { return shortened(files.contentsOf["program/KVNConfigurator.bak"]); }},
        {"forms", [&] { for (const auto &[name, view, form] : windows)
                            text += !view.loaded ? "" : (view.minimised ? " min-" : " ") + name;
                        return text.substr(text.empty() ? 0 : 1); }},
        // The link, as start window, saved units, connection dialog and panel show it, "?" where
        // caption and picture differ; then what is open, "!" where a flag says something else.
        {"link", [&] { for (const auto *shown : {&views.main.status, &views.units.status,
                                                 &views.connect.status, &panel.status})
                           text += shown->linkUp == (shown->caption == "Not Connected") ? "?"
                                   : shown->showsConnected() ? "+" : "-";
                       text += (port ? "o" : "") + std::string(connected ? "o" : "");
                       return text + (link.SerialPortOpen == port &&
                                      link.IPLinkOpenFlag == connected ? "" : "!"); }},
        // Whether the link in use is its own, that link and the other: "?" where a flag differs.
        {"state", [&] { text = link.LinkKind == own() ? "=" : look("kind");
                        const bool up = link.IPLinkOpenFlag && link.IPConnectedFlag && connected;
                        const bool any = link.IPLinkOpenFlag || link.IPConnectedFlag || connected;
                        text += link.SerialPortOpen != port ? '?' : port ? '+' : '-';
                        text += up ? '+' : any ? '?' : '-';
                        if (overNetwork) std::swap(text[1], text[2]);
                        return text; }},
        {"time", [&] { std::ostringstream stream; stream << (pump.now() - start) / second; return stream.str(); }},
        {"log", [&] { for (const std::string &line : serialPort.log) text += (text.empty() ? "" : " ") + line;
                      return text; }},
        {"progress", [&] { return (link.IPConnectingFlag ? "now " : "") + shortened(views.connect.Label2.text); }},
        {"caption", [&] { return shortened(views.main.status.caption); }},
        {"kind", [&] { return link.LinkKind == NoLinkKind ? "-" : std::string(1, link.LinkKind); }},
        {"flags", [&] { return replaced(marks({{'I', link.IPConnectingFlag}, {'F', link.FindingPortsFlag},
                                               {'W', wait}, {'P', program.panel.PanelFromSavedUnits}}), "-", ""); }},
        // The ports that were opened for use, and how often a host was dialled.
        {"used", [&] { for (const std::string &entry : serialPort.log)
                           if (entry.ends_with(" 38400,N,8,1"))
                               text += entry.substr(5, entry.find(' ', 5) - 4);
                       return text + "x" + std::to_string(std::ranges::count_if(socket.log,
                           [](auto &entry) { return entry.starts_with("connect"); })); }},
        {"dialog", [&] { return dialog(); }}, {"why", [&] { return why(); }},
        {"operation", [&] { return shortened(operation()); }},
        {"list", [&] { return textOf({.entries = views.units.AvailCorvanesList.entries}); }},
        // The volume controls and the hint that are seen; the levels of two outputs.
        {"volume", [&] { text = marks({{'U', panel.VolumeUpButton.visible},
                                       {'D', panel.VolumeDownButton.visible},
                                       {'O', panel.OutputVolumeLabel.visible},
                                       {'L', panel.Label1.visible}});
                         text += text[0] == 'U' ? " " + panel.OutputVolumeLabel.text : "";
                         return text; }},
        {"levels", [&] { const auto &level = panel.OutputVolumeValue;
                         return replaced(level[1].text + "," + level[2].text, "Vol ", "") + "," +
                                program.unit.routing.Outputs[1].VolumeText; }},
        // The presets that are marked, "!" while one is recalled.
        {"presets", [&] { for (const Control &button : views.presets.NewPresetButton)
                              text += button.face == Face::Neutral ? "" : button.text;
                          const Face face = views.presets.ExecutePresetButton.face;
                          return text + (face == Face::Busy ? "!" : ""); }},
        {"take", [&] { return panel.TakeButton.face == Face::Busy ? "busy" : "idle"; }},
        {"name", [&] { return panel.KVNNameLabel.visible ? panel.KVNNameLabel.text : "nameless"; }},
        {"type", [&] { return panel.CorvaneTypeLabel.text + " " + panel.form.focus; }},
        {"slots", [&] { return slotsOf(Side::Input) + ", " + slotsOf(Side::Output); }},
        {"outputs", [&] { return outputIn(1) + ", " + outputIn(2); }},
        // The buttons that are marked as what the next take sends.
        {"marked", [&] { program.panelForm.describe();
                         for (const char *const mark : {"iB", "iV", "iA", "oB", "oV", "oA"}) {
                             const auto array = rowNamed(SlotArrays, Marks.at(mark));
                             for (const auto &[slot, button] : seen(panel.*array->controls))
                                 text += button.picked ? " " + (mark + std::to_string(slot)) : "";
                         }
                         return text.substr(text.empty() ? 0 : 1); }},
        {"picked", [&] { return picked(); }}, {"left", [&] { return left(); }}};
    // clang-format on
    return looks.at(what)();
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
