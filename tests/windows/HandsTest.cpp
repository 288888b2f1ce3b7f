#include "hands.h"
#include "Application.h"
#include "support/rows.h"

namespace {

const std::string Queries = "\rSTA O A\rSTA O A\r";
const std::string Taken = "Con 3(1)3F (1)" + Queries;
const std::string Once = "DIS ," + Queries;
const std::string Twice = Once + Once;
const std::string Connecting = "click MainControl0 ; in dlgConnect ";
const std::string Ethernet = Connecting + "click ConnectIPOption ";
const std::string AtPorts =
    "ports 2 " + Connecting + "click ConnectSerialOption go SerialPortsCombo ";
const std::string Pasted = Ethernet + "paste 10.200.30.4 ";
const std::string Units = "dlgControlExisting";
const std::string InUnits = "click MainControl2 in " + Units + " ";
const std::string Adding = InUnits + "click OptionsCommand0 ";
const std::string Editing = InUnits + "click OptionsCommand1 ";
const std::string Deleting = InUnits + "click OptionsCommand3 ";

std::string volume(const std::string &level) { return "VOL L 3 " + level + "\rVOL L 3?\r"; }

} // namespace

/// What the user does with keys and pointer, and what the windows report of it.
class HandsTest : public QObject {
    Q_OBJECT

    /// Plays each row in a program of its own that knows two units, until that is left. What the
    /// words mean is said at play().
    static void check(const std::string &first, const std::vector<std::array<std::string, 2>> &rows,
                      const std::string &model = "KVN-32x32-RGBA") {
        checkRows(rows, [&](const std::string &steps) {
            ProgramFixture kvn{{.model = model}};
            kvn.files.contentsOf["program/KVNConfigurator.ini"] =
                "KVN NAME = A<b>\r\nKVN TYPE = SERIAL\r\n"
                "KVN NAME = B\r\nKVN TYPE = ETHER\r\nKVN IP = 192.168.1.20  \r\n";
            kvn.program.unit.SelectedUnitName = "A";
            const std::string seen = play(kvn, first + steps + " ; in frmMain frame");
            return seen + (kvn.pump.ended() && kvn.visibleWindows().empty() ? "" : " stays");
        });
    }

private Q_SLOTS:
    // clang-format off
    void inTheStartWindow() {
        const std::string Label = "see ZarnConnectedLabel ", Off = "Not Connected";
        const std::string Linked = "panel in frmMain ", OnIt = Linked + "go ZarnConnectedLabel ";
        check("", {
            {Linked + "right ZarnConnectedLabel slip ZarnConnectedLabel " + Label + "point ZarnConnectedLabel " + Label,
             "Connected on COM7, Not Connected"},
            {OnIt + "key A hold Space +1! hold Return +1! " + Label, "Connected on COM7"},
            {OnIt + "key Space focus " + Label, "MainControl0, " + Off}, {OnIt + "key Enter " + Label, Off}, {OnIt + "key Return " + Label, Off},
            {"menu Connect2 ; windows", "dlgConnect frmMain"}, {"menu ControlExisting windows", Units + " frmMain"},
            {"in frmMain key Ctrl+N in dlgControlExisting see AddFrame", "Add Corvane"},
            {"in frmMain key F10 focus key Esc focus key Alt+C focus key Esc focus",
             "Connect2, MainControl0, Connect2, MainControl0"},
            {"in frmMain walk Down*2 walk Tab panel in frmMain walk Backtab key Left walk Up*2 walk Down",
             "MainControl2, MainControl2, MainControl0, ZarnConnectedLabel, MainControl2, MainControl0, MainControl2"},
            {"ports 0 " + Connecting + "click ConnectSerialOption ; in frmMain point MainControl2 windows "
             "in dlgOK point OK windows ; in dlgConnect see ConnectSerialOption",
             "dlgConnect dlgOK frmMain, dlgConnect frmMain, Serial Port"}});
    }

    void inTheConnectionDialog() {
        check("", {
            {Ethernet + "type 192.168.1.20 key Backspace*4 type 7ab address "
             "key Ctrl+A type 0 go ConnectIPOption address", "192.168.7*., 192.168.."},
            {Pasted + "address frame ; in frmMain click MainControl0 ; in dlgConnect address focus",
             "10.200.30.4*, 10.200.30.4, ConnectIPOption"},
            {Pasted + "go IPAddressQuadConnect0 key Return key Enter address key Return key Enter ; line windows",
             "10.200.[30]*.4, connect 10.200.30.4:23, KVN32x32Audio frmMain"},
            {Pasted + "refused key Return ; in dlgOK key Return ; in dlgConnect focus", "Connect2IP"},
            {Pasted + "hold Right +1! key Ctrl+A walk Right*2 go IPAddressQuadConnect3 walk Left*2 walk Up",
             "IPAddressQuadConnect3, Connect2IP, IPAddressQuadConnect3, IPAddressQuadConnect2, ConnectSerialOption"},
            {"ports 2 " + Connecting + "key Right key Space ; walk Tab walk Up walk Down key Down*2 line key Return ; "
             "in dlgOK key Return ; line in dlgConnect list SerialPortsCombo walk Tab key Return ; windows",
             "SerialPortsCombo, ConnectIPOption, SerialPortsCombo, close, open 2 38400,N,8,1,  Comm1 [Comm2], "
             "Connect2Serial, KVN32x32Audio frmMain"},
            {AtPorts + "wheel SerialPortsCombo -120 list SerialPortsCombo key Down list SerialPortsCombo key Esc focus "
             "type C list SerialPortsCombo key Esc key End list SerialPortsCombo shortcut Esc ; windows",
             " Comm1  Comm2 , [Comm1] Comm2 , SerialPortsCombo,  Comm1 [Comm2],  Comm1 [Comm2], dlgConnect frmMain"}});
    }

    void amongTheUnits() {
        const std::string Before = "A<b> SERIAL B ETHER IP 192.168.1.20", At = "list AvailList ";
        check("", {
            {Editing + "see AddFrame focus " + At + "pick AvailList 1 " + At +
             "list ConnectChoiceList address pick AvailList 2 " + At + "click CancelCommand see AddFrame",
             "Edit Corvane, AvailList,  A<b>  B ,  A<b> [B],  SERIAL [ETHER], 192.168.1.20,  A<b>  B , Edit Corvane hidden"},
            {Editing + "pick AvailList 1 go CntrlIPAddressQuad3 key Shift+Home key Backspace*2 type 5.6 "
             "click AddCommand file", "A<b> SERIAL B ETHER IP 192.168.15.6"},
            {Adding + "see AddFrame focus type \u00C4\u20ACb hold Return +1! file pick ConnectChoiceList 1 walk Tab "
             "type 1.2.3.4 key Enter file",
             "Add Corvane, Text3, " + Before + ", CntrlIPAddressQuad0, " + Before + " \u00C4b ETHER IP 1.2.3.4"},
            {Deleting + "pick AvailList 0 go CancelCommand key Return see AddFrame file",
             "Delete Corvane hidden, " + Before},
            {Editing + "key Down*2 walk Up*2 walk Down*3 walk Up walk Left key Esc focus",
             "AvailList, ConnectChoiceList, ConnectChoiceList, CntrlIPAddressQuad0, AddCommand, CntrlIPAddressQuad0, "
             "AvailList, OptionsCommand1"},
            {Deleting + "key Down " + At + "key Down " + At, "[A<b>] B ,  A<b> [B]"},
            {Deleting + "key Up " + At, "[A<b>] B "}, {Deleting + "key Home " + At, "[A<b>] B "},
            {InUnits + "click OptionsCommand2 double AvailList 0 ; in dlgConnect focus", "ConnectSerialOption"},
            {InUnits + "click OptionsCommand2 see AddFrame double AvailList 1 ; windows in KVN32x32Audio see KVNNameLabel",
             "Control Corvane, KVN32x32Audio dlgControlExisting frmMain, B"}});
    }

    void onThePanel() {
        const std::string UpDown = volume("-19") + ", " + volume("-20");
        check("panel ", {
            {"go GoToPresets click InVideoAudio32 click OutVidAud17 click Take sent focus",
             "Con 32(17)32F (17)" + Queries + ", GoToPresets"},
            {"click InVideo25 click OutVideo16 click Take sent click Clear click InAudio1 click OutAudio32 click Take sent",
             "Con 25(16)" + Queries + ", Con 1F (32)" + Queries},
            {"point OutVolume3 see OutVolumeLabel click VolumeUp sent click VolumeDown sent", "Output 3 volume, " + UpDown},
            {"go OutVolume3 key + sent key - sent go InVideoConnected3 key + sent", UpDown + ", "},
            {"wheel OutVolume3 -120 sent wheel OutVolume3 60 sent wheel OutVolume3 60 sent wheel OutVolume3 60 "
             "wheel OutVolume3 -60 sent wheel OutVolume3 -60 sent",
             volume("-21") + ", , " + volume("-20") + ", , " + volume("-21")},
            {"; wheel OutVolume3 -120 , wheel OutVolume3 120 ; sent", volume("-21")}, // one while another is under way
            {"go OutVolume3 key A see VolumeUp key Space see OutVolumeLabel go OutVolume4 key Return see OutVolumeLabel "
             "go OutVolume5 key Enter see OutVolumeLabel",
             "Volume Up hidden, Output 3 volume, Output 4 volume, Output 5 volume"}});
        check("panel click InVideoAudio3 click OutVidAud1 go Take ", {
            {"key F9 sent", Taken}, {"key Return sent", Taken}, {"key Enter sent", Taken}, {"key Space sent", Taken},
            {"go InVideoAudio3 key Ctrl+Return sent focus", Taken + ", InVideoAudio3"},
            {"go OutVolume9 key Ctrl+Enter sent focus", Taken + ", OutVolume9"},
            {"key Esc sent key F9 sent", ", Con 3()3F ()" + Queries},
            {"key Alt+H focus key Esc focus key F9 sent", "ConnectionHelp, Take, " + Taken},
            {"key F1 sent windows", ", KVN32x32Audio dlgInputConnect frmMain"},
            {"hold F9 +1! hold Return +1! hold Enter +1! hold Space +1! hold Esc +1! hold F1 +1! sent windows key F9 sent",
             ", KVN32x32Audio frmMain, " + Taken}});
    }

    void overThePanel() {
        check("panel point OutVolume7 ", { // which brings the volume buttons and leaves the focus
            {"focus walk Tab*11",
             "InVideoAudio1, OutVidAud1, InVideoConnected1, OutVolume1, Mute1, Take, "
             "Clear, GoToPresets, VolumeUp, VolumeDown, Exit, InVideoAudio1"},
            {"key Right*4 key Down*2 focus key Tab key Right walk Down walk Shift+Backtab*2 walk Tab*2",
             "InVideoAudio21, OutVideo2, InVideoAudio21, Exit, InVideoAudio21, OutVideo2"},
            {"click InVideo25 from InVideo25 Tab from InVideo25 Down", "OutVideo1, OutVideo9"}, // past the disabled
            {"click GoToPresets in dlgPresets focus key Down key Right*3 focus walk Tab*3 key Down*3 focus",
             "NewPreset1, NewPreset12, ExecutePreset, ExitPresets, NewPreset12, ExecutePreset"},
            {"from InVideoAudio1 Left from OutVolume5 Shift+Right from InVideoAudio16 Right from OutAudio5 Down "
             "from OutVolume5 Left from InAudio5 Right from InVideo5 Right walk Up from Mute17 Up from Mute25 Right*8",
             "InVideoAudio1, OutVolume5, InVideoAudio16, InAudioConnected5, "
             "OutVolume4, InVideo6, InAudio5, InVideoAudio5, OutVolume32, Mute24"},
            {"from OutVolume21 Down*2 walk Right from OutVolume32 Down*2 from Take Down from GoToPresets Right*3",
             "Take, Clear, Exit, VolumeUp, Exit"}});
        check("panel ", { // fewer columns below than above, and past what is hidden
            {"from InVideo12 Down walk Right from Mute7 Down from Mute10 Down from GoToPresets Tab",
             "OutVidAud10, OutVidAud10, Take, Clear, Exit"}}, "KVN-8x4-RGBA");
    }

    // A window system tells a repeat as a release and a press of the same moment.
    void withAKeyHeld() {
        check("panel go Take ", {
            {"hold F9 +100-600+600-625+625-650 sent", Once}, {"hold F9 +100-600+601-650 sent", Once}, // in a moment
            {"hold F9 +100-600+602-650 sent", Twice}, {"hold F9 +0-0+0-0 sent", Twice}, // copies, without a time
            {"hold F9 +100-200 hold Space +200-250 sent", Twice}, // another key
            {"hold Return +100-600+600-625+625-650 sent", Once}, {"hold Space +100-600!+600!-625+625-650 sent", Once},
            {"hold Space +1-60!+60!-65!+65!-70 sent", Once}, {"hold Space +100-600+600-650+900-950 sent", Twice},
            {"go OutVolume3 hold + +100-600+600-650 sent", volume("-19")},
            // A window that opens, or comes to light, under a held key does not get its repeats.
            {"go GoToPresets hold Space +100-600 in dlgPresets go ExitPresets hold Space +600-625+625-650 windows "
             "hold Escape +700-900+900 in KVN32x32Audio hold Escape -925+925-950 windows",
             "KVN32x32Audio dlgPresets frmMain, KVN32x32Audio frmMain"}});
        check(Adding + "type xy ", {
            {"hold A +100-600+600-625+625-650 see Text3 hold Backspace +700-900+900-950 see Text3", "xyaaa, xya"},
            {"hold Left +100-600+600-650 hold Delete +700-800+800 hold Space +900-960!+960!-965 see Text3", "  "}});
    }
    // clang-format on

    void canBeLeft() {
        ProgramFixture kvn;
        std::string answers;
        const std::string Keys = "key Return|key Escape|frame", Ok = "click OK|" + Keys;
        // In the order of the forms; the start window and the panel stay.
        // clang-format off
        const std::pair<std::string, std::string> windows[] = {
            {"frmMain", ""}, {"dlgOK", Ok}, {"plainBox", Ok}, {"dlgYesNo", "click Yes|click No|key Tab frame|" + Keys},
            {"dlgConnect", "key Escape|frame"}, {Units, "click OK|key Escape|frame"}, {"KVN32x32Audio", ""},
            {"dlgPresets", "click ExitPresets|key Escape|frame"}, {"dlgSetup", "frame"}, {"frmAbout", "click cmdOK|" + Keys},
            {"dlgInputConnect", Ok}, {"dlgDisconnect", Ok}, {"VolumeHelpDialog", Ok}};
        // clang-format on
        for (std::size_t index = 0; index < std::size(windows); ++index) {
            const auto &[name, ways] = windows[index];
            FormView *form = kvn.program.views.forms().at(index);
            for (const QString &way :
                 QString::fromStdString(ways).split(u'|', Qt::SkipEmptyParts)) {
                kvn.program.messageState.YesNoAnswer = form->loaded = true;
                ++form->raised;
                kvn.windows.refresh();
                const QWidget *window = kvn.window(name);
                QCOMPARE(window->isModal(), name == "plainBox" || name == "dlgConnect");
                play(kvn, "in " + name + " " + way.toStdString());
                QVERIFY2(!window->isVisible() && !form->loaded, qPrintable(way));
                if (name == "dlgYesNo")
                    answers += kvn.program.messages.answered() ? "yes " : "no ";
            }
        }
        QCOMPARE(answers, std::string("yes no yes no no yes "));
    }

    // The window system may not have noticed yet that it is closed.
    void keysOfAClosedWindowGoToTheOneInFront() {
        ProgramFixture kvn;
        play(kvn,
             "menu AboutController click MainControl2 in " + Units + " in frmAbout key Return");
        QWindow *closed = kvn.window("frmAbout")->windowHandle();
        for (const Qt::Key key : {Qt::Key_Return, Qt::Key_Escape}) { // the first button: Add
            QTest::keyClick(closed, key);
            QCOMPARE(kvn.program.views.units.AddCorvaneFrame.visible, key == Qt::Key_Return);
        }
    }
};

int main(int argc, char **argv) {
    Application application(argc, argv);
    HandsTest test;
    return QTest::qExec(&test, argc, argv);
}

#include "HandsTest.moc"
