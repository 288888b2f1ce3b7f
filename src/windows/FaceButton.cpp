#include "FaceButton.h"

#include "Colours.h"

#include <QPainter>

#include <algorithm>

FaceButton::FaceButton(const QString &caption, QWidget *parent) : QPushButton(caption, parent) {
    setFocusPolicy(Qt::TabFocus);
    setAutoDefault(false);
    setFace(colour::Neutral);
}

void FaceButton::setFace(const QColor &colour) {
    QPalette colours = palette();
    colours.setColor(QPalette::Button, colour);
    setPalette(colours);
    update();
}

QColor FaceButton::face() const { return palette().color(QPalette::Active, QPalette::Button); }

QSize FaceButton::sizeHint() const {
    const QSize textSize = fontMetrics().size(Qt::TextShowMnemonic, text());
    return {textSize.width() + 28, textSize.height() + 14};
}

void FaceButton::paintEvent(QPaintEvent *) {
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    QColor fill = face();
    if (!isEnabled())
        fill = fill.lighter(108);
    else if (isDown())
        fill = fill.darker(118);

    const double radius = std::clamp(height() / 6.0, 2.0, 6.0);
    const QRectF edge = QRectF(rect()).adjusted(0.5, 0.5, -0.5, -0.5);
    // The face colour means something, so the pointer shows at the edge only.
    const bool pointed = isEnabled() && underMouse();
    const QColor line = pointed ? colour::Focus : face().darker(isEnabled() ? 150 : 115);
    painter.setPen(QPen(line, 1.0));
    painter.setBrush(fill);
    painter.drawRoundedRect(edge, radius, radius);
    if (hasFocus()) {
        painter.setPen(QPen(colour::Focus, 2.0));
        painter.setBrush(Qt::NoBrush);
        painter.drawRoundedRect(edge.adjusted(1, 1, -1, -1), radius, radius);
    }
    painter.setPen(isEnabled() ? colour::textOn(face()) : colour::DisabledText);
    painter.setFont(font());
    painter.drawText(rect(), Qt::AlignCenter | Qt::TextShowMnemonic, text());
}
