#include "hands.h"
#include "Application.h"
#include "support/rows.h"

#include <QTextDocument>

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
const std::string Controlling = InUnits + "click OptionsCommand2 ";
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
            const std::string seen = play(kvn, first + steps + " ; end");
            return seen + (kvn.pump.ended() && kvn.visibleWindows().empty() ? "" : " stays");
        });
    }

private Q_SLOTS:
    // clang-format off
    void inTheStartWindow() {
        const std::string Label = " see ZarnConnectedLabel ", Off = "Not Connected";
        const std::string OnIt = "linked go ZarnConnectedLabel ";
        check("", {
            {"linked" + Label + "point ZarnConnectedLabel" + Label, "Connected on COM7, Not Connected"},
            {"linked right ZarnConnectedLabel slip ZarnConnectedLabel" + Label, "Connected on COM7"},
            {OnIt + "key A hold Space +1! hold Return +1!" + Label, "Connected on COM7"},
            {OnIt + "key Space" + Label, Off}, {OnIt + "key Enter" + Label, Off},
            {OnIt + "key Return" + Label, Off},
            {"menu Connect2 ; windows unit", "dlgConnect frmMain, 0A"}, {"menu ControlExisting windows", Units + " frmMain"},
            {"in frmMain key Ctrl+N in dlgControlExisting see AddFrame", "Add Corvane"},
            {"in frmMain key F10 focus key Esc focus key Alt+C focus key Esc focus",
             "Connect2, MainControl0, Connect2, MainControl0"},
            {"in frmMain walk Down*2 walk Tab linked walk Backtab key Left walk Up*2 walk Down",
             "MainControl2, MainControl2, MainControl0, ZarnConnectedLabel, MainControl2, MainControl0, MainControl2"},
            {"ports 0 " + Connecting + "click ConnectSerialOption ; in frmMain point MainControl2 windows "
             "in dlgOK point OK windows ; in dlgConnect see ConnectSerialOption",
             "dlgConnect dlgOK frmMain, dlgConnect frmMain, Serial Port"}});
    }

    void inTheConnectionDialog() {
        check("", {
            {Ethernet + "type 192.168.1.20 key Backspace*4 type 7ab address", "192.168.7*."},
            {Ethernet + "type 13 key Home type 2 address", "213.*.."},
            {Ethernet + "type 192.16. go IPAddressQuadConnect1 key Ctrl+A type 9 address", "192.9*.."},
            {Pasted + "address frame ; in frmMain click MainControl0 ; in dlgConnect address focus",
             "10.200.30.4*, 10.200.30.4, ConnectIPOption"},
            {Pasted + "go IPAddressQuadConnect0 key Return key Enter address key Return key Enter ; line windows",
             "10.200.[30]*.4, connect 10.200.30.4:23, KVN32x32Audio frmMain"},
            {Pasted + "hold Return +1! go IPAddressQuadConnect0 hold Return +1-5+5-9 hold Enter +1! address ; line",
             "10.[200]*.30.4, "},
            {Pasted + "refused key Return ; in dlgOK key Return ; in dlgConnect focus", "Connect2IP"},
            {Connecting + "focus walk Left walk Down walk Right key Right walk Left",
             "ConnectIPOption, ConnectIPOption, ConnectIPOption, ConnectSerialOption, ConnectIPOption"},
            {"ports 2 " + Connecting + "key Right key Space ; walk Tab key Down*2 line key Return ; in dlgOK "
             "key Return ; line in dlgConnect list SerialPortsCombo walk Tab",
             "SerialPortsCombo, close, open 2 38400,N,8,1,  Comm1 [Comm2], Connect2Serial"},
            {AtPorts + "key Down list SerialPortsCombo key Esc focus windows",
             "[Comm1] Comm2 , SerialPortsCombo, dlgConnect frmMain"},
            {AtPorts + "wheel SerialPortsCombo -120 list SerialPortsCombo", " Comm1  Comm2 "},
            {AtPorts + "type C list SerialPortsCombo key Esc key Home key Esc ; windows", " Comm1 [Comm2], dlgConnect frmMain"},
            {AtPorts + "walk Up walk Down", "ConnectIPOption, SerialPortsCombo"},
            {Pasted + "walk Left*2 walk Up", "IPAddressQuadConnect3, IPAddressQuadConnect2, ConnectSerialOption"},
            {AtPorts + "key End key Return ; line in dlgOK key Return ; line in dlgConnect click Connect2Serial ; windows",
             "close, open 2 38400,N,8,1, KVN32x32Audio frmMain"}});
    }

    void amongTheUnits() {
        const std::string Before = "A<b> SERIAL B ETHER IP 192.168.1.20";
        check("", {
            {Editing + "see AddFrame focus list AvailList pick AvailList 1 unit "
             "list ConnectChoiceList address click CancelCommand see AddFrame",
             "Edit Corvane, AvailList,  A<b>  B , 2A,  SERIAL [ETHER], 192.168.1.20, Edit Corvane hidden"},
            {Editing + "pick AvailList 1 go CntrlIPAddressQuad3 key Shift+Home key Backspace*2 type 5.6 "
             "click AddCommand file", "A<b> SERIAL B ETHER IP 192.168.15.6"},
            {Editing + "pick AvailList 0 unit pick AvailList 2 unit list AvailList", "1A, 0A,  A<b>  B "},
            {Adding + "see AddFrame focus type \u00C4\u20ACb hold Return +1! file key Return file",
             "Add Corvane, Text3, " + Before + ", " + Before + " \u00C4b SERIAL"},
            {Adding + "type C pick ConnectChoiceList 1 go CntrlIPAddressQuad0 type 1.2.3.4 key Enter file",
             Before + " C ETHER IP 1.2.3.4"},
            {Adding + "pick ConnectChoiceList 1 go Text3 walk Tab*3", "ControlledbyText, ConnectChoiceList, CntrlIPAddressQuad0"},
            {Deleting + "see AddFrame pick AvailList 0 go CancelCommand key Return see AddFrame file",
             "Delete Corvane, Delete Corvane hidden, " + Before},
            {Editing + "key Down*2 walk Up*2 walk Down*3 walk Up walk Left key Esc focus",
             "AvailList, ConnectChoiceList, ConnectChoiceList, CntrlIPAddressQuad0, AddCommand, CntrlIPAddressQuad0, "
             "AvailList, OptionsCommand1"},
            {Deleting + "list AvailList key Down unit list AvailList key Down unit", " A<b>  B , 1A, [A<b>] B , 2A"},
            {Deleting + "key Up unit", "1A"}, {Deleting + "key Home unit", "1A"}, {Deleting + "key Space unit", "1A"},
            {Controlling + "see AddFrame double AvailList 1 unit ; unit windows",
             "Control Corvane, 2A, 2B, KVN32x32Audio dlgControlExisting frmMain"}});
    }

    void onThePanel() {
        const std::string UpDown = volume("-19") + ", " + volume("-20");
        check("panel ", {
            {"go GoToPresets click InVideoAudio32 state click Clear click InVideo25 state "
             "click Clear click InAudio1 state focus", "Bi32v0, Vi25v0, Ai1v0, GoToPresets"},
            {"click OutVidAud17 state click Clear click OutVideo16 state "
             "click Clear click OutAudio32 state", "Bi0o17v0, Vi0o16v0, Ai0o32v0"},
            {"point OutVolume3 state click VolumeUp sent click VolumeDown sent", "Bi0v3, " + UpDown},
            {"go OutVolume3 key + sent key - sent go InVideoConnected3 key + sent", UpDown + ", "},
            {"wheel OutVolume3 -120 sent wheel OutVolume3 60 wheel OutVolume3 -60 sent", volume("-21") + ", "},
            {"wheel OutVolume3 60 sent wheel OutVolume3 60 sent", ", " + volume("-19")},
            {"; wheel OutVolume3 -120 , wheel OutVolume3 120 ; sent", volume("-21")}, // one while another is under way
            {"go OutVolume3 key A state key Space state go OutVolume4 key Return state "
             "go OutVolume5 key Enter state", "Bi0v0, Bi0v3, Bi0v4, Bi0v5"},
            {"see ConnectionHelp see disconnectHelp see AdjustingVolumes",
             "How to Connect, How to Disconnect, Adjusting Volumes (if applicable)"},
            {"key F10 focus key Esc key Alt+H focus key Esc", "ConnectionHelp, ConnectionHelp"}});
        check("panel click InVideoAudio3 click OutVidAud1 go Take ", {
            {"key F9 sent", Taken}, {"key Return sent", Taken}, {"key Enter sent", Taken}, {"key Space sent", Taken},
            {"go InVideoAudio3 key Ctrl+Return sent focus", Taken + ", InVideoAudio3"},
            {"go OutVolume9 key Ctrl+Enter sent focus", Taken + ", OutVolume9"},
            {"key Esc sent state", ", Bi3v0"}, {"key F10 key Esc focus state", "Take, Bi3o1v0"},
            {"key Alt+H focus key Esc focus state", "ConnectionHelp, Take, Bi3o1v0"}, {"key F1 sent windows", ", KVN32x32Audio dlgInputConnect frmMain"},
            {"hold F9 +1! hold Return +1! hold Enter +1! hold Space +1! hold Esc +1! hold F1 +1! sent state windows",
             ", Bi3o1v0, KVN32x32Audio frmMain"}});
    }

    void overThePanel() {
        check("panel point OutVolume7 ", { // which brings the volume buttons and leaves the focus
            {"focus walk Tab*11",
             "InVideoAudio1, OutVidAud1, InVideoConnected1, OutVolume1, Mute1, Take, "
             "Clear, GoToPresets, VolumeUp, VolumeDown, Exit, InVideoAudio1"},
            {"walk Down*14",
             "InVideo1, InVideoAudio17, InVideo17, OutVidAud1, OutVideo1, InVideoConnected1, OutVolume1, Mute1, "
             "OutVidAud17, OutVideo17, InVideoConnected17, OutVolume17, Mute25, GoToPresets"},
            {"key Right*4 key Down*2 focus key Tab key Right walk Down walk Shift+Backtab*2 walk Tab*2",
             "InVideoAudio21, OutVideo2, InVideoAudio21, Exit, InVideoAudio21, OutVideo2"},
            {"click InVideo25 from InVideo25 Tab from InVideo25 Down", "OutVideo1, OutVideo9"}, // past the disabled
            {"click GoToPresets in dlgPresets focus key Down key Right*3 focus walk Tab*3 key Down*3 focus",
             "NewPreset1, NewPreset12, ExecutePreset, ExitPresets, NewPreset12, ExecutePreset"},
            {"from InVideoAudio1 Left", "InVideoAudio1"}, {"from InVideoAudio1 Up", "InVideoAudio1"},
            {"from InVideoAudio16 Right", "InVideoAudio16"}, {"from OutAudio5 Down", "InAudioConnected5"},
            {"from InAudio5 Right", "InVideo6"}, {"from InVideo5 Right walk Up", "InAudio5, InVideoAudio5"},
            {"from Mute17 Up", "OutVolume32"}, {"from Mute25 Right*8", "Mute24"},
            {"from OutVolume21 Down*2 walk Right", "Take, Clear"}, {"from OutVolume32 Down*2", "Exit"},
            {"from Take Down", "VolumeUp"}, {"from GoToPresets Right*3", "Exit"}});
        check("panel ", { // fewer columns below than above
            {"from InVideo12 Down walk Right", "OutVidAud10, OutVidAud10"},
            {"from Mute7 Down from Mute10 Down", "Take, Clear"},
            {"from GoToPresets Tab", "Exit"}}, "KVN-8x4-RGBA"); // past what is hidden
    }

    // A window system tells a repeat as a release and a press of the same moment.
    void withAKeyHeld() {
        check("panel go Take ", {
            {"hold F9 +100-600+600-625+625-650 sent", Once}, {"hold F9 +100-600+601-650 sent", Once}, // in a moment
            {"hold F9 +100-600+602-650 sent", Twice}, {"hold F9 +0-0+0-0 sent", Twice}, // events without a time
            {"hold F9 +100-200 hold Space +200-250 sent", Twice}, // another key
            {"hold Return +100-600+600-625+625-650 sent", Once}, {"hold Space +100-600+600-625+625-650 sent", Once},
            {"hold Space +100-600!+600!-625+625-650 sent", Once}, {"hold Space +1-60!+60!-65!+65!-70 sent", Once},
            {"hold Space +100-600+600-650+900-950 sent", Twice},
            {"bridge hold Space +100-600+600-625+625-650 ; sent", Once},
            {"bridge hold Enter +100-600+600-625+625-650 ; sent", Once},
            // A window that opens, or comes to light, under a held key does not get its repeats.
            {"go GoToPresets hold Space +100-600 in dlgPresets go ExitPresets hold Space +600-625+625-650 windows "
             "hold Escape +700-900+900 in KVN32x32Audio hold Escape -925+925-950 windows",
             "KVN32x32Audio dlgPresets frmMain, KVN32x32Audio frmMain"}});
        check(Adding + "type xy ", {
            {"hold A +100-600+600-625+625-650 see Text3", "xyaaa"}, {"hold Space +1-60!+60!-65 see Text3", "xy  "},
            {"hold Backspace +100-600+600-650 see Text3", ""},
            {"hold Left +100-600+600-650 hold Delete +700-800+800 see Text3", ""}});
    }
    // clang-format on

    void canBeLeft() {
        ProgramFixture kvn;
        Program &program = kvn.program;
        const std::string text = "<b>Gr\u00F6\u00DFe\r\n2";
        auto &[message, box, question] = program.views.messages;
        message.OKLabel.text = box.OKLabel.text = question.YesNoText.text = text;
        const std::string Keys = "key Return|key Escape|frame", Ok = "click OK|" + Keys;
        const std::string Clears = "The Escape button clears all selections";
        // Window, title and the texts that are the window's own, the ways to leave it.
        // clang-format off
        const std::vector<std::tuple<std::string, Form *, std::string, std::string>> windows{
            {"dlgOK", &program.messages.dlgOK(), "Confirm|" + text + "|OK", Ok},
            {"plainBox", &program.messages.plainBox(), "Corvane Controller 1.14|" + text + "|OK", Ok},
            {"dlgYesNo", &program.messages.dlgYesNo(), " |" + text + "|No|Yes", "click Yes|click No|" + Keys},
            {"frmAbout", &program.aboutForm, "About Corvane Controller 1.14|Corvane Controller 1.14|Version 1.14.0|"
             "Controls Corvane audio/video matrix switchers\nover a serial port or TCP/IP.|OK", "click cmdOK|" + Keys},
            {"dlgSetup", &program.setupForm, "Initializing Display|Setting Output|Setting Input", "frame"},
            {"dlgConnect", &program.connectForm, "Connect to Zarn-Lt", "key Escape|frame"},
            {"dlgControlExisting", &program.unitsForm, "Control Existing Corvane", "click OK|key Escape|frame"},
            {"dlgPresets", &program.panelForm.presetsForm(), "Preset Handler", "click ExitPresets|key Escape|frame"},
            {"dlgInputConnect", &program.helpForms[0],
             "How to Connect Inputs to Outputs|To Connect inputs to Outputs:|You can connect inputs to outputs by "
             "clicking the input's Vid/Aud, Vid, or Aud button. Then click the same button on the output to be "
             "connected to, multiple outputs may be connected. Then click the TAKE button.|" + Clears + ".|OK", Ok},
            {"dlgDisconnect", &program.helpForms[1], "Disconnecting Outputs|To Disconnect Outputs:|"
             "Disconnecting outputs are a simple as selecting the output using the Aud, Vid or Vid/Aud button for the "
             "output to disconnect, then click the Take button.|" + Clears + ".|OK", Ok},
            {"VolumeHelpDialog", &program.helpForms[2], "Adjusting Volumes|To Adjust Ouput Volumes:|"
             "You can adjust the volume of an output by clicking on the VOL XX area of the output status. The "
             "volume up and volume down buttons will appear at the bottom of the screen.|" + Clears +
             " from the screen.|OK", Ok}};
        // clang-format on
        const QRegularExpression named(QStringLiteral("_|[A-Z]"));
        std::string answers;
        for (const auto &[name, form, texts, ways] : windows) {
            for (const QString &way : QString::fromStdString(ways).split(u'|')) {
                program.messageState.YesNoAnswer = true;
                form->present();
                kvn.windows.refresh();
                QWidget *window = kvn.window(name);
                QString found = window->windowTitle();
                for (const auto *part : window->findChildren<QWidget *>()) {
                    const QString said = part->property("text").toString();
                    found += said.isEmpty() ? said : u'|' + said;
                    QVERIFY2(said.isEmpty() || !part->objectName().isEmpty(), qPrintable(said));
                    if (part->property("textFormat").toInt() != Qt::PlainText &&
                        Qt::mightBeRichText(said))
                        found += u" rich";
                }
                QCOMPARE((found + u'|').toStdString().substr(0, texts.size() + 1), texts + "|");
                for (const auto *one : window->findChildren<QWidget *>(named)) {
                    for (const auto *other : window->findChildren<QWidget *>(named))
                        QVERIFY2(one == other || one->parent() != other->parent() ||
                                     !one->isVisible() || !other->isVisible() ||
                                     !one->geometry().intersects(other->geometry()),
                                 name.c_str());
                }
                QCOMPARE(window->isModal(), name == "plainBox" || name == "dlgConnect");
                play(kvn, "in " + name + " " + way.toStdString());
                QVERIFY2(!window->isVisible() && !form->isLoaded(), qPrintable(way));
                if (name == "dlgYesNo")
                    answers += program.messages.answered() ? "yes " : "no ";
            }
        }
        QCOMPARE(answers, std::string("yes no no no yes "));
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
