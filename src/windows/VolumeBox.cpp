#include "VolumeBox.h"

#include <QCursor>
#include <QKeyEvent>
#include <QWheelEvent>

#include <cstdlib>
#include <utility>

VolumeBox::VolumeBox(QWidget *parent) : QLineEdit(parent) {
    setMouseTracking(true);
    // The selection that the focus brings would look as if it were to be typed over.
    connect(this, &QLineEdit::selectionChanged, this, &QLineEdit::deselect);
}

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
    else if (stepped && (key == Qt::Key_Plus || key == Qt::Key_Minus)) {
        stepped(key == Qt::Key_Plus ? Step::Up : Step::Down);
    } else
        QLineEdit::keyPressEvent(event);
}

void VolumeBox::wheelEvent(QWheelEvent *event) {
    if (!stepped) {
        QLineEdit::wheelEvent(event);
        return;
    }
    const int turned = event->angleDelta().y();
    // Fine wheels turn by parts of a notch; a turn back begins anew.
    wheelTurned = (wheelTurned < 0) == (turned < 0) ? wheelTurned + turned : turned;
    event->accept();
    if (std::abs(wheelTurned) < QWheelEvent::DefaultDeltasPerStep)
        return;
    wheelTurned = 0;
    stepped(turned > 0 ? Step::Up : Step::Down);
}
