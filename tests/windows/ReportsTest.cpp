#include "hands.h"
#include "support/rows.h"

#include <QApplication>
#include <QTextDocument>
#include <QTimer>

namespace {

const std::string Queries = "\rSTA O A\rSTA O A\r";
const std::string Connecting = "click MainControlButton_0 ; in dlgConnect ";
const std::string InUnits = "click MainControlButton_2 in dlgControlExisting ";
const std::string Adding = InUnits + "click OptionsCommand_0 ";
const std::string Editing = InUnits + "click OptionsCommand_1 ";
const std::string Controlling = InUnits + "click OptionsCommand_2 ";
const std::string Deleting = InUnits + "click OptionsCommand_3 ";

} // namespace

/// What the windows report, and that each can be left.
class ReportsTest : public QObject {
    Q_OBJECT

    static bool overlaps(const QWidget *window) {
        const auto all =
            window->findChildren<QWidget *>(QRegularExpression(QStringLiteral("_|[A-Z]")));
        return std::any_of(all.begin(), all.end(), [&all](const QWidget *one) {
            return std::any_of(all.begin(), all.end(), [one](const QWidget *other) {
                return one != other && one->parent() == other->parent() && one->isVisible() &&
                       other->isVisible() && one->geometry().intersects(other->geometry());
            });
        });
    }

    static bool isPlain(const QLabel *label) {
        return label->textFormat() == Qt::PlainText || !Qt::mightBeRichText(label->text());
    }

    /// Plays each row in a program of its own that knows two units, until that is left. What the
    /// words mean is said at play().
    static void check(const std::vector<std::array<std::string, 2>> &rows,
                      const std::string &first = "") {
        checkRows(rows, [&first](const std::string &steps) {
            ProgramFixture kvn{{.model = "KVN-32x32-RGBA"}};
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
    void ofTheStartWindow() {
        const std::string label = " see ZarnConnectedLabel";
        check({{"linked" + label + " point ZarnConnectedLabel" + label, "Connected on COM7, Not Connected"},
               {"linked right ZarnConnectedLabel slip ZarnConnectedLabel" + label, "Connected on COM7"},
               {"linked go ZarnConnectedLabel key A held Space held Return" + label, "Connected on COM7"},
               {"go ZarnConnectedLabel linked key Space" + label + " linked key Enter" + label + " linked key Return" + label,
                "Not Connected, Not Connected, Not Connected"},
               {"linked gone" + label, "Not Connected"},
               {"click MainControlButton_0 ; windows unit", "dlgConnect frmMain, 0"},
               {"menu Connect2Corvane ; windows unit", "dlgConnect frmMain, 0A"},
               {"click MainControlButton_2 windows", "dlgControlExisting frmMain"},
               {"menu ControlExistingCorvane windows", "dlgControlExisting frmMain"},
               {"in frmMain key Ctrl+N in dlgControlExisting see AddCorvaneFrame", "Add Corvane"},
               {"menu AboutCorvaneController windows", "frmAbout frmMain"},
               {"ports 0 " + Connecting + "click ConnectSerialOption ; in frmMain point MainControlButton_2 windows "
                "in dlgOK point OKButton windows ; in dlgConnect see ConnectSerialOption", "dlgConnect dlgOK frmMain, dlgConnect frmMain, Serial Port"}});
    }

    void ofTheConnectionDialog() {
        const std::string Ethernet = Connecting + "click ConnectIPOption ";
        const std::string Pasted = Ethernet + "paste 10.200.30.4 ";
        check({{Connecting + "focus click ConnectIPOption focus", "ConnectIPOption, IPAddressQuadConnect_0"},
               {Ethernet + "type 192.168.1.20 key Backspace key Backspace key Backspace key Backspace type 7ab address", "192.168.7*."},
               {Ethernet + "type 13 key Home type 2 address", "213.*.."},
               {Ethernet + "type 192.16. go IPAddressQuadConnect_1 key Ctrl+A type 9 address", "192.9*.."},
               {Ethernet + "type 0 go IPAddressQuadConnect_3 address", "...*"},
               {Pasted + "address frame ; in frmMain click MainControlButton_0 ; in dlgConnect address focus",
                "10.200.30.4*, 10.200.30.4, ConnectIPOption"},
               {Pasted + "go IPAddressQuadConnect_0 key Return key Enter address key Return key Enter ; line windows",
                "10.200.[30]*.4, connect 10.200.30.4:23, KVN32x32Audio frmMain"},
               {Pasted + "held Return go IPAddressQuadConnect_0 held Enter address ; line", "10*.200.30.4, "},
               {Pasted + "refused go Connect2IPButton key Return ; in dlgOK key Return ; in dlgConnect focus", "Connect2IPButton"},
               {Pasted + "click Connect2IPButton ; line", "connect 10.200.30.4:23"},
               {"ports 2 " + Connecting + "click ConnectSerialOption go SerialPortsCombo key End ; line in dlgOK key Return ; "
                "line in dlgConnect list SerialPortsCombo click Connect2SerialButton ; windows",
                "close, open 2 38400,N,8,1,  Comm1 [Comm2], KVN32x32Audio frmMain"}});
    }

    void ofTheUnits() {
        const std::string Before = "A<b> SERIAL B ETHER IP 192.168.1.20";
        check({{Editing + "see AddCorvaneFrame focus list AvailCorvanesList pick AvailCorvanesList 1 unit "
                "list ConnectChoiceList address click CancelCommand see AddCorvaneFrame",
                "Edit Corvane, AvailCorvanesList,  A<b>  B , 2A,  SERIAL [ETHER], 192.168.1.20, Edit Corvane hidden"},
               {Editing + "pick AvailCorvanesList 1 go CntrlIPAddressQuad_3 key Shift+Home key Backspace key Backspace type 5.6 click AddCorvaneCommand file",
                "A<b> SERIAL B ETHER IP 192.168.15.6"},
               {Editing + "pick AvailCorvanesList 0 unit pick AvailCorvanesList 2 unit list AvailCorvanesList", "1A, 0A,  A<b>  B "},
               {Adding + "see AddCorvaneFrame focus type \u00C4\u20ACb held Return file key Return file",
                "Add Corvane, Text3, " + Before + ", " + Before + " \u00C4b SERIAL"},
               {Adding + "type C pick ConnectChoiceList 1 go CntrlIPAddressQuad_0 type 1.2.3.4 key Enter file",
                Before + " C ETHER IP 1.2.3.4"},
               {Deleting + "see AddCorvaneFrame pick AvailCorvanesList 0 go CancelCommand key Return see AddCorvaneFrame file",
                "Delete Corvane, Delete Corvane hidden, " + Before},
               {Deleting + "pick AvailCorvanesList 0 click AddCorvaneCommand ; in dlgYesNo click YesButton ; file", Before.substr(12)},
               {Deleting + "list AvailCorvanesList key Down unit list AvailCorvanesList key Down unit", " A<b>  B , 1A, [A<b>] B , 2A"},
               {Deleting + "key Up unit", "1A"},
               {Deleting + "key Home unit", "1A"},
               {Deleting + "key Space unit", "1A"},
               {Controlling + "see AddCorvaneFrame double AvailCorvanesList 1 unit ; unit windows",
                "Control Corvane, 2A, 2B, KVN32x32Audio dlgControlExisting frmMain"}});
    }

    void ofThePanel() {
        check({{"go GoToPresets click InputVideoAudioButtons_32 state click ClearButton click InputVideoButtons_25 state "
                "click ClearButton click InputAudioButtons_1 state focus", "Bi32v0, Vi25v0, Ai1v0, GoToPresets"},
               {"click OutputVidAudButtons_17 state click ClearButton click OutputVideoButtons_16 state "
                "click ClearButton click OutputAudioButtons_32 state", "Bi0o17v0, Vi0o16v0, Ai0o32v0"},
               {"click MuteButton_25 sent", "MUT M 25" + Queries},
               {"point OutputVolumeValue_32 state click VolumeUpButton sent click VolumeDownButton sent",
                "Bi0v32, VOL L 32 -19\rVOL L 32?\r, VOL L 32 -20\rVOL L 32?\r"},
               {"click OutputVideoButtons_16 click TakeButton sent", "DIS 16" + Queries},
               {"click GoToPresets windows in dlgPresets click NewPresetButton_1 click NewPresetButton_32 click ExecutePresetButton sent",
                "KVN32x32Audio dlgPresets frmMain, PST X 32\r"},
               {"see ConnectionHelp menu ConnectionHelp windows", "How to Connect, KVN32x32Audio dlgInputConnect frmMain"},
               {"see disconnectHelp menu disconnectHelp windows", "How to Disconnect, KVN32x32Audio dlgDisconnect frmMain"},
               {"see AdjustingVolumes menu AdjustingVolumes windows",
                "Adjusting Volumes (if applicable), KVN32x32Audio VolumeHelpDialog frmMain"},
               {"go OutputVolumeValue_3 key A state key Space state go OutputVolumeValue_4 key Return state "
                "go OutputVolumeValue_5 key Enter state", "Bi0v0, Bi0v3, Bi0v4, Bi0v5"},
               {"frame windows", "frmMain"},
               {"click ExitButton windows", "frmMain"}}, "panel ");
        const std::string taken = "Con 3(1)3F (1)" + Queries;
        check({{"key F9 sent", taken},
               {"key Return sent", taken},
               {"key Enter sent", taken},
               {"key Space sent", taken},
               {"key Esc sent state", ", Bi3v0"},
               {"key F1 sent windows", ", KVN32x32Audio dlgInputConnect frmMain"},
               {"held F9 held Return held Enter held Space held Esc held F1 sent state windows",
                ", Bi3o1v0, KVN32x32Audio frmMain"}},
              "panel click InputVideoAudioButtons_3 click OutputVidAudButtons_1 go TakeButton ");
    }
    // clang-format on

    void canBeLeft() {
        ProgramFixture kvn;
        Program &program = kvn.program;
        const std::string text = "<b>Gr\u00F6\u00DFe\r\n2";
        auto &[message, box, question] = program.views.messages;
        message.OKLabel.text = box.OKLabel.text = question.YesNoText.text = text;
        // Window, title and the texts that are the window's own, the ways to leave it.
        // clang-format off
        const std::vector<std::tuple<std::string, Form *, std::string, std::string>> windows{
            {"dlgOK", &program.messages.dlgOK(), "Confirm|" + text + "|OK", "OKButton Return Escape frame"},
            {"plainBox", &program.messages.plainBox(), "Corvane Controller 1.14|" + text + "|OK", "OKButton Return Escape frame"},
            {"dlgYesNo", &program.messages.dlgYesNo(), " |" + text + "|No|Yes", "YesButton NoButton Return Escape frame"},
            {"frmAbout", &program.aboutForm, "About Corvane Controller 1.14|Corvane Controller 1.14|Version 1.14.0|"
             "Controls Corvane audio/video matrix switchers\nover a serial port or TCP/IP.|OK", "cmdOK Return Escape frame"},
            {"dlgSetup", &program.setupForm, "Initializing Display|Setting Output|Setting Input", "frame"},
            {"dlgConnect", &program.connectForm, "Connect to Zarn-Lt", "Escape frame"},
            {"dlgControlExisting", &program.unitsForm, "Control Existing Corvane", "OKButton Escape frame"},
            {"dlgPresets", &program.panelForm.presetsForm(), "Preset Handler", "ExitPresets Escape frame"},
            {"dlgInputConnect", &program.helpForms[0], "How to Connect Inputs to Outputs|To Connect inputs to Outputs:|"
             "You can connect inputs to outputs by clicking the input's Vid/Aud, Vid, or Aud button. Then click the same button "
             "on the output to be connected to, multiple outputs may be connected. Then click the TAKE button.|"
             "The Escape button clears all selections.|OK", "OKButton Return Escape frame"},
            {"dlgDisconnect", &program.helpForms[1], "Disconnecting Outputs|To Disconnect Outputs:|"
             "Disconnecting outputs are a simple as selecting the output using the Aud, Vid or Vid/Aud button for the output to "
             "disconnect, then click the Take button.|The Escape button clears all selections.|OK", "OKButton Return Escape frame"},
            {"VolumeHelpDialog", &program.helpForms[2], "Adjusting Volumes|To Adjust Ouput Volumes:|"
             "You can adjust the volume of an output by clicking on the VOL XX area of the output status. The volume up and "
             "volume down buttons will appear at the bottom of the screen.|"
             "The Escape button clears all selections from the screen.|OK", "OKButton Return Escape frame"}};
        // clang-format on
        std::string answers;
        for (const auto &[name, form, texts, ways] : windows) {
            std::istringstream words(ways);
            for (std::string way; words >> way;) {
                program.messageState.YesNoAnswer = true;
                form->present();
                kvn.windows.refresh();
                QWidget *window = kvn.window(name);
                std::string found = window->windowTitle().toStdString();
                for (const auto *label : window->findChildren<QLabel *>()) {
                    if (!label->text().isEmpty()) // no picture
                        found +=
                            "|" + label->text().toStdString() + (isPlain(label) ? "" : " rich");
                }
                for (const auto *button : window->findChildren<QAbstractButton *>())
                    found += "|" + button->text().toStdString();
                QCOMPARE(found.substr(0, texts.size()), texts);
                QVERIFY2(!overlaps(window), name.c_str());
                const bool blocks = name == "plainBox" || name == "dlgConnect";
                QCOMPARE(window->isModal(), blocks);
                const bool key = way == "Return" || way == "Escape";
                play(kvn, "in " + name + (key ? " key " : way == "frame" ? " " : " click ") + way);
                QVERIFY2(!window->isVisible() && !form->isLoaded(), (name + " " + way).c_str());
                if (name == "dlgYesNo")
                    answers += program.messages.answered() ? "yes " : "no ";
            }
        }
        QCOMPARE(answers, std::string("yes no no no yes "));
    }

    // One that is told to quit may ask the windows first.
    void endInTheRealEventLoop() {
        ProgramFixture kvn;
        QTimer::singleShot(0, [&kvn] {
            play(kvn, "menu AboutCorvaneController click MainControlButton_2 ; end");
        });
        QTimer::singleShot(30'000, [] { QCoreApplication::exit(1); });
        QCOMPARE(QApplication::exec(), 0);
    }
};

QTEST_MAIN(ReportsTest)
#include "ReportsTest.moc"
