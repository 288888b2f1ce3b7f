#include "LinkStatusDisplayTest.h"

#include "support/FakeStatusViews.h"
#include "support/toString.h"

#include <QtTest/QtTest>

namespace {

using Captions = std::vector<std::string>;
using Show = void (LinkStatusDisplay::*)(StatusWindow);
using Refresh = void (LinkStatusDisplay::*)();
using Colour = std::optional<Rgb>;

LinkState stateOf(char kind, bool serialOpen, bool networkOpen) {
    LinkState state;
    state.LinkKind = kind;
    state.SerialPortOpen = serialOpen;
    state.IPLinkOpenFlag = networkOpen;
    state.SelectedCommPort = 10;
    state.RemoteIPAddress = "192.168.1.20";
    return state;
}

} // namespace

void LinkStatusDisplayTest::showsStates_data() {
    QTest::addColumn<Show>("show");
    QTest::addColumn<std::string>("caption");
    QTest::addColumn<Colour>("background");
    QTest::addColumn<bool>("linkUp");
    QTest::addColumn<bool>("showLabel");
    using Display = LinkStatusDisplay;
    QTest::newRow("serial") << Show(&Display::showConnectedOnCom)
                            << std::string("Connected on COM10") << Colour() << true << true;
    QTest::newRow("network") << Show(&Display::showConnectedTo)
                             << std::string("Connected to 192.168.1.20") << Colour({255, 128, 0})
                             << true << false;
    QTest::newRow("none") << Show(&Display::showNotConnected) << std::string("Not Connected")
                          << Colour({255, 0, 0}) << false << false;
}

void LinkStatusDisplayTest::showsStates() {
    QFETCH(Show, show);
    QFETCH(std::string, caption);
    using enum StatusWindow;
    for (const StatusWindow window : {Start, SavedUnits, Connect, Panel}) {
        LinkState state = stateOf(' ', false, false);
        LinkStatusDisplay display(state);
        (display.*show)(window); // no window to show it yet
        FakeStatusViews views(display);
        (display.*show)(window);
        QTEST(views[window].look.caption, "caption");
        QTEST(views[window].look.background, "background");
        QTEST(views[window].look.linkUp, "linkUp");
        QTEST(views[window].look.showLabel, "showLabel");
        const Captions captions = views.captions();
        QCOMPARE(std::count(captions.begin(), captions.end(), caption), 1);
    }
}

void LinkStatusDisplayTest::countsDots_data() {
    QTest::addColumn<int>("attempt");
    QTest::addColumn<Captions>("progress");
    const char *const dots[] = {".", "..", "...", "....", ".....", "......", "......."};
    for (int attempt = 0; attempt <= 6; ++attempt)
        QTest::addRow("%d", attempt)
            << attempt << Captions{std::string("Connecting to 192.168.1.20 ") + dots[attempt]};
    QTest::newRow("7 leaves the last text") << 7 << Captions();
    QTest::newRow("-1 leaves the last text") << -1 << Captions();
}

void LinkStatusDisplayTest::countsDots() {
    QFETCH(int, attempt);
    LinkState state = stateOf('E', false, false);
    LinkStatusDisplay display(state);
    FakeStatusViews views(display);
    state.ConnectAttemptCount = attempt;
    display.ShowConnectingProgress();
    QTEST(views[StatusWindow::Connect].progress, "progress");
}

void LinkStatusDisplayTest::shortWords_data() {
    QTest::addColumn<char>("kind");
    QTest::addColumn<bool>("open");
    QTest::addColumn<std::string>("caption");
    QTest::addColumn<Colour>("background");
    const auto row = [](const char *name, char kind, bool open, const char *caption, Colour rgb) {
        QTest::newRow(name) << kind << open << std::string(caption) << rgb;
    };
    row("network up", 'E', true, "Ethernet Port Opened", Rgb{255, 128, 0});
    row("network down", 'E', false, "Not Connected", Rgb{255, 0, 0});
    row("serial up", 'S', true, "Connected", Rgb{0, 192, 0});
    row("serial down", 'S', false, "Not Connected", Rgb{192, 0, 0});
    row("no kind", ' ', true, "", {});
}

void LinkStatusDisplayTest::shortWords() {
    QFETCH(char, kind);
    QFETCH(bool, open);
    QFETCH(std::string, caption);
    LinkState state = stateOf(kind, open && kind != 'E', open && kind != 'S');
    LinkStatusDisplay display(state);
    FakeStatusViews views(display);
    display.handleZarnConnectedFlag();
    QCOMPARE(views.captions(), Captions({caption, "", "", caption}));
    for (const StatusWindow window : {StatusWindow::Start, StatusWindow::Panel}) {
        QTEST(views[window].look.background, "background");
        QCOMPARE(views[window].look.linkUp, open && kind != ' ');
    }
}

void LinkStatusDisplayTest::refreshes_data() {
    QTest::addColumn<Refresh>("refresh");
    QTest::addColumn<LinkState>("state");
    QTest::addColumn<Captions>("captions");
    QTest::addColumn<bool>("shown");
    const std::string com = "Connected on COM10";
    const std::string net = "Connected to 192.168.1.20";
    const std::string no = "Not Connected";
    const LinkState none = stateOf(' ', true, true);
    const LinkState serialUp = stateOf('S', true, false);
    const LinkState serialDown = stateOf('S', false, true);
    const LinkState networkUp = stateOf('E', false, true);
    const LinkState networkDown = stateOf('E', true, false);
    using Display = LinkStatusDisplay;
    const auto row = [](const char *name, Refresh refresh, const LinkState &state,
                        const Captions &captions, bool shown) {
        QTest::newRow(name) << refresh << state << captions << shown;
    };
    const Refresh dialogs = &Display::ConnecthandleConnectionStatus;
    row("dialogs, none", dialogs, none, {no, no, no, ""}, false);
    row("dialogs, serial", dialogs, serialUp, {com, com, com, ""}, true);
    row("dialogs, serial down", dialogs, serialDown, {no, no, no, ""}, false);
    row("dialogs, network", dialogs, networkUp, {net, net, net, ""}, true);
    row("dialogs, network down", dialogs, networkDown, {no, no, no, ""}, false);
    const Refresh panel = &Display::HandleConnectionsStatus;
    row("panel, none", panel, none, {"", "", "", no}, false);
    row("panel, serial", panel, serialUp, {"", "", "", com}, false);
    row("panel, serial down", panel, serialDown, {"", "", "", no}, false);
    row("panel, network", panel, networkUp, {"", "", "", net}, false);
    row("panel, network down", panel, networkDown, {"", "", "", no}, false);
    const Refresh network = &Display::IPhandleConnectionStatus;
    row("network's, none", network, none, {no, "", no, ""}, false);
    row("network's, serial", network, serialUp, {com, "", "", ""}, true);
    row("network's, serial down", network, serialDown, {no, "", "", ""}, false);
    row("network's, network", network, networkUp, {net, "", "", ""}, true);
    row("network's, network down", network, networkDown, {no, "", no, ""}, false);
    row("all, network", &Display::refreshAll, networkUp, {net, net, net, net}, true);
}

void LinkStatusDisplayTest::refreshes() {
    QFETCH(Refresh, refresh);
    QFETCH(LinkState, state);
    QFETCH(bool, shown);
    LinkStatusDisplay display(state);
    FakeStatusViews views(display);
    // The panel's refresh leaves the flag alone.
    state.LinkShownFlag = refresh != &LinkStatusDisplay::HandleConnectionsStatus && !shown;
    (display.*refresh)();
    QTEST(views.captions(), "captions");
    QCOMPARE(state.LinkShownFlag, shown);
}
