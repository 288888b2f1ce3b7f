#include "Application.h"

#include <QWidget>
#include <QWindow>

#include <algorithm>

namespace {

bool isKey(const QEvent &event) {
    return event.type() == QEvent::ShortcutOverride || event.type() == QEvent::KeyPress ||
           event.type() == QEvent::KeyRelease;
}

/// The window that the user sees in front, or none.
QWidget *frontWindow() {
    if (QWidget *active = QApplication::activeWindow(); active && active->isVisible())
        return active;
    if (QWidget *modal = QApplication::activeModalWidget())
        return modal;
    const QWidgetList widgets = QApplication::topLevelWidgets();
    const auto isOpen = [](const QWidget *window) {
        return window->isWindow() && window->isVisible() && !window->isMinimized() &&
               (window->windowType() == Qt::Window || window->windowType() == Qt::Dialog);
    };
    const auto open = std::find_if(widgets.rbegin(), widgets.rend(), isOpen);
    return open == widgets.rend() ? nullptr : *open;
}

/// A window system that is slow to follow can take a window for the one with the focus that was
/// closed meanwhile.
QObject *openReceiver(QObject *receiver) {
    if (!receiver->isWindowType() || static_cast<QWindow *>(receiver)->isVisible())
        return receiver;
    QWidget *front = frontWindow();
    if (!front || !front->windowHandle())
        return receiver;
    QT_WARNING_PUSH
    QT_WARNING_DISABLE_DEPRECATED
    QApplication::setActiveWindow(front); // it has the focus already, so asking for it does nothing
    QT_WARNING_POP
    return front->windowHandle();
}

} // namespace

bool Application::notify(QObject *receiver, QEvent *event) {
    if (keyRepeat.swallows(*event))
        return true;
    return QApplication::notify(isKey(*event) ? openReceiver(receiver) : receiver, event);
}
