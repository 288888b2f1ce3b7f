#include "machine/LinkError.h"
#include "support/DataTable.h"
#include "support/TestProgram.h"
#include "support/failureOf.h"
#include "support/toString.h"

namespace {

using Display = LinkStatusDisplay;

/// Plays acts, with "; " between them, on the links of a program of which nothing else is used.
///
///     S, E              COM7 and 10.0.0.5 are open, this one is in use; the clock starts anew
///     kind K, pick N, dial  chooses a kind; opens a COM port or 10.0.0.5 as the dialog does
///     test N, open, close, disconnect  what the program does to a link
///     ask X, send X     a command; with its reply: notes the reply's class and the reply
///     config, status    asks for the configuration or the routing; notes what is known then
///     guard A           plays another act as an action of the user
///     T: A              plays another act T seconds later, in the next wait
///     wait T, end, leave  lets time pass; ends the program; closes the form that acts
///     say X, endless    one reply after the other, then silence; too long a reply
///     slow T, split N   replies come T seconds later; in pieces of N bytes, 1/16 s apart
///     plug N, swap, fails  COMn can be opened; COM7 is another device; it takes no more bytes
///     lose K, drop K    the device or peer goes and tells so; or it does not
///     host H            it answers (0), is silent (1), refuses (2) or is out of reach (3)
///     after T           the host answers or refuses T seconds late
///     takes N           the peer closes instead of taking more than N bytes
///     sending T         a send takes T seconds
///     forget, cancel    no connect was complete; the connect is called off
///     shown             notes the words of the start window, and of the panel if they differ
///     log               notes what was done to the COM port
///     progress          notes how many connects began, "now" if one is under way, and the words
///     looks K           notes what each refresh shows of COM10 (S) and 10.0.0.5 (E), those in K
///                       being up: the colours of start window, saved units, connection dialog
///                       and panel (face, network, green, red, down; in capitals with the picture
///                       of a link), the words, + if it is up
///
/// Noted are failures too, and messages at the end. Behind the notes stand the links, what was
/// written to COM7 and to 10.0.0.5, and the seconds that passed.
struct LinkPlayer : TestProgram {
    LinkState &state = program.link;
    UnitState &known = program.unit;
    UnitTalk &talk = program.talk;
    Form &form = program.aboutForm;
    const std::array<LinkStatusView *, 4> looks{&views.main.status, &views.units.status,
                                                &views.connect.status, &views.panel.status};
    std::vector<std::string> replies;
    std::size_t said = 0; ///< of the replies
    std::string notes;
    double start = pump.now();

    // clang-format off
    const std::map<std::string, std::function<void(const std::string &)>> acts{
        {"S", [&](auto) { play("pick 7; dial; kind S"); start = pump.now(); }},
        {"E", [&](auto) { play("pick 7; dial"); start = pump.now(); }},
        {"kind", [&](auto kind) { state.LinkKind = kind[0]; }},
        {"pick", [&](auto n) { play("kind S"); program.serial.OpenSerialPort(std::stoi(n)); }},
        {"dial", [&](auto) { play("kind E"); program.network.SetupConnectIP(); }},
        {"test", [&](auto n) { program.serial.TestCommPort(std::stoi(n)); }},
        {"open", [&](auto) { talk.OpenLink(); }},
        {"close", [&](auto) { talk.CloseLink(); }},
        {"disconnect", [&](auto) { talk.DisconnectLink(); }},
        {"ask", [&](auto command) {
            talk.SendCommandGetResponse(command + "\r");
            note(std::to_string(known.exchange.ReplyStatus) + " " + known.exchange.ResponseText);
        }},
        {"send", [&](auto command) { talk.SendCommand(command + "\r"); }},
        {"config", [&](auto) {
            talk.GetParseConfiguration();
            note(std::to_string(known.exchange.ReplyStatus) + " " + known.model.ModelDescription +
                 "," + known.exchange.ResponseText);
        }},
        {"status", [&](auto) {
            talk.RequestOutputStatus(form);
            for (int output = 1; output <= 3; ++output) {
                const OutputStatusRecord &record = known.routing.Outputs[output];
                note(record.OutputNumberText + record.MuteFlag + record.VolumeText + "/" +
                     record.AudioInputText + "/" + record.VideoInputText);
            }
        }},
        {"guard", [&](auto act) { program.guard.run(form, [&] { perform(act.c_str()); }); }},
        {"wait", [&](auto seconds) { pump.runFor(std::stod(seconds), [] { return false; }); }},
        {"end", [&](auto) { pump.end(); }},
        {"leave", [&](auto) { form.unload(); }},
        {"say", [&](auto text) {
            replies.push_back(text.empty() ? text : "\r\n" + text);
            serialPort.wire.device = socket.wire.device = [&](auto) {
                return said < replies.size() ? replies[said++] : std::string();
            };
        }},
        {"endless", [&](auto) { replies = {"\r\nOk" + std::string(3'000'000, 'x')}; }},
        {"slow", [&](auto t) { serialPort.wire.delay = socket.wire.delay = std::stod(t); }},
        {"split", [&](auto n) { serialPort.wire.split = socket.wire.split = std::stoul(n); }},
        {"plug", [&](auto n) { serialPort.present.insert(std::stoi(n)); }},
        {"swap", [&](auto) { serialPort.devices[7] = "another"; }},
        {"fails", [&](auto) { serialPort.writeLimit = 0; }},
        {"lose", [&](auto kind) { kind == "S" ? serialPort.vanish() : socket.peerCloses(); }},
        {"drop", [&](auto kind) { kind == "S" ? serialPort.close() : socket.close(); }},
        {"host", [&](auto n) { socket.host = FakeTcpSocket::Host(std::stoi(n)); }},
        {"after", [&](auto t) { socket.connectDelay = std::stod(t); }},
        {"takes", [&](auto bytes) { socket.closesAfter = std::stoul(bytes); }},
        {"sending", [&](auto t) { socket.sendDelay = std::stod(t); }},
        {"forget", [&](auto) { state.IPConnectedFlag = false; }},
        {"cancel", [&](auto) { state.IPConnectingFlag = false; }},
        {"shown", [&](auto) {
            const bool same = looks[0]->caption == looks[3]->caption;
            note(looks[0]->caption + (same ? "" : ", panel " + looks[3]->caption));
        }},
        {"log", [&](auto) { for (const std::string &line : serialPort.log) note(line); }},
        {"progress", [&](auto) {
            note(std::to_string(std::ranges::count(socket.log, "connect 10.0.0.5:23")) +
                 (state.IPConnectingFlag ? " now " : " ") + views.connect.Label2.text);
        }},
        {"looks", [&](auto kind) {
            state.SerialPortOpen = kind.find('S') != kind.npos;
            state.IPLinkOpenFlag = kind.find('E') != kind.npos;
            state.SelectedCommPort = 10;
            for (const auto refresh :
                 {&Display::ConnecthandleConnectionStatus, &Display::HandleConnectionsStatus,
                  &Display::IPhandleConnectionStatus, &Display::handleZarnConnectedFlag}) {
                for (LinkStatusView *look : looks)
                    *look = {};
                state.LinkShownFlag = false;
                Control &hint = views.main.ToDisconnectPortLabel;
                hint.visible = kind.find(state.LinkKind) == kind.npos; // not as it must become
                (program.display.*refresh)();
                QVERIFY(*looks[0] == LinkStatusView() || hint.visible == looks[0]->linkUp);
                std::string caption;
                for (const LinkStatusView *look : looks) {
                    const bool same = *look == LinkStatusView();
                    notes += same ? ' ' : (look->linkUp ? "FNGRD" : "fngrd")[int(look->colour)];
                    caption = same || look->caption == caption ? caption : caption + look->caption;
                }
                note(caption + (state.LinkShownFlag ? "+" : ""));
            }
        }},
    };
    // clang-format on

    LinkPlayer() {
        answerMessages();
        state.RemoteIPAddress = "10.0.0.5";
        serialPort.wire.pieceDelay = 0.0625;
        known.model.ModelDescription = "before";
        known.model.NumInputs = 32;
        known.model.NumOutputs = 2;
        known.routing.Outputs.fill({"9", 'a', 'U', "b", 'c', "-7", "3", 'd', "4"});
    }
    void note(const std::string &text) {
        if (!text.empty())
            notes += (text.size() < 1000 ? text : std::to_string(text.size()) + " bytes") + "; ";
    }
    /// The link kind, and whether the links are up: serial by flag and port, network by both flags
    /// and socket.
    [[nodiscard]] std::string stateText() const {
        std::string text(1, state.LinkKind);
        for (const bool up : {state.SerialPortOpen, serialPort.isOpen(), state.IPLinkOpenFlag,
                              state.IPConnectedFlag, socket.state() == SocketState::Connected})
            text += up ? '+' : '-';
        return text;
    }
    /// Plays one act, or what is to follow it after some seconds.
    void perform(const QByteArray &act) {
        const QByteArray word = act.split(' ').first();
        const QByteArray rest = act.mid(word.size() + 1);
        if (word.endsWith(':'))
            pump.in(word.chopped(1).toDouble(), [this, rest] { play(rest); });
        else
            acts.at(word.toStdString())(rest.toStdString());
    }
    void play(const QByteArray &text) {
        for (const QByteArray &act : text.split(';'))
            note(failureOf<std::runtime_error>([&] { perform(act.trimmed()); }));
    }
};

} // namespace

class LinkTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void plays_data() {
        const QByteArray good = "STA O A\r\n  Output 1 (A,M,0,V,-20,255,D,8)\r\n"
                                "  Output 2 (A,U,0,V,0,1,D,2)";
        const QByteArray other = "STA O A\r\n  Output 1 (A,U,0,V,5,9,D,9)";
        const std::string unit = "60 \r\nKVN-16x16-RGBA\r\n; ";
        const std::string down = "Sending to 10.0.0.5 port 23 failed: the ";
        const std::string meanwhile = " failed: the port was opened or closed meanwhile.";
        const std::string before = "9U-7/3/4; 9U-7/3/4; 9U-7/3/4; ";
        const DataTable<std::string> row("result");
        // clang-format off
        // Exchanges
        row("S; ask CFG ?; say \xff\x80; config; say; ask B",
            unit + "0 before,\r\n\xff\x80; 50 ; S+++++ CFG ?\rCFG ?\r\nB\r| 0.9");
        row("E; ask CFG ?; say \xff\x80; config; say; ask B",
            unit + "0 before,\r\n\xff\x80; 50 ; E+++++ |CFG ?\rCFG ?\r\nB\r 2.4");
        row("S; say; endless; split 1000000; ask A", "1048579 bytes; S+++++ A\r| 0.3");
        row("E; say; endless; split 1000000; ask A", "1048579 bytes; E+++++ |A\r 0.8");
        row("S; ask CFG ?; disconnect; ask A; send A; open; close",
            unit + unit + " --+++ CFG ?\r| 0.3");
        row("E; disconnect; kind S; ask CFG ?", unit + "S++--- CFG ?\r| 0.3");
        row("S; 0.1: end; config; send A; close; kind S; open",
            "60 before,\r\nKVN-16x16-RGBA\r\n; S--+++ CFG ?\r\n| 0.1");
        row("E; say; 0.1: end; status; ask A; close", before + "50 ; E++--- |STA O A\r 0.1");
        row("S; say; 0.1: leave; status", before + "S+++++ STA O A\r| 0.3");
        row("S; 0.4: leave; status", before + "S+++++ STA O A\rSTA O A\r| 0.6");
        // Replies that are cut, late or overtaken, also by other acts of a busy program
        row("S; slow 0.25; split 9; ask CFG ?; split 0; config",
            "60 \r\nKVN-16x; 0 RGB 16x16 with Audio,16-RGBA\r\n\r\nKVN-16x16-RGBA\r\n; "
            "S+++++ CFG ?\rCFG ?\r\n| 0.6");
        row("S; slow 0.4; ask CFG ?; wait 0.2; pick 7; say; ask A",
            "50 ; 50 ; S+++++ CFG ?\rA\r| 0.8");
        row("S; slow 0.5; 0.1: wait 1; ask CFG ?", unit + "S+++++ CFG ?\r| 1.1");
        row("S; 0.1: ask CFG ?; ask VOL L 1?", unit + unit + "S+++++ VOL L 1?\rCFG ?\r| 0.4");
        // COM ports
        row("test 7; log", "open 7 115200,N,8,1; close;  +---- | 0");
        row("test 7; test 8", " ----- | 0");
        row("pick 7; drop S; plug 8; test 8; swap; ask CFG ?; open; pick 7; log",
            unit + "open 7 38400,N,8,1; close; open 8 115200,N,8,1; close; open 7 38400,N,8,1; "
            "close; open 7 38400,N,8,1; close; open 7 38400,N,8,1 another; S++--- CFG ?\r| 0.3");
        row("pick 7; pick 8; plug 7; ask CFG ?; shown",
            "Opening COM8 failed: no such device.; " + unit +
            "Connected on COM7; S++--- CFG ?\r| 0.3");
        row("0: pick 7; test 8", "S++--- | 0");
        row("pick 7; drop S; close; 0: ask A; ask CFG ?; shown; drop S; send B; close; shown",
            "60 \r\nERROR\r\n; " + unit + "Connected on COM7; "
            "Not Connected, panel Connected on COM7;  ----- A\rCFG ?\rB\r| 0.6");
        row("S; say Ok 1; say Ok 2; lose S; plug 7; 0: ask A; ask B",
            "60 \r\nOk 1; 60 \r\nOk 2; S+++++ A\rB\r| 0.6");
        row("S; plug 8; drop S; 0: pick 8; ask A", "Writing to COM8" + meanwhile + "; S+++++ | 0");
        row("S; drop S; 0: close; send A", "Writing to COM7" + meanwhile + ";  --+++ | 0");
        // Connects
        row("E; dial; progress", "1 Connected to 10.0.0.5; E+++++ | 0");
        row("E; forget; after 1.9; 1: progress; dial; progress", "2 now Connecting to 10.0.0.5 .; "
            "2 now Connected to 10.0.0.5; E+++++ | 1.9");
        row("E; forget; host 1; 3: progress; dial; progress",
            "3 now Connecting to 10.0.0.5 ..; 7 now Connecting to 10.0.0.5 ......; E+++-- | 12");
        row("E; forget; host 3; after 0.5; 9: host 0; dial; progress",
            "7 now Connected to 10.0.0.5; E+++++ | 10.5");
        row("E; forget; host 2; dial; progress", "2 now Connecting to 10.0.0.5 .; E++--- | 2");
        row("E; forget; host 1; 3: cancel; dial; progress",
            "3 Connecting to 10.0.0.5 ..; E+++-- | 3");
        row("E; forget; host 1; 3: end; dial; progress",
            "3 now Connecting to 10.0.0.5 ..; E+++-- | 3");
        row("E; sending 1.5; send A; send B", "E+++++ |A\rB\r 1.5");
        // Links that end, and what the user is told
        row("S; 1: lose S; wait 1; shown", "Not Connected; S--+++ | 1");
        row("E; 1: lose E; wait 1; shown", "Not Connected; E++--- | 1");
        row("E; 1: lose S; wait 1; shown", "Connected to 10.0.0.5; E--+++ | 1");
        row("S; 1: lose E; wait 1; shown", "Connected on COM7; S++--- | 1");
        row("E; takes 3; ask CFG ?", down + "remote host closed the connection.; E++--- | 0");
        row("E; takes 3; 0: leave; guard send CFG ?; shown", "Not Connected; E++--- | 0");
        row("E; drop E; guard send A; shown",
            "Not Connected; " + down + "connection is closed.; E++--- | 0");
        row("S; lose S; guard send A; shown",
            "Not Connected; Writing to COM7 failed: the port is not open.; S--+++ | 0");
        row("S; fails; guard send A; shown",
            "Connected on COM7; Writing to COM7 failed: input/output error.; S+++++ | 0");
        row("S; drop S; 0: close; 0: lose E; 0: dial; guard send A; shown",
            "Connected to 10.0.0.5; Writing to COM7" + meanwhile + "; E--+++ | 0.05");
        row("S; say KVN-8x4-C\r\nOk; guard config", "The buttons of KVN-8x4-C do not "
            "fit the panel: ButtonInput has no index 33 (0 to 32).; S+++++ CFG ?\r\n| 0.3");
        // What is learned of the unit
        row("S; say Ok KVN-8x4-HD v2; config",
            "60 HD 8 x 4 No Audio,\r\nOk KVN-8x4-HD v2; S+++++ CFG ?\r\n| 0.3");
        row("E; say CFG ?\r\r\nKVN-8x4-HD; config",
            "0 HD 8 x 4 No Audio,\r\nCFG ?\r\r\nKVN-8x4-HD; E+++++ |CFG ?\r\n 0.8");
        row("S; say KVN KVN-8x4-HD; config", "60 before,\r\nKVN KVN-8x4-HD; S+++++ CFG ?\r\n| 0.3");
        row("E; say RTQ-KVN-8x4-HD; config", "0 before,\r\nRTQ-KVN-8x4-HD; E+++++ |CFG ?\r\n 0.8");
        row("S; say " + other + "; say " + good + "; status",
            "1M-20/255/8; 2U0/1/2; 9U-7/3/4; S+++++ STA O A\rSTA O A\r| 0.6");
        row("E; say; say " + good + "; status",
            "1M-20/255/8; 2U0/1/2; 9U-7/3/4; E+++++ |STA O A\rSTA O A\r 1.6");
        row("E; say; status", "9 -7/3/4; 9 -7/3/4; 9U-7/3/4; E+++++ |STA O A\rSTA O A\r 1.6");
        row("S; say; status",
            before + "No Response Received from CommPort 7\r\nPlease check cabling and "
            "Try Again ; S+++++ STA O A\r| 0.3");
        // The displays
        row("looks SE", "rrr Not Connected;    rNot Connected; r r Not Connected;      +-+-- | 0");
        row("kind S; looks S", "FFF Connected on COM10+;    FConnected on COM10; "
            "F   Connected on COM10+; G  GConnected; S+---- | 0");
        row("kind S; looks E", "rrr Not Connected;    rNot Connected; r   Not Connected; "
            "d  dNot Connected; S--+-- | 0");
        row("kind E; looks E", "NNN Connected to 10.0.0.5+;    NConnected to 10.0.0.5; "
            "N   Connected to 10.0.0.5+; N  NEthernet Port Opened; E--+-- | 0");
        row("kind E; looks S", "rrr Not Connected;    rNot Connected; r r Not Connected; "
            "r  rNot Connected; E+---- | 0");
        // clang-format on
    }
    void plays() {
        LinkPlayer player;
        player.play(QTest::currentDataTag());
        player.note(player.messages);
        std::ostringstream text;
        text << player.notes << player.stateText() << " " << player.serialPort.wire.written << "|"
             << player.socket.wire.written << " " << player.pump.now() - player.start;
        QTEST(text.str(), "result");
    }
};

QTEST_GUILESS_MAIN(LinkTest)
#include "LinkTest.moc"
