#include "support/Player.h"

// clang-format off
class LinkTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    // What each refresh shows of COM10 and of 10.0.0.5, of which those in `up` are up: the colours of
    // start window, saved units, connection dialog and panel (face, network, green, red, down; in
    // capitals with the picture of a link), the words, + if a link is shown.
    void displays() {
        for (const auto &[kind, up, expected] :
             {std::tuple(' ', "SE", "rrr Not Connected;   rNot Connected;r r Not Connected;    ;"),
              {'S', "S", "FFF Connected on COM10+;   FConnected on COM10;F   Connected on COM10+;G  GConnected;"},
              {'S', "E", "rrr Not Connected;   rNot Connected;r   Not Connected;d  dNot Connected;"},
              {'E', "E", "NNN Connected to 10.0.0.5+;   NConnected to 10.0.0.5;N   Connected to 10.0.0.5+;"
                         "N  NEthernet Port Opened;"},
              {'E', "S", "rrr Not Connected;   rNot Connected;r r Not Connected;r  rNot Connected;"}}) {
            Player player;
            LinkState &state = player.program.link;
            Views &views = player.views;
            state.LinkKind = kind;
            state.SerialPortOpen = up[0] == 'S';
            state.IPLinkOpenFlag = up[0] == 'E' || up[1] == 'E';
            state.SelectedCommPort = 10;
            state.RemoteIPAddress = "10.0.0.5";
            std::string notes;
            for (const auto refresh :
                 {&LinkStatusDisplay::ConnecthandleConnectionStatus, &LinkStatusDisplay::HandleConnectionsStatus,
                  &LinkStatusDisplay::IPhandleConnectionStatus, &LinkStatusDisplay::handleZarnConnectedFlag}) {
                const std::array looks{&views.main.status, &views.units.status, &views.connect.status,
                                       &views.panel.status};
                for (LinkStatusView *look : looks)
                    *look = {};
                state.LinkShownFlag = false;
                Control &hint = views.main.ToDisconnectPortLabel;
                hint.visible = kind != up[0]; // not as it must become
                (player.program.display.*refresh)();
                QVERIFY(*looks[0] == LinkStatusView() || hint.visible == looks[0]->linkUp);
                std::string caption;
                for (const LinkStatusView *look : looks) {
                    const bool same = *look == LinkStatusView();
                    notes += same ? ' ' : (look->linkUp ? "FNGRD" : "fngrd")[int(look->colour)];
                    caption = same || look->caption == caption ? caption : caption + look->caption;
                }
                notes += caption + (state.LinkShownFlag ? "+;" : ";");
            }
            QCOMPARE(notes, std::string(expected));
        }
    }
};
// clang-format on

QTEST_GUILESS_MAIN(LinkTest)
#include "LinkTest.moc"
