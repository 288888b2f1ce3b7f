#include "PortList.h"

#include <QAbstractItemView>
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
    const int key = event->key();
    if (key == Qt::Key_Down || key == Qt::Key_Up)
        showPopup();
    else
        QComboBox::keyPressEvent(event);
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
    return QComboBox::eventFilter(watched, event);
}
