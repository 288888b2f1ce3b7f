#include "machine/LinkError.h"
#include "support/DataTable.h"
#include "support/TestProgram.h"
#include "support/failureOf.h"
#include "support/toString.h"

namespace {

using Texts = std::vector<std::string>;
using Host = FakeTcpSocket::Host;
using Display = LinkStatusDisplay;

const std::string Configuration = "\r\nKVN-16x16-RGBA\r\n";

/// The links of a program of which nothing else is used.
struct LinkFixture : TestProgram {
    LinkState &state = program.link;
    ExchangeState &exchange = program.unit.exchange;
    ModelFacts &model = program.unit.model;
    SerialLink &serial = program.serial;
    UnitTalk &talk = program.talk;
    Form &form = program.aboutForm;

    LinkFixture() { answerMessages(); }
    /// Opens COM7 as the connection dialog does.
    void connectSerial() {
        state.LinkKind = SerialLinkKind;
        serial.OpenSerialPort(7);
    }
    /// Connects 10.0.0.5 as the connection dialog does.
    void connectNetwork() {
        state.LinkKind = NetworkLinkKind;
        state.RemoteIPAddress = "10.0.0.5";
        program.network.SetupConnectIP();
    }
    /// How start window, saved units, connection dialog and panel show the link.
    [[nodiscard]] std::array<LinkStatusView *, 4> looks() const {
        return {&views.main.status, &views.units.status, &views.connect.status,
                &views.panel.status};
    }
    [[nodiscard]] Texts captions() const {
        Texts texts;
        for (const LinkStatusView *look : looks())
            texts.push_back(look->caption);
        return texts;
    }
};

/// Both links are open, `kind` is the one in use.
struct Links : LinkFixture {
    explicit Links(char kind) {
        connectSerial();
        connectNetwork();
        state.LinkKind = kind;
        start = pump.now();
    }
    [[nodiscard]] double seconds() const { return pump.now() - start; }
    void answer(const std::function<std::string(std::string_view)> &device) {
        serialPort.wire.device = socket.wire.device = device;
    }
    double start = 0.0;
};

/// What the unit answers, or why the exchange fails.
std::string ask(LinkFixture &links, const char *command = "CFG ?\r\n") {
    const auto failure = failureOf<LinkError>([&] { links.talk.SendCommandGetResponse(command); });
    return failure.empty() ? links.exchange.ResponseText : failure;
}

/// The link kind, whether the links are up - serial by flag and port, network by both flags and
/// socket - and what was written to both.
std::string textOf(const LinkFixture &links) {
    std::string text(1, links.state.LinkKind);
    for (const bool up :
         {links.state.SerialPortOpen, links.serialPort.isOpen(), links.state.IPLinkOpenFlag,
          links.state.IPConnectedFlag, links.socket.state() == SocketState::Connected})
        text += up ? '+' : '-';
    return text + links.serialPort.wire.written + "|" + links.socket.wire.written;
}

/// How a window shows the link, as one letter.
char letterOf(const LinkStatusView &view) {
    const auto is = [&](const char *caption, LinkColour colour, bool up) {
        return view.caption == caption && view.colour == colour && view.linkUp == up;
    };
    return is("Zarn Connected", LinkColour::NotConnected, false)      ? ' '
           : is("Not Connected", LinkColour::NotConnected, false)     ? '-'
           : is("Not Connected", LinkColour::SerialDown, false)       ? 'd'
           : is("Connected on COM10", LinkColour::ButtonFace, true)   ? 'c'
           : is("Connected to 10.0.0.5", LinkColour::NetworkUp, true) ? 'n'
           : is("Ethernet Port Opened", LinkColour::NetworkUp, true)  ? 'e'
           : is("Connected", LinkColour::SerialUp, true)              ? 'g'
                                                                      : '?';
}

} // namespace

class LinkTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void exchanges_data();
    void exchanges();
    void usesTheLinkOfTheKind();
    void sendsNothingAfterTheEnd();
    void opensPorts();
    void reopensTheDeviceThatWasOpen();
    void testLeavesAPortInUse();
    void cutReplyPollutesTheNext();
    void healsAClosedPort();
    void reopeningKeepsCommandsApart();
    void lostLinksTellThemselves();
    void nestedExchangeTakesOver();
    void connects();
    void laterConnectTakesOver();
    void onlyTheFirstSendWaits();
    void guardTellsWhyItFails();
    void statusDisplays_data();
    void statusDisplays();
    void statusQuery_data();
    void statusQuery();
    void configuration_data();
    void configuration();
};

void LinkTest::exchanges_data() {
    const DataTable<std::string, int> row("answer", "status");
    row("recognised", "\r\nERROR form\r\n", 60);
    row("unknown", std::string("\0\xff\x80 ", 4), 0);
    row("silence", "", 50);
    row("endless", "\r\nOk" + std::string(3'000'000, 'x'), 60);
}

void LinkTest::exchanges() {
    QFETCH(std::string, answer);
    QFETCH(int, status);
    const std::string kept = answer.substr(0, 1'048'576);
    for (const bool serial : {true, false}) {
        Links links(serial ? 'S' : 'E');
        links.answer([&](auto) { return answer; });
        links.serialPort.wire.split = links.socket.wire.split = 1'000'000;
        links.exchange = {"", "older", "", "", "", 7};
        links.talk.SendCommandGetResponse("MUT M 3\r");
        QCOMPARE(links.seconds(), serial ? 0.3 : 0.8);
        QCOMPARE(links.exchange.ReplyStatus, status);
        QVERIFY(links.exchange.ResponseText == (status == 60 ? kept : ""));
        QVERIFY((serial ? links.exchange.SerialRawReply : links.exchange.NetworkRawReply) == kept);
        QCOMPARE(textOf(links), std::string(serial ? "S+++++MUT M 3\r|" : "E+++++|MUT M 3\r"));
    }
}

void LinkTest::usesTheLinkOfTheKind() {
    for (const auto after : {"S--+++", "E++---", " +++++"}) {
        Links links(after[0]);
        links.talk.DisconnectLink();
        // Without a kind nothing gets out.
        links.exchange.ReplyStatus = 7;
        ask(links);
        links.talk.SendCommand("ECHO OFF\r");
        links.talk.OpenLink();
        links.talk.CloseLink();
        QCOMPARE(textOf(links), " " + std::string(after + 1) + "|");
        QCOMPARE(links.exchange.ReplyStatus, 7);
        QCOMPARE(links.seconds(), 0.0);
    }
}

void LinkTest::sendsNothingAfterTheEnd() {
    for (const auto after : {"S--+++STA O A\r|", "E++---|STA O A\r"}) {
        Links links(after[0]);
        links.pump.in(0.1, [&] { links.pump.end(); });
        links.talk.RequestOutputStatus(links.form);
        links.talk.SendCommand("ECHO OFF\r");
        links.talk.CloseLink();
        links.state.LinkKind = after[0];
        links.talk.OpenLink();
        QCOMPARE(links.seconds(), 0.1);
        QCOMPARE(textOf(links), std::string(after));
    }
}

void LinkTest::opensPorts() {
    LinkFixture links;
    links.serial.TestCommPort(7);
    QCOMPARE(textOf(links), std::string(" +----|"));
    links.serial.TestCommPort(8);
    QCOMPARE(textOf(links), std::string(" -----|"));
    links.connectSerial();
    links.serialPort.receive("left over");
    links.serial.OpenSerialPort(7);
    QCOMPARE(links.serialPort.readAll(), std::string());
    QCOMPARE(links.serialPort.log, Texts({"open 7 115200,N,8,1", "close", "open 7 38400,N,8,1",
                                          "close", "open 7 38400,N,8,1"}));
    QVERIFY_THROWS_EXCEPTION(LinkError, links.serial.OpenSerialPort(8));
    QCOMPARE(links.state.SelectedCommPort, 7);
    QCOMPARE(textOf(links), std::string("S-----|"));
}

void LinkTest::reopensTheDeviceThatWasOpen() {
    LinkFixture links;
    links.connectSerial();
    links.serialPort.devices[7] = "another";
    links.serialPort.present = {7, 8};
    links.serial.TestCommPort(8);
    for (const auto &reopen : {std::function<void()>([&] { ask(links); }),
                               std::function<void()>([&] { links.talk.OpenLink(); })}) {
        links.serialPort.close();
        reopen();
        QCOMPARE(links.serialPort.log.back(), std::string("open 7 38400,N,8,1"));
    }
    links.connectSerial(); // selected anew, so the number counts
    QCOMPARE(links.serialPort.log.back(), std::string("open 7 38400,N,8,1 another"));
}

void LinkTest::testLeavesAPortInUse() {
    LinkFixture links;
    links.pump.in(0.0, [&] { links.connectSerial(); });
    links.serial.TestCommPort(8);
    QCOMPARE(textOf(links), std::string("S++---|"));
}

void LinkTest::cutReplyPollutesTheNext() {
    Links links('S');
    links.serialPort.wire.delay = 0.25;
    links.serialPort.wire.split = 9;
    links.serialPort.wire.pieceDelay = 0.0625;
    QCOMPARE(ask(links), std::string("\r\nKVN-16x"));
    links.serialPort.wire.split = 0;
    QCOMPARE(ask(links), std::string());
    QCOMPARE(links.exchange.SerialRawReply, "16-RGBA\r\n" + Configuration);
}

void LinkTest::healsAClosedPort() {
    LinkFixture links;
    links.connectSerial();
    links.serialPort.close();
    const Texts before = links.captions();
    links.talk.CloseLink(); // nothing at all
    QCOMPARE(textOf(links), std::string("S+----|"));
    QCOMPARE(links.captions(), before);
    // An exchange that runs while the port opens again is not mixed in.
    links.pump.in(0.0, [&] { ask(links, "VOL L 1?\r"); });
    QCOMPARE(ask(links), Configuration);
    links.serialPort.close();
    links.talk.SendCommand("ECHO OFF\r");
    QCOMPARE(textOf(links), std::string("S++---VOL L 1?\rCFG ?\r\nECHO OFF\r|"));
    QCOMPARE(links.captions(), Texts(4, "Connected on COM7"));
    links.talk.CloseLink();
    QVERIFY(textOf(links).starts_with(" -----"));
    QCOMPARE(links.captions()[0], std::string("Not Connected"));
}

void LinkTest::reopeningKeepsCommandsApart() {
    Links links('S');
    links.answer([](std::string_view command) { return "\r\nOk " + std::string(command); });
    const std::string take = "Con 3(1,2)3F (1,2)\r";
    const std::string mute = "MUT M 3\r";
    links.serialPort.vanish();
    links.serialPort.present = {7};
    links.pump.in(0.0, [&] { links.talk.SendCommandGetResponse(mute); });
    links.talk.SendCommandGetResponse(take);
    QCOMPARE(textOf(links), "S+++++" + mute + take + "|");
    QCOMPARE(links.exchange.ResponseText, "\r\nOk " + take);
}

void LinkTest::lostLinksTellThemselves() {
    // The link that goes and the link in use; what is left and what the windows read.
    for (const auto &[lost, after, caption] : {std::tuple('S', "S--+++|", "Not Connected"),
                                               {'E', "E++---|", "Not Connected"},
                                               {'S', "E--+++|", "Connected to 10.0.0.5"},
                                               {'E', "S++---|", "Connected on COM7"}}) {
        Links links(after[0]);
        links.pump.in(1.0, [&, lost = lost] {
            lost == 'S' ? links.serialPort.vanish() : links.socket.peerCloses();
        });
        links.pump.runFor(1.0, [] { return false; });
        QCOMPARE(textOf(links), std::string(after));
        QCOMPARE(links.captions(), Texts(4, caption));
        QCOMPARE(links.messages, std::string());
    }
}

void LinkTest::nestedExchangeTakesOver() {
    Links links('S');
    links.pump.in(0.1, [&] { ask(links); });
    QCOMPARE(ask(links, "VOL L 1?\r"), Configuration);
    QCOMPARE(links.seconds(), 0.4);
}

void LinkTest::connects() {
    // The host acts so until it begins to answer; the connect is cancelled after a while.
    for (const auto &[host, delay, answersIn, cancelledIn, seconds, attempts, after] :
         {std::tuple(Host::Answers, 1.9, 99., 99., 1.9, std::size_t{1}, "E--+++|"),
          {Host::Unreachable, 0.5, 9., 99., 10.5, 6, "E--+++|"},
          {Host::Answers, 2.5, 99., 99., 12., 6, "E--+--|"},
          {Host::Silent, 0., 99., 99., 12., 6, "E--+--|"},
          {Host::Refuses, 0.1, 99., 99., 2., 1, "E-----|"},
          {Host::Silent, 0., 99., 3., 3., 2, "E--+--|"}}) {
        LinkFixture links;
        Texts shown;
        links.pump.show = [&] {
            if (shown.empty() || shown.back() != links.views.connect.Label2.text)
                shown.push_back(links.views.connect.Label2.text);
        };
        links.socket.host = host;
        links.socket.connectDelay = delay;
        links.pump.in(answersIn, [&] { links.socket.host = Host::Answers; });
        links.pump.in(cancelledIn, [&] { links.state.IPConnectingFlag = false; });
        links.state.IPLinkOpenFlag = true;
        const double start = links.pump.now();
        links.connectNetwork();
        QCOMPARE(links.pump.now() - start, seconds);
        QCOMPARE(textOf(links), std::string(after));
        Texts progress;
        for (std::size_t attempt = 1; attempt <= attempts; ++attempt)
            progress.push_back("Connecting to 10.0.0.5 " + std::string(attempt, '.'));
        if (links.state.IPConnectedFlag) {
            progress.emplace_back("Connected to 10.0.0.5");
            links.program.network.SetupConnectIP(); // does nothing on a link that is up
        }
        const Texts &log = links.socket.log;
        QCOMPARE(std::count(log.begin(), log.end(), "connect 10.0.0.5:23"), int(attempts));
        links.pump.show();
        QCOMPARE(shown, progress);
    }
}

void LinkTest::laterConnectTakesOver() {
    LinkFixture links;
    links.socket.host = Host::Silent;
    links.pump.in(3.0, [&] { links.connectNetwork(); });
    links.pump.in(99.0, [&] { links.pump.end(); });
    links.connectNetwork();
    const Texts &log = links.socket.log;
    QCOMPARE(std::count(log.begin(), log.end(), "connect 10.0.0.5:23"), 2 + 6);
    QVERIFY(!links.pump.ended());
}

void LinkTest::onlyTheFirstSendWaits() {
    Links links('E');
    links.socket.sendDelay = 1.5;
    for (int time = 1; time <= 2; ++time)
        links.talk.SendCommand("ECHO OFF\r");
    QCOMPARE(links.seconds(), 1.5);
}

void LinkTest::guardTellsWhyItFails() {
    const std::string index = "ButtonInput has no index 33 (0 to 32)";
    const std::string sending =
        "Sending to 10.0.0.5 port 23 failed: the remote host closed the connection.";
    for (const auto &[after, failure] :
         {std::pair("S-----|", std::string("Writing to COM7 failed: the port is not open.")),
          {"E-----|", sending}}) {
        Links links(after[0]);
        const auto lose = [&] {
            links.serialPort.vanish();
            links.socket.peerCloses();
            links.talk.SendCommand("CFG ?\r\n");
        };
        links.program.guard.run(links.form, [&] { links.model.ButtonInput[33] = 1; });
        QVERIFY(textOf(links).ends_with("+++++|"));
        links.program.guard.run(links.form, [&] {
            links.form.unload();
            lose();
        });
        QCOMPARE(links.messages, index);
        links.program.guard.run(links.form, lose);
        QCOMPARE(links.messages, index + " | " + failure);
        QCOMPARE(textOf(links), std::string(after));
        QCOMPARE(links.captions(), Texts(4, "Not Connected"));
    }
    // The peer is gone before the first send is complete.
    Links links('E');
    links.socket.closesAfter = 3;
    QCOMPARE(ask(links), sending);
}

void LinkTest::statusDisplays_data() {
    // The start window, the saved units, the connection dialog and the panel after each refresh.
    const DataTable<char, bool, bool, std::string> row("kind", "serial", "network", "looks");
    row("no kind", ' ', true, true, "--- |   -|- - |    |");
    row("serial", 'S', true, false, "ccc +|   c|c   +|g  g|");
    row("serial down", 'S', false, true, "--- |   -|-   |d  d|");
    row("network", 'E', false, true, "nnn +|   n|n   +|e  e|");
    row("network down", 'E', true, false, "--- |   -|- - |-  -|");
}

void LinkTest::statusDisplays() {
    QFETCH(char, kind);
    QFETCH(bool, serial);
    QFETCH(bool, network);
    std::string looks;
    for (const auto refresh :
         {&Display::ConnecthandleConnectionStatus, &Display::HandleConnectionsStatus,
          &Display::IPhandleConnectionStatus, &Display::handleZarnConnectedFlag}) {
        LinkFixture links;
        links.state.LinkKind = kind;
        links.state.SerialPortOpen = serial;
        links.state.IPLinkOpenFlag = network;
        links.state.SelectedCommPort = 10;
        links.state.RemoteIPAddress = "10.0.0.5";
        for (LinkStatusView *look : links.looks())
            *look = {};
        Control &hint = links.views.main.ToDisconnectPortLabel;
        hint.visible = !links.views.main.status.linkUp;
        (links.program.display.*refresh)();
        for (const LinkStatusView *look : links.looks())
            looks += letterOf(*look);
        const LinkStatusView &start = links.views.main.status;
        QVERIFY(letterOf(start) == ' ' || hint.visible == start.linkUp);
        looks += links.state.LinkShownFlag ? "+|" : "|";
    }
    QTEST(looks, "looks");
}

void LinkTest::statusQuery_data() {
    const DataTable<char, Texts, std::string> row("kind", "replies", "records");
    const std::string good = "\r\nSTA O A\r\n  Output 1 (A,M,0,V,-20,255,D,8)\r\n"
                             "  Output 2 (A,U,0,V,0,1,D,2)\r\n";
    const std::string other = "\r\nSTA O A\r\n  Output 1 (A,U,0,V,5,9,D,9)";
    row("serial", 'S', {other, good}, "1M-20/255/8 2U0/1/2 9U-7/3/4 ");
    row("network, first missing", 'E', {"", good}, "1M-20/255/8 2U0/1/2 9U-7/3/4 ");
    row("network, silence", 'E', {"", ""}, "9 -7/3/4 9 -7/3/4 9U-7/3/4 ");
    row("serial, silence", 'S', {""},
        "9U-7/3/4 9U-7/3/4 9U-7/3/4 "
        "No Response Received from CommPort 7\r\nPlease check cabling and Try Again ");
}

void LinkTest::statusQuery() {
    QFETCH(char, kind);
    QFETCH(Texts, replies);
    Links links(kind);
    Texts asked;
    links.serialPort.wire.device = links.socket.wire.device = [&](std::string_view command) {
        asked.emplace_back(command);
        return replies.at(asked.size() - 1);
    };
    links.model.NumOutputs = 2;
    links.program.unit.routing.Outputs.fill({"9", 'a', 'U', "b", 'c', "-7", "3", 'd', "4"});
    links.talk.RequestOutputStatus(links.form);
    QCOMPARE(asked, Texts(replies.size(), "STA O A\r"));
    std::string records;
    for (int output = 1; output <= 3; ++output) {
        const OutputStatusRecord &record = links.program.unit.routing.Outputs[output];
        records += record.OutputNumberText + record.MuteFlag + record.VolumeText + "/" +
                   record.AudioInputText + "/" + record.VideoInputText + " ";
    }
    QTEST(records + links.messages, "records");
}

void LinkTest::configuration_data() {
    const DataTable<std::string, int, std::string> row("reply", "status", "description");
    row("after other text", "\r\nOk, I am a KVN-8x4-HD v2", 60, "HD 8 x 4 No Audio");
    row("after an echo", "CFG ?\r\r\nKVN-8x4-RGB\r\n", 0, "RGB 8 x 4 No Audio");
    row("only the first one counts", "\r\nKVN KVN-8x4-RGB", 60, "before");
    row("behind the other family's name", "\r\nRTQ-KVN-8x4-RGB", 0, "before");
    row("silence", "", 50, "before");
    row("buttons that do not fit", "\r\nKVN-8x4-C\r\n", 60, "before");
}

void LinkTest::configuration() {
    QFETCH(std::string, reply);
    for (const bool serial : {true, false}) {
        Links links(serial ? 'S' : 'E');
        links.answer([&](auto) { return reply; });
        links.model.ModelDescription = "before";
        links.model.NumInputs = 32;
        const auto query = [&] { links.talk.GetParseConfiguration(); };
        QCOMPARE(failureOf<RangeError>(query),
                 std::string(reply.ends_with("-C\r\n")
                                 ? "The buttons of KVN-8x4-C do not fit the panel: "
                                   "ButtonInput has no index 33 (0 to 32)."
                                 : ""));
        QTEST(links.exchange.ReplyStatus, "status");
        QTEST(links.model.ModelDescription, "description");
        QCOMPARE(links.exchange.ResponseText, reply);
        QCOMPARE(textOf(links), std::string(serial ? "S+++++CFG ?\r\n|" : "E+++++|CFG ?\r\n"));
    }
}

QTEST_GUILESS_MAIN(LinkTest)
#include "LinkTest.moc"
