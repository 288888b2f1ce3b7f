#include "support/TestProgram.h"
#include "support/checkRows.h"

#include <algorithm>
#include <map>
#include <sstream>

namespace {

using Host = FakeTcpSocket::Host;

// What is played, and what comes of it.
const std::vector<std::array<std::string, 2>> Plays{
    {"serial 7 ok done", "! panel on COM7 7#"},
    {"none serial read ok look frame",
     "! There are no COM ports available for updating\r\nClose any serial communications programs "
     "in use, or connect a USB to Serial Adapter Cable. < > down"},
    {"none serial frame", "! down"},
    {"none serial ethernet ok look frame", "! <E ... idle+> down"},
    {"serial look 20 read ok look done",
     "<S found> ! Please make sure the Zarn is connected to the Comm Port 20 Cable before "
     "proceeding! <S found#2+ on COM20 up> panel on COM20 20#"},
    {"serial serial look frame", "<S found Comm1 Comm7 Comm20> down"},
    {"serial none 7 ok look frame", "! <S found#1 down dark> down"},
    {"serial 7 ok none 1 ok look frame", "! ! <S found#0 down dark> down 7"},
    {"serial 7 ok 1 frame @3 lose take", "! ! panel on COM7 7 7#DIS ,\rSTA O A\rSTA O A\r"},
    {"serial 7 ok 1 done @3 lose take", "! ! panel on COM7 7 7#DIS ,\rSTA O A\rSTA O A\r"},
    {"serial 7 ok 1 look ok done @3 lose take",
     "! ! <S found#0+ on COM7 ! up> panel on COM1 7 1 1#DIS ,\rSTA O A\rSTA O A\r"},
    {"serial 1 7 ok look done", "! ! <S found#1+ on COM7 up> panel on COM7 7#"},
    {"serial 1 serial look ok 7 ok done", "! <S found Comm1 Comm7 Comm20 !> ! panel on COM7 7#"},
    {"serial 7 ok 1 ethernet ok look frame", "! ! <E ... idle+ down> down 7"},
    {"serial 7 ok ethernet look frame", "! <E ... idle+ down> down 7"},
    {"serial 7 ok serial look frame", "! <S found Comm1 Comm7 Comm20 down> down 7"},
    {"serial 7 ok lose done", "! down 7"},
    {"serial 1 frame find look frame", "! < > down"},
    {"serial 7 ok done @3 exit find look frame", "! < > down 7#"},
    {"serial ~frame", "down"},
    {"serial ~frame ~find look serial look frame", "< > <S found> down"},
    {"serial ~ethernet look 10.0.0.5 dial", "<E ... idle+> panel to A x1#"},
    {"serial ~serial look frame", "<S Found Comm Ports: Comm1 Comm1 Comm7 Comm20> down"},
    {"frame search look 7 ok frame", "<S found> ! on COM7 7"},
    {"ethernet look 10.0.0.5 look dial", "<E ... idle+> <E A idle+> panel to A x1#"},
    {"10.0.0.5 look frame", "< > down"},
    {"refuses call @4.1 look @4.3 dial read look ok look frame find look ethernet look frame",
     "<E A ~.> ! Unable to connect using that IP address, check the address and try again. <E A ~. "
     "!> <E A idle+> <E A idle+> <E ... idle+> down x2"},
    {"refuses call @5 frame", "! down x2"},
    {"refuses call @5 serial ok look frame", "! <S found> down x2"},
    {"refuses call @5 ethernet look ok look frame", "! <E ... idle+ !> <E ... idle+> down x2"},
    {"silent call dial look @11 look @13 look @24 look @24.3 ok look frame",
     "<E A ~.> <E A ~......> <E A ~.> <E A ~......> ! <E A idle+> down x12"},
    {"slow call @30 ok @35 look frame", "! <E A idle+> down x12"},
    {"slow call @1 frame @10 find look frame", "<E A idle+> down x1"},
    {"silent call @13 answers", "panel to A x8#"},
    {"silent call @3 ethernet look @25 ok frame", "<E ... ~..> ! down x12"},
    {"silent call @3 serial look ethernet look @30 frame", "<S found> <E ... idle+> down x2"},
    {"silent call @3 serial 7 ok done", "! panel on COM7 7 x2#"},
    {"silent call @3 answers frame find look dial", "<E A idle+> panel to A x3#"},
    {"silent call @3 frame find serial look @40 frame", "<S found> down x2"},
    {"silent call @3 frame find ethernet 10.0.0.9 dial @20 look @40 ok frame",
     "<E 10.0.0.9 Connecting to 10.0.0.9 ...> ! down x14"},
    {"refuses ethernet 10.0.0.5 frame known look @5 ok look frame",
     "<E A ~.> ! <E A idle+> down x2"},
    {"ethernet 10.0.0.5 frame known", "to A x1"},
    {"= call @2 read ok known", "! Unable to get Corvane Configuration to A x1CFG ?\r\n"},
    {"= serial 7 ok done @2 ok =hello find", "! ! panel on COM7 7CFG ?\r\n#"},
    {"= serial 7 ok done @2 label find frame look ok", "! ! <  !> down 7CFG ?\r\n"},
    {"=KVN-32x32-RGBA call @3 exit =KVN-8x4-C find dial @6 read ok =KVN-8x4-HDA find",
     "! The buttons of KVN-8x4-C do not fit the panel: ButtonInput has no index 33 (0 to 32). "
     "panel to A x2#CFG ?\r\n#"},
    {"call @3 find", "panel to A x1##"},
    {"call @0.4 find", "panel to A x1CFG ?\r\n#"},
    {"call @3 label", "panel down x1#"},
    {"drop call @2 read ok",
     "! Sending to A port 23 failed: the remote host closed the connection. down x1"}};

/// A text with what often occurs in it made short.
std::string shortened(std::string text) {
    for (const auto &[often, mark] :
         {std::pair<std::string, std::string>("CFG ?\r\nSTA O A\rSTA O A\r", "#"),
          {"KVN32x32Audio frmMain", "panel"},
          {"frmMain ", ""},
          {"Not Connected", "down"},
          {"Connect to ...", "idle"},
          {"Connecting to 10.0.0.5 ", "~"},
          {"10.0.0.5", "A"},
          {"Connected ", ""},
          {"Found Comm Ports: Comm1 Comm7 Comm20", "found"}}) {
        for (auto at = text.find(often); at != std::string::npos; at = text.find(often))
            text.replace(at, often.size(), mark);
    }
    return text;
}

/// The program, with COM1, 7, 20 and 21, played by words, a tenth of a second apart: what the user
/// does and what happens to the machine. "@5" lets the next word come at 5 s, "~" in the search
/// when it has found the first port. A number picks that port, an address is typed, "=" and a text
/// is what the unit answers to CFG.
class Play : public TestProgram {
public:
    Play() {
        serialPort.present = {1, 7, 20, 21};
        pump.eachTurn = [this] { turn(); };
        for (FakeWire *wire : {&serialPort.wire, &socket.wire})
            wire->device = [this, answer = wire->device](std::string_view command) {
                return configuration && command[1] == 'F' ? *configuration : answer(command);
            };
    }

    std::string log; ///< "!" for each message, and what was looked at

    std::string run(const std::string &words) {
        std::istringstream stream("find " + words);
        double due = 0.0;
        for (std::string word; stream >> word;) {
            if (word[0] == '@')
                due = std::stod(word.substr(1));
            else if (word[0] == '~')
                inSearch.push_back(word.substr(1));
            else
                pump.in(std::exchange(due, due + 0.1), [this, word] { act(word); });
        }
        pump.runFor(200.0, [] { return false; });
        return shortened(log + outcome());
    }

    [[nodiscard]] auto connects() const {
        return std::ranges::count_if(
            socket.log, [](const std::string &entry) { return entry.starts_with("connect"); });
    }

private:
    std::vector<std::string> inSearch;
    std::optional<std::string> configuration;
    int messagesSeen = 0;

    void turn() {
        const int shown = views.messages.dlgOK.form.raised;
        if (std::exchange(messagesSeen, shown) != shown)
            log += "! ";
        if (program.link.FindingPortsFlag && program.link.PortsFoundCount == 1) {
            for (const std::string &word : std::exchange(inSearch, {}))
                act(word);
        }
    }

    void act(const std::string &word) {
        dlgConnect &dialog = program.connectForm;
        const auto host = [this](Host acts) { return [this, acts] { socket.host = acts; }; };
        const std::map<std::string, std::function<void()>> words{
            {"find", [&] { program.startForm.MainControlButton_Click(0); }},
            {"ethernet", [&] { dialog.ConnectIPOption_Click(); }},
            {"serial", [&] { dialog.ConnectSerialOption_Click(); }},
            {"dial", [&] { dialog.IPAddressQuadConnect_Enter(3); }},
            {"call", [&] { act("ethernet"), act("10.0.0.5"), act("dial"); }},
            {"done", [&] { dialog.Connect2SerialButton_Click(); }},
            {"frame", [&] { dialog.unload(); }},
            {"ok", [&] { program.messages.dlgOK().unload(); }},
            {"read", [&] { log += views.messages.dlgOK.OKLabel.text + " "; }},
            {"look", [&] { log += shown(); }},
            {"known", [&] { dialog.HandleIPOnly(), dialog.waitUntilLeft(); }},
            {"search", [&] { dialog.HandleSerialOnly(), dialog.waitUntilLeft(); }},
            {"label", [&] { program.startForm.ZarnConnectedLabel_Click(); }},
            {"exit", [&] { program.panelForm.ExitButton_Click(); }},
            {"take", [&] { program.panelForm.TakeButton_Click(); }},
            {"lose",
             [&] {
                 serialPort.vanish(), serialPort.present = {1, 7, 21};
             }},
            {"none", [&] { serialPort.present.clear(); }},
            {"drop", [&] { socket.closesAfter = 3; }},
            {"slow", [&] { socket.connectDelay = 2.5; }},
            {"answers", host(Host::Answers)},
            {"silent", host(Host::Silent)},
            {"refuses", host(Host::Refuses)}};
        const auto &ports = views.connect.SerialPortsCombo.entries;
        if (const auto known = words.find(word); known != words.end())
            known->second();
        else if (word[0] == '=')
            configuration = word.substr(1);
        else if (word.find('.') != std::string::npos)
            typeAddress(word);
        else
            dialog.SerialPortsCombo_Click(
                static_cast<int>(std::ranges::find(ports, "Comm" + word) - ports.begin()));
    }

    /// The dialog: the option, what its frame shows, "+" for a button that can be clicked, the
    /// link.
    [[nodiscard]] std::string shown() const {
        const ConnectView &view = views.connect;
        const LinkStatusView &status = view.status;
        const ListControl &ports = view.SerialPortsCombo;
        std::string text = view.ConnectIPOption.lit ? "<E" : "<";
        text += view.ConnectSerialOption.lit ? "S " : " ";
        if (view.IPAddressFrame.visible) {
            for (const Control &box : view.IPAddressQuadConnect.boxes)
                text += box.text + ".";
            text.back() = ' ';
            text += view.Label2.text + (view.Connect2IPButton.enabled ? "+" : "");
        }
        if (view.SerialConnectionFrame.visible) {
            text += view.Label1.text + (ports.control.visible ? ":" : "");
            for (const std::string &port : ports.entries)
                text += " " + port;
            text += ports.chosen < 0 ? "" : "#" + std::to_string(ports.chosen);
            text += view.Connect2SerialButton.enabled ? "+" : "";
        }
        text += status.labelVisible ? " " + status.caption : "";
        text += views.messages.dlgOK.form.loaded ? " !" : "";
        text += status.colour == LinkColour::SerialDown ? " dark" : "";
        return text + (status.linkUp ? " up> " : "> ");
    }

    /// The forms, the link, the ports that were opened for use, the connects, what was sent; and
    /// what does not fit together.
    [[nodiscard]] std::string outcome() {
        const std::string link = pump.ended() ? "ended" : views.main.status.caption;
        std::string text = loaded() + " " + link;
        if (views.panel.form.loaded && views.panel.status.caption != link)
            text += " PANEL";
        if (serialPort.isOpen() != link.starts_with("Connected on"))
            text += " PORT";
        if ((socket.state() != SocketState::Closed) != link.starts_with("Connected to"))
            text += " SOCKET";
        if (!pump.ended() && (program.link.IPConnectingFlag || program.link.FindingPortsFlag))
            text += " BUSY";
        for (const std::string &entry : serialPort.log) {
            if (entry.ends_with(" 38400,N,8,1"))
                text += " " + entry.substr(5, entry.find(' ', 5) - 5);
        }
        return text + (connects() == 0 ? "" : " x" + std::to_string(connects())) + takeWritten();
    }
};

} // namespace

class ConnectTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void plays() {
        checkRows(Plays, [](const std::string &words) { return Play().run(words); });
    }

    // At any moment: nothing is sent or said from then on, and no time passes.
    void closingTheStartWindowEndsAll() {
        for (const char *const words :
             {"serial 7 ok 1 ok done @3 lose take @5 exit find none serial",
              "= silent call @5 answers @8 ok find @9 ok", "refuses call"}) {
            for (double moment = 0.05; moment < 10.0; moment += 0.1) {
                Play play;
                std::string before;
                play.pump.in(moment, [&] {
                    play.takeWritten();
                    before = play.log;
                    play.program.startForm.unload();
                });
                const double due = play.pump.now() + moment;
                const std::string result = play.run(words);
                before = shortened(before) + " ended";
                QCOMPARE(result.substr(0, before.size()), before);
                QVERIFY(result.find_first_of("#\r", before.size()) == std::string::npos);
                QCOMPARE(play.pump.now(), due);
            }
        }
    }

    // At any moment of a connect, whatever is done instead.
    void leavingEndsAConnect() {
        for (const std::string words : {"frame", "serial", "frame find"}) {
            for (double moment = 0.25; moment < 26.0; moment += 0.5) {
                Play play;
                std::string expected = moment > 24.2 ? "! down x" : "down x";
                play.pump.in(moment, [&] { expected += std::to_string(play.connects()); });
                QCOMPARE(play.run("silent call @" + std::to_string(moment) + " " + words +
                                  " @30 ok frame"),
                         expected);
            }
        }
    }

    void address() {
        Play play;
        ConnectView &view = play.views.connect;
        const AddressView &boxes = view.IPAddressQuadConnect;
        dlgConnect &dialog = play.program.connectForm;
        dialog.LoadForm();
        QCOMPARE(view.form.focus, std::string("ConnectIPOption"));
        dialog.ConnectIPOption_Click();
        std::string cursor = std::to_string(boxes.cursorMoved) + std::to_string(boxes.cursor.box);
        for (int box = 0; box < 3; ++box) {
            dialog.IPAddressQuadConnect_Enter(box);
            cursor += std::to_string(boxes.cursor.box);
        }
        QCOMPARE(cursor, std::string("10123"));
        // What is shown and kept after the box is left.
        checkRows({{"0", "/0"}, {"1", "1/1"}, {"255", "255/255"}, {"256", "/"}, {"007", "007/7"}},
                  [&](const std::string &typed) {
                      dialog.IPAddressQuadConnect_Change({2, 0, 3}, typed);
                      dialog.IPAddressQuadConnect_Left(2);
                      return boxes.boxes[2].text + "/" + play.program.link.IPAddressQuads[2];
                  });
    }

    void starts() {
        TestProgram kvn;
        const LinkStatusView down{.caption = "Not Connected"};
        QVERIFY(kvn.views.main.status == down && kvn.views.units.status == down);
        kvn.program.startForm.minimise(true);
        kvn.files.contentsOf["program/KVNConfigurator.ini"] = "KVN NAME = Hall\r\n";
        for (const std::string failure : {"", "unreadable"}) {
            kvn.files.readFailure = failure;
            kvn.answerMessages();
            kvn.program.start();
            QCOMPARE(kvn.loaded() + kvn.messages, "frmMain" + failure);
            QVERIFY(!kvn.views.main.form.minimised);
            QCOMPARE(kvn.program.savedUnits.ControlBlockCount, 1);
        }
        kvn.openPanel();
        kvn.program.startForm.minimise(true);
        kvn.program.panelForm.unload();
        QVERIFY(!kvn.views.main.form.minimised);
    }

    // "m", "b" and "q" show a message, the box and the question, "M", "B" and "Q" close them, "y"
    // and "n" answer: what is begun and ended when, and what was read.
    void messages() {
        checkRows(
            {{"mM", "mMMm m|Are You Sure You Want to|Do You Want to Switch to the New Project?\r\n "
                    "frmMain"},
             {"mmM", "mmMMmm mm|Are You Sure You Want to|Do You Want to Switch to the New "
                     "Project?\r\n frmMain"},
             {"mbMB", "mbMMBBbm m|mb|Do You Want to Switch to the New Project?\r\n frmMain"},
             {"bmBM", "bmBBMMmb bm|b|Do You Want to Switch to the New Project?\r\n frmMain"},
             {"qQ", "qQQq Are You Sure You Want to|Are You Sure You Want to|q frmMain"},
             {"qyqQ",
              "qyy+q+qQQ+q+ Are You Sure You Want to|Are You Sure You Want to|qyy+q+q frmMain"},
             {"qyqnqQ", "qyy+q+qnnqqQQq Are You Sure You Want to|Are You Sure You Want "
                        "to|qyy+q+qnnqq frmMain"}},
            [](const std::string &steps) {
                TestProgram kvn;
                Messages &user = kvn.program.messages;
                const MessageViews &views = kvn.views.messages;
                std::string log;
                const std::map<char, std::function<void()>> acts{{'m', [&] { user.ShowMessage(log); }},
                                                                 {'b', [&] { user.ShowPlainBox(log); }},
                                                                 {'q', [&] { user.AskYesNo(log); }},
                                                                 {'M', [&] { user.dlgOK().unload(); }},
                                                                 {'B', [&] { user.plainBox().unload(); }},
                                                                 {'Q', [&] { user.dlgYesNo().unload(); }},
                                                                 {'y', [&] { user.answer(true); }},
                                                                 {'n', [&] { user.answer(false); }}};
                for (const char step : steps)
                    kvn.pump.in(0.0, [&, step] {
                        log += step;
                        acts.at(step)();
                        log += std::string(1, step) + (user.answered() ? "+" : "");
                    });
                kvn.pump.runFor(1.0, [] { return false; });
                return log + " " + views.dlgOK.OKLabel.text + "|" + views.plainBox.OKLabel.text +
                       "|" + views.dlgYesNo.YesNoText.text + " " + kvn.loaded();
            });
    }
};

QTEST_GUILESS_MAIN(ConnectTest)
#include "ConnectTest.moc"
