#include "PortList.h"

#include <QAbstractItemView>
#include <QCoreApplication>
#include <QKeyEvent>
#include <QWheelEvent>

#include <algorithm>

PortList::PortList(QWidget *parent) : QComboBox(parent) { view()->installEventFilter(this); }

void PortList::showPopup() {
    QComboBox::showPopup();
    // The focus has made the first entry the current one, but has not marked it.
    const int row = std::max(currentIndex(), 0);
    view()->setCurrentIndex(model()->index(row, modelColumn(), rootModelIndex()));
}

void PortList::keyPressEvent(QKeyEvent *event) {
    switch (event->key()) {
    case Qt::Key_Down:
    case Qt::Key_Up:
    case Qt::Key_Space:
        showPopup();
        return;
    case Qt::Key_Home:
    case Qt::Key_End:
    case Qt::Key_PageUp:
    case Qt::Key_PageDown:
        break;
    default:
        if (event->text().isEmpty() || !event->text().front().isPrint()) {
            QComboBox::keyPressEvent(event);
            return;
        }
    }
    showPopup();
    QCoreApplication::sendEvent(view(), event);
}

void PortList::wheelEvent(QWheelEvent *event) { event->ignore(); }

bool PortList::eventFilter(QObject *watched, QEvent *event) {
    // Qt closes the list before the shortcuts of the window are asked, and leaves them the key.
    if (event->type() == QEvent::ShortcutOverride && view()->isVisible() &&
        static_cast<QKeyEvent *>(event)->matches(QKeySequence::Cancel)) {
        hidePopup();
        event->accept();
        return true;
    }
    // A closed list has no entry that could be taken for the one with the focus. What was picked is
    // still read from it by whoever closed it.
    if (event->type() == QEvent::Hide)
        QMetaObject::invokeMethod(
            view(),
            [list = view()] {
                if (!list->isVisible())
                    list->setCurrentIndex({});
            },
            Qt::QueuedConnection);
    return QComboBox::eventFilter(watched, event);
}
