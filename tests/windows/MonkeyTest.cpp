#include "support/Monkey.h"
#include "Application.h"
#include "TextConversion.h"
#include "hands.h"

namespace {

constexpr int EventsOfAWalk = 250;
constexpr const char *Panel = "KVN32x32Audio";
constexpr const char *Units = "dlgControlExisting";

// clang-format off
constexpr std::array Models{"KVN-32x32-RGBA", "KVN-16x16-RGB", "KVN-8x4-RGBA"};
/// In the order of Views::forms().
constexpr std::array WindowNames{"frmMain", "dlgOK", "plainBox", "dlgYesNo", "dlgConnect", Units, Panel, "dlgPresets",
    "dlgSetup", "frmAbout", "dlgInputConnect", "dlgDisconnect", "VolumeHelpDialog"};
constexpr std::array Keys{"Tab", "Tab", "Shift+Backtab", "Left", "Right", "Up", "Down", "Down", "Return", "Return",
    "Enter", "Space", "Space", "Esc", "F1", "F9", "F10", "Home", "End", "PgDown", "Backspace", "Del", "+", "-",
    "Ctrl+Return", "Ctrl+Enter", "Alt+C", "Alt+H", "Ctrl+N", "Ctrl+A", "Ctrl+V", "A", "7"};
constexpr std::array Texts{"10.11.12.13", "192.168.1.300", "Stage \xE4", "A<b>", "KVN NAME = ", ".", "1", "A"};
// clang-format on

bool isUsable(const QWidget *window) {
    const QWindow *modal = QGuiApplication::modalWindow();
    return window && window->isVisible() &&
           (!modal || modal == window->windowHandle() ||
            modal->isAncestorOf(window->windowHandle(), QWindow::IncludeTransients));
}

void closePopups() {
    while (QWidget *popup = QApplication::activePopupWidget())
        popup->close();
}

void sendKey(const QKeyCombination &keys, QChar text) {
    QWidget *top = QApplication::activePopupWidget();
    top = top ? top : QApplication::activeWindow();
    if (isUsable(top))
        QTest::sendKeyEvent(QTest::Click, top->focusWidget() ? top->focusWidget() : top, keys.key(),
                            text, keys.keyboardModifiers());
}

/// One that plays on the windows.
class WindowsMonkey : public Monkey {
public:
    explicit WindowsMonkey(unsigned seed)
        : Monkey(kvn, seed), kvn({.model = Models.at(seed % Models.size())}) {}

    std::string trouble() {
        // Nothing is left of the walk before.
        QCursor::setPos(0, 0);
        QGuiApplication::clipboard()->setText(QStringLiteral(" 172.16.0.9\n"));
        if (below(2) == 0)
            kvn.openPanel(below(2) == 0);
        const std::string found = walk(EventsOfAWalk);
        closePopups();
        check(kvn.visibleWindows().empty(), "windows are left: " + kvn.visibleWindows());
        return found + wrong;
    }

private:
    /// One that the user can reach.
    QWidget *anyWindow() {
        std::vector<QWidget *> all;
        for (const char *const name : WindowNames) {
            if (QWidget *window = kvn.window(name); isUsable(window))
                all.push_back(window);
        }
        return anyOf(all);
    }

    /// Mostly a control, each kind of them as likely but those that leave a window.
    QWidget *anyPlace(QPoint &at) {
        QWidget *popup = QApplication::activePopupWidget();
        QWidget *panel = kvn.window(Panel); // where most is to be done
        QWidget *window = popup && below(4) != 0             ? popup
                          : isUsable(panel) && below(2) == 0 ? panel
                                                             : anyWindow();
        if (window->isMinimized())
            window->showNormal();
        if (!popup && below(8) != 0)
            window->activateWindow();
        auto &kinds = controlsIn[window];
        for (QWidget *part : kinds.empty() ? window->findChildren<QWidget *>() : QWidgetList())
            if (part->window() == window && part->focusPolicy() != Qt::NoFocus)
                kinds[part->objectName().section(u'_', 0, 0)].push_back(part);
        for (int tried = 0; !kinds.empty() && tried < 8; ++tried) {
            static const QRegularExpression leaving(QStringLiteral("Exit|OK|Cancel"));
            const auto &[kind, parts] = anyOf(kinds);
            const QWidget *part = anyOf(parts);
            at = part->mapTo(window, part->rect().center());
            if (part->isVisible() && part->isEnabled() && window->rect().contains(at) &&
                (below(4) == 0 || !kind.contains(leaving)))
                return window;
        }
        at = {below(window->width()), below(window->height())};
        return window;
    }

    // clang-format off
    void happen() override {
        checkMessage();
        if (below(80) == 0) compareWithViews();
        QPoint at;
        QWidget *const window = anyPlace(at);
        QWindow *const screen = window->windowHandle();
        const std::vector<std::pair<int, std::function<void()>>> deeds{ // by how often they come
            {33, [&] { QTest::mouseClick(screen, Qt::LeftButton, {}, at); }},
            {3, [&] { QTest::mouseClick(screen, Qt::RightButton, {}, at); }},
            {4, [&] { QTest::mouseMove(screen, at); }},
            {2, [&] { QTest::mousePress(screen, Qt::LeftButton, {}, at);
                      QTest::mouseRelease(screen, Qt::LeftButton, {}, {below(400), below(300)}); }},
            {6, [&] { QWidget *const under = window->childAt(at);
                      QWheelEvent turn(at, window->mapToGlobal(at), {}, {0, 120 - 180 * below(2)}, {}, {}, {}, false);
                      QCoreApplication::sendEvent(under ? under : window, &turn); }},
            {25, [&] { const auto keys = QKeySequence::fromString(QLatin1String(anyOf(Keys)))[0];
                       sendKey(keys, QChar::fromLatin1(keys.key() < 0x7F ? QTest::keyToAscii(keys.key()) : '\0')); }},
            {5, [&] { for (const QChar letter : QString::fromLatin1(anyOf(Texts))) sendKey(Qt::Key_A, letter); }},
            {6, [&] { const auto lists = window->findChildren<QListWidget *>();
                      if (auto *list = lists.empty() ? nullptr : anyOf(lists); list && list->isVisible())
                          pick(list, below(list->count() + 1), below(3) == 0); }},
            {3, [&] { const auto menus = window->findChildren<QMenu *>();
                      if (!menus.empty()) anyOf(menus.first()->actions())->trigger(); }},
            {3, [&] { if (window->objectName() != QLatin1String("frmMain")) window->close(); }},
            {1, [&] { if (auto *panel = kvn.window(Panel); isUsable(panel)) panel->showMinimized(); }},
            {9, [&] { play(Mishaps); }}, {4, [&] { play({"heal"}); }}};
        auto deed = deeds.begin();
        for (int left = below(104); left >= deed->first; left -= (deed++)->first) {}
        deed->second();
    }
    // clang-format on

    void check(bool right, const std::string &otherwise) {
        wrong += right || !wrong.empty() ? "" : "\n  " + otherwise;
    }

    void end() override {
        user.calmDown();
        user.pump.in(195.0, [this] {
            closePopups();
            compareWithViews();
        });
    }

    /// A message that comes over a window that blocks the others can be answered.
    void checkMessage() {
        const auto &[message, box, question] = kvn.views.messages;
        const int blocking = box.form.raised + kvn.views.connect.form.raised;
        const bool sameBlocks = std::exchange(blocked, blocking) == blocking;
        if (std::exchange(raised, message.form.raised) != message.form.raised &&
            message.form.loaded)
            check(!sameBlocks || isUsable(kvn.window("dlgOK")), "a message cannot be answered");
    }

    void compareWithViews() {
        std::map<std::string, bool> seen;
        const auto forms = kvn.views.forms();
        for (auto form = forms.begin(); const std::string name : WindowNames) {
            const QWidget *window = kvn.window(name);
            const bool isSeen = window && window->isVisible();
            seen[name] = isSeen && !window->isMinimized();
            check(isSeen == (*form)->loaded && (!isSeen || seen[name] != (*form)->minimised),
                  name + " is not as its form");
            ++form;
        }
        for (const auto &[window, name, control] : controls) {
            if (!seen[window] || name == "KVNNameLabel")
                continue;
            QWidget *&widget = widgets[control];
            widget = widget ? widget : kvn.part(window.c_str(), name);
            const std::string told = widget->accessibleDescription().toStdString();
            check(look(widget) == wanted(widget, *control) &&
                      widget->toolTip() == tipOf(control->toolTip) &&
                      (told == control->description || dynamic_cast<Lamp *>(widget)),
                  name + " shows " + look(widget) + " and tells " + told);
        }
        for (const ListControl *list :
             {&kvn.views.units.AvailCorvanesList, &kvn.views.units.ConnectChoiceList}) {
            std::string all;
            for (const std::string &entry : list->entries) {
                const bool isChosen = &entry - list->entries.data() == list->chosen;
                all += (isChosen ? "[" : " ") + shown(entry).toStdString() + (isChosen ? "]" : " ");
            }
            check(!seen[Units] || entries(widgets[&list->control]) == all, "a list is not " + all);
        }
    }

    ProgramFixture kvn;
    std::vector<NamedControl> controls = controlsOf(kvn.views);
    std::map<const Control *, QWidget *> widgets;
    std::map<const QWidget *, std::map<QString, std::vector<QWidget *>>> controlsIn; ///< by kind
    int raised = 0, blocked = 0; ///< how often a message was raised, and what blocks the others
    std::string wrong;
};

} // namespace

/// Nothing that a user does, and nothing that happens to the unit, brings the program out of step.
class MonkeyTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    static void anythingAtAnyTime_data() { Monkey::addSeeds(EventsOfAWalk); }
    static void anythingAtAnyTime() {
        Monkey::verify([](unsigned seed) { return WindowsMonkey(seed).trouble(); });
    }
};

int main(int argc, char **argv) {
    Application application(argc, argv);
    MonkeyTest test;
    return QTest::qExec(&test, argc, argv);
}

#include "MonkeyTest.moc"
