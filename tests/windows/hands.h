#pragma once

#include "look.h"

#include <QAction>
#include <QClipboard>
#include <QGuiApplication>
#include <QWindow>
#include <QtTest/QtTest>

#include <functional>
#include <sstream>

/// A click that goes the way of the user's mouse, so that a modal dialog can hold it off.
inline void clickOnScreen(QWidget *control, Qt::MouseButton button = Qt::LeftButton) {
    QTest::mouseClick(control->window()->windowHandle(), button, {},
                      control->mapTo(control->window(), control->rect().center()));
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
/// and 10 seconds, so that all that waits for time alone is over; a step may come while the one
/// before still waits for the user. The words:
///     in WINDOW      brings it to the front; the words after it are about this one
///     click NAME     a button, which must be seen and enabled
///     point NAME     the mouse on anything, as far as a modal window lets it through
///     right NAME     its other button;   slip NAME: pressed on it, let go beside it
///     go NAME        moves the focus to a control
///     key KEY        a key by Qt's name;   held KEY: one more of a key that is held down
///     type TEXT      into what has the focus;   paste TEXT: with blanks around it
///     pick LIST ROW  a click on an entry;   double LIST ROW
///     menu ITEM      of the window's menu;   frame: closes the window;   end: the start window
///     panel          connects and opens the panel;   linked: the unit is on COM7, no panel opens
///     gone           the cable is pulled;   refused: by every address
///     ports 0, ports 2: so many exist
/// @return what these words saw, ", " between them:
///     windows  see NAME  list NAME  address  focus
///     sent: to the unit;   line: what was done to the link last;   file: the saved units
///     unit: the number picked and the name controlled;   state: of the panel's selection
inline std::string play(ProgramFixture &kvn, const std::string &steps) {
    std::string seen;
    bool any = false;
    std::string window = "frmMain";
    std::istringstream words;
    Program &program = kvn.program;
    PanelState &panel = program.panel;
    // clang-format off
    const auto word = [&] { std::string next; words >> next; return next; };
    const auto part = [&] { return kvn.part(window.c_str(), word()); };
    const auto list = [&] { return kvn.part<QListWidget>(window.c_str(), word()); };
    const auto focus = [&] { return kvn.window(window)->focusWidget() ? kvn.window(window)->focusWidget() : kvn.window(window); };
    const auto key = [&](const std::string &name) { return QKeySequence::fromString(QString::fromStdString(name))[0]; };
    const auto press = [&](QKeyCombination keys) { QTest::keyClick(focus(), keys.key(), keys.keyboardModifiers()); };
    const std::map<std::string, std::function<void()>> acts{
        {"in", [&] { kvn.window(window = word())->activateWindow(); QCoreApplication::processEvents(); }},
        {"click", [&] { kvn.click(window.c_str(), word()); }},
        {"point", [&] { clickOnScreen(part()); }},
        {"right", [&] { clickOnScreen(part(), Qt::RightButton); }},
        {"slip", [&] { QTest::mouseRelease(part(), Qt::LeftButton, {}, QPoint(-5, 5)); }},
        {"go", [&] { part()->setFocus(); }},
        {"key", [&] { press(key(word())); }},
        {"held", [&] { QTest::simulateEvent(focus(), true, key(word()).key(), {}, {}, true); }},
        {"type", [&] { for (const QChar letter : QString::fromStdString(word()))
                           QTest::sendKeyEvent(QTest::Click, focus(), Qt::Key_A, letter, Qt::NoModifier); }},
        {"paste", [&] { QGuiApplication::clipboard()->setText(QString::fromStdString(" " + word() + "\n")); press(key("Ctrl+V")); }},
        {"pick", [&] { auto *in = list(); pick(in, std::stoi(word())); }},
        {"double", [&] { auto *in = list(); pick(in, std::stoi(word()), true); }},
        {"menu", [&] { kvn.part<QAction>(window.c_str(), word())->trigger(); }},
        {"frame", [&] { kvn.window(window)->close(); }},
        {"end", [&] { kvn.window("frmMain")->close(); }},
        {"panel", [&] { kvn.openPanel(); kvn.takeWritten(); kvn.window(window = "KVN32x32Audio")->activateWindow(); QCoreApplication::processEvents(); }},
        {"linked", [&] { program.link.LinkKind = SerialLinkKind; program.serial.OpenSerialPort(7); program.display.refreshAll(); kvn.windows.refresh(); }},
        {"refused", [&] { kvn.socket.host = FakeTcpSocket::Host::Refuses; }},
        {"gone", [&] { kvn.serialPort.vanish(); }},
        {"ports", [&] { kvn.serialPort.present = word() == "0" ? std::set<int>{} : std::set<int>{1, 2}; }}};
    const std::map<std::string, std::function<std::string()>> looks{
        {"windows", [&] { return kvn.visibleWindows(); }},
        {"see", [&] { const std::string name = word(); const auto *item = kvn.part<QAction>(window.c_str(), name);
                      return item ? item->text().toStdString() : look(kvn.part(window.c_str(), name)); }},
        {"list", [&] { return entries(part()); }},
        {"address", [&] { return addressIn(window); }},
        {"focus", [&] { return focus()->objectName().toStdString(); }},
        {"sent", [&] { return kvn.takeWritten(); }},
        {"line", [&] { auto &log = kvn.socket.log.empty() ? kvn.serialPort.log : kvn.socket.log; return log.empty() ? "" : log.back(); }},
        {"file", [&] { return QString::fromLatin1(kvn.files.contentsOf["program/KVNConfigurator.ini"])
                           .remove(QRegularExpression(QStringLiteral("KVN|NAME|TYPE|="))).simplified().toStdString(); }},
        {"unit", [&] { return std::to_string(program.savedUnits.SelectedBlockIndex) + program.unit.SelectedUnitName; }},
        {"state", [&] { std::string all = panel.PanelMode + ("i" + std::to_string(panel.CurrentInput));
                        for (const std::string &output : panel.SelectedOutputs) all += output.empty() ? "" : "o" + output;
                        return all + "v" + std::to_string(panel.VolumeOutput); }}};
    // clang-format on
    double due = 0.0;
    for (const QString &step : QString::fromStdString(steps).split(QStringLiteral(" ; "))) {
        kvn.pump.in(due += 10.0, [&, text = step.toStdString()] {
            std::istringstream outer = std::exchange(words, std::istringstream(text));
            for (std::string verb = word(); !verb.empty(); verb = word()) {
                if (const auto act = acts.find(verb); act != acts.end())
                    act->second();
                else
                    seen += (std::exchange(any, true) ? ", " : "") + looks.at(verb)();
            }
            words = std::move(outer);
        });
    }
    kvn.pump.runFor(due + 10.0, [] { return false; });
    return seen;
}
