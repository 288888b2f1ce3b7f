#include "panel/VolumeBox.h"

#include <QFocusEvent>

VolumeBox::VolumeBox(const QString &text, QWidget *parent) : QLineEdit(text, parent) {
    setMouseTracking(true);
}

void VolumeBox::enterEvent(QEnterEvent *event) {
    QLineEdit::enterEvent(event);
    pointedAt();
}

void VolumeBox::mouseMoveEvent(QMouseEvent *event) {
    QLineEdit::mouseMoveEvent(event);
    pointedAt();
}

void VolumeBox::mousePressEvent(QMouseEvent *event) {
    QLineEdit::mousePressEvent(event);
    pointedAt();
}

void VolumeBox::focusInEvent(QFocusEvent *event) {
    QLineEdit::focusInEvent(event);
    const bool byTab =
        event->reason() == Qt::TabFocusReason || event->reason() == Qt::BacktabFocusReason;
    if (byTab)
        pointedAt();
}
