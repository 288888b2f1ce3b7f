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
/// log tells in turn what was seen.
class User : public TestProgram {
public:
    explicit User(const std::string &file = Serial + Network) {
        files.contentsOf[Path] = file;
        pump.eachTurn = [this] { answer(); };
        pump.show = [this] { note(); };
    }
    std::string onQuestion = "say:yes"; ///< the word that answers a question
    std::string log;

    User &play(const std::string &script) {
        std::istringstream words(script);
        for (std::string word; words >> word;)
            act(word);
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
            log += "{" + open.dlgOK.OKLabel.text + "}";
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
            log += now;
        noted = view.StatusLabel.visible ? now : "";
    }
    /// Notes which forms are open and which flags are set, the links and the name on the panel.
    void noteForms() {
        log += "(";
        for (const bool is :
             {views.main.form.loaded, view.form.loaded, views.connect.form.loaded,
              views.panel.form.loaded, view.status.linkUp, program.link.IPConnectingFlag,
              program.savedUnits.WaitingForConnectionFlag, program.panel.PanelFromSavedUnits})
            log += is ? '+' : '-';
        log += serialPort.isOpen() ? " COM7 " : " ";
        log += socket.state() == SocketState::Connected ? socket.log.back() + " " : "";
        log += views.panel.KVNNameLabel.text + ")";
    }
    /// Types "box=text" over what the box holds.
    void type(const std::string &text) {
        program.unitsForm.CntrlIPAddressQuad_Change({text[0] - '0', 0, 3}, text.substr(2));
    }
    /// "verb", "verb:rest", or "@seconds:word" for what happens later.
    void act(const std::string &word) {
        const std::string verb = word.substr(0, word.find(':'));
        const std::string rest = verb == word ? "" : word.substr(verb.size() + 1);
        if (verb[0] == '@') {
            pump.in(std::stod(verb.substr(1)), [this, rest] { play(rest); });
            return;
        }
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
            {"reply", [&] { socket.wire.device = [rest](auto) { return rest; }; }},
            {"inputs", [&] { program.unit.model.NumInputs = std::stoi(rest); }},
            {"save", [&] { files.failure = rest; }},
            {"read", [&] { files.readFailure = rest; }},
            {"gone", [&] { files.contentsOf.erase(Path); }},
            {"forms", [&] { noteForms(); }}};
        verbs.at(verb)();
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
        checkRows(
            {{"", "0:"},
             {Serial + unit("192.168.1.20"), "2:" + Serial + Network},
             {Network, "1:" + Network},
             {B + "KVN IP = 10.0.0.5", "1:" + unit("10.0.0.5   ")},
             {unit("1234.5.6.7"), "1:" + unit("1234.5.6.7   ")},
             {unit("12345.6.7"), "1:" + unit("1234..6.7   ")},
             {"KVN NAME = A\rKVN TYPE = SERIAL\nKVN NAME = B\r\n\r\rKVN TYPE = ETHER\n\n",
              "2:" + Serial + unit("")},
             {"; note\n\nZARN IP = 1.2.3.4\nKVN NAME =A\nkvn name = A\n" + Serial, "1:" + Serial},
             {"KVN NAME = \nKVN TYPE = SERIAL\n" + Serial, "2:" + Serial},
             {"KVN TYPE = ETHER\nKVN IP = 1.2.3.4\n" + Serial, "1:" + Serial},
             {Network + "KVN IP = 1.2.3.4\n", "1:" + unit("1.2.3.4   ")},
             {Network + "KVN TYPE = ether\n", "1:KVN NAME = B\r\nKVN TYPE = ether\r\n"},
             {"KVN NAME =  A \n", "1:KVN NAME =  A \r\nKVN TYPE = \r\n"},
             {"\xEF\xBB\xBF" + Serial, "1:" + Serial},
             {std::string("\0\xff\x80", 3) + std::string(1 << 20, 'x'), "0:"}},
            [](const std::string &text) {
                SavedUnits units;
                std::array<std::string, 5> quads;
                ReadSavedUnitsText(units, text, quads);
                return std::to_string(units.ControlBlockCount) + ":" + writeSavedUnitsText(units);
            });
    }

    void aSlotKeepsTheAddressItHeld() {
        User user(Network + Serial);
        user.play("open").file() = B;
        QCOMPARE(joinAddress(user.program.link.IPAddressQuads), std::string("192.168.1.20  "));
        user.play("edit unit:0 go");
        QCOMPARE(user.file() + user.files.contentsOf["program/KVNConfigurator.bak"], Network + B);
    }

    void whatIsLeftOutStaysInTheFile() {
        const std::string z = "KVN NAME = Z\nKVN TYPE = ETHER\r\n; mine\rKVN IP = 10.0.0.5\n";
        const std::string tail = "KVN NAME = Y\r" + z;
        const std::string message =
            "{" + Path +
            " holds more than 25 units; those after the 25th are left out. They stay at the end "
            "of that file and come in when others are deleted.}";
        User user(times(25, Serial) + tail);
        user.play("open edit unit:24 kind:1 type:0=1.2.3.4 go main open");
        QCOMPARE(user.log, message + "{Saved Changes to Disk}");
        QCOMPARE(user.file(), times(24, Serial) + "KVN NAME = A\r\nKVN TYPE = ETHER\r\n" +
                                  "KVN IP = 1.2.3.4\r\n" + tail);
        for (const std::string last : {" Y", " Z"}) {
            user.play("answer:say:yes delete unit:24 go");
            QCOMPARE(user.listed(), times(24, " A") + last);
        }
        QCOMPARE(user.file(), times(24, Serial) + z);
        user.log.clear();
        user.file() = times(25, Serial) + z; // it was whole meanwhile
        QCOMPARE(user.play("add edit").log, message);
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
                   {"edit unit:1 esc", "options OptionsCommand_0 +--++++ /ETHER/1/1 192.168.1.20"},
                   {"edit unit:1 kind:0 main open add kind:1", add + "//-1/1 ..."},
                   {"add name:X go edit", edit + "-- //-1/-1"},
                   {"add name:X go", saved + " Added Corvane to Disk"},
                   {"add name:X go close open", saved},
                   {"save:Full. add name:X go", saved},
                   {"add name:X kind:1 type:0=1.2.3.4 cancel add kind:1", add + "//-1/1 ..."},
                   {"add kind:1 type:0=1.2.3.4 type:1=256", add + "//-1/1 1..3.4"}},
                  [](const std::string &script) { return User().play("open " + script).look(); });
    }

    void saves() {
        const std::string e61(61, '\xE9');
        const std::string a = "A/SERIAL|";
        const std::string b = "B/ETHER/192.168.1.20  |";
        const std::string both = a + b;
        const std::string half = "Setting up save*[incomplete ip address can't save to block.]";
        const std::string edited = "{Saved Changes to Disk} A B";
        const std::string sureA = "<Are you sure you want to delete A ?>";
        const std::string sureB = "<Are you sure you want to delete B ?>";
        const std::string done = "Deleted Corvane from Disk*";
        checkRows(
            {{"add go main forms", both + "(+------- ) A B"},
             {"add name:N go go esc forms", both + "N/SERIAL|(+------- ) A B"},
             {"add name:N kind:1 type:0=10.0.0.5 go add name:M go",
              both + "N/ETHER/10.0.0.5   |M/SERIAL| A B N"},
             {"add name:N kind:1 type:0=10.0.0.5 type:2= go type:2=7 go",
              both + "N/ETHER/|N/ETHER/10.0.7.5|" + half + " A B"},
             {"add name:N kind:1 go edit unit:0 go", both + half + edited},
             {"gone add name:N kind:1 go edit unit:0 go",
              both + "N/ETHER/|" + half + edited + " N"},
             {"units:24 add name:N go", times(24, a) + "N/SERIAL|" + times(24, " A")},
             {"units:25 add name:N go",
              times(25, a) + "{Maximum number of corvanes saved!}" + times(25, " A")},
             {"add name:" + e61 + " go delete unit:2 answer:say:no go",
              both + e61 + "/SERIAL|<Are you sure you want to delete " + times(60, "\xC3\xA9") +
                  "... ?> A B " + e61.substr(1) + "..."},
             {"save:Full. add name:N go main open save: add name:M go",
              both + "N/SERIAL|M/SERIAL|{Full.} A B N"},
             {"read:Bad. start edit", both + "{Bad.}{Bad.} A B"},
             {"edit unit:1 type:0=10 go", a + "B/ETHER/10.168.1.20  |" + edited},
             {"edit unit:1 type:3=25 go", a + "B/ETHER/192.168.1.25|" + edited},
             {"edit unit:0 kind:1 type:0=1.2.3.4 @2.9:add @3.1:add go forms",
              "A/ETHER/1.2.3.4|" + b + "{Saved Changes to Disk}(++------ ) A B"},
             {"save:Full. edit unit:1 kind:0 go save: add go", a + "B/SERIAL|{Full.} A B"},
             {"delete unit:0 @2.9:forms @3.1:forms go", b + sureA + done + "(++------ ) B"},
             {"delete unit:0 answer:say:no go", both + sureA + " A B"},
             {"delete unit:1 go answer:ignore delete unit:0 go", a + sureB + done + sureA + " A"},
             {"delete unit:0 answer: @1:esc @2:open @3:say:yes go forms", both + "(+------- ) A B"},
             {"delete unit:0 answer: @1:go @1:add @1:double:0 @1:open @2:say:no go", both + " A B"},
             {"delete unit:0 @1:edit @1:double:0 @2:esc @2.5:open go forms",
              b + sureA + done + "(++------ ) B"},
             {"save:Full. delete unit:0 go save: add name:N go",
              both + "N/SERIAL|" + sureA + "{Full.} A B"},
             {"save:Full. add name:N go delete unit:0 go edit",
              both + "{Full.}" + sureA + "{Full.} A B N"},
             {"delete unit:1 go answer:say:yes delete unit:0 go", sureB + done + sureA + done}},
            [](const std::string &script) {
                User user;
                user.play("open " + script);
                return QByteArray::fromStdString(user.file())
                           .replace("\r\nKVN TYPE = ", "/")
                           .replace("\r\nKVN IP = ", "/")
                           .replace("KVN NAME = ", "")
                           .replace("\r\n", "|")
                           .toStdString() +
                       user.log + user.listed();
            });
    }

    void controls() {
        const std::string connect = "Waiting for Connection.*";
        const std::string ask = "Waiting for Configuration.*";
        const std::string load = ask + "Loading Controls.*(++-++-++";
        const std::string open = "CFG ?\r\nSTA O A\rSTA O A\r";
        const std::string b = " connect 192.168.1.20:23 B)(+------- B)" + open;
        const std::string port = "{Please make sure the Zarn is connected to the Comm Port 7 Cable "
                                 "before proceeding!}";
        const std::string stays = "(+---+--- connect 192.168.1.20:23 )CFG ?\r\n";
        const std::string noReply = "{Unable to get Corvane Configuration}" + stays;
        const std::string dialog = connect + "(+++--++- )(+------- )";
        checkRows({{"control unit:1 go", connect + load + b},
                   {"control unit:0 @1:port @2:leave go",
                    connect + port + load + " COM7 A)(+------- A)" + open},
                   {"edit unit:0 double:1", connect + load + b},
                   {"control double:2", "(++------ )"},
                   {"control unit:1 type:0=010 go",
                    connect + load + " connect 10.168.1.20:23 B)(+------- B)" + open},
                   {"control unit:1 kind:0 @1:forms @1:leave go", dialog},
                   {"choose:serial find control unit:1 @0:forms go",
                    port + connect + "(++++-++- )" + load + b + open},
                   {"choose:network find control unit:1 go", connect + load + b + open},
                   {"choose:network find control unit:0 @1:forms @2:leave go",
                    connect + "(++++-++- )(+--+---- )" + open},
                   {"reply: control unit:1 go", connect + ask + noReply},
                   {"reply:????? control unit:1 go", connect + ask + noReply},
                   {"inputs:32 reply:KVN-8x4-C control unit:1 go",
                    connect + ask +
                        "{The buttons of KVN-8x4-C do not fit the panel: ButtonInput has no "
                        "index 33 (0 to 32).}(++--+--- connect 192.168.1.20:23 )CFG ?\r\n"},
                   {"refuse control unit:1 @5:leave go",
                    connect + "{Unable to connect using that IP address, check the address and try "
                              "again.}(+------- )"},
                   {"hang control unit:1 @5:forms @6:leave go", dialog},
                   {"hang control unit:1 @5:esc @6:open @7:forms @7.5:leave go", dialog},
                   {"hang control unit:1 @5:end go", connect + "(-----+-- )"},
                   {"control unit:1 @0.2:close go", connect + ask + stays},
                   {"control unit:1 @0.01:go @0.01:double:1 @0.01:add @0.01:open go",
                    connect + load + b}},
                  [](const std::string &script) {
                      User user;
                      user.play("open @8:forms @9:exit " + script + " forms");
                      return user.log + user.takeWritten();
                  });
    }
};

QTEST_GUILESS_MAIN(SavedUnitsTest)
#include "SavedUnitsTest.moc"
