#include "hands.h"
#include "support/rows.h"

#include <QAbstractItemView>
#include <QComboBox>
#include <QMenu>
#include <QMenuBar>
#include <QWheelEvent>

#include <sstream>

/// The whole program by keyboard, on a unit with 32 inputs and outputs.
class KeysTest : public QObject {
    Q_OBJECT

    void openConnect();

    ProgramFixture kvn{{.model = "KVN-32x32-RGBA"}};

private Q_SLOTS:
    void initTestCase() { kvn.openPanel(); }
    void init();
    void walkOverThePanel();
    void walkOverThePresets();
    void stepAVolume();
    void takeFromAnywhere();
    void openMenus();
    void workTheConnectionDialog();
    void focusComesBackToConnect();
};

namespace {

constexpr const char *Panel = "KVN32x32Audio";

/// Presses keys and tells what has the focus then. "Down 3" is three times down.
std::string press(const char *window, const std::string &keys) {
    std::istringstream words(keys);
    for (std::string word; words >> word;) {
        int times = 1;
        if ((words >> std::ws).peek() >= '0' && words.peek() <= '9')
            words >> times;
        for (; times > 0; --times)
            QTest::keySequence(ProgramFixture::window(window)->focusWidget(),
                               QKeySequence(QString::fromStdString(word)));
    }
    return ProgramFixture::window(window)->focusWidget()->objectName().toStdString();
}

} // namespace

void KeysTest::init() {
    for (FormView *form : kvn.program.views.forms())
        form->loaded = form == &kvn.program.views.main.form;
    kvn.program.panelForm.LoadForm();
    kvn.windows.refresh();
    kvn.window(Panel)->activateWindow();
    QCoreApplication::processEvents();
    kvn.takeWritten();
}

void KeysTest::walkOverThePanel() {
    const auto walk = [](const std::string &keys) { return press(Panel, keys); };
    kvn.clickAnything(Panel, "OutputVolumeValue_7"); // brings the volume buttons, leaves the focus
    // clang-format off
    checkRows({{"", "InputVideoAudioButtons_1"}, {"Right 4 Down 2", "InputVideoAudioButtons_21"},
               {"Tab", "OutputVidAudButtons_1"}, {"Right Down", "OutputVideoButtons_2"},
               {"Tab", "InputVideoConnected_1"}, {"Tab", "OutputVolumeValue_1"}, {"Tab", "MuteButton_1"},
               {"Tab", "TakeButton"}, {"Tab", "ClearButton"}, {"Tab", "GoToPresets"},
               {"Tab", "VolumeUpButton"}, {"Tab", "VolumeDownButton"}, {"Tab", "ExitButton"},
               {"Tab", "InputVideoAudioButtons_21"}, {"Tab", "OutputVideoButtons_2"}, // where it was last
               {"Shift+Backtab 2", "ExitButton"}, {"Left Up", "ClearButton"}}, walk);
    // What cannot be pressed is passed over.
    auto &view = kvn.program.views.panel;
    view.InputVideoAudioButtons[22].enabled = view.OutputVideoButtons[2].enabled = view.VolumeDownButton.visible = false;
    kvn.windows.refresh();
    checkRows({{"Tab 4", "InputVideoAudioButtons_21"}, {"Right", "InputVideoAudioButtons_23"},
               {"Tab", "OutputVidAudButtons_1"}, {"Shift+Backtab 2 Left", "VolumeUpButton"}}, walk);
    // clang-format on
}

void KeysTest::walkOverThePresets() {
    kvn.click(Panel, "GoToPresets");
    kvn.window("dlgPresets")->activateWindow();
    QCoreApplication::processEvents();
    checkRows({{"", "NewPresetButton_1"},
               {"Down Right 3", "NewPresetButton_12"},
               {"Tab 2", "ExitPresets"},
               {"Tab", "NewPresetButton_12"},
               {"Down 3", "ExecutePresetButton"}},
              [](const std::string &keys) { return press("dlgPresets", keys); });
}

void KeysTest::stepAVolume() {
    auto *box = kvn.part(Panel, "OutputVolumeValue_3");
    const auto turn = [box](int eighths) {
        const QPointF at = box->rect().center();
        QWheelEvent wheel(at, box->mapToGlobal(at), {}, {0, eighths}, {}, {}, Qt::NoScrollPhase,
                          false);
        QCoreApplication::sendEvent(box, &wheel);
    };
    const auto key = [](QWidget *on, Qt::Key pressed) { QTest::keyClick(on, pressed); };
    // clang-format off
    const std::vector<std::tuple<const char *, std::function<void()>, std::string>> rows{
        {"plus", [&] { key(box, Qt::Key_Plus); }, "-19"},
        {"minus", [&] { key(box, Qt::Key_Minus); }, "-20"},
        {"plus on a source", [&] { key(kvn.part(Panel, "InputVideoConnected_3"), Qt::Key_Plus); }, ""},
        {"a notch down", [&] { turn(-120); }, "-21"},
        {"half a notch", [&] { turn(60); }, ""},
        {"the other half", [&] { turn(60); }, "-20"},
        {"half a notch and back", [&] { turn(60); turn(-60); }, ""},
        {"a notch in the middle of one", [&] { kvn.pump.in(0.05, [&] { turn(120); }); turn(-120); }, "-21"}};
    // clang-format on
    for (const auto &[what, action, level] : rows) {
        action();
        const std::string bytes = "VOL L 3 " + level + "\rVOL L 3?\r";
        QVERIFY2(kvn.takeWritten() == (level.empty() ? "" : bytes), what);
    }
}

void KeysTest::takeFromAnywhere() {
    for (const char *const keys : {"Ctrl+Return", "Ctrl+Enter"}) {
        for (const char *const place : {"InputVideoAudioButtons_3", "OutputVolumeValue_9"}) {
            kvn.click(Panel, "InputVideoAudioButtons_3");
            kvn.click(Panel, "OutputVidAudButtons_1");
            kvn.part(Panel, place)->setFocus();
            QCOMPARE(press(Panel, keys), std::string(place));
            QVERIFY(kvn.takeWritten().starts_with("Con 3(1)3F (1)\r"));
        }
    }
}

void KeysTest::openMenus() {
    for (const auto &[window, letter] : {std::pair("frmMain", Qt::Key_C), {Panel, Qt::Key_H}}) {
        kvn.window(window)->activateWindow();
        QCoreApplication::processEvents();
        auto *menu = kvn.window(window)->findChild<QMenuBar *>()->actions().constFirst()->menu();
        for (const bool byLetter : {false, true}) {
            QTest::keyClick(kvn.window(window), byLetter ? letter : Qt::Key_F10,
                            byLetter ? Qt::AltModifier : Qt::NoModifier);
            QVERIFY(menu->isVisible() && menu->activeAction() == menu->actions().constFirst());
            menu->close();
        }
    }
}

void KeysTest::openConnect() {
    kvn.program.link = LinkState();
    kvn.program.link.IPAddressQuads = {"10", "9", "8", "7", ""};
    kvn.program.connectForm.LoadForm();
    kvn.windows.refresh();
    QCoreApplication::processEvents(); // it becomes the active one
}

void KeysTest::workTheConnectionDialog() {
    openConnect();
    auto *option = kvn.part("dlgConnect", "ConnectIPOption");
    const QImage focused = option->grab().toImage();
    const auto walk = [](const std::string &keys) { return press("dlgConnect", keys); };
    checkRows({{"", "ConnectIPOption"},
               {"Left", "ConnectIPOption"},
               {"Down", "ConnectIPOption"},
               {"Right", "ConnectSerialOption"},
               {"Right Left", "ConnectIPOption"},
               {"Right", "ConnectSerialOption"}},
              walk);
    QVERIFY(focused != option->grab().toImage()); // it was seen
    kvn.serialPort.present = {3, 7, 12};
    QCOMPARE(walk("Space Tab"), std::string("SerialPortsCombo"));
    kvn.serialPort.log.clear();
    auto *entries = kvn.part<QComboBox>("dlgConnect", "SerialPortsCombo")->view();
    walk("Down");
    QVERIFY(entries->isVisible());
    QTest::keyClick(entries, Qt::Key_Down);
    QVERIFY(kvn.serialPort.log.empty()); // nothing is chosen yet
    QTest::keyClick(entries, Qt::Key_Return);
    kvn.pump.runFor(0.1, [] { return false; });
    QCOMPARE(kvn.serialPort.log.back(), std::string("open 7 38400,N,8,1"));
    QCOMPARE(walk("Tab"), std::string("Connect2SerialButton"));
}

void KeysTest::focusComesBackToConnect() {
    for (const char *const place : {"Connect2IPButton", "IPAddressQuadConnect_3"}) {
        openConnect();
        kvn.messages.clear();
        kvn.part("dlgConnect", place)->setFocus();
        kvn.socket.host = FakeTcpSocket::Host::Refuses;
        QCOMPARE(press("dlgConnect", "Return"), std::string("Connect2IPButton"));
        QVERIFY(kvn.messages.starts_with("Unable to connect"));
    }
}

QTEST_MAIN(KeysTest)
#include "KeysTest.moc"
