#include "Hands.h"

#include <QAbstractButton>
#include <QAction>
#include <QApplication>
#include <QComboBox>
#include <QKeyEvent>
#include <QLineEdit>
#include <QListWidget>

namespace {

QObject *find(const QByteArray &window, const QByteArray &control) {
    const QWidget *found = openWindow(window);
    return found ? found->findChild<QObject *>(QString::fromLatin1(control)) : nullptr;
}

bool is(const QObject *object, const char *property) {
    return object && object->property(property).toBool();
}

} // namespace

QWidget *openWindow(const QByteArray &window) {
    for (QWidget *found : QApplication::topLevelWidgets()) {
        if (found->objectName() == QLatin1String(window) && found->isVisible())
            return found;
    }
    return nullptr;
}

bool isUsable(const QByteArray &window, const QByteArray &control) {
    if (control.isEmpty() || control == "frame")
        return openWindow(window) != nullptr;
    const QObject *found = find(window, control);
    return is(found, "visible") && is(found, "enabled");
}

void use(const QByteArray &window, const QByteArray &control, const QString &value) {
    QObject *found = find(window, control);
    if (auto *button = qobject_cast<QAbstractButton *>(found)) {
        button->click();
    } else if (auto *item = qobject_cast<QAction *>(found)) {
        item->trigger();
    } else if (auto *ports = qobject_cast<QComboBox *>(found)) {
        ports->setCurrentText(value);
        Q_EMIT ports->activated(ports->currentIndex());
    } else if (auto *list = qobject_cast<QListWidget *>(found)) {
        list->setCurrentItem(list->findItems(value, Qt::MatchExactly).value(0));
    } else if (auto *box = qobject_cast<QLineEdit *>(found); box && !value.isEmpty()) {
        box->setText(value);
    } else if (found) {
        QKeyEvent space(QEvent::KeyPress, Qt::Key_Space, Qt::NoModifier);
        QApplication::sendEvent(found, &space);
    } else {
        openWindow(window)->close();
    }
}

QByteArray shownBy(const QByteArray &window, const QByteArray &control) {
    const QObject *found = find(window, control);
    if (!is(found, "visible"))
        return "hidden";
    QVariant shown = found->property("text");
    for (const char *const other : {"count", "accessibleDescription"}) {
        if (!shown.isValid())
            shown = found->property(other);
    }
    return shown.toString().toUtf8();
}
