#include "Application.h"
#include "TextConversion.h"
#include "Window.h"
#include "look.h"
#include "units/SavedUnitsText.h"

#include <QClipboard>
#include <QMenu>
#include <QWheelEvent>
#include <QWindow>
#include <QtTest/QtTest>

#include <cstdio>
#include <random>

namespace {

constexpr int EventsOfEpisode = 250;
constexpr const char *Panel = "KVN32x32Audio";
constexpr const char *Units = "dlgControlExisting";
constexpr const char *UnitsFile = "program/KVNConfigurator.ini";

// clang-format off
constexpr std::array Models{"KVN-32x32-RGBA", "KVN-16x16-RGB", "KVN-8x4-RGBA"};
/// In the order of Views::forms().
constexpr std::array WindowNames{"frmMain", "dlgOK", "plainBox", "dlgYesNo", "dlgConnect", Units, Panel, "dlgPresets",
    "dlgSetup", "frmAbout", "dlgInputConnect", "dlgDisconnect", "VolumeHelpDialog"};
constexpr std::array Keys{"Tab", "Tab", "Shift+Backtab", "Left", "Right", "Up", "Down", "Down", "Return", "Return",
    "Enter", "Space", "Space", "Esc", "F1", "F9", "F10", "Home", "End", "PgDown", "Backspace", "Del", "+", "-",
    "Ctrl+Return", "Ctrl+Enter", "Alt+C", "Alt+H", "Ctrl+N", "Ctrl+A", "Ctrl+V", "A", "7"};
constexpr std::array Texts{"10.11.12.13", "192.168.1.300", "Stage \xE4", "KVN NAME = ", ".", "1", "A"};
// clang-format on

/// One user who does anything anywhere, and a machine to which anything happens.
class Monkey {
    int below(int end) { return static_cast<int>(random() % static_cast<unsigned>(end)); }
    template <class All> auto anyOf(const All &all) {
        return *std::next(std::begin(all), below(static_cast<int>(std::size(all))));
    }
    void check(bool right, const std::string &otherwise) {
        wrong += right || !wrong.empty() ? "" : otherwise;
    }
    void watch(const std::function<void()> &action) {
        ++underWay;
        try {
            action();
        } catch (const std::exception &error) {
            check(false, std::string("thrown: ") + error.what());
        }
        --underWay;
    }

public:
    explicit Monkey(unsigned seed) : random(seed), kvn({.model = Models.at(seed % Models.size())}) {
        // Nothing is left of the episode before.
        QCursor::setPos(0, 0);
        QGuiApplication::clipboard()->setText(QStringLiteral(" 172.16.0.9\n"));
        kvn.files.contentsOf[UnitsFile] =
            "KVN NAME = A<b>\r\nKVN TYPE = SERIAL\r\n"
            "KVN NAME = B\xE4\r\nKVN TYPE = ETHER\r\nKVN IP = 192.168.1.20  \r\n";
    }

    /// What went wrong first; empty if nothing did.
    std::string play() {
        if (const int where = below(4); where < 2)
            kvn.openPanel(where == 0);
        else if (where == 2)
            kvn.click("frmMain", "MainControlButton_2");
        kvn.pump.eachTurn = [this] { watch([] { QCoreApplication::processEvents(); }); };
        const int last = below(4 * EventsOfEpisode); // then the user leaves the program, if ever
        double due = 0.0;
        for (int event = 0; event < EventsOfEpisode; event += 2) {
            due += 0.001 * below(anyOf(std::array{1, 20, 400, 400, 4000}));
            at(due, [this, leaves = event / 2 == last / 2] {
                doAnything();
                leaves ? leaveProgram() : doAnything();
            });
        }
        at(due += 1.0, [this] { heal(); });
        for (int window = 0; window < 40; ++window)
            at(due += 5.0, [] { closeOne(Panel); });
        at(due += 5.0, [this] { compareWithViews(true); });
        for (int window = 0; window < 5; ++window)
            at(due += 5.0, [] { closeOne(""); });
        at(due += 100.0, [this] { check(underWay == 1, "a wait is left"); });
        kvn.pump.runFor(due + 1.0, [this] { return !wrong.empty(); });
        if (wrong.empty())
            checkWhatIsLeft();
        if (wrong.empty() && !kvn.pump.ended())
            connectAnew();
        return wrong;
    }

private:
    void at(double second, const std::function<void()> &action) {
        kvn.pump.in(second, [this, action] { watch(action); });
    }

    static bool isUsable(const QWidget *window) {
        const QWindow *modal = QGuiApplication::modalWindow();
        return window && window->isVisible() &&
               (!modal || modal->isAncestorOf(window->windowHandle(), QWindow::IncludeTransients) ||
                modal == window->windowHandle());
    }
    static std::vector<QWidget *> usableWindows() {
        std::vector<QWidget *> all;
        for (const char *const name : WindowNames) {
            if (QWidget *window = ProgramFixture::window(name); isUsable(window))
                all.push_back(window);
        }
        return all;
    }

    struct Place {
        QWidget *window;
        QPoint at;
        [[nodiscard]] QWindow *handle() const { return window->windowHandle(); }
    };
    /// Mostly a control, each kind of them as likely but those that leave a window.
    Place anyPlace() {
        if (QWidget *popup = QApplication::activePopupWidget(); popup && below(4) != 0)
            return {popup, {below(popup->width()), below(popup->height())}};
        QWidget *panel = kvn.window(Panel); // where most is to be done
        QWidget *window = isUsable(panel) && below(2) == 0 ? panel : anyOf(usableWindows());
        if (window->isMinimized())
            window->showNormal();
        if (!QApplication::activePopupWidget() && below(8) != 0)
            window->activateWindow();
        auto &kinds = controlsIn[window];
        for (QWidget *part : kinds.empty() ? window->findChildren<QWidget *>() : QWidgetList()) {
            if (part->window() == window && part->focusPolicy() != Qt::NoFocus)
                kinds[part->objectName().section(u'_', 0, 0)].push_back(part);
        }
        for (int tried = 0; !kinds.empty() && tried < 8; ++tried) {
            static const QRegularExpression leaving(QStringLiteral("Exit|OK|Cancel"));
            const auto &[kind, parts] = anyOf(kinds);
            const QWidget *part = anyOf(parts);
            const QPoint middle = part->mapTo(window, part->rect().center());
            if (part->isVisible() && part->isEnabled() && window->rect().contains(middle) &&
                (below(4) == 0 || !kind.contains(leaving)))
                return {window, middle};
        }
        return {window, {below(window->width()), below(window->height())}};
    }
    void sendKey(Qt::Key key, const QString &text, Qt::KeyboardModifiers modifiers = {}) {
        QWidget *top = QApplication::activePopupWidget();
        top = top ? top : QApplication::activeWindow();
        if (isUsable(top))
            QTest::sendKeyEvent(QTest::Click, top->focusWidget() ? top->focusWidget() : top, key,
                                text, modifiers);
    }

    // clang-format off
    void doAnything() {
        if (kvn.pump.ended()) return;
        using Host = FakeTcpSocket::Host;
        FakeWire &wire = below(2) == 0 ? kvn.serialPort.wire : kvn.socket.wire;
        const std::vector<std::pair<int, std::function<void()>>> deeds{ // by how often they come
            {33, [&] { const Place on = anyPlace();
                       QTest::mouseClick(on.handle(), below(11) == 0 ? Qt::RightButton : Qt::LeftButton, {}, on.at); }},
            {3, [&] { const Place on = anyPlace(); QTest::mouseDClick(on.handle(), Qt::LeftButton, {}, on.at); }},
            {4, [&] { const Place on = anyPlace(); QTest::mouseMove(on.handle(), on.at); }},
            {2, [&] { const Place on = anyPlace(); QTest::mousePress(on.handle(), Qt::LeftButton, {}, on.at);
                      QTest::mouseRelease(on.handle(), Qt::LeftButton, {}, {below(400), below(300)}); }},
            {6, [&] { const Place on = anyPlace(); QWidget *under = on.window->childAt(on.at);
                      QWheelEvent turn(on.at, on.window->mapToGlobal(on.at), {}, {0, anyOf(std::array{120, -60})},
                                       {}, {}, {}, false);
                      QCoreApplication::sendEvent(under ? under : on.window, &turn); }},
            {25, [&] { const auto keys = QKeySequence::fromString(QLatin1String(anyOf(Keys)))[0];
                       const QString text(QLatin1Char(keys.key() < 0x7F ? QTest::keyToAscii(keys.key()) : '\0'));
                       sendKey(keys.key(), text, keys.keyboardModifiers()); }},
            {5, [&] { for (const QChar letter : QString::fromLatin1(anyOf(Texts))) sendKey(Qt::Key_A, letter); }},
            {6, [&] { const auto lists = anyOf(usableWindows())->findChildren<QListWidget *>();
                      auto *list = lists.empty() ? nullptr : anyOf(lists);
                      if (!list || !list->isVisible()) return;
                      const QPoint row = list->visualItemRect(list->item(below(list->count() + 1))).center();
                      QTest::mouseClick(list->viewport(), Qt::LeftButton, {}, row);
                      if (below(3) == 0) QTest::mouseDClick(list->viewport(), Qt::LeftButton, {}, row); }},
            {3, [&] { const auto menus = anyOf(usableWindows())->findChildren<QMenu *>();
                      if (!menus.empty()) anyOf(menus.first()->actions())->trigger(); }},
            {3, [&] { closeOne(WindowNames.at(std::size_t(below(13)))); }},
            {1, [&] { if (auto *panel = kvn.window(Panel); isUsable(panel)) panel->showMinimized(); }},
            {1, [&] { wire.delay = 1000.0; }}, // silent
            {2, [&] { wire.delay = 0.001 * below(3000); }},
            {1, [&] { wire.split = std::size_t(below(4)); wire.pieceDelay = 0.1 * below(3); }},
            {1, [&] { kvn.serialPort.vanish(); }},
            {1, [&] { kvn.serialPort.present = anyOf(std::vector<std::set<int>>{{}, {7}, {1, 7, 20}}); }},
            {1, [&] { kvn.socket.peerCloses(); }},
            {1, [&] { kvn.socket.host = anyOf(std::array{Host::Silent, Host::Refuses, Host::Unreachable}); }},
            {1, [&] { kvn.files.failure = "Writing failed: the disk is full."; }},
            {4, [&] { heal(); }}};
        int left = below(104);
        for (const auto &[often, deed] : deeds) {
            if ((left -= often) < 0) { deed(); break; }
        }
        if (below(80) == 0) compareWithViews();
    }
    // clang-format on
    /// The first window but the start window and that one.
    static void closeOne(const std::string &spared) {
        if (QWidget *popup = QApplication::activePopupWidget())
            popup->close();
        for (QWidget *window : usableWindows()) {
            const std::string name = window->objectName().toStdString();
            if (name != "frmMain" && name != spared) {
                window->close();
                return;
            }
        }
    }
    void leaveProgram() {
        if (isUsable(kvn.window("frmMain")))
            kvn.window("frmMain")->close();
        sentAtEnd = sent();
    }
    [[nodiscard]] std::size_t sent() const {
        return kvn.serialPort.wire.written.size() + kvn.socket.wire.written.size();
    }
    void heal() {
        for (FakeWire *wire : {&kvn.serialPort.wire, &kvn.socket.wire}) {
            wire->delay = 0.01;
            wire->split = 0;
        }
        kvn.serialPort.present = {7};
        kvn.socket.host = FakeTcpSocket::Host::Answers;
        kvn.files.failure.clear();
    }

    void compareWithViews(bool atRest = false) {
        std::map<std::string, bool> seen;
        for (std::size_t number = 0; number < WindowNames.size() && !kvn.pump.ended(); ++number) {
            const std::string name = WindowNames.at(number);
            const QWidget *window = kvn.window(name);
            const FormView &form = *kvn.program.views.forms().at(number);
            const bool isSeen = window && window->isVisible();
            seen[name] = isSeen && !window->isMinimized();
            check(isSeen == form.loaded && (!isSeen || seen[name] != form.minimised),
                  name + " is not as its form");
        }
        for (const auto &[window, name, control] : controls) {
            if (!seen[window] || name == "KVNNameLabel")
                continue;
            QWidget *&widget = widgets[control];
            widget = widget ? widget : kvn.part(window.c_str(), name);
            const std::string shows = look(widget);
            const bool rests = control->face != Face::Busy && shows != "Wait...";
            check(shows == wanted(widget, *control), name + " shows " + shows);
            check(rests || !atRest || !widget->isVisible(), name + " still waits");
            check(widget->toolTip() == tipOf(control->toolTip), name + " has another tip");
            check(widget->accessibleDescription().toStdString() == control->description ||
                      dynamic_cast<Lamp *>(widget),
                  name + " is told otherwise");
        }
        const auto &units = kvn.program.views.units;
        for (const ListControl *list : {&units.AvailCorvanesList, &units.ConnectChoiceList}) {
            std::string all;
            for (int row = 0; row < int(list->entries.size()); ++row) {
                const auto text =
                    QString::fromLatin1(list->entries[std::size_t(row)]).toStdString();
                all += row == list->chosen ? "[" + text + "]" : " " + text + " ";
            }
            check(!seen[Units] || entries(widgets[&list->control]) == all, "a list is not " + all);
        }
    }
    void checkWhatIsLeft() {
        check(!kvn.pump.ended() || sent() == sentAtEnd, "something was sent after the end");
        check(kvn.visibleWindows() == (kvn.pump.ended() ? "" : "frmMain"),
              "windows are left: " + kvn.visibleWindows());
        for (const auto &[path, text] : kvn.files.contentsOf) {
            SavedUnits units;
            std::array<std::string, 5> quads;
            ReadSavedUnitsText(units, text, quads);
            // An address that is not complete is read as another one.
            static const QRegularExpression address(QStringLiteral("KVN IP = [^\r]*"));
            const auto withoutAddresses = [](const std::string &of) {
                return QString::fromLatin1(of).remove(address);
            };
            check(withoutAddresses(writeSavedUnitsText(units)) == withoutAddresses(text),
                  path + " is not whole: " + text);
        }
    }
    void connectAnew() {
        if (kvn.program.views.main.status.showsConnected())
            kvn.clickAnything("frmMain", "ZarnConnectedLabel");
        kvn.messages.clear();
        const bool overNetwork = below(2) == 0;
        kvn.openPanel(overNetwork);
        kvn.takeWritten();
        for (const char *const button :
             {"InputVideoAudioButtons_8", "OutputVidAudButtons_10", "TakeButton"})
            kvn.click(Panel, button);
        const PanelView &view = kvn.program.views.panel;
        const std::string input = std::to_string(view.InputShown[8]);
        const std::string output = "(" + std::to_string(view.OutputShown[10]) + ")";
        const std::string audio = kvn.program.unit.model.HasAudio ? input + "F " + output : "";
        const std::string all = kvn.takeWritten() + kvn.messages;
        const char *const said = overNetwork ? ""
                                             : "Please make sure the Zarn is connected to the Comm "
                                               "Port 7 Cable before proceeding!";
        check(all == "Con " + input + output + audio + "\rSTA O A\rSTA O A\r" + said,
              "a new connect and take: " + all);
        kvn.window("frmMain")->close();
        check(kvn.pump.ended() && kvn.visibleWindows().empty(), "the program does not end");
    }

    std::mt19937 random;
    ProgramFixture kvn;
    std::vector<NamedControl> controls = controlsOf(kvn.program.views);
    std::map<const Control *, QWidget *> widgets;
    std::map<const QWidget *, std::map<QString, std::vector<QWidget *>>> controlsIn; ///< by kind
    int underWay = 0; ///< of what the user and the windows do
    std::size_t sentAtEnd = 0;
    std::string wrong;
};

} // namespace

/// Nothing that a user does, and nothing that happens to the unit, brings the program out of step.
class MonkeyTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void anythingAtAnyTime_data() {
        const int seed = qEnvironmentVariableIntValue("KVN_MONKEY_SEED");
        const int asked = qEnvironmentVariableIntValue("KVN_MONKEY_EVENTS");
        const int episodes = (asked > 0 ? asked : 25'000) / EventsOfEpisode;
        QTest::addColumn<int>("seed");
        for (int one = seed != 0 ? seed : 1; one <= (seed != 0 ? seed : episodes); ++one)
            QTest::addRow("%d", one) << one;
    }
    void anythingAtAnyTime() {
        QFETCH(int, seed);
        const QByteArray path = QCoreApplication::applicationFilePath().toLocal8Bit();
        // Before it is played, for what ends in a crash.
        std::printf("KVN_MONKEY_SEED=%d QT_QPA_PLATFORM=offscreen %s\n", seed, path.constData());
        std::fflush(stdout);
        const std::string wrong = Monkey(static_cast<unsigned>(seed)).play();
        QVERIFY2(wrong.empty(), wrong.c_str());
    }
};

int main(int argc, char **argv) {
    Application application(argc, argv);
    MonkeyTest test;
    return QTest::qExec(&test, argc, argv);
}

#include "MonkeyTest.moc"
