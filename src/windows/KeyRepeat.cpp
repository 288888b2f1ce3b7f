#include "KeyRepeat.h"

#include <QApplication>
#include <QKeyEvent>
#include <QLineEdit>

namespace {

// Some X servers take the time of the release and of the press one after the other. No finger is
// as quick as that.
constexpr quint64 RepeatGapMilliseconds = 1;

/// The key itself where the window system tells it: Shift changes what it means.
quint64 idOf(const QKeyEvent &key) {
    const quint64 meaning = static_cast<quint32>(key.key());
    return key.nativeScanCode() != 0 ? key.nativeScanCode() : meaning << 32U;
}

bool mayRepeat(const QKeyEvent &key) {
    switch (key.key()) {
    case Qt::Key_Left:
    case Qt::Key_Right:
    case Qt::Key_Up:
    case Qt::Key_Down:
    case Qt::Key_Home:
    case Qt::Key_End:
    case Qt::Key_PageUp:
    case Qt::Key_PageDown:
    case Qt::Key_Tab:
    case Qt::Key_Backtab:
        return true;
    default:
        break;
    }
    const auto *box = qobject_cast<const QLineEdit *>(QApplication::focusWidget());
    if (!box || box->isReadOnly())
        return false;
    if (key.key() == Qt::Key_Backspace || key.key() == Qt::Key_Delete)
        return true;
    const bool withCommandKey =
        (key.modifiers() & (Qt::ControlModifier | Qt::AltModifier | Qt::MetaModifier)) != 0;
    return !withCommandKey && !key.text().isEmpty() && key.text().front().isPrint();
}

} // namespace

bool KeyRepeat::swallows(QEvent &event) {
    switch (event.type()) {
    case QEvent::ShortcutOverride:
    case QEvent::KeyPress:
        return swallowsPress(static_cast<QKeyEvent &>(event));
    case QEvent::KeyRelease:
        return swallowsRelease(static_cast<QKeyEvent &>(event));
    default:
        return false;
    }
}

bool KeyRepeat::swallowsPress(QKeyEvent &key) {
    // Events without a time are copies, such as those that come back from an assistive technology;
    // they were judged when they came with their time.
    if (key.timestamp() == 0 && !key.isAutoRepeat())
        return false;
    Held &held = keys[idOf(key)];
    const bool atRelease =
        held.released && key.timestamp() - *held.released <= RepeatGapMilliseconds;
    if (!key.isAutoRepeat() && !atRelease) {
        held = {};
        return false;
    }
    if (mayRepeat(key))
        return false;
    held.over = held.released.has_value();
    key.accept(); // a shortcut is not looked for then
    return true;
}

bool KeyRepeat::swallowsRelease(const QKeyEvent &key) {
    if (key.timestamp() == 0)
        return false;
    Held &held = keys[idOf(key)];
    if (!key.isAutoRepeat())
        held.released = key.timestamp();
    return held.over;
}
