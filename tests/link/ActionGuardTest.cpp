#include "ActionGuardTest.h"

#include "support/DataTable.h"
#include "support/FakeStatusViews.h"
#include "support/LinkFixture.h"
#include "support/toString.h"

using Texts = std::vector<std::string>;
enum class Action { Succeeds, LosesTheLink, LeavesTheTable };

void ActionGuardTest::failures_data() {
    const DataTable<char, Action, bool, bool, Texts> row("kind", "action", "wanted", "linkUp",
                                                         "messages");
    using enum Action;
    const Texts serialLost{"Writing to COM7 failed: the port is not open."};
    const Texts networkLost{
        "Sending to 10.0.0.5 port 23 failed: the remote host closed the connection."};
    const Texts wrongIndex{"ButtonInput has no index 33 (0 to 32)"};
    row("no failure", 'E', Succeeds, true, true, {});
    row("network lost", 'E', LosesTheLink, true, false, networkLost);
    row("network lost, unwanted", 'E', LosesTheLink, false, false, {});
    row("serial lost", 'S', LosesTheLink, true, false, serialLost);
    row("wrong index", 'E', LeavesTheTable, true, true, wrongIndex);
    row("wrong index, unwanted", 'S', LeavesTheTable, false, true, {});
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

    const auto act = [&] {
        if (action == Action::LeavesTheTable)
            links.model.ButtonInput[33] = 1;
        if (action == Action::LosesTheLink) {
            links.socket.peerCloses();
            links.serialPort.vanish();
        }
        links.dispatch.SendCommandGetResponse("CFG ?\r\n");
    };
    links.guard.run(act, [&] { return wanted; });

    QTEST(links.messages.shown, "messages");
    QCOMPARE(kind == 'E' ? links.state.IPLinkOpenFlag : links.state.SerialPortOpen, linkUp);
    QVERIFY(kind != 'E' || links.state.IPConnectedFlag == linkUp);
    QCOMPARE(views.captions(), linkUp ? upCaptions : Texts(4, "Not Connected"));
}
