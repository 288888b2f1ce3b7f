#include "support/TestProgram.h"
#include "support/checkRows.h"

#include <algorithm>
#include <map>
#include <sstream>

namespace {

// What is played, and what comes of it.
const std::vector<std::array<std::string, 2>> Plays{
    {"none serial read ok look frame",
     "! There are no COM ports available for updating\r\nClose any serial communications programs "
     "in use, or connect a USB to Serial Adapter Cable. < > down x0"},
    {"serial look 20 read ok look done",
     "<S found> ! Please make sure the Zarn is connected to the Comm Port 20 Cable before "
     "proceeding! <S found#2+ on COM20 up> panel on COM20# 20 x0"},
    {"serial 7 ok none 1 ok look frame", "! ! <S found#0 down dark> down 7 x0"},
    {"serial 7 ok 1 frame @3 lose plug take", "! ! panel on COM7#DIS ,\rSTA O A\rSTA O A\r 7 7 x0"},
    {"serial 7 ok 1 look ok done @3 lose plug take",
     "! ! <S found#0+ on COM7 ! up> panel on COM1#DIS ,\rSTA O A\rSTA O A\r 7 1 1 x0"},
    {"serial 1 serial look ok 7 ok done", "! <S found Comm1 Comm7 Comm20 !> ! panel on COM7# 7 x0"},
    {"serial 7 ok 1 ethernet ok look frame", "! ! <E ... idle+ down> down 7 x0"},
    {"serial 7 ok ethernet look frame", "! <E ... idle+ down> down 7 x0"},
    {"serial 7 ok serial look frame", "! <S found Comm1 Comm7 Comm20 down> down 7 x0"},
    {"serial 7 ok lose done", "! down 7 x0"},
    {"serial 1 frame find look frame", "! < > down x0"},
    {"serial 7 ok done @3 exit find look frame", "! < > down# 7 x0"},
    {"serial ~frame ~find look serial look frame", "< > <S found> down x0"},
    {"serial ~ethernet look 10.0.0.5 dial", "<E ... idle+> panel to A# x1"},
    {"serial ~serial look frame", "<S Found Comm Ports: Comm1 Comm1 Comm7 Comm20> down x0"},
    {"ethernet look 10.0.0.5 look dial", "<E ... idle+> <E A idle+> panel to A# x1"},
    {"refuses call @4.1 look @4.3 dial read look ok look frame find look ethernet look frame",
     "<E A ~.> ! Unable to connect using that IP address, check the address and try again. <E A ~. "
     "!> <E A idle+> <E A idle+> <E ... idle+> down x2"},
    {"refuses call @5 ethernet look ok look frame", "! <E ... idle+ !> <E ... idle+> down x2"},
    {"silent call dial look @11 look @13 look @24 look @24.3 ok look frame",
     "<E A ~.> <E A ~......> <E A ~.> <E A ~......> ! <E A idle+> down x12"},
    {"slow call @30 ok @35 look frame", "! <E A idle+> down x12"},
    {"silent call @13 answers", "panel to A# x8"},
    {"silent call @3 ethernet look @25 ok frame", "<E ... ~..> ! down x12"},
    {"silent call @3 serial 7 ok done", "! panel on COM7# 7 x2"},
    {"silent call @3 answers again look dial", "<E A idle+> panel to A# x3"},
    {"silent call @3 again ethernet 10.0.0.9 dial @20 look @40 ok frame",
     "<E 10.0.0.9 Connecting to 10.0.0.9 ...> ! down x2"},
    {"= call @2 read ok known", "! Unable to get Corvane Configuration to ACFG ?\r\n x1"},
    {"= serial 7 ok done @2 ok =hello find", "! ! panel on COM7CFG ?\r\n# 7 x0"},
    {"= serial 7 ok done @2 label find frame look ok", "! ! <  !> downCFG ?\r\n 7 x0"},
    {"=KVN-32x32-RGBA call @3 exit =KVN-8x4-C find dial @6 read ok =KVN-8x4-HDA find",
     "! The buttons of KVN-8x4-C do not fit the panel: ButtonInput has no index 33 (0 to 32). "
     "panel to A#CFG ?\r\n# x2"},
    {"10.0.0.5 frame find look frame", "< > down x0"},
    {"serial why frame find why frame", "(COM1 (tty1, FTDI)+|COM7 (tty7)+|COM8 (tty8): "
                                        "held by minicom|COM20 (tty20)+||end) () down x0"},
    {"serial 7 ok none 1 ok why ethernet why frame",
     "! ! (COM1 (tty1, FTDI): gone|COM7 (tty7)+|COM8 (tty8): held by minicom|COM20 (tty20)+||plug|"
     "end) (COM1 (tty1, FTDI): gone|COM7 (tty7)+|COM8 (tty8): held by minicom|COM20 (tty20)+||plug|"
     "end) down 7 x0"},
    {"none serial why ok why serial ok frame",
     "! (COM8 (tty8): held by minicom||end) (COM8 (tty8): held by minicom||end) ! down x0"},
    {"refuses call @5 why ok tell why ok frame",
     "! (A refused the connection on port 23 (the host did not take the connection).|A device is "
     "at that address; check that it is the Zarn, and that nobody else is connected to it.) ! () "
     "told down x2"},
    {"unreachable call @25 why ok frame",
     "! (A cannot be reached (the host did not take the connection).|Check the address, and the "
     "network of this computer.) down x12"},
    {"silent call @25 why ok frame", "! (A gave no answer on port 23.|Check the address, and that "
                                     "the Zarn has power and a network cable.) down x12"},
    {"call @0.4 find", "panel to ACFG ?\r\n# x1"},
    {"call @3 label", "panel down# x1"},
    {"frame tell tell read ok", "! ! told told told down x0"},
    {"frame tell box ok shut", "! boxed! boxed told down x0"},
    {"frame ask dismiss ask yes ask dismiss ask no", "- asked! + + - down x0"}};

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
          {": can be opened", "+"},
          {": the device is gone", ": gone"},
          {"Plug in what is gone, then choose Serial Port again.", "plug"},
          {"End the program that holds a port, then choose Serial Port again.", "end"},
          {"Found Comm Ports: Comm1 Comm7 Comm20", "found"}}) {
        for (auto at = text.find(often); at != std::string::npos; at = text.find(often))
            text.replace(at, often.size(), mark);
    }
    return text;
}

/// The program, with COM1, 7, 20 and 21, and a COM8 that does not open, played by words, a tenth of
/// a second apart: what the user does and what happens to the machine. "@5" lets the next word come
/// at 5 s, "~" in the search when it has found the first port. A number picks that port, an address
/// is typed, "=" and a text is what the unit answers to CFG.
class Play : public TestProgram {
public:
    Play() {
        serialPort.present = {1, 7, 20, 21};
        serialPort.facts[1].adapter = "FTDI";
        serialPort.facts[8].presence = SerialDeviceFacts::Presence::There;
        serialPort.failures[8] = LinkFailure::NotPermitted;
        serialPort.holderName = "minicom";
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

    void act(const std::string &word) {
        dlgConnect &dialog = program.connectForm;
        Messages &user = program.messages;
        const MessageViews &boxes = views.messages;
        using Host = FakeTcpSocket::Host;
        const auto host = [this](Host acts) { return [this, acts] { socket.host = acts; }; };
        const std::map<std::string, std::function<void()>> words{
            {"find", [&] { program.startForm.MainControlButton_Click(0); }},
            {"ethernet", [&] { dialog.ConnectIPOption_Click(); }},
            {"serial", [&] { dialog.ConnectSerialOption_Click(); }},
            {"dial", [&] { dialog.IPAddressQuadConnect_Enter(3); }},
            {"call", [&] { act("ethernet"), act("10.0.0.5"), act("dial"); }},
            {"done", [&] { dialog.Connect2SerialButton_Click(); }},
            {"frame", [&] { dialog.unload(); }},
            {"ok", [&] { user.dlgOK().unload(); }},
            {"read", [&] { log += boxes.dlgOK.OKLabel.text + " "; }},
            {"look", [&] { log += shown(); }},
            {"why", [&] { log += "(" + hint() + ") "; }},
            {"known", [&] { dialog.HandleIPOnly(), dialog.waitUntilLeft(); }},
            {"again", [&] { act("frame"), act("find"); }},
            {"tell", [&] { user.ShowMessage("told"), log += "told "; }},
            {"box", [&] { user.ShowPlainBox("boxed"), log += "boxed "; }},
            {"ask", [&] { user.AskYesNo("asked"), log += user.answered() ? "+ " : "- "; }},
            {"shut", [&] { log += boxes.plainBox.OKLabel.text + "! ", user.plainBox().unload(); }},
            {"dismiss", [&] { user.dlgYesNo().unload(); }},
            {"yes", [&] { log += boxes.dlgYesNo.YesNoText.text + "! ", user.answer(true); }},
            {"no", [&] { user.answer(false); }},
            {"label", [&] { program.startForm.ZarnConnectedLabel_Click(); }},
            {"exit", [&] { program.panelForm.ExitButton_Click(); }},
            {"take", [&] { program.panelForm.TakeButton_Click(); }},
            {"quit", [&] { program.startForm.unload(); }},
            {"lose", [&] { serialPort.vanish(); }},
            {"plug",
             [&] {
                 serialPort.present.merge(std::set{1, 7});
             }},
            {"none", [&] { serialPort.present.clear(); }},
            {"slow", [&] { socket.connectDelay = 2.5; }},
            {"answers", host(Host::Answers)},
            {"silent", host(Host::Silent)},
            {"unreachable", host(Host::Unreachable)},
            {"refuses", host(Host::Refuses)}};
        const auto &ports = views.connect.SerialPortsCombo.entries;
        if (word[0] == '=')
            configuration = word.substr(1);
        else if (word.find('.') != std::string::npos)
            typeAddress(word);
        else if (std::isdigit(word[0]))
            dialog.SerialPortsCombo_Click(
                static_cast<int>(std::ranges::find(ports, "Comm" + word) - ports.begin()));
        else
            words.at(word)();
    }

    /// The ports that were opened for use, and how often the host was dialled.
    [[nodiscard]] std::string used() const {
        std::string text;
        for (const std::string &entry : serialPort.log)
            text += entry.ends_with(" 38400,N,8,1") ? entry.substr(4, entry.find(' ', 5) - 4) : "";
        return text + " x" + std::to_string(std::ranges::count(socket.log, "connect 10.0.0.5:23"));
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

    /// The dialog: the option, what its frame shows, "+" for a button that can be clicked, the
    /// link.
    [[nodiscard]] std::string shown() const {
        const ConnectView &view = views.connect;
        const LinkStatusView &status = view.status;
        const ListControl &ports = view.SerialPortsCombo;
        std::string text = std::string("<") + (view.ConnectIPOption.lit ? "E" : "") +
                           (view.ConnectSerialOption.lit ? "S " : " ");
        for (const Control &box : view.IPAddressQuadConnect.boxes)
            text += view.IPAddressFrame.visible ? box.text + "." : "";
        text.back() = ' ';
        if (view.IPAddressFrame.visible)
            text += view.Label2.text + (view.Connect2IPButton.enabled ? "+" : "");
        if (view.SerialConnectionFrame.visible) {
            text += view.Label1.text + (ports.control.visible ? ":" : "");
            for (const std::string &port : ports.entries)
                text += " " + port;
            text += (ports.chosen < 0 ? "" : "#" + std::to_string(ports.chosen)) +
                    (view.Connect2SerialButton.enabled ? "+" : "");
        }
        text += (status.labelVisible ? " " + status.caption : "") +
                (views.messages.dlgOK.form.loaded ? " !" : "");
        return text + (status.colour == LinkColour::SerialDown ? " dark" : "") +
               (status.linkUp ? " up> " : "> ");
    }

    /// What the pointer and a screen reader tell beside the message, or the serial option and its
    /// list.
    [[nodiscard]] std::string hint() const {
        const bool message = views.messages.dlgOK.form.loaded;
        const Control &ports = views.connect.SerialPortsCombo.control;
        const Control &shown =
            message ? views.messages.dlgOK.OKLabel : views.connect.ConnectSerialOption;
        if (shown.toolTip != shown.description || (!message && shown.toolTip != ports.toolTip) ||
            ports.toolTip != ports.description)
            return "not the same everywhere";
        std::string text = shown.toolTip;
        std::ranges::replace(text, '\n', '|');
        return text;
    }

    /// What does not fit together; the forms, the link, what was sent, what was used.
    [[nodiscard]] std::string outcome() {
        const std::string link = pump.ended() ? "ended" : views.main.status.caption;
        const LinkState &state = program.link;
        const bool closed = socket.state() == SocketState::Closed;
        std::string text = serialPort.isOpen() != link.starts_with("Connected on") ? "PORT " : "";
        text += closed == link.starts_with("Connected to") ? "SOCKET " : "";
        text += views.panel.form.loaded && views.panel.status.caption != link ? "PANEL " : "";
        text += !pump.ended() && (state.IPConnectingFlag || state.FindingPortsFlag) ? "BUSY " : "";
        return text + loaded() + " " + link + takeWritten() + used();
    }
};

} // namespace

class ConnectTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void plays() {
        checkRows(Plays, [](const std::string &words) { return Play().run(words); });
    }

    // At any moment: nothing more is opened, dialled, sent or said.
    void leavingEndsWhatIsUnderWay() {
        for (const auto &[words, way, after] :
             {std::tuple("serial 7 ok 1 ok done @3 lose plug take @5 exit", "quit", " ended"),
              {"= silent call @5 answers @8 ok find @9 ok", "quit", " ended"},
              {"refuses call", "quit", " ended"},
              {"silent call @30 ok frame", "frame", "down"},
              {"silent call @30 ok frame", "serial", "down"},
              {"silent call @30 ok frame", "again", "down"}}) {
            for (double moment = 0.25; moment < 26.0; moment += 0.2) {
                Play play;
                std::string expected;
                play.pump.in(moment, [&, way = way, after = after] {
                    play.takeWritten();
                    expected = shortened(play.log) + after + play.used();
                    play.act(way);
                });
                QCOMPARE(play.run(words), expected);
            }
        }
    }

    // What is told of a device, its owner and its group: who is in it, and whether that is enough.
    void reasons() {
        using enum SerialDeviceFacts::Presence;
        using enum SerialDeviceFacts::Membership;
        const auto denied = [](const char *group, bool groupMayOpen, auto member) {
            return SerialDeviceFacts{There, "", false, "root", group, groupMayOpen, member};
        };
        const LinkFailure notPermitted = LinkFailure::NotPermitted;
        const SerialDeviceFacts free{.presence = There, .adapter = "FTDI UART"};
        const std::string notYours = "no permission, it belongs to the group dialout";
        const std::string ownersOnly = "no permission, only its owner root may open it";
        const std::string join = "To join the group dialout, run this command and log in again:\n"
                                 "sudo usermod -aG dialout $USER";
        const std::string joined = "You have joined the group dialout already: log in again.";
        const std::string plug = "Plug in what is gone, then choose Serial Port again.";
        const std::string end = "End the program that holds a port, then choose Serial Port again.";
        for (const auto &[facts, failure, holder, reason, remedy] :
             {std::tuple(denied("dialout", true, None), notPermitted, "", notYours, join),
              {denied("dialout", true, AfterLogin), notPermitted, "", notYours, joined},
              {denied("dialout", true, Now), notPermitted, "", ownersOnly, ""},
              {denied("root", false, None), notPermitted, "", ownersOnly, ""},
              {denied("dialout", true, None), LinkFailure::Other, "", "odd", ""},
              {denied("dialout", true, None), LinkFailure::NoDevice, "", "the device is gone",
               plug},
              {free, notPermitted, "minicom (process 12)", "held by minicom (process 12)", end},
              {free, notPermitted, "", "held by another program", end},
              {free, LinkFailure::Other, "", "odd", ""},
              {{NameOnly}, LinkFailure::Other, "", "the device is gone", plug},
              {{}, notPermitted, "", "the device is gone", plug}}) {
            const PortTest test{{5, "tty5"}, LinkError("Opening", "COM5", "odd", failure)};
            const PortReport expected{
                5,      "tty5", facts.adapter,
                reason, remedy, facts.presence != SerialDeviceFacts::Presence::Missing};
            const PortReport report = reportOn(test, facts, holder);
            QCOMPARE(textOf({report}), textOf({expected}));
            QVERIFY(report == expected);
            QCOMPARE(isHeld(test, facts), remedy == end);
        }
        // One remedy is enough for all.
        const PortReport denied1{1, "a", "", notYours, join};
        QCOMPARE(textOf({denied1, {2, "b", "FTDI", "", ""}, denied1}),
                 "COM1 (a): " + notYours +
                     "\nCOM2 (b, FTDI): can be opened\nCOM1 (a): " + notYours + "\n\n" + join);
        QCOMPARE(textOf({}), std::string("There is no serial device."));
    }

    void address() {
        Play play;
        dlgConnect &dialog = play.program.connectForm;
        const AddressView &boxes = play.views.connect.IPAddressQuadConnect;
        dialog.LoadForm();
        dialog.ConnectIPOption_Click();
        std::string places = play.views.connect.form.focus;
        for (int box = 0; box < 3; dialog.IPAddressQuadConnect_Enter(box++))
            places += std::to_string(boxes.cursor.box) + std::to_string(boxes.cursorMoved);
        QCOMPARE(places, std::string("ConnectIPOption011223"));
        // What is shown and kept after the box is left.
        checkRows({{"0", "/0"}, {"1", "1/1"}, {"255", "255/255"}, {"007", "007/7"}},
                  [&](const std::string &typed) {
                      dialog.IPAddressQuadConnect_Change({2, 0, 3}, typed);
                      dialog.IPAddressQuadConnect_Left(2);
                      return boxes.boxes[2].text + "/" + play.program.link.IPAddressQuads[2];
                  });
    }

    void starts() {
        TestProgram kvn;
        QVERIFY(kvn.views.main.status == LinkStatusView{.caption = "Not Connected"});
        kvn.files.contentsOf["program/KVNConfigurator.ini"] = "KVN NAME = Hall\r\n";
        for (const std::string failure : {"", "unreadable"}) {
            kvn.files.readFailure = failure;
            kvn.answerMessages();
            kvn.program.start();
            QCOMPARE(kvn.loaded() + kvn.messages, "frmMain" + failure);
            QCOMPARE(kvn.program.savedUnits.ControlBlockCount, 1);
        }
        kvn.openPanel();
        kvn.program.startForm.minimise(true);
        kvn.program.panelForm.unload();
        QVERIFY(!kvn.views.main.form.minimised);
        kvn.program.startForm.MainControlButton_Click(2);
        QCOMPARE(kvn.loaded(), std::string("dlgControlExisting frmMain"));
    }
};

QTEST_GUILESS_MAIN(ConnectTest)
#include "ConnectTest.moc"
