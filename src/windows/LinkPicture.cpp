#include "LinkPicture.h"

#include "Colours.h"
#include "ProgramLook.h"

#include <QPainter>

LinkPicture::LinkPicture(Shows what, QWidget *parent) : QWidget(parent), up(what == Shows::LinkUp) {
    setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Fixed);
    setAccessibleName(up ? QStringLiteral("Link up") : QStringLiteral("Link down"));
}

QSize LinkPicture::sizeHint() const { return grown(QSize(56, 28)); }

void LinkPicture::paintEvent(QPaintEvent *) {
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    // Drawn on a sheet of 56 x 28 and scaled to the widget.
    painter.scale(width() / 56.0, height() / 28.0);
    const colour::Ground &ground = colour::ground(palette());
    const QColor ink = up ? ground.linkUp : ground.linkDown;
    const double gap = up ? 0.0 : 5.0;
    painter.setPen(QPen(ink, 3.0, Qt::SolidLine, Qt::RoundCap));
    painter.drawLine(QPointF(3, 14), QPointF(14 - gap, 14));
    painter.drawLine(QPointF(42 + gap, 14), QPointF(53, 14));
    painter.setPen(Qt::NoPen);
    painter.setBrush(ink);
    painter.drawRoundedRect(QRectF(14 - gap, 6, 13, 16), 3, 3);
    painter.drawRoundedRect(QRectF(29 + gap, 6, 13, 16), 3, 3);
    painter.drawRect(QRectF(26 - gap, 9.5, up ? 4 : 5, 3));
    painter.drawRect(QRectF(26 - gap, 15.5, up ? 4 : 5, 3));
}
