#pragma once

#include "look.h"

#include <QAction>
#include <QClipboard>
#include <QFocusFrame>
#include <QMenu>
#include <QShortcut>
#include <QWheelEvent>
#include <QWindow>
#include <QtTest/QtTest>

#include <functional>
#include <sstream>

/// The address in a window's boxes: a star where the focus is, in brackets what is selected.
inline std::string addressIn(const QWidget *window) {
    QStringList all;
    for (const auto *box :
         window->findChildren<QLineEdit *>(QRegularExpression(QStringLiteral("Quad.*_[0-3]")))) {
        QString text = box->text();
        if (box->hasSelectedText())
            text.insert(box->selectionEnd(), u']').insert(box->selectionStart(), u'[');
        all += window->focusWidget() == box ? text + u'*' : text;
    }
    return all.join(u'.').toStdString();
}

/// A click on a row of a list; beside the entries where there is no such row.
inline void pick(QListWidget *list, int row, bool twice = false) {
    const QRect place = list->visualItemRect(list->item(row));
    const QPoint at = place.isValid() ? place.center() : list->viewport()->rect().bottomRight();
    QTest::mouseClick(list->viewport(), Qt::LeftButton, {}, at);
    if (twice)
        QTest::mouseDClick(list->viewport(), Qt::LeftButton, {}, at);
}

/// Plays what the user does, in words, beginning in the start window. Steps have " ; " between them
/// and 10 seconds, so that all that waits for time alone is over, or " , " and a moment; a step may
/// come while the one before still waits for the user. Names go without "Button(s)",
/// "Corvane(s)", "Value", "put" and "_". The words:
///     in WINDOW      brings it to the front; the words after it are about this one
///     click NAME     a button, which must be seen and enabled
///     point NAME     the mouse on anything, as far as a modal window lets it through
///     right NAME     its other button;   slip NAME: pressed on it, let go beside it
///     wheel NAME N   turned on it by so many eighths of a degree
///     go NAME        moves the focus to a control
///     key KEY        a key by Qt's name, to an open menu or list first; KEY*3: three times
///     hold KEY +1-9  its events as the window system tells them: "+" pressed or "-" released at
///                    these milliseconds, "!" marked as a repeat
///     type TEXT      into what has the focus;   paste TEXT: with blanks around it
///     pick LIST ROW  a click on an entry;   double LIST ROW
///     shortcut KEY   which the window hears before an open list does
///     menu ITEM      of the window's menu;   frame: closes the window
///     panel          connects and opens the panel
///     refused        by every address;   ports 0, ports 2: so many exist
/// @return what these words saw, ", " between them:
///     windows  see NAME  list NAME  address
///     focus: what has it, or the entry an open menu is at;   walk KEY: the same after each key
///     from NAME KEY  go, key and focus
///     sent: to the unit;   line: what was done to the link last;   file: the saved units
inline std::string play(ProgramFixture &kvn, const std::string &steps) {
    QStringList seen;
    std::string window = "frmMain";
    std::istringstream words; // of the step that is played
    // clang-format off
    const auto tell = [&](const std::string &what) { seen += QString::fromStdString(what); };
    const auto word = [&] { std::string read; words >> read; return read; };
    const auto next = [&] { return QString::fromStdString(word()); };
    const auto brief = [](QString name) {
        static const QRegularExpression left(QStringLiteral("Buttons?|Corvanes?|Value|put|_"));
        return name.remove(left).toStdString();
    };
    const auto thing = [&] {
        const auto all = kvn.window(window)->findChildren<QObject *>();
        return *std::find_if(all.begin(), all.end(), [&brief, name = brief(next())](const QObject *one) {
            return one->objectName().startsWith(QLatin1Char(name.front())) && brief(one->objectName()) == name;
        });
    };
    const auto part = [&] { return qobject_cast<QWidget *>(thing()); };
    // The way of the user's mouse, so that a modal dialog can hold it off.
    const auto mouse = [&](Qt::MouseButton button) {
        const QWidget *on = part();
        QTest::mouseClick(kvn.window(window)->windowHandle(), button, {}, on->mapTo(on->window(), on->rect().center()));
    };
    const auto front = [&](const std::string &name) {
        kvn.window(window = name)->activateWindow();
        QCoreApplication::processEvents();
    };
    const auto focus = [&] {
        QWidget *top = QApplication::activePopupWidget() ? QApplication::activePopupWidget() : kvn.window(window);
        return top->focusWidget() ? top->focusWidget() : top;
    };
    const auto tellFocus = [&] {
        const QWidget *at = focus();
        if (const auto *menu = qobject_cast<const QMenu *>(at))
            return tell(menu->activeAction() ? brief(menu->activeAction()->objectName()) : "none");
        auto *ring = kvn.window(window)->findChild<QFocusFrame *>();
        const bool marked = ring->isVisible() && ring->parent() == at->parent() && ring->geometry() == at->geometry() &&
                            pixel(ring, 0, ring->height() / 2) == "#005fb8" &&
                            !(at->property("readOnly").toBool() && at->property("hasSelectedText").toBool());
        tell(brief(at->objectName()) + (marked ? "" : " unmarked"));
    };
    const auto keysOf = [](const QString &name) { return QKeySequence::fromString(name)[0]; };
    const auto press = [&](const QString &name, const std::function<void()> &then = [] {}) {
        const auto keys = keysOf(name.section(u'*', 0, 0));
        for (int times = std::max(1, name.section(u'*', 1).toInt()); times > 0; --times) {
            QTest::keyClick(focus(), keys.key(), keys.keyboardModifiers());
            then();
        }
    };
    const auto hold = [&](Qt::Key key, const QString &events) {
        const QString text(QLatin1Char(QTest::keyToAscii(key)));
        for (const auto &event : QRegularExpression(QStringLiteral("([+-])(\\d+)(!?)")).globalMatch(events)) {
            const bool down = event.captured(1) == u'+', marked = !event.captured(3).isEmpty();
            const ulong time = event.captured(2).toULong();
            if (down && qt_sendShortcutOverrideEvent(focus(), time, key, {}, text, marked))
                continue;
            QKeyEvent sent(down ? QEvent::KeyPress : QEvent::KeyRelease, key, {}, text, marked);
            sent.setTimestamp(time);
            QApplication::sendEvent(focus(), &sent);
        }
    };
    const std::map<std::string, std::function<void()>> verbs{
        {";", [] {}}, {",", [] {}},
        {"in", [&] { front(word()); }},
        {"click", [&] { kvn.click(window.c_str(), part()->objectName().toStdString()); }},
        {"point", [&] { mouse(Qt::LeftButton); }},
        {"right", [&] { mouse(Qt::RightButton); }},
        {"slip", [&] { QTest::mouseRelease(part(), Qt::LeftButton, {}, QPoint(-5, 5)); }},
        {"wheel", [&] { auto *on = part(); const QPointF at = on->rect().center();
                        QWheelEvent turn(at, on->mapToGlobal(at), {}, {0, next().toInt()}, {}, {}, {}, false);
                        QCoreApplication::sendEvent(on, &turn); }},
        {"go", [&] { part()->setFocus(); }},
        {"key", [&] { press(next()); }},
        {"hold", [&] { const Qt::Key key = keysOf(next()).key(); hold(key, next()); }},
        {"type", [&] { for (const QChar letter : next())
                           QTest::sendKeyEvent(QTest::Click, focus(), Qt::Key_A, letter, Qt::NoModifier); }},
        {"paste", [&] { QGuiApplication::clipboard()->setText(u' ' + next() + u'\n');
                        press(QStringLiteral("Ctrl+V")); }},
        {"pick", [&] { auto *in = qobject_cast<QListWidget *>(thing()); pick(in, next().toInt()); }},
        {"double", [&] { auto *in = qobject_cast<QListWidget *>(thing()); pick(in, next().toInt(), true); }},
        {"shortcut", [&] { const auto keys = QKeySequence::fromString(next());
                           for (auto *one : kvn.window(window)->findChildren<QShortcut *>())
                               if (one->key() == keys) QMetaObject::invokeMethod(one, "activated"); }},
        {"menu", [&] { qobject_cast<QAction *>(thing())->trigger(); }},
        {"frame", [&] { kvn.window(window)->close(); }},
        {"panel", [&] { kvn.openPanel(); kvn.takeWritten(); front("KVN32x32Audio"); }},
        {"refused", [&] { kvn.socket.host = FakeTcpSocket::Host::Refuses; }},
        {"ports", [&] { kvn.serialPort.present = word() == "0" ? std::set<int>{} : std::set<int>{1, 2}; }},
        {"windows", [&] { tell(kvn.visibleWindows()); }},
        {"see", [&] { QObject *at = thing(); const auto *action = qobject_cast<QAction *>(at);
                      tell(action ? action->text().toStdString() : look(qobject_cast<QWidget *>(at))); }},
        {"list", [&] { tell(entries(part())); }},
        {"address", [&] { tell(addressIn(kvn.window(window))); }},
        {"focus", tellFocus},
        {"walk", [&] { press(next(), tellFocus); }},
        {"from", [&] { part()->setFocus(); press(next()); tellFocus(); }},
        {"sent", [&] { tell(kvn.takeWritten()); }},
        {"line", [&] { const auto &log = kvn.socket.log.empty() ? kvn.serialPort.log : kvn.socket.log;
                       tell(log.empty() ? "" : log.back()); }},
        {"file", [&] { auto saved = QString::fromLatin1(kvn.files.contentsOf["program/KVNConfigurator.ini"]);
                       saved.remove(QRegularExpression(QStringLiteral("KVN|NAME|TYPE|=")));
                       tell(saved.simplified().toStdString()); }}};
    // clang-format on
    double due = 0.0;
    const QRegularExpression marks(QStringLiteral(" (?=[;,] )"));
    for (const QString &step : QString::fromStdString(steps).split(marks)) {
        due += step.startsWith(u',') ? 0.05 : 10.0;
        kvn.pump.in(due, [&, text = step.toStdString()] {
            std::istringstream outer = std::exchange(words, std::istringstream(text));
            for (std::string verb = word(); !verb.empty(); verb = word())
                verbs.at(verb)();
            words = std::move(outer);
        });
    }
    kvn.pump.runFor(due + 10.0, [] { return false; });
    return seen.join(QStringLiteral(", ")).toStdString();
}
