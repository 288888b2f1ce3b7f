#include "PressLabel.h"

#include <QKeyEvent>
#include <QMouseEvent>
#include <QPainter>

#include <utility>

void PressLabel::whenPressed(std::function<void()> action) {
    pressed = std::move(action);
    setPressable(true);
}

void PressLabel::setPressable(bool pressable) {
    setFocusPolicy(pressable ? Qt::TabFocus : Qt::NoFocus);
    setCursor(pressable ? Qt::PointingHandCursor : Qt::ArrowCursor);
    // Nobody stays where no key does anything.
    if (!pressable && hasFocus())
        focusNextChild();
}

void PressLabel::press() {
    if (pressed)
        pressed();
}

void PressLabel::mouseReleaseEvent(QMouseEvent *event) {
    if (event->button() == Qt::LeftButton && rect().contains(event->position().toPoint()))
        press();
    else
        QLabel::mouseReleaseEvent(event);
}

void PressLabel::keyPressEvent(QKeyEvent *event) {
    const int key = event->key();
    const bool presses = key == Qt::Key_Space || key == Qt::Key_Return || key == Qt::Key_Enter;
    if (pressed && presses)
        press();
    else
        QLabel::keyPressEvent(event);
}

void PressLabel::paintEvent(QPaintEvent *event) {
    QLabel::paintEvent(event);
    if (!hasFocus())
        return;
    // In the text's colour, which is read on every colour of the link.
    QPainter painter(this);
    painter.setPen(QPen(palette().color(foregroundRole()), 2.0));
    painter.drawRect(rect().adjusted(4, 4, -4, -4));
}
