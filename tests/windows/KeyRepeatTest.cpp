#include "support/ProgramFixture.h"
#include "support/rows.h"

#include <QKeyEvent>
#include <QtTest/QtTest>

#include <sstream>

namespace {

constexpr const char *Panel = "KVN32x32Audio";

/// Sends key events to what has the focus in a window, the way of the window system: a key, "+" for
/// a press or "-" for a release, its time in milliseconds, and "!" where it is marked as a repeat.
void play(QWidget *window, const std::string &script) {
    std::istringstream words(script);
    for (std::string word; words >> word;) {
        const auto sign = word.find_first_of("+-");
        const bool press = word[sign] == '+';
        const bool marked = word.back() == '!';
        const auto keys = QKeySequence(QString::fromStdString(word.substr(0, sign)));
        const int key = keys[0].key();
        const QString text = key < Qt::Key_Escape ? QString(QChar(key)) : QString();
        const ulong time = std::stoul(word.substr(sign + 1));
        QWidget *focus = window->focusWidget();
        if (press && qt_sendShortcutOverrideEvent(focus, time, key, {}, text, marked))
            continue;
        QKeyEvent event(press ? QEvent::KeyPress : QEvent::KeyRelease, key, {}, text, marked);
        event.setTimestamp(time);
        QApplication::sendEvent(focus, &event);
    }
}

} // namespace

class KeyRepeatTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void sendsOneTakeForOneHold() {
        ProgramFixture kvn;
        kvn.openPanel();
        kvn.window(Panel)->activateWindow();
        QCoreApplication::processEvents();
        const std::vector<std::array<std::string, 2>> rows{
            {"F9+100 F9-600 F9+600 F9-625 F9+625 F9-650", "1"},
            {"F9+100 F9-600! F9+600! F9-625 F9+625 F9-650", "1"},
            {"F9+100 F9-600 F9+601 F9-650", "1"}, // times taken one after the other
            {"F9+100 F9-600 F9+602 F9-650", "2"}, // two presses
            {"F9+100 F9-150 F9+900 F9-950", "2"},
            {"F9+0 F9-0 F9+0 F9-0", "2"},               // events without a time
            {"F9+100 F9-200 Space+200 Space-250", "2"}, // another key
            {"Return+100 Return-600 Return+600 Return-625 Return+625 Return-650", "1"},
            {"Space+100 Space-600 Space+600 Space-625 Space+625 Space-650", "1"},
            {"Space+100 Space-600! Space+600! Space-625! Space+625! Space-650", "1"},
            {"Space+100 Space-600! Space+600! Space-625 Space+625 Space-650", "1"},
            {"Space+100 Space-600 Space+600 Space-650 Space+900 Space-950", "2"},
        };
        checkRows(rows, [&kvn](const std::string &script) {
            kvn.takeWritten();
            auto *take = kvn.part<QAbstractButton>(Panel, "TakeButton");
            take->setFocus();
            play(kvn.window(Panel), script);
            const auto takes =
                QString::fromStdString(kvn.takeWritten()).count(QLatin1String("DIS "));
            return std::to_string(takes) + (take->isDown() ? " stays down" : "");
        });
    }

    // A window that opens, or comes to light, under a held key does not get its repeats.
    void staysInTheWindowItWasMeantFor() {
        ProgramFixture kvn;
        kvn.openPanel();
        kvn.window(Panel)->activateWindow();
        QCoreApplication::processEvents();
        kvn.part(Panel, "GoToPresets")->setFocus();
        play(kvn.window(Panel), "Space+100 Space-600");
        QVERIFY(kvn.isShown("dlgPresets"));
        kvn.window("dlgPresets")->activateWindow();
        QCoreApplication::processEvents();
        kvn.part("dlgPresets", "ExitPresets")->setFocus();
        play(kvn.window("dlgPresets"), "Space+600 Space-625 Space+625 Space-650");
        QVERIFY(kvn.isShown("dlgPresets"));
        play(kvn.window("dlgPresets"), "Escape+700 Escape-900 Escape+900");
        play(kvn.window(Panel), "Escape-925 Escape+925 Escape-950");
        QCOMPARE(kvn.visibleWindows(), std::string("KVN32x32Audio frmMain"));
    }

    void mayRepeatWhereTextIsTyped() {
        ProgramFixture kvn;
        kvn.click("frmMain", "MainControlButton_2");
        kvn.click("dlgControlExisting", "OptionsCommand_0");
        auto *units = kvn.window("dlgControlExisting");
        auto *box = kvn.part<QLineEdit>("dlgControlExisting", "Text3");
        units->activateWindow();
        QCoreApplication::processEvents();
        const std::vector<std::array<std::string, 2>> rows{
            {"A+100 A-600 A+600 A-625 A+625 A-650", "xyAAA"},
            {"Space+100 Space-600! Space+600! Space-650", "xy  "},
            {"Backspace+100 Backspace-600 Backspace+600 Backspace-650", ""},
            {"Left+100 Left-600 Left+600 Left-650 Delete+700 Delete-800 Delete+800", ""},
        };
        checkRows(rows, [&](const std::string &script) {
            box->setText(QStringLiteral("xy"));
            box->setFocus();
            box->setCursorPosition(2);
            play(units, script);
            return box->text().toStdString();
        });
        // Enter carries the operation out, and would do so again.
        int reports = 0;
        const auto reported = [&] { ++reports; };
        static_cast<Window *>(units)->reported = reported;
        box->setFocus();
        play(units, "Return+900 Return-1400 Return+1400 Return-1450");
        QCOMPARE(reports, 1);
    }
};

QTEST_MAIN(KeyRepeatTest)
#include "KeyRepeatTest.moc"
