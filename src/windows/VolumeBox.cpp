#include "VolumeBox.h"

#include <QCursor>
#include <QKeyEvent>

#include <utility>

VolumeBox::VolumeBox(QWidget *parent) : QLineEdit(parent) { setMouseTracking(true); }

void VolumeBox::showEvent(QShowEvent *event) {
    QLineEdit::showEvent(event);
    restsAt = QCursor::pos();
}

void VolumeBox::leaveEvent(QEvent *event) {
    QLineEdit::leaveEvent(event);
    restsAt.reset();
}

void VolumeBox::mouseMoveEvent(QMouseEvent *event) {
    QLineEdit::mouseMoveEvent(event);
    // Windows that open and close make moves up for what is under the pointer then.
    const bool madeUp = event->source() == Qt::MouseEventSynthesizedByApplication;
    const QPoint at = event->globalPosition().toPoint();
    if (std::exchange(restsAt, at) != at && !madeUp)
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
