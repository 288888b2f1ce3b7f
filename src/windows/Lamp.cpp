#include "Lamp.h"

#include "Colours.h"
#include "ProgramLook.h"

#include <QPainter>

#include <algorithm>
#include <utility>

Lamp::Lamp(QWidget *parent) : QWidget(parent) {
    setAttribute(Qt::WA_TransparentForMouseEvents);
    setAccessibleDescription(QStringLiteral("unlit"));
}

void Lamp::setLit(bool on) {
    if (std::exchange(lit, on) == on)
        return;
    setAccessibleDescription(on ? QStringLiteral("lit") : QStringLiteral("unlit"));
    update();
}

void Lamp::paintEvent(QPaintEvent *) {
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    const double side = std::min(width(), height());
    QRectF circle(0, 0, side, side);
    circle.moveCenter(QRectF(rect()).center());
    const double edge = screenLine(*this, side / 8.0);
    circle.adjust(edge / 2, edge / 2, -edge / 2, -edge / 2);
    painter.setPen(
        QPen(lit ? colour::LampLit.darker(130) : colour::ground(palette()).lampEdge, edge));
    painter.setBrush(lit ? QBrush(colour::LampLit) : QBrush(Qt::NoBrush));
    painter.drawEllipse(circle);
}
