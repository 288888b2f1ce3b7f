#include "QtEventPump.h"
#include "hands.h"
#include "look.h"
#include "support/ProgramFixture.h"
#include "support/checkRows.h"

#include <QAction>
#include <QApplication>
#include <QClipboard>
#include <QComboBox>
#include <QListWidget>
#include <QRegularExpression>
#include <QTimer>
#include <QWindow>

#include <sstream>

namespace {

const std::string UnitsFile = "program/KVNConfigurator.ini";
const std::string SavedUnit = "KVN NAME = A<b>\r\nKVN TYPE = SERIAL\r\n";
const std::string OtherUnit = "KVN NAME = B\r\nKVN TYPE = ETHER\r\nKVN IP = 192.168.1.20  \r\n";

} // namespace

/// All windows but the panel.
class DialogsTest : public QObject {
    Q_OBJECT

    void connectOverSerial();
    void openUnits(Operation operation);

    ProgramFixture kvn;
    Views &views = kvn.program.views;

private Q_SLOTS:
    void init();
    void areMadeWhenShownFirst();
    void showListsAndAddresses();
    void showTheirViews();
    void showTheLink();
    void closeInEveryWay();
    void startWindowReports();
    void aMessageOverAModalDialogIsAnswered();
    void connectDialogReports();
    void unitsReport();
    void keysPickTheFirstUnitFirst();
    void presetsReport();
    void endInTheRealEventLoop();
};

void DialogsTest::init() {
    for (FormView *form : views.forms())
        form->loaded = form == &views.main.form;
    kvn.program.messages.modalFormClosed();
    kvn.pump.eachTurn = [] { QCoreApplication::processEvents(); };
    kvn.windows.refresh();
    kvn.window("frmMain")->activateWindow();
    QCoreApplication::processEvents();
}

void DialogsTest::areMadeWhenShownFirst() {
    QVERIFY(kvn.isShown("frmMain"));
    for (const char *const name : {"dlgConnect", Units, "dlgPresets", "KVN32x32Audio", "dlgOK"})
        QVERIFY(!kvn.window(name));
    kvn.program.setupForm.present();
    kvn.windows.refresh();
    QCOMPARE(kvn.visibleWindows(), std::string("dlgSetup frmMain"));
    QCOMPARE(kvn.text("dlgSetup", "SettingOutputLabel") + "|" +
                 kvn.text("dlgSetup", "SettingInputLabel"),
             std::string("Setting Output|Setting Input"));
}

void DialogsTest::showTheirViews() {
    const auto check = [&](const char *window, auto &view, const auto &controls) {
        const auto before = view;
        view.form.loaded = true;
        for (int round = 0; round < 3; ++round) {
            int number = 0;
            for (const auto &[name, control] : controls)
                change(*control, ++number, round);
            kvn.windows.refresh();
            for (const auto &[name, control] : controls) {
                auto *widget = kvn.part(window, name);
                QCOMPARE(name + ": " + look(widget), name + ": " + wanted(widget, *control));
                QCOMPARE(hints(widget), control->toolTip + "/" + control->description);
                if (const auto *label = qobject_cast<QLabel *>(widget))
                    QCOMPARE(label->textFormat(), Qt::PlainText);
            }
        }
        view = before;
        kvn.windows.refresh();
    };
    using Controls = std::vector<std::pair<std::string, Control *>>;
    // clang-format off
    auto &[main, messages, dialog, units, panel, presets, setup, about, help] = views;
    check("frmMain", main, Controls{{"MainControlButton_0", &main.MainControlButton_0},
        {"MainControlButton_2", &main.MainControlButton_2}, {"ToDisconnectPortLabel", &main.ToDisconnectPortLabel}});
    check("dlgConnect", dialog, Controls{{"Frame1", &dialog.Frame1}, {"ConnectIPOption", &dialog.ConnectIPOption},
        {"ConnectSerialOption", &dialog.ConnectSerialOption}, {"IPAddressFrame", &dialog.IPAddressFrame},
        {"Connect2IPButton", &dialog.Connect2IPButton}, {"Label2", &dialog.Label2},
        {"SerialConnectionFrame", &dialog.SerialConnectionFrame}, {"Label1", &dialog.Label1},
        {"SerialPortsCombo", &dialog.SerialPortsCombo.control}, {"Connect2SerialButton", &dialog.Connect2SerialButton}});
    Controls inUnits{{"OptionsFrame", &units.OptionsFrame}, {"OKButton", &units.OKButton},
        {"AddCorvaneFrame", &units.AddCorvaneFrame}, {"Label2_0", &units.Label2_0}, {"Label2_1", &units.Label2_1},
        {"Text3", &units.Text3}, {"AvailCorvanesList", &units.AvailCorvanesList.control}, {"Label3", &units.Label3},
        {"ConnectChoiceList", &units.ConnectChoiceList.control}, {"ControlledbyText", &units.ControlledbyText},
        {"IPAddressFrame", &units.IPAddressFrame}, {"AddCorvaneCommand", &units.AddCorvaneCommand},
        {"CancelCommand", &units.CancelCommand}, {"StatusLabel", &units.StatusLabel}};
    for (std::size_t option = 0; option < 4; ++option)
        inUnits.emplace_back("OptionsCommand_" + std::to_string(option), &units.OptionsCommand.at(option));
    check(Units, units, inUnits);
    Controls inPresets{{"ExecutePresetButton", &presets.ExecutePresetButton}, {"ExitPresets", &presets.ExitPresets}};
    for (int preset = 1; preset <= 32; ++preset)
        inPresets.emplace_back("NewPresetButton_" + std::to_string(preset), &presets.NewPresetButton[preset]);
    check("dlgPresets", presets, inPresets);
    // clang-format on
}

void DialogsTest::showTheLink() {
    for (const auto &[window, form, status] :
         {std::tuple("frmMain", &views.main.form, &views.main.status),
          {"dlgConnect", &views.connect.form, &views.connect.status},
          {Units, &views.units.form, &views.units.status},
          {"KVN32x32Audio", &views.panel.form, &views.panel.status}}) {
        form->loaded = true;
        bool up = false;
        for (const auto &[colour, rgb, ink] :
             {std::tuple(LinkColour::ButtonFace, "#e0e0e0", "#1c2128"),
              {LinkColour::NetworkUp, "#ff8000", "#1c2128"},
              {LinkColour::SerialUp, "#00c000", "#ffffff"},
              {LinkColour::SerialDown, "#c00000", "#ffffff"},
              {LinkColour::NotConnected, "#ff0000", "#ffffff"}}) {
            up = !up;
            *status = {"<b>" + std::string(rgb), colour, up, colour != LinkColour::SerialUp};
            kvn.windows.refresh();
            auto *label = kvn.part<QLabel>(window, "ZarnConnectedLabel");
            QCOMPARE(look(label), status->caption + (status->labelVisible ? "" : " hidden"));
            QCOMPARE(pixel(label, 1, 1), std::string(rgb));
            QCOMPARE(label->palette().color(label->foregroundRole()).name().toStdString(),
                     std::string(ink));
            QCOMPARE(label->textFormat(), Qt::PlainText);
            for (const bool picture : {true, false}) {
                auto *image =
                    kvn.part(window, picture ? "ZarnConnectedImage" : "ZarnNotConnectedImage");
                QCOMPARE(!image->isHidden(), picture == up);
                QCOMPARE(pixel(image, image->width() * 20 / 56, image->height() / 2),
                         std::string(picture ? "#148c3c" : "#b02828"));
                const std::string middle =
                    pixel(image, image->width() / 2, image->height() * 11 / 28);
                QCOMPARE(middle == "#148c3c", picture); // joined, or apart
            }
        }
    }
}

void DialogsTest::showListsAndAddresses() {
    ConnectView &connect = views.connect;
    UnitsView &units = views.units;
    connect.form.loaded = units.form.loaded = true;
    const auto shown = [&] {
        kvn.windows.refresh();
        const auto *ports = kvn.part<QComboBox>("dlgConnect", "SerialPortsCombo");
        return entries(ports, ports->currentIndex()) + "," + listed("AvailCorvanesList") + "," +
               listed("ConnectChoiceList") + "," +
               addressIn("dlgConnect", "IPAddressQuadConnect_") + "," +
               addressIn(Units, "CntrlIPAddressQuad_");
    };
    ListControl *const lists[] = {&connect.SerialPortsCombo, &units.AvailCorvanesList,
                                  &units.ConnectChoiceList};
    for (ListControl *list : lists) {
        list->entries = {"<b>1", "\xE4"};
        list->chosen = 1;
    }
    for (auto *address : {&connect.IPAddressQuadConnect, &units.CntrlIPAddressQuad}) {
        for (std::size_t box = 0; box < 4; ++box)
            address->boxes.at(box).text = std::to_string(10 + box);
        address->cursor = {2, 1, 2};
        ++address->cursorMoved;
    }
    const std::string address = "10.11.12*.13";
    const std::string list = " <b>1 [\u00E4],";
    QCOMPARE(shown(), list + list + list + address + "," + address);
    QCOMPARE(kvn.part<QLineEdit>(Units, "CntrlIPAddressQuad_2")->selectedText(),
             QStringLiteral("2"));
    for (ListControl *control : lists)
        control->chosen = -1;
    QVERIFY(shown().starts_with(" <b>1  \u00E4 , <b>1  \u00E4 , <b>1  \u00E4 ,10."));
    for (const auto &[name, spoken] : {std::pair("AvailCorvanesList", "Saved units"),
                                       {"ConnectChoiceList", "Connection kind"},
                                       {"ControlledbyText", "Controlled via"},
                                       {"Text3", "Unit name"}})
        QCOMPARE(kvn.part(Units, name)->accessibleName(), QLatin1String(spoken));
    for (int box = 0; box < 4; ++box)
        QCOMPARE(kvn.part(Units, "CntrlIPAddressQuad_" + std::to_string(box))->accessibleName(),
                 QStringLiteral("Address part %1").arg(box + 1));
    auto *ports = kvn.part<QComboBox>("dlgConnect", "SerialPortsCombo");
    QCOMPARE(ports->accessibleName() + ports->placeholderText(),
             QStringLiteral("Serial portsSelect Port"));
}

void DialogsTest::closeInEveryWay() {
    Program &program = kvn.program;
    MessageViews &messages = views.messages;
    const std::string text = "<b>Gr\u00F6\u00DFe\r\n2";
    messages.dlgOK.OKLabel = {.text = text, .toolTip = "<b>why", .description = "why"};
    messages.plainBox.OKLabel.text = text;
    messages.dlgYesNo.YesNoText.text = text;
    // clang-format off
    const std::vector<std::tuple<std::string, Form *, const char *, std::string>> windows{
        {"dlgOK", &program.messages.dlgOK(), "Confirm", "OKButton Enter Escape frame"},
        {"plainBox", &program.messages.plainBox(), "Corvane Controller 1.14", "OKButton Enter Escape frame"},
        {"dlgYesNo", &program.messages.dlgYesNo(), " ", "YesButton NoButton Enter Escape frame"},
        {"frmAbout", &program.aboutForm, "About Corvane Controller 1.14", "cmdOK Enter Escape frame"},
        {"dlgSetup", &program.setupForm, "Initializing Display", "frame"},
        {"dlgConnect", &program.connectForm, "Connect to Zarn-Lt", "Escape frame"},
        {Units, &program.unitsForm, "Control Existing Corvane", "OKButton Escape frame"},
        {"dlgPresets", &program.panelForm.presetsForm(), "Preset Handler", "ExitPresets Escape frame"}};
    // clang-format on
    std::string answers;
    for (const auto &[name, form, title, ways] : windows) {
        std::istringstream words(ways);
        for (std::string way; words >> way;) {
            for (const bool before : {false, true}) {
                program.messageState.YesNoAnswer = before;
                program.link.IPConnectingFlag = true;
                form->present();
                kvn.windows.refresh();
                auto *window = kvn.window(name);
                window->activateWindow();
                QCoreApplication::processEvents(); // it becomes the active one
                QVERIFY(window->isVisible() && window->windowTitle() == QLatin1String(title));
                for (const auto *label : window->findChildren<QLabel *>(
                         QRegularExpression(QStringLiteral("OKLabel|YesNoText"))))
                    QVERIFY(label->textFormat() == Qt::PlainText &&
                            label->text().toStdString() == text);
                QCOMPARE(hints(window), std::string(name == "dlgOK" ? "<b>why/why" : "/"));
                leave(name, way);
                QVERIFY2(!window->isVisible() && !form->isLoaded(), (name + " " + way).c_str());
                QCOMPARE(program.link.IPConnectingFlag, name != "dlgSetup" && name != "dlgConnect");
                if (name == "dlgYesNo")
                    answers += program.messages.answered() ? "yes " : "no ";
            }
        }
    }
    QCOMPARE(answers, std::string("yes yes no no no no no no no yes "));
    QCOMPARE(kvn.text("frmAbout", "lblTitle") + "|" + kvn.text("frmAbout", "lblVersion"),
             std::string("Corvane Controller 1.14|Version 1.14.0"));
}

void DialogsTest::connectOverSerial() {
    kvn.program.link.LinkKind = SerialLinkKind;
    kvn.program.link.SerialPortOpen = true;
    kvn.serialPort.present = {7};
    kvn.serialPort.open({7, "tty7"}, "38400,N,8,1");
    views.main.status.caption = "Connected on COM7";
}

void DialogsTest::startWindowReports() {
    auto *label = kvn.part("frmMain", "ZarnConnectedLabel");
    QCOMPARE(kvn.window("frmMain")->windowTitle(), QStringLiteral("Corvane Controller 1.14"));
    const auto key = [=](Qt::Key pressed) { QTest::keyClick(label, pressed); };
    // clang-format off
    const std::vector<std::tuple<const char *, bool, std::function<void()>>> ways{
        {"left", true, [&] { clickOnScreen(label); }},
        {"right", false, [&] { clickOnScreen(label, Qt::RightButton); }},
        {"beside", false, [&] { QTest::mouseRelease(label, Qt::LeftButton, {}, QPoint(-5, 5)); }},
        {"Space", true, [&] { key(Qt::Key_Space); }},
        {"Enter", true, [&] { key(Qt::Key_Enter); }},
        {"Return", true, [&] { key(Qt::Key_Return); }},
        {"A", false, [&] { key(Qt::Key_A); }},
        {"held down", false, [&] { QTest::simulateEvent(label, true, Qt::Key_Space, {}, QString(), true); }},
        {"lost, with nothing clicked", true, [&] { kvn.serialPort.vanish(); }}};
    // clang-format on
    for (const auto &[way, closes, action] : ways) {
        connectOverSerial();
        kvn.windows.refresh();
        label->setFocus();
        action();
        QVERIFY2(kvn.serialPort.isOpen() != closes, way);
        QCOMPARE(kvn.text("frmMain", "ZarnConnectedLabel") == "Not Connected", closes);
    }
    kvn.serialPort.close();
    kvn.program.link = LinkState();
    checkRows({{"MainControlButton_0", "dlgConnect frmMain"},
               {"Connect2Corvane", "dlgConnect frmMain A"},
               {"MainControlButton_2", "dlgControlExisting frmMain A"},
               {"ControlExistingCorvane", "dlgControlExisting frmMain A"},
               {"Ctrl+N", "dlgControlExisting frmMain A Add Corvane"},
               {"AboutCorvaneController", "frmAbout frmMain A"}},
              [&](const std::string &what) {
                  init();
                  std::string result;
                  kvn.program.unit.SelectedUnitName = " A";
                  kvn.pump.in(0.1, [&] {
                      result = kvn.visibleWindows() + kvn.program.unit.SelectedUnitName;
                      if (kvn.isShown("dlgConnect"))
                          kvn.window("dlgConnect")->close();
                  });
                  if (auto *item = kvn.part<QAction>("frmMain", what))
                      item->trigger();
                  else if (what == "Ctrl+N")
                      QTest::keyClick(kvn.window("frmMain"), Qt::Key_N, Qt::ControlModifier);
                  else
                      kvn.click("frmMain", what);
                  kvn.pump.runFor(0.2, [] { return false; });
                  const bool adds = views.units.form.loaded && views.units.AddCorvaneFrame.visible;
                  return result + (adds ? " " + views.units.AddCorvaneFrame.text : "");
              });
}

void DialogsTest::aMessageOverAModalDialogIsAnswered() {
    kvn.serialPort.present.clear();
    const auto findNoPort = [&] { kvn.clickAnything("dlgConnect", "ConnectSerialOption"); };
    kvn.pump.in(0.1, findNoPort);
    kvn.pump.in(0.2, [&] {
        clickOnScreen(kvn.part("frmMain", "MainControlButton_2"));
        QCOMPARE(kvn.visibleWindows(), std::string("dlgConnect dlgOK frmMain"));
        clickOnScreen(kvn.part("dlgOK", "OKButton"));
        QVERIFY(!kvn.isShown("dlgOK"));
        kvn.window("dlgConnect")->close();
    });
    kvn.click("frmMain", "MainControlButton_0");
    QCOMPARE(kvn.visibleWindows(), std::string("frmMain"));
}

void DialogsTest::connectDialogReports() {
    const auto box = [&](int number) {
        return kvn.part<QLineEdit>("dlgConnect", "IPAddressQuadConnect_" + std::to_string(number));
    };
    const auto address = [&] {
        std::string all = addressIn("dlgConnect", "IPAddressQuadConnect_") + " ";
        for (std::size_t quad = 0; quad < 4; ++quad)
            all += kvn.program.link.IPAddressQuads.at(quad) + ".";
        return all;
    };
    kvn.program.link = LinkState();
    kvn.program.connectForm.LoadForm();
    kvn.windows.refresh();
    QCoreApplication::processEvents(); // it becomes the active one
    kvn.clickAnything("dlgConnect", "ConnectIPOption");
    type("dlgConnect", "192.168.1.20");
    for (int deleted = 0; deleted < 4; ++deleted)
        QTest::keyClick(kvn.window("dlgConnect")->focusWidget(), Qt::Key_Backspace);
    type("dlgConnect", "7ab");
    QCOMPARE(address(), std::string("192.168.7*. 192.168.7.0."));
    box(1)->setFocus();
    box(1)->setSelection(0, 2);
    type("dlgConnect", "9");
    box(0)->setFocus();
    box(0)->selectAll();
    type("dlgConnect", "0");
    box(3)->setFocus();
    QCOMPARE(address(), std::string(".98.7.* 0.98.7.0.")); // what is left as 0 is emptied
    QGuiApplication::clipboard()->setText(QStringLiteral(" 10.200.30.4\n"));
    QTest::keySequence(box(3), QKeySequence::Paste);
    QCOMPARE(address(), std::string("10.200.30.4* 10.200.30.4."));
    box(0)->setFocus();
    for (int number = 0; number < 4; ++number)
        QTest::keyClick(kvn.window("dlgConnect")->focusWidget(), Qt::Key_Return);
    QCOMPARE(kvn.socket.log.back(), std::string("connect 10.200.30.4:23"));
    QVERIFY(!kvn.isShown("dlgConnect"));

    kvn.program.link.IPConnectedFlag = false;
    kvn.program.connectForm.LoadForm();
    kvn.windows.refresh();
    QVERIFY(kvn.window("dlgConnect")->isModal());
    kvn.click("dlgConnect", "Connect2IPButton");
    QCOMPARE(std::count(kvn.socket.log.begin(), kvn.socket.log.end(), kvn.socket.log.back()), 2);
    kvn.serialPort.present = {3, 7};
    kvn.answerMessages();
    kvn.program.connectForm.LoadForm();
    kvn.windows.refresh();
    kvn.click("dlgConnect", "ConnectSerialOption");
    QTest::keyClick(kvn.part("dlgConnect", "SerialPortsCombo"), Qt::Key_End);
    kvn.pump.runFor(0.1, [] { return false; });
    QCOMPARE(kvn.serialPort.log.back(), std::string("open 7 38400,N,8,1"));
    kvn.click("dlgConnect", "Connect2SerialButton");
    QVERIFY(!kvn.isShown("dlgConnect"));
}

void DialogsTest::openUnits(Operation operation) {
    init();
    kvn.answerMessages();
    kvn.files.contentsOf[UnitsFile] = SavedUnit + OtherUnit;
    kvn.program.unitsForm.LoadForm();
    kvn.windows.refresh();
    kvn.window(Units)->activateWindow();
    QCoreApplication::processEvents();
    kvn.click(Units, "OptionsCommand_" + std::to_string(static_cast<int>(operation)));
}

void DialogsTest::unitsReport() {
    const int &picked = kvn.program.savedUnits.SelectedBlockIndex;
    openUnits(Operation::Edit);
    QCOMPARE(listed("AvailCorvanesList"), std::string(" A<b>  B "));
    pick("AvailCorvanesList", 1);
    QCOMPARE(picked, 2);
    QCOMPARE(listed("ConnectChoiceList"), std::string(" SERIAL [ETHER]"));
    auto *last = kvn.part<QLineEdit>(Units, "CntrlIPAddressQuad_3");
    QCOMPARE(last->text(), QStringLiteral("20")); // the padding is not seen
    last->setFocus();
    for (const auto key : {Qt::Key_End, Qt::Key_Backspace, Qt::Key_Backspace, Qt::Key_Backspace})
        QTest::keyClick(kvn.window(Units)->focusWidget(), key);
    type(Units, "5.6");
    kvn.click(Units, "AddCorvaneCommand");
    const std::string network = "KVN NAME = B\r\nKVN TYPE = ETHER\r\nKVN IP = 192.168.15.6\r\n";
    QCOMPARE(kvn.files.contentsOf[UnitsFile], SavedUnit + network);

    openUnits(Operation::Edit);
    pick("AvailCorvanesList", 0);
    pick("AvailCorvanesList", 2); // beside the entries
    QCOMPARE(std::to_string(picked) + listed("AvailCorvanesList"), std::string("0 A<b>  B "));
    kvn.click(Units, "CancelCommand");
    QVERIFY(!views.units.AddCorvaneFrame.visible);

    for (const auto key : {Qt::Key_Return, Qt::Key_Enter}) {
        openUnits(Operation::Add);
        auto *name = kvn.part<QLineEdit>(Units, "Text3");
        name->setFocus();
        for (const QChar typed : QStringLiteral("\u00C4\u20ACb")) // Latin-1 only is taken
            QTest::sendKeyEvent(QTest::Click, name, Qt::Key_A, typed, Qt::NoModifier);
        pick("ConnectChoiceList", 0);
        QTest::simulateEvent(name, true, key, {}, QString(), true); // held down
        QCOMPARE(kvn.files.contentsOf[UnitsFile], SavedUnit + OtherUnit);
        QTest::keyClick(name, key);
        QCOMPARE(kvn.files.contentsOf[UnitsFile], SavedUnit + OtherUnit +
                                                      "KVN NAME = \xC4"
                                                      "b\r\nKVN TYPE = SERIAL\r\n");
    }
    openUnits(Operation::Delete);
    auto *cancel = kvn.part(Units, "CancelCommand");
    cancel->setFocus();
    QTest::keyClick(cancel, Qt::Key_Return); // presses what has the focus
    QVERIFY(!views.units.AddCorvaneFrame.visible);

    openUnits(Operation::Control);
    std::string seen;
    kvn.program.link = LinkState();
    kvn.pump.in(5.0, [&] {
        seen = kvn.program.unit.SelectedUnitName;
        kvn.window("KVN32x32Audio")->close();
    });
    auto *list = kvn.part<QListWidget>(Units, "AvailCorvanesList");
    pick("AvailCorvanesList", 1);
    QTest::mouseDClick(list->viewport(), Qt::LeftButton, {},
                       list->visualItemRect(list->item(1)).center());
    QCoreApplication::processEvents(); // the list is through with the click
    QCOMPARE(seen, std::string("B"));
}

void DialogsTest::keysPickTheFirstUnitFirst() {
    const int &picked = kvn.program.savedUnits.SelectedBlockIndex;
    for (const Qt::Key key : {Qt::Key_Down, Qt::Key_Up, Qt::Key_Home, Qt::Key_Space}) {
        openUnits(Operation::Delete);
        auto *list = kvn.part<QListWidget>(Units, "AvailCorvanesList");
        QVERIFY(list->currentRow() == 0 && kvn.window(Units)->focusWidget() == list);
        QTest::keyClick(list, key);
        QCOMPARE(std::to_string(picked) + listed("AvailCorvanesList"), std::string("1[A<b>] B "));
        QTest::keyClick(list, Qt::Key_Down);
        QCOMPARE(picked, 2);
    }
}

void DialogsTest::presetsReport() {
    dlgPresets &presets = kvn.program.panelForm.presetsForm();
    presets.LoadForm();
    kvn.windows.refresh();
    connectOverSerial();
    kvn.takeWritten();
    for (int preset = 1; preset <= 32; ++preset) {
        kvn.click("dlgPresets", "NewPresetButton_" + std::to_string(preset));
        QCOMPARE(kvn.program.panel.CurrentPreset, preset);
    }
    kvn.click("dlgPresets", "ExecutePresetButton");
    QCOMPARE(kvn.takeWritten(), std::string("PST X 32\r"));
}

// One that is told to quit may ask the windows first.
void DialogsTest::endInTheRealEventLoop() {
    for (const char *const name : {"frmMain", Units})
        kvn.window(name)->setObjectName(QString()); // those of this test are found from here on
    QtEventPump pump;
    Program program({pump, kvn.serialPort, kvn.socket, kvn.files, "program"});
    Windows windows(program);
    program.start();
    windows.refresh();
    QTimer::singleShot(0, [] {
        ProgramFixture::part<QAction>("frmMain", "AboutCorvaneController")->trigger();
        ProgramFixture::click("frmMain", "MainControlButton_2");
        ProgramFixture::window("frmMain")->close();
    });
    QTimer::singleShot(30'000, [] { QCoreApplication::exit(1); });
    QCOMPARE(QApplication::exec(), 0);
}

QTEST_MAIN(DialogsTest)
#include "DialogsTest.moc"
