#include "support/Player.h"

// The words are listed in support/Player.cpp.
// clang-format off
class LinkTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void exchanges() {
        const std::string unit = "60' KVN-16x16-RGBA ' ";
        const std::string before = "9U-7/3/4 9U-7/3/4 9U-7/3/4 ";
        const std::string other = "^STA_O_A^__Output_1_(A,U,0,V,5,9,D,9)";
        const std::string good = "^STA_O_A^__Output_1_(A,M,0,V,-20,255,D,8)^__Output_2_(A,U,0,V,0,1,D,2)";
        const std::string learned = "1M-20/255/8 2U0/1/2 9U-7/3/4 =++ Q 2";
        checkOnBothLinks({
            {"cmd=CFG_? raw=^\xff\x80 config raw= cmd=B", unit + "0 before' \xff\x80' 50'' =++ CFG ?;CFG;B; 3"},
            {"endless split1000000 cmd=A", "1048576 bytes =++ A; 1"},
            {"S:cmd=CFG_? disconnect cmd=A send=A reopen shut", unit + unit + "--+ CFG ?; 1"},
            {"E:disconnect use=S cmd=CFG_?", unit + "S-+ CFG ?; 0.375"},
            {"S:@0.5:end config send=A shut use=S reopen", "60 before' KVN-16x16-RGBA ' =-+ CFG; 0.5"},
            {"E:raw= @0.5:end status cmd=A shut", before + "50'' =-+ STA O A; 0.5"},
            {"raw= @0.5:leave status", before + "=++ STA O A; 1"}, {"@1.5:leave status", before + "=++ Q 2"},
            {"E:sending1.5 send=A send=B", "=++ A;B; 1.875"},
            // Replies that are cut, late or overtaken, also by other acts of a busy program
            {"S:late0.8 split9 cmd=CFG_? split0 config",
             "60' KVN-16x' 0 RGB 16x16 with Audio'16-RGBA  KVN-16x16-RGBA ' =++ CFG ?;CFG; 2"},
            {"S:late1.4 cmd=CFG_? wait0.7 pick7 raw= cmd=A", "50'' 50'' =++ CFG ?;A; 2.7"},
            {"late1.6 @0.4:wait3 cmd=CFG_?", unit + "=++ CFG ?; 3.4"},
            {"@0.4:cmd=CFG_? cmd=VOL_L_1?", unit + unit + "=++ VOL L 1?;CFG ?; 1.4"},
            {"S:lose ports=7 @0:cmd=A cmd=CFG_?", "60' ERROR ' " + unit + "=++ A;CFG ?; 2"},
            {"S:ports=7,8 drop @0:pick8 cmd=A", "Writing to COM8 failed meanwhile =++ 0"},
            {"S:drop @0:shut send=A", "Writing to COM7 failed meanwhile --+ 0"},
            // What is learned of the unit
            {"raw=^Ok_KVN-8x4-HD_v2 config", "60 HD 8 x 4 No Audio' Ok KVN-8x4-HD v2' =++ CFG; 1"},
            {"raw=^CFG_?|^KVN-8x4-HD config", "0 HD 8 x 4 No Audio' CFG ?; KVN-8x4-HD' =++ CFG; 1"},
            {"raw=^KVN_KVN-8x4-HD config", "60 before' KVN KVN-8x4-HD' =++ CFG; 1"},
            {"raw=^RTQ-KVN-8x4-HD config", "0 before' RTQ-KVN-8x4-HD' =++ CFG; 1"},
            {"raw=" + other + " @0.5:raw=" + good + " status", learned},
            {"E:raw= @0.5:raw=" + good + " status", learned},
            {"S:raw= status", "{no response} " + before + "=++ STA O A; 1"},
            {"E:raw= status", "9 -7/3/4 9 -7/3/4 9U-7/3/4 =++ Q 2"}}, "link", "?state ?sent ?time");
        // Links that end, and what the user is told
        checkOnBothLinks({
            {"@0.5:lose wait1", "down =-+ 1"}, {"S:network lose", "on COM7 S-+ 0"},
            {"E:network0 lose", "to IP E-+ 0"}, {"E:@0:lose guard=cmd=CFG_?", "{failed} down =-+ CFG ?; 0"},
            {"E:@0:leave @0:lose guard=cmd=CFG_?", "down =-+ CFG ?; 0"}, {"E:drop guard=send=A", "{failed} down =-+ 0"},
            {"S:lose guard=send=A", "{failed} down =-+ 0"},
            {"S:drop @0:shut @0:network/lose @0:setup guard=send=A",
             "{Writing to COM7 failed meanwhile} to IP =+- 0.166667"},
            {"S:raw=^KVN-8x4-C^Ok guard=config", "{The buttons of KVN-8x4-C do not fit the panel: ButtonInput has "
             "no index 33 (0 to 32).} down =++ CFG; 1"}}, "link", "?caption ?state ?sent ?time");
        checkOnBothLinks({
            {"E:setup", "to IP 7 x1 =++ 0"},
            {"E:forget slow1.9 @1:?progress setup", "now dialling . now to IP 7 x2 =++ 2.375"},
            {"E:forget host=1 @3:end setup", "now dialling .. 7 x3 =?+ 3"}}, "link", "?progress ?used ?state ?time");
    }

    void ports() {
        const std::string search = "open 7 115200,N,8,1 close", use = "open 7 38400,N,8,1 close ";
        checkPlays({
            {"test7 ?log", search + " -?- 0"}, {"test7 test8", "--- 0"}, {"@0:pick7 test8", "=+- 0"},
            {"pick7 drop ports=7,8 test8 swap cmd=CFG_? reopen pick7 ?log", "60' KVN-16x16-RGBA ' " + use +
             "open 8 115200,N,8,1 close " + use + use + "open 7 38400,N,8,1 another =+- CFG ?; 0.3"},
            {"pick7 pick8 cmd=CFG_? ?caption",
             "Opening COM8 failed: no such device. 60' KVN-16x16-RGBA ' on COM7 =+- CFG ?; 0.3"},
            {"pick7 drop shut @0:cmd=A cmd=CFG_? ?caption drop send=B shut ?caption ?link",
             "60' ERROR ' 60' KVN-16x16-RGBA ' on COM7 down ---- --- A;CFG ?;B; 0.6"}},
            "", "?state ?sent ?time");
    }

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
