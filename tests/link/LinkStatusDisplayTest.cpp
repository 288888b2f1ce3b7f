#include "LinkStatusDisplayTest.h"

#include "support/DataTable.h"
#include "support/FakeStatusViews.h"
#include "support/toString.h"

namespace {

using Captions = std::vector<std::string>;
using Colour = std::optional<Rgb>;

constexpr StatusWindow Windows[] = {StatusWindow::Start, StatusWindow::SavedUnits,
                                    StatusWindow::Connect, StatusWindow::Panel};

LinkState stateOf(char kind, bool serialOpen, bool networkOpen) {
    LinkState state;
    state.LinkKind = kind;
    state.SerialPortOpen = serialOpen;
    state.IPLinkOpenFlag = networkOpen;
    state.SelectedCommPort = 10;
    state.RemoteIPAddress = "192.168.1.20";
    return state;
}

std::string captionOf(char shown) {
    return shown == 'c'   ? "Connected on COM10"
           : shown == 'n' ? "Connected to 192.168.1.20"
           : shown == '-' ? "Not Connected"
                          : "";
}

} // namespace

void LinkStatusDisplayTest::countsDots() {
    LinkState state = stateOf('E', false, false);
    LinkStatusDisplay display(state);
    display.ShowConnectingProgress(); // nobody looks yet
    FakeStatusViews views(display);
    for (state.ConnectAttemptCount = -1; state.ConnectAttemptCount <= 8;
         ++state.ConnectAttemptCount)
        display.ShowConnectingProgress();
    Captions expected;
    for (const char *dots : {".", "..", "...", "....", ".....", "......", "......."})
        expected.push_back(std::string("Connecting to 192.168.1.20 ") + dots);
    QCOMPARE(views[StatusWindow::Connect].progress, expected);
}

void LinkStatusDisplayTest::shortWords_data() {
    const DataTable<char, bool, std::string, Colour> row("kind", "open", "caption", "background");
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
    LinkState state = stateOf(kind, open == (kind != 'E'), open == (kind != 'S'));
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
    // What the four windows show: "c" COM10, "n" the address, "-" no connection.
    const DataTable<LinkState, QByteArray, QByteArray, QByteArray> row("state", "dialogs", "panel",
                                                                       "network");
    row("no kind", stateOf(' ', true, true), "--- ", "   -", "- - ");
    row("serial", stateOf('S', true, false), "ccc ", "   c", "c   ");
    row("serial down", stateOf('S', false, true), "--- ", "   -", "-   ");
    row("network", stateOf('E', false, true), "nnn ", "   n", "n   ");
    row("network down", stateOf('E', true, false), "--- ", "   -", "- - ");
}

void LinkStatusDisplayTest::refreshes() {
    using Display = LinkStatusDisplay;
    const std::pair<const char *, void (Display::*)()> refreshes[] = {
        {"dialogs", &Display::ConnecthandleConnectionStatus},
        {"panel", &Display::HandleConnectionsStatus},
        {"network", &Display::IPhandleConnectionStatus}};
    for (const auto &[column, refresh] : refreshes) {
        QFETCH(LinkState, state);
        const QByteArray shown =
            *static_cast<QByteArray *>(QTest::qData(column, qMetaTypeId<QByteArray>()));
        LinkStatusDisplay display(state);
        FakeStatusViews views(display);
        const bool up = shown.contains('c') || shown.contains('n');
        const bool panelOnly = shown.startsWith(' ');
        state.LinkShownFlag = !up;
        (display.*refresh)();
        QCOMPARE(state.LinkShownFlag, up != panelOnly);
        for (const StatusWindow window : Windows) {
            const LinkStatusLook &look = views[window].look;
            const char expected = shown[static_cast<int>(window)];
            QCOMPARE(look.caption, captionOf(expected));
            QCOMPARE(look.background, expected == 'n'   ? Colour({255, 128, 0})
                                      : expected == '-' ? Colour({255, 0, 0})
                                                        : Colour());
            QCOMPARE(look.linkUp, expected == 'c' || expected == 'n');
            QCOMPARE(look.showLabel, expected == 'c');
        }
    }
}
