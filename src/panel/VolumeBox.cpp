#include "panel/VolumeBox.h"

#include <QKeyEvent>

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

void VolumeBox::keyPressEvent(QKeyEvent *event) {
    const int key = event->key();
    if (key == Qt::Key_Space || key == Qt::Key_Return || key == Qt::Key_Enter)
        pointedAt();
    else
        QLineEdit::keyPressEvent(event);
}
