#include "support/Player.h"

#include "protocol/Text.h"

#include <sstream>

namespace {

const std::string UnitA = "KVN NAME = A\r\nKVN TYPE = SERIAL\r\n";
const std::string UnitB = "KVN NAME = B\r\nKVN TYPE = ETHER\r\nKVN IP = 192.168.1.20  \r\n";

// clang-format off
/// What is clicked on the panel, a slot's number follows.
const std::map<std::string, std::string> Marks{
    {"iB", "InputVideoAudioButtons"}, {"iV", "InputVideoButtons"}, {"iA", "InputAudioButtons"},
    {"oB", "OutputVidAudButtons"}, {"oV", "OutputVideoButtons"}, {"oA", "OutputAudioButtons"}, {"m", "MuteButton"},
    {"v", "OutputVolumeValue"}, {"take", "TakeButton"}, {"escape", "ClearButton"}, {"presets", "GoToPresets"},
    {"exit", "ExitButton"}, {"up", "VolumeUpButton"}, {"down", "VolumeDownButton"}};

/// What is long in a log and what stands for it.
const Rows Shorter{
    {"CFG ?\r\n", "CFG;"}, {"STA O A\rSTA O A\r", "Q"}, {"\r", ";"}, {"CFG;Q", "#"}, {" Cable before proceeding!", ""},
    {"Please make sure the Zarn is connected to the Comm Port ", "!"}, {"Connecting to 10.11.12.13", "dialling"},
    {"Connecting to 10.0.0.5", "dialling"}, {"Not Connected", "down"}, {"Connected on ", "on "},
    {"Connected to ", "to "}, {"Connect to ...", "idle"}, {"Found Comm Ports", "found"}, {"Comm1 Comm7 Comm20", "all"},
    {"Waiting for Connection.", "connecting"}, {"Waiting for Configuration.", "asking"},
    {"Loading Controls.", "loading"}, {"Deleted Corvane from Disk", "deleted"}, {"Added Corvane to Disk", "added"},
    {"Setting up save", "saving"}, {"Unable to get Corvane Configuration", "no config"},
    {"There are no COM ports available for updating;\nClose any serial communications programs in use, or connect "
     "a USB to Serial Adapter Cable.", "no ports"},
    {"Unable to connect using that IP address, check the address and try again.", "no answer"},
    {"No Response Received from CommPort 7;\nPlease check cabling and Try Again ", "no response"},
    {": can be opened", "+"}, {": the device is gone", ": gone"}, {"Maximum number of corvanes saved!", "full"},
    {"Plug in what is gone, then choose Serial Port again.", "plug"}, {"Saved Changes to Disk", "saved"},
    {"End the program that holds a port, then choose Serial Port again.", "end"},
    {"Writing to COM7 failed: the port is not open.", "failed"},
    {"Sending to 10.11.12.13 port 23 failed: the remote host closed the connection.", "failed"},
    {"Sending to 10.11.12.13 port 23 failed: the connection is closed.", "failed"},
    {"Sending to 10.11.12.13 port 23 failed: the host did not take the connection.", "failed"},
    {"Full.\nIf the program's folder cannot be written, copy it to a place of your own, such as your home folder, and "
     "start the program there.", "unsaved"}, {"incomplete ip address can't save to block.", "incomplete"},
    {"Are you sure you want to delete ", "delete "}, {"Add Corvane=Add Corvane", "Add"},
    {"Edit Corvane=Edit Corvane", "Edit"}, {"Control Corvane=Control Corvane", "Control"},
    {"Delete Corvane=Delete Corvane", "Delete"}, {"AvailCorvanesList", "list"}, {"options OptionsCommand_0", "options"},
    {"OptionsCommand_", ""}, {"KVN NAME = ", ""}, {";\nKVN TYPE = ", ":"}, {";\nKVN IP = ", ":"}, {";\n", " "},
    {"10.0.0.5", "IP"}, {"10.11.12.13", "IP"}};
// clang-format on

bool isUsable(const std::vector<const Control *> &controls) {
    return std::ranges::all_of(controls, [](auto *one) { return one->visible && one->enabled; });
}

} // namespace

std::string replaced(std::string text, const std::string &old, const std::string &by) {
    for (auto at = text.find(old); at != text.npos; at = text.find(old, at + by.size()))
        text.replace(at, old.size(), by);
    return text;
}

// clang-format off
Player::Player(bool network, UnitOptions options)
    : FakeMachine(std::move(options)),
      overNetwork(network),
      forms{{"main", views.main.form, program.startForm}, {"panel", panel.form, program.panelForm},
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
    serialPort.held = {8};
    serialPort.wire.pieceDelay = 0.0625;
    pump.eachTurn = [this] { turn(); };
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
            see(failureOf<std::runtime_error>([&] { act(word); }));
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
                                       : rowNamed(forms, entry.first)->view.loaded;
    });
    if (due != onceSeen.end())
        return onceSeen.extract(due).mapped()();
    const auto &[message, box, question] = views.messages;
    hear(0, message.form, "{" + message.OKLabel.text + "}", onMessage);
    hear(1, box.form, "[" + box.OKLabel.text + "]", onMessage.empty() ? "" : "-box");
    hear(2, question.form, "<" + question.YesNoText.text + ">", onQuestion);
}

void Player::see(const std::string &text) {
    std::string seen = text;
    for (auto row = Shorter.begin(); row != Shorter.end() && !seen.empty(); ++row)
        seen = replaced(seen, row->front(), row->back());
    log += (log.empty() || seen.empty() ? "" : " ") + seen;
}

void Player::hear(std::size_t from, const FormView &form, const std::string &text,
                  const std::string &reaction) {
    if (std::exchange(said[from], form.raised) == form.raised || !form.loaded)
        return;
    see(text);
    play(reaction);
}

void Player::noteStatus() {
    const UnitsView &units = views.units;
    const std::string now = units.StatusLabel.text + (units.AddCorvaneFrame.enabled ? "" : "*");
    if (units.StatusLabel.visible && std::exchange(status, now) != now)
        see(now);
}

Player::Word Player::onPanel(const std::string &name, const std::string &slot) {
    KVN32x32Audio &form = program.panelForm;
    const auto array = rowNamed(SlotArrays, name);
    if (array == SlotArrays.end()) {
        const auto single = rowNamed(SingleControls, name);
        return {[=, &form] { (form.*single->clicked)(); }, "panel", {&(panel.*single->control)}};
    }
    const int at = std::stoi(slot);
    return {[=, &form] { (form.*array->clicked)(at); }, "panel", {&(panel.*array->controls)[at]}};
}

Player::Word Player::meaning(const std::string &text) {
    if (text[0] == '-' || text[0] == '+') {
        const std::string name = text.substr(1);
        Form &form = rowNamed(forms, name)->form;
        if (text[0] == '-')
            return {[&form] { form.unload(); }, name};
        return {[&form] { form.present(); }, "panel"};
    }
    const auto end = std::min(text.find_first_of("0123456789="), text.size());
    rest = text.substr(end + (text[end] == '=' ? 1 : 0));
    number = static_cast<int>(leadingNumber(rest));
    const std::string verb = text.substr(0, end);
    return Marks.contains(verb) ? onPanel(Marks.at(verb), rest) : words.at(verb);
}

void Player::act(const std::string &text) {
    if (text[0] == '?')
        return see(look(text.substr(1)));
    const Word word = meaning(text);
    if (word.window == "panel" &&
        !(word.controls.empty() || (panel.form.loaded && isUsable(word.controls))))
        see("no " + text);
    word.act();
}

bool Player::isFree(const std::string &name) const {
    static const std::set<std::string> overAll{"message", "box", "question", "connect"};
    const auto isOpen = [this](const std::string &form) {
        return rowNamed(forms, form)->view.loaded;
    };
    return isOpen(name) && (overAll.contains(name) || (!isOpen("box") && !isOpen("connect")));
}

bool Player::can(const std::string &text) {
    const Word word = meaning(text);
    return word.window.empty() || (isFree(word.window) && isUsable(word.controls));
}

void Player::learnWords() {
    frmMain &main = program.startForm;
    dlgConnect &connect = program.connectForm;
    dlgControlExisting &units = program.unitsForm;
    KVN32x32Audio &onPanel = program.panelForm;
    dlgPresets &presets = onPanel.presetsForm();
    Messages &user = program.messages;
    const auto &ports = views.connect.SerialPortsCombo.entries;
    const UnitsView &u = views.units;
    const ConnectView &c = views.connect;
    const Control *const frame = &u.AddCorvaneFrame;
    const auto option = [&](Operation chosen) -> Word {
        return {
            [&units, chosen] { units.OptionsCommand_Click(chosen); }, "units", {&u.OptionsFrame}};
    };
    // clang-format off
    words = {
        // The start window; all the way from there to an open panel.
        {"find", {[&] { main.MainControlButton_Click(0); }, "main", {&views.main.MainControlButton_0}}},
        {"units", {[&] { main.MainControlButton_Click(2); }, "main", {&views.main.MainControlButton_2}}},
        {"new", {[&] { main.addUnit(); }, "main"}}, {"label", {[&] { main.ZarnConnectedLabel_Click(); }, "main"}},
        {"min", {[&] { main.minimise(true); }}}, {"start", {[&] { program.start(); }}},
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
        {"step", {[&] { onPanel.VolumeUpButton_Click(); }}},
        {"raise", {[&] { onPanel.OutputVolumeValue_StepUp(number); }, "panel"}},
        {"lower", {[&] { onPanel.OutputVolumeValue_StepDown(number); }, "panel"}},
        {"p", {[&] { presets.NewPresetButton_Click(number); }, "presets"}},
        {"execute", {[&] { presets.ExecutePresetButton_Click(); }, "presets"}},
        {"close", {[&] { presets.ExitPresets_Click(); }, "presets"}},
        // The saved units; rows count from 0, "quad2=7" is typed over the third number.
        {"add", option(Operation::Add)}, {"edit", option(Operation::Edit)}, {"control", option(Operation::Control)},
        {"delete", option(Operation::Delete)}, {"back", {[&] { units.OKButton_Click(); }, "units", {&u.OptionsFrame}}},
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
        // The machine: the device or peer goes, or does not tell so; these ports open, COM7 is another
        // device; the host's manner, seconds to its answer, seconds to send; what is replied, how
        // late, in pieces of how many bytes, or well again; all of that.
        {"lose", {[&] { overNetwork ? socket.peerCloses() : serialPort.vanish(); }}},
        {"network", {[&] { overNetwork = rest.empty(); }}}, {"swap", {[&] { serialPort.swapped = {7}; }}},
        {"ports", {[&] { std::istringstream list(replaced(rest, ",", " ")); serialPort.present =
            {std::istream_iterator<int>(list), {}}; }}},
        {"host", {[&] { socket.host = static_cast<FakeTcpSocket::Host>(number); }}},
        {"slow", {[&] { socket.connectDelay = std::stod(rest); }}},
        {"sending", {[&] { socket.sendDelay = std::stod(rest); }}},
        {"raw", {[&] { replies[""] = replaced(replaced(replaced(rest, "_", " "), "^", "\r\n"), "|", "\r"); }}},
        {"CFG", {[&] { replies["CFG"] = rest; }}}, {"silent", {[&] { replies["STA"].clear(); }}},
        {"STA", {[&] { replies["STA"] = "\r\nSTA O A\r\n  Output 1 (A," + rest + ")\r\n"; }}},
        {"VOL", {[&] { replies["VOL L 1?"] = "\r\nVOL L 1 " + rest + "\r\n"; }}},
        {"split", {[&] { serialPort.wire.split = socket.wire.split = std::stoul(rest); }}},
        {"late", {[&] { serialPort.wire.delay = socket.wire.delay = std::stod(rest) * second; }}},
        {"well", {[&] { replies.clear(), serialPort.wire.delay = socket.wire.delay = 0.01; }}},
        {"heal", {[&] { play("well host=0 ports=7 slow0.05 sending0 split0 save= read="); }}},
        // Another unit; a level that it reports.
        {"model", {[&] { unit = Unit({.model = "KVN-" + rest}), play("exit open"); }}},
        {"level", {[&] { play("STA=U,0,V," + rest + ",1,D,1 take v1 note"); }}},
        // The file of saved units: its text, so many units in it, no file, failures.
        {"file", {[&] { files.contentsOf[FileOfUnits] = rest.empty() ? UnitA + UnitB : rest; }}},
        {"holds", {[&] { std::string all; while (number-- > 0) all += UnitA; files.contentsOf[FileOfUnits] = all; }}},
        {"gone", {[&] { files.contentsOf.clear(); }}}, {"save", {[&] { files.failure = rest; }}},
        {"read", {[&] { files.readFailure = rest; }}},
        // Time passes; what was sent is forgotten.
        {"wait", {[&] { pump.runFor(rest.empty() ? 5.0 : std::stod(rest) * second, [] { return false; }); }}},
        {"note", {[&] { takeWritten(), start = pump.now(); }}}};
    // clang-format on
}

void checkPlays(const Rows &rows, const std::string &before, const std::string &after,
                bool overNetwork, double second) {
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

void checkOnBothLinks(const Rows &rows, const std::string &before, const std::string &after) {
    checkPlays(rows, before, after, false, 0.3);
    checkPlays(rows, before, after, true, 0.8);
}
