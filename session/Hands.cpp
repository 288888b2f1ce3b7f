#include "Hands.h"

#include <QAbstractButton>
#include <QAction>
#include <QApplication>
#include <QComboBox>
#include <QLineEdit>
#include <QListWidget>
#include <QMouseEvent>

#include <cstdio>
#include <cstdlib>

namespace {

template <class Control> Control &control(const char *window, const char *name) {
    auto *found = sessionWindow(window).findChild<Control *>(QLatin1String(name));
    if (!found) {
        std::fprintf(stderr, "Session: %s has no %s.\n", window, name);
        std::exit(1);
    }
    return *found;
}

} // namespace

namespace hands {

void click(const char *window, const char *name) { control<QAbstractButton>(window, name).click(); }

void chooseMenu(const char *window, const char *item) { control<QAction>(window, item).trigger(); }

void chooseInList(const char *window, const char *list, const QString &entry) {
    auto &widget = control<QListWidget>(window, list);
    const QList<QListWidgetItem *> found = widget.findItems(entry, Qt::MatchExactly);
    if (found.isEmpty()) {
        std::fprintf(stderr, "Session: %s has no entry %s.\n", list, qPrintable(entry));
        std::exit(1);
    }
    widget.setCurrentItem(found.back());
}

void choosePort(const QString &port) {
    auto &ports = control<QComboBox>("dlgConnect", "SerialPortsCombo");
    const int item = ports.findText(port);
    if (item < 0) {
        std::fprintf(stderr, "Session: there is no port %s.\n", qPrintable(port));
        std::exit(1);
    }
    ports.setCurrentIndex(item);
    Q_EMIT ports.activated(item);
}

void type(const char *window, const char *box, const QString &text) {
    control<QLineEdit>(window, box).setText(text);
}

void pointAt(const char *window, const char *name) {
    auto &pointedAt = control<QWidget>(window, name);
    const QPointF inside(2, 2);
    QMouseEvent moves(QEvent::MouseMove, inside, pointedAt.mapToGlobal(inside), Qt::NoButton,
                      Qt::NoButton, Qt::NoModifier);
    QApplication::sendEvent(&pointedAt, &moves);
}

std::function<bool()> shows(const char *window) {
    return [window] {
        const QWidget *found = findWindow(window);
        return found && found->isVisible();
    };
}

std::function<bool()> offers(const char *window, const char *name) {
    return [window, name] {
        if (!findWindow(window))
            return false;
        const auto &found = control<QWidget>(window, name);
        return found.isVisible() && found.isEnabled();
    };
}

} // namespace hands
