#include "ActionGuardTest.h"

#include "platform/LinkError.h"
#include "support/FakeStatusViews.h"
#include "support/LinkFixture.h"
#include "support/toString.h"

#include <QtTest/QtTest>

namespace {

using Texts = std::vector<std::string>;

enum class Action { Succeeds, LosesTheLink, LeavesTheTable };

void act(Action action, LinkFixture &links) {
    if (action == Action::LeavesTheTable)
        links.model.ButtonInput[33] = 1;
    if (action == Action::LosesTheLink) {
        links.socket.peerCloses();
        links.serialPort.vanish();
    }
    links.dispatch.SendCommandGetResponse("CFG ?\r\n");
}

} // namespace

void ActionGuardTest::failures_data() {
    QTest::addColumn<char>("kind");
    QTest::addColumn<Action>("action");
    QTest::addColumn<bool>("wanted");
    QTest::addColumn<bool>("linkUp");
    QTest::addColumn<Texts>("messages");
    const Texts none;
    const Texts serialText{"Writing to COM7 failed: the port is not open."};
    const Texts networkText{
        "Sending to 10.0.0.5 port 23 failed: the remote host closed the connection."};
    const Texts rangeText{"ButtonInput has no index 33 (0 to 32)"};
    using enum Action;
    QTest::newRow("network, no failure") << 'E' << Succeeds << true << true << none;
    QTest::newRow("network lost") << 'E' << LosesTheLink << true << false << networkText;
    QTest::newRow("network lost, unwanted") << 'E' << LosesTheLink << false << false << none;
    QTest::newRow("serial lost") << 'S' << LosesTheLink << true << false << serialText;
    QTest::newRow("wrong index") << 'E' << LeavesTheTable << true << true << rangeText;
    QTest::newRow("wrong index, unwanted") << 'S' << LeavesTheTable << false << true << none;
}

void ActionGuardTest::failures() {
    QFETCH(char, kind);
    QFETCH(Action, action);
    QFETCH(bool, wanted);
    QFETCH(bool, linkUp);
    LinkFixture links;
    FakeStatusViews views(links.display);
    links.connectSerial();
    links.connectNetwork();
    links.state.LinkKind = kind;
    links.display.refreshAll();
    const Texts upCaptions = views.captions();
    QVERIFY(upCaptions[0].starts_with("Connected"));

    links.guard.run([&] { act(action, links); }, [&] { return wanted; });

    QTEST(links.messages.shown, "messages");
    QCOMPARE(kind == 'E' ? links.state.IPLinkOpenFlag : links.state.SerialPortOpen, linkUp);
    QVERIFY(kind != 'E' || links.state.IPConnectedFlag == linkUp);
    QCOMPARE(views.captions(), linkUp ? upCaptions : Texts(4, "Not Connected"));
}
