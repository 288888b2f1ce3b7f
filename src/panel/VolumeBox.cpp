#include "panel/VolumeBox.h"

#include <QCursor>
#include <QKeyEvent>

VolumeBox::VolumeBox(const PointerWatch &pointerWatch, QWidget *parent)
    : QLineEdit(parent), pointer(pointerWatch) {
    setMouseTracking(true);
}

bool VolumeBox::isMovedTo(const QPointF &globalPosition) {
    const QPoint before = restsAt.value_or(pointer.lastSeen());
    restsAt = globalPosition.toPoint();
    return restsAt != before;
}

void VolumeBox::showEvent(QShowEvent *event) {
    QLineEdit::showEvent(event);
    restsAt = QCursor::pos();
}

void VolumeBox::enterEvent(QEnterEvent *event) {
    QLineEdit::enterEvent(event);
    const bool seenThere = pointer.lastSeen() == event->globalPosition().toPoint();
    if (isMovedTo(event->globalPosition()) && !seenThere)
        pointedAt();
}

void VolumeBox::leaveEvent(QEvent *event) {
    QLineEdit::leaveEvent(event);
    restsAt.reset();
}

void VolumeBox::mouseMoveEvent(QMouseEvent *event) {
    QLineEdit::mouseMoveEvent(event);
    if (isMovedTo(event->globalPosition()))
        pointedAt();
}

void VolumeBox::mousePressEvent(QMouseEvent *event) {
    QLineEdit::mousePressEvent(event);
    pointedAt();
}

void VolumeBox::keyPressEvent(QKeyEvent *event) {
    const int key = event->key();
    if (key == Qt::Key_Space || key == Qt::Key_Return || key == Qt::Key_Enter)
        pointedAt();
    else
        QLineEdit::keyPressEvent(event);
}
