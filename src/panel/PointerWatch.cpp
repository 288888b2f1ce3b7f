#include "panel/PointerWatch.h"

#include <QApplication>
#include <QMouseEvent>

PointerWatch::PointerWatch() { QApplication::instance()->installEventFilter(this); }

bool PointerWatch::eventFilter(QObject *watched, QEvent *event) {
    const QEvent::Type type = event->type();
    const bool mouse = type == QEvent::MouseMove || type == QEvent::MouseButtonPress ||
                       type == QEvent::MouseButtonRelease;
    // A window gets each event before its widgets do; they still have to compare.
    if (mouse && watched->isWidgetType())
        seenAt = static_cast<QMouseEvent *>(event)->globalPosition().toPoint();
    return false;
}
