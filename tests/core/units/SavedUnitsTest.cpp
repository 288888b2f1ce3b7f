#include "support/TestProgram.h"
#include "support/checkRows.h"
#include "units/SavedUnitsText.h"

#include <sstream>

namespace {

const std::string Path = "program/KVNConfigurator.ini";
const std::string Serial = "KVN NAME = A\r\nKVN TYPE = SERIAL\r\n";
const std::string B = "KVN NAME = B\r\nKVN TYPE = ETHER\r\n";
const std::string Network = B + "KVN IP = 192.168.1.20  \r\n";

std::string times(int count, const std::string &text) {
    return count == 0 ? "" : text + times(count - 1, text);
}

/// The program before a user who plays scripts: words for what is clicked and what happens. The
/// log tells in turn what was seen: {message}, [plain box], <question>, status, (forms).
class User : public TestProgram {
public:
    User() {
        files.contentsOf[Path] = Serial + Network;
        pump.eachTurn = [this] { answer(); };
        pump.show = [this] { note(); };
    }
    std::string onQuestion = "say:yes"; ///< the word that answers a question
    std::string log;

    /// Words are "verb", "verb:rest", or "@seconds:word" for what happens later.
    User &play(const std::string &script) {
        std::istringstream words(script);
        for (std::string word; words >> word;) {
            const std::string verb = word.substr(0, word.find(':'));
            const std::string rest = verb == word ? "" : word.substr(verb.size() + 1);
            pump.in(0.0, [] {}); // to the pump too, something happens
            dlgControlExisting &form = program.unitsForm;
            const std::map<std::string, std::function<void()>> verbs{
                {"open", [&] { program.startForm.MainControlButton_Click(2); }},
                {"start", [&] { program.start(); }},
                {"units", [&] { file() = times(std::stoi(rest), Serial); }},
                {"choose", [&] { connectInDialog(rest == "network"); }},
                {"find", [&] { program.startForm.MainControlButton_Click(0); }},
                {"add", [&] { form.OptionsCommand_Click(Operation::Add); }},
                {"edit", [&] { form.OptionsCommand_Click(Operation::Edit); }},
                {"control", [&] { form.OptionsCommand_Click(Operation::Control); }},
                {"delete", [&] { form.OptionsCommand_Click(Operation::Delete); }},
                {"main", [&] { form.OKButton_Click(); }},
                {"name", [&] { form.Text3_Change(rest); }},
                {"unit", [&] { form.AvailCorvanesList_Click(std::stoi(rest)); }},
                {"double", [&] { form.AvailCorvanesList_DoubleClick(std::stoi(rest)); }},
                {"kind", [&] { form.ConnectChoiceList_Click(std::stoi(rest)); }},
                {"type", [&] { type(rest); }},
                {"go", [&] { form.AddCorvaneCommand_Click(); }},
                {"cancel", [&] { form.CancelCommand_Click(); }},
                {"esc", [&] { form.Escape(); }},
                {"close", [&] { form.unload(); }},
                {"answer", [&] { onQuestion = rest; }},
                {"say", [&] { program.messages.answer(rest == "yes"); }},
                {"ignore", [&] { program.messages.dlgYesNo().unload(); }},
                {"leave", [&] { program.connectForm.unload(); }},
                {"exit", [&] { program.panelForm.ExitButton_Click(); }},
                {"end", [&] { program.startForm.unload(); }},
                {"port", [&] { program.connectForm.SerialPortsCombo_Click(0); }},
                {"refuse", [&] { socket.host = FakeTcpSocket::Host::Refuses; }},
                {"hang", [&] { socket.host = FakeTcpSocket::Host::Silent; }},
                {"reply", [&] { socket.wire.device = [rest](auto) { return std::string(rest); }; }},
                {"save", [&] { files.failure = rest; }},
                {"read", [&] { files.readFailure = rest; }},
                {"gone", [&] { files.contentsOf.erase(Path); }},
                {"forms", [&] { noteForms(); }}};
            verb[0] == '@' ? pump.in(std::stod(verb.substr(1)), [this, rest] { play(rest); })
                           : verbs.at(verb)();
        }
        return *this;
    }
    [[nodiscard]] std::string &file() { return files.contentsOf[Path]; }
    [[nodiscard]] std::string listed() const {
        std::string names;
        for (const std::string &name : view.AvailCorvanesList.entries)
            names += " " + name;
        return names;
    }
    /// Title, focus and what is enabled, then name, kind, the chosen rows, address and status.
    [[nodiscard]] std::string look() const {
        std::string all = view.OptionsFrame.visible ? "options" : "";
        if (view.AddCorvaneFrame.visible)
            all += view.AddCorvaneFrame.text + "=" + view.AddCorvaneCommand.text;
        all += " " + view.form.focus + " ";
        for (const Control *control : {&view.AddCorvaneFrame, &view.Label2_0, &view.Text3,
                                       &view.Label2_1, &view.AvailCorvanesList.control,
                                       &view.ConnectChoiceList.control, &view.AddCorvaneCommand})
            all += control->enabled ? '+' : '-';
        all += " " + view.Text3.text + "/" + view.ControlledbyText.text + "/" +
               std::to_string(view.AvailCorvanesList.chosen) + "/" +
               std::to_string(view.ConnectChoiceList.chosen);
        for (int box = 0; view.IPAddressFrame.visible && box < 4; ++box)
            all += (box == 0 ? " " : ".") + view.CntrlIPAddressQuad.boxes.at(std::size_t(box)).text;
        return all + (view.StatusLabel.visible ? " " + view.StatusLabel.text : "");
    }

private:
    void answer() {
        const MessageViews &open = views.messages;
        if (open.dlgOK.form.loaded) {
            log += "{" + open.dlgOK.OKLabel.text.substr(0, 40) + "}";
            program.messages.dlgOK().unload();
        }
        if (open.plainBox.form.loaded) {
            log += "[" + open.plainBox.OKLabel.text + "]";
            program.messages.plainBox().unload();
        }
        if (open.dlgYesNo.form.loaded && !onQuestion.empty()) {
            log += "<" + open.dlgYesNo.YesNoText.text + ">";
            play(std::exchange(onQuestion, ""));
        }
    }
    /// Notes a status that is new, with "*" for a grey frame.
    void note() {
        const std::string now = view.StatusLabel.text + (view.AddCorvaneFrame.enabled ? "" : "*");
        if (view.StatusLabel.visible && noted != now)
            log += noted = now;
    }
    /// Notes which forms are open and which flags are set, the links and the name on the panel.
    void noteForms() {
        log += "(";
        for (const bool is :
             {views.main.form.loaded, view.form.loaded, views.connect.form.loaded,
              views.panel.form.loaded, view.status.linkUp, program.link.IPConnectingFlag,
              program.savedUnits.WaitingForConnectionFlag, program.panel.PanelFromSavedUnits,
              view.OptionsFrame.visible})
            log += is ? '+' : '-';
        log += serialPort.isOpen() ? " COM7 " : " ";
        log += socket.state() == SocketState::Connected ? socket.log.back() + " " : "";
        log += views.panel.KVNNameLabel.text + ")";
    }
    /// Types "box=text" over what the box holds.
    void type(const std::string &text) {
        program.unitsForm.CntrlIPAddressQuad_Change({text[0] - '0', 0, 3}, text.substr(2));
    }
    std::string noted;
    const UnitsView &view = views.units;
};

} // namespace

class SavedUnitsTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void readsAndWritesBack() {
        const auto unit = [](const std::string &ip) { return B + "KVN IP = " + ip + "\r\n"; };
        checkRows({{"", "0:"},
                   {Serial + unit("192.168.1.20"), "2:" + Serial + Network},
                   {B + "KVN IP = 10.0.0.5", "1:" + unit("10.0.0.5   ")},
                   {unit("1234.5.6.7"), "1:" + unit("1234.5.6.7   ")},
                   {unit("12345.6.7"), "1:" + unit("1234..6.7   ")},
                   {"KVN NAME = A\rKVN TYPE = SERIAL\nKVN NAME = B\r\n\r\rKVN TYPE = ETHER\n\n",
                    "2:" + Serial + unit("")},
                   {"KVN TYPE = X\nKVN IP = 1\n\n;\nZARN IP = 1\nKVN NAME =A\nkvn name = A\n" + B,
                    "1:" + unit("")},
                   {"KVN NAME = \nKVN TYPE = SERIAL\n" + Serial, "2:" + Serial},
                   {Network + "KVN IP = 1.2.3.4\n", "1:" + unit("1.2.3.4   ")},
                   {Network + "KVN TYPE = ether\n", "1:KVN NAME = B\r\nKVN TYPE = ether\r\n"},
                   {"KVN NAME =  A \n", "1:KVN NAME =  A \r\nKVN TYPE = \r\n"},
                   {"\xEF\xBB\xBF" + Serial, "1:" + Serial},
                   {std::string("\0\xff\x80", 3) + std::string(1 << 20, 'x'), "0:"}},
                  [](const std::string &text) {
                      SavedUnits units;
                      std::array<std::string, 5> quads;
                      ReadSavedUnitsText(units, text, quads);
                      return std::to_string(units.ControlBlockCount) + ":" +
                             writeSavedUnitsText(units);
                  });
    }

    void aSlotKeepsTheAddressItHeld() {
        User user;
        user.file() = Network + Serial;
        user.play("open").file() = B;
        user.play("edit unit:0 go");
        QCOMPARE(user.file() + user.files.contentsOf["program/KVNConfigurator.bak"], Network + B);
    }

    void whatIsLeftOutStaysInTheFile() {
        const std::string z = "KVN NAME = Z\nKVN TYPE = ETHER\r\n; mine\rKVN IP = 10.0.0.5\n";
        const std::string tail = "KVN NAME = Y\r" + z;
        const std::string notice = "{" + Path + " holds more t}";
        User user;
        user.file() = times(25, Serial) + tail;
        user.play("open edit unit:24 kind:1 type:0=1.2.3.4 go main open");
        QCOMPARE(user.log, notice + "{Saved Changes to Disk}");
        QCOMPARE(user.file(), times(24, Serial) + "KVN NAME = A\r\nKVN TYPE = ETHER\r\n" +
                                  "KVN IP = 1.2.3.4\r\n" + tail);
        for (const std::string last : {" Y", " Z"}) {
            user.play("answer:say:yes delete unit:24 go");
            QCOMPARE(user.listed(), times(24, " A") + last);
        }
        QCOMPARE(user.file(), times(24, Serial) + z);
        user.log.clear();
        user.file() = times(25, Serial) + z; // it was whole meanwhile
        QCOMPARE(user.play("add edit").log, notice);
        QCOMPARE(user.program.messageState.MessageText,
                 Path + " holds more than 25 units; those after the 25th are left out. They stay "
                        "at the end of that file and come in when others are deleted.");
    }

    void showsTheOperation() {
        const std::string add = "Add Corvane=Add Corvane Text3 +++--++ ";
        const std::string edit = "Edit Corvane=Edit Corvane AvailCorvanesList +--++";
        const std::string list = " Corvane AvailCorvanesList +--++-- //-1/-1";
        const std::string saved = "options OptionsCommand_0 +++--++ X//-1/-1";
        checkRows({{"", "options OptionsCommand_0 +++++++ //-1/-1"},
                   {"add", add + "//-1/-1"},
                   {"edit unit:1 unit:2 go", edit + "-- //-1/-1"},
                   {"control", "Control Corvane=Control" + list},
                   {"delete", "Delete Corvane=Delete" + list},
                   {"edit unit:0 kind:2 kind:-1", edit + "++ /SERIAL/0/0"},
                   {"edit unit:1 unit:-1 unit:1", edit + "++ /ETHER/1/1 192.168.1.20"},
                   {"edit unit:1 unit:0 kind:1", edit + "++ /ETHER/0/1 ..."},
                   {"edit unit:1 kind:0", edit + "++ /SERIAL/1/0"},
                   {"edit unit:1 kind:0 kind:1", edit + "++ /ETHER/1/1 192.168.1.20"},
                   {"edit unit:1 kind:0 go edit unit:1 kind:1", edit + "++ /ETHER/1/1 ..."},
                   {"edit unit:1 esc", "options OptionsCommand_0 +--++++ /ETHER/1/1 192.168.1.20"},
                   {"edit unit:1 kind:0 main open add kind:1", add + "//-1/1 ..."},
                   {"add name:X go edit", edit + "-- //-1/-1"},
                   {"add name:X go", saved + " Added Corvane to Disk"},
                   {"add name:X go close open", saved},
                   {"save:Full. add name:X go", saved},
                   {"add name:X kind:1 type:0=1.2.3.4 cancel add kind:1", add + "//-1/1 ..."}},
                  [](const std::string &script) { return User().play("open " + script).look(); });
    }

    void saves() {
        const std::string both = Serial + Network;
        const std::string n = "KVN NAME = N\r\nKVN TYPE = SERIAL\r\n";
        const std::string ip = "KVN NAME = N\r\nKVN TYPE = ETHER\r\nKVN IP = ";
        const std::string half = "Setting up save*[incomplete ip address can't save to block.]";
        const std::string edited = "{Saved Changes to Disk}";
        const std::string sureA = "<Are you sure you want to delete A ?>";
        const std::string sureB = "<Are you sure you want to delete B ?>";
        const std::string done = "Deleted Corvane from Disk*";
        const std::string e60 = times(60, "\xE9");
        checkRows(
            {{"add go main forms", both + "(+-------+ ) A B"},
             {"add name:N go go esc forms", both + n + "(+-------+ ) A B"},
             {"add name:N kind:1 type:0=10.0.0.5 type:2= go type:2=7 go",
              both + ip + "\r\n" + ip + "10.0.7.5\r\n" + half + " A B"},
             {"add name:N kind:1 go edit unit:0 go", both + half + edited + " A B"},
             {"gone add name:N kind:1 go add go", both + ip + "\r\n" + half + " A B N"},
             {"units:24 add name:N go", times(24, Serial) + n + times(24, " A")},
             {"units:25 add go",
              times(25, Serial) + "{Maximum number of corvanes saved!}" + times(25, " A")},
             {"save:Full. add name:" + e60 + "E go delete unit:2 answer:say:no go",
              both + "{Full.}<Are you sure you want to delete " + times(60, "\xC3\xA9") +
                  "... ?> A B " + e60 + "..."},
             {"save:Full. add name:N go main open save: add name:N go",
              both + n + n + "{Full.} A B N"},
             {"read:Bad. start edit", both + "{Bad.}{Bad.} A B"},
             {"edit unit:1 go", both + edited + " A B"},
             {"edit unit:1 type:3=25 go",
              Serial + B + "KVN IP = 192.168.1.25\r\n" + edited + " A B"},
             {"add name:N go edit unit:2 kind:1 type:0=1.2.3.4 @2.9:forms @3.1:forms go",
              both + ip + "1.2.3.4\r\n" + edited + "(++------+ ) A B N"},
             {"units:2 save:Full. edit unit:1 kind:1 go save: edit unit:1 kind:0 go",
              Serial + Serial + "{Full.}" + edited + " A A"},
             {"delete unit:0 @2.9:forms @3.1:forms go", Network + sureA + done + "(++------- ) B"},
             {"delete unit:0 answer:say:no go", both + sureA + " A B"},
             {"delete unit:1 go answer:ignore delete unit:0 go",
              Serial + sureB + done + sureA + " A"},
             {"delete unit:0 answer: @1:esc @2:open @3:say:yes go forms",
              both + "(+-------- ) A B"},
             {"delete unit:0 @1:edit @1:double:0 @2:esc @2.5:open @2.6:forms go",
              Network + sureA + done + "Deleted Corvane from Disk(++------+ ) B"},
             {"save:Full. delete unit:0 go save: add name:N go", both + n + sureA + "{Full.} A B"},
             {"save:Full. add name:N go delete unit:0 go edit",
              both + "{Full.}" + sureA + "{Full.} A B N"},
             {"delete unit:1 go answer:say:yes delete unit:0 go", sureB + done + sureA}},
            [](const std::string &script) {
                User user;
                user.play("open " + script);
                return user.file() + user.log + user.listed();
            });
    }

    void controls() {
        const std::string connect = "Waiting for Connection.*";
        const std::string ask = connect + "Waiting for Configuration.*";
        const std::string panel = "Waiting for Configuration.*Loading Controls.*(++-++-++- ";
        const std::string open = "CFG ?\r\nSTA O A\rSTA O A\r";
        const std::string b = connect + panel + "connect 192.168.1.20:23 B)(+-------- B)" + open;
        const std::string port = "{Please make sure the Zarn is connected t}";
        const std::string up = "(+---+---- connect 192.168.1.20:23 )CFG ?\r\n";
        const std::string refused = "{Unable to connect using that IP address,}";
        const std::string dialog = connect + "(+++--++-- )(+-------- )";
        checkRows({{"control unit:1 go", b},
                   {"edit unit:0 double:1", b},
                   {"control double:2", "(++------- )"},
                   {"control unit:1 @0:go @0:double:1 @0:add @0:open go", b},
                   {"control unit:1 type:0=010 go",
                    connect + panel + "connect 10.168.1.20:23 B)(+-------- B)" + open},
                   {"control unit:0 @1:port @2:leave go",
                    connect + port + panel + "COM7 A)(+-------- A)" + open},
                   {"control unit:1 kind:0 @1:forms @1:leave go", dialog},
                   {"choose:network find control unit:1 go", b + open},
                   {"choose:serial find hang control unit:1 @0:forms @1:leave go",
                    port + connect + "(++++-++-- )(+--+----- )" + open},
                   {"hang control unit:1 @5:esc @6:open @7:forms @7.5:leave go",
                    connect + "Waiting for Connection.(+++--++-+ )(++------+ )"},
                   {"hang control unit:1 @5:end go", connect + "(-----+--- )"},
                   {"refuse control unit:1 @5:leave go", connect + refused + "(+-------- )"},
                   {"reply: control unit:1 go", ask + "{Unable to get Corvane Configuration}" + up},
                   {"reply:????? control unit:1 go", ask + up},
                   {"control unit:1 @0.2:close go", ask + "Waiting for Configuration." + up}},
                  [](const std::string &script) {
                      User user;
                      user.play("open @8:forms @9:exit " + script + " forms");
                      return user.log + user.takeWritten();
                  });
    }
};

QTEST_GUILESS_MAIN(SavedUnitsTest)
#include "SavedUnitsTest.moc"
