#include "support/Player.h"

// The words are listed in support/Player.cpp.
// clang-format off
class ConnectTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    // Found are COM1, 7 and 20; 21 is not searched. All from the start window on.
    void plays() {
        checkPlays({
            {"ports= serial ok ?dialog -connect", "{no ports} (-) main down ---- x0"},
            {"serial port7 ok done @3 swap lose ports=7 take @5 ?log", "{!7} open 1 115200,N,8,1 close open 7 "
             "115200,N,8,1 close open 20 115200,N,8,1 close open 7 38400,N,8,1 open 7 38400,N,8,1 main panel on COM7 "
             "++++o #DIS ,;Q 7 7 x0"},
            {"~search:?dialog serial -connect", "(S Finding Comm Ports Comm1) main down ---- x0"},
            {"serial ?dialog port20 ok ?dialog done", "(S found: all) {!20} (S found: all#2+ on COM20) main panel on "
             "COM20 ++++o # 20 x0"},
            {"serial port7 ok ports=20 port1 ok ?dialog ?link -connect", "{!7} {!1} (S found: all#0 down dark) ---- "
             "main down ---- 7 x0"},
            {"serial port7 ok port1 ?dialog ok done @3 lose ports=1,7 take", "{!7} {!1} (S found: all#0+ on COM7) "
             "main panel on COM1 ++++o #DIS ,;Q 7 1 1 x0"},
            {"serial port7 ok ethernet ?dialog -connect", "{!7} (E ... idle+ down) main down ---- 7 x0"},
            {"find call", "main panel to IP ++++o # x1"},
            {"ports=1,2 ~search:ethernet serial ?dialog ip=10.0.0.5 dial", "(E ... idle+) main panel to IP ++++o # "
             "x1"},
            {"host=2 call @4.1 ?dialog @4.3 dial ok ?dialog -connect find ?dialog ethernet ?dialog -connect", "(E IP "
             "dialling .) {no answer} (E IP idle+) (E IP idle+) (E ... idle+) main down ---- x2"},
            {"host=1 call dial ?dialog @11 ?dialog @13 ?dialog @24.3 ok ?dialog -connect", "(E IP dialling .) (E IP "
             "dialling ......) (E IP dialling .) {no answer} (E IP idle+) main down ---- x12"},
            {"host=1 call @3 ethernet ?dialog @25 -connect", "(E ... dialling ..) {no answer} main down ---- x12"},
            {"host=1 call @3 serial ?flags port7 ok done", "{!7} main panel on COM7 ++++o # 7 x2"},
            {"CFG= serial port7 ok done @2 label find ?kind -connect ?dialog ok", "{!7} {no config} - (-) main down "
             "---- CFG; 7 x0"},
            {"serial ?why -connect find ?why -connect", "(COM1 (tty1, FTDI)+|COM7 (tty7)+|COM8 (tty8): held by "
             "minicom|COM20 (tty20)+||end) () main down ---- x0"},
            {"serial port7 ok ports=7,20,21 port1 ok ?why -connect", "{!7} {!1} (COM1 (tty1, FTDI): gone|COM7 "
             "(tty7)+|COM8 (tty8): held by minicom|COM20 (tty20)+||plug|end) main down ---- 7 x0"},
            {"ports= serial ?why ok ?why serial ok -connect", "{no ports} (COM8 (tty8): held by minicom||end) (COM8 "
             "(tty8): held by minicom||end) {no ports} main down ---- x0"},
            {"host=2 call @5 ?why ok tell=one ?why ok -connect", "{no answer} (IP refused the connection on port 23 "
             "(the host did not take the connection).|A device is at that address; check that it is the Zarn, and "
             "that nobody else is connected to it.) {one} () told main down ---- x2"},
            {"host=3 call @25 ?why ok -connect", "{no answer} (IP cannot be reached (the host did not take the "
             "connection).|Check the address, and the network of this computer.) main down ---- x12"},
            {"host=1 call @25 ?why ok -connect", "{no answer} (IP gave no answer on port 23.|Check the address, and "
             "that the Zarn has power and a network cable.) main down ---- x12"},
            {"call @3 label", "main panel down ---- # x1"}},
            "ports=1,7,20,21 message= & find", "?forms ?caption ?link ?flags ?sent ?used");
    }

    // What is told of a device, its owner and its group: who is in it, and whether that is enough.
    void reasons() {
        using enum SerialDeviceFacts::Presence;
        using enum SerialDeviceFacts::Membership;
        const auto denied = [](const char *group, bool groupMayOpen, auto member) {
            return SerialDeviceFacts{There, "", false, "root", group, groupMayOpen, member};
        };
        const LinkFailure notPermitted = LinkFailure::NotPermitted;
        const SerialDeviceFacts free{.presence = There, .adapter = "FTDI UART", .leadsTo = "/dev/x"};
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
              {denied("dialout", true, None), LinkFailure::NoDevice, "", "the device is gone", plug},
              {free, notPermitted, "minicom (process 12)", "held by minicom (process 12)", end},
              {free, notPermitted, "", "held by another program", end}, {free, LinkFailure::Other, "", "odd", ""},
              {{NameOnly}, LinkFailure::Other, "", "the device is gone", plug},
              {{}, notPermitted, "", "the device is gone", plug}}) {
            PortTest test{{5, "tty5"}, std::nullopt};
            test.failure.emplace("Opening", "COM5", "odd", failure);
            const PortReport expected{5, "tty5", facts.adapter, reason, remedy, facts.presence != Missing, facts.leadsTo};
            const PortReport report = reportOn(test, facts, holder);
            QCOMPARE(textOf({report}), textOf({expected}));
            QVERIFY(report == expected);
            QCOMPARE(isHeld(test, facts), remedy == end);
        }
        // One remedy is enough for all.
        const PortReport denied1{1, "a", "", notYours, join};
        QCOMPARE(textOf({denied1, {2, "b", "FTDI", "", "", true, "c"}, denied1}),
                 "COM1 (a): " + notYours +
                     "\nCOM2 (b, a link to c, FTDI): can be opened\nCOM1 (a): " + notYours + "\n\n" + join);
        QCOMPARE(textOf({}), std::string("There is no serial device."));
    }

    void address() {
        Player player;
        dlgConnect &dialog = player.program.connectForm;
        const AddressView &boxes = player.views.connect.IPAddressQuadConnect;
        dialog.LoadForm();
        dialog.ConnectIPOption_Click();
        std::string places = player.views.connect.form.focus;
        for (int box = 0; box < 3; dialog.IPAddressQuadConnect_Enter(box++))
            places += std::to_string(boxes.cursor.box) + std::to_string(boxes.cursorMoved);
        QCOMPARE(places, std::string("ConnectIPOption011223"));
        // What is shown and kept after the box is left.
        checkRows({
            {"0", "/0"}, {"1", "1/1"}, {"255", "255/255"}, {"007", "007/7"}},
                  [&](const std::string &typed) {
                      dialog.IPAddressQuadConnect_Change({2, 0, 3}, typed);
                      dialog.IPAddressQuadConnect_Left(2);
                      return boxes.boxes[2].text + "/" + player.program.link.IPAddressQuads[2];
                  });
    }

    void startWindow() {
        checkPlays({
            {"file start ?forms new ?operation", "main Add Text3 +++--++ //-1/-1"},
            {"file read=Bad. message= @1:read=/edit/ok new ?operation", "{Bad.} Edit list +--++-- //-1/-1"},
            {"read=Bad. file start", "{Bad.}"},
            {"file units min back ?forms", "main"},
            {"+help +splash ?forms -help ?forms", "main splash help main splash"}});
        QVERIFY(Player().views.main.status == LinkStatusView{.caption = "Not Connected"});
    }

    // A message that comes in the connection dialog closes with it, one from before stays.
    void messages() {
        checkPlays({
            {"& tell=one tell=two ok", "{one} {two} told told main"},
            {"question= & ask=1 -question ask=2 yes ask=3 -question ask=4 no", "<1> no <2> yes <3> yes <4> no main"},
            {"& tell=one find -connect ?forms ok", "{one} main message told main"}},
            "message=", "?forms");
    }
};
// clang-format on

QTEST_GUILESS_MAIN(ConnectTest)
#include "ConnectTest.moc"
