#include "Application.h"

#include <QWindow>

#include <algorithm>

namespace {

bool isKey(const QEvent &event) {
    return event.type() == QEvent::ShortcutOverride || event.type() == QEvent::KeyPress ||
           event.type() == QEvent::KeyRelease;
}

} // namespace

bool Application::notify(QObject *receiver, QEvent *event) {
    if (keyRepeat.swallows(*event))
        return true;
    if (event->type() == QEvent::WindowActivate)
        noteActive(receiver);
    return QApplication::notify(isKey(*event) ? openReceiver(receiver) : receiver, event);
}

void Application::noteActive(QObject *receiver) {
    auto *widget = qobject_cast<QWidget *>(receiver);
    if (!widget || !widget->isWindow())
        return;
    std::erase_if(lastActive, [widget](auto &window) { return !window || window == widget; });
    lastActive.emplace_back(widget);
}

QObject *Application::openReceiver(QObject *receiver) const {
    // A window system that is slow to follow can take a window for the one with the focus that was
    // closed meanwhile.
    if (!receiver->isWindowType() || static_cast<QWindow *>(receiver)->isVisible())
        return receiver;
    const auto front = std::find_if(lastActive.rbegin(), lastActive.rend(), [](auto &window) {
        return window && window->isVisible() && !window->isMinimized();
    });
    if (front == lastActive.rend() || !(*front)->windowHandle())
        return receiver;
    // By value: the activation below is noted in the list.
    QWidget *const window = *front;
    QT_WARNING_PUSH
    QT_WARNING_DISABLE_DEPRECATED
    setActiveWindow(window); // it has the focus already, so asking for it would do nothing
    QT_WARNING_POP
    return window->windowHandle();
}
