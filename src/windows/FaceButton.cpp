#include "FaceButton.h"

#include "Colours.h"
#include "FocusRing.h"
#include "ProgramLook.h"

#include <QAccessible>
#include <QPainter>

#include <algorithm>
#include <utility>

FaceButton::FaceButton(const QString &caption, QWidget *parent) : QPushButton(caption, parent) {
    setFocusPolicy(Qt::TabFocus);
    setAutoDefault(false);
    setFace(colour::Neutral);
}

void FaceButton::setFace(const QColor &colour) {
    QPalette colours; // the rest stays as the window has it
    colours.setColor(QPalette::Button, colour);
    setPalette(colours); // which updates the button if it changes anything
}

QColor FaceButton::face() const { return palette().color(QPalette::Active, QPalette::Button); }

void FaceButton::setPicked(bool isPicked) {
    if (std::exchange(picked, isPicked) != isPicked)
        update();
}

void FaceButton::setSpokenChecked(bool checked) {
    const std::optional<bool> before = std::exchange(checkedAsSpoken, checked);
    if (!before || before == checked)
        return;
    QAccessible::State changed;
    changed.checked = true;
    QAccessibleStateChangeEvent event(this, changed);
    QAccessible::updateAccessibility(&event);
}

QSize FaceButton::sizeHint() const {
    return fontMetrics().size(Qt::TextShowMnemonic, text()) + grown(QSize(28, 14));
}

double FaceButton::cornerRadius(const QWidget &widget) {
    const double line = lineWidth(widget);
    return std::clamp(widget.height() / 6.0, 2.0 * line, 6.0 * line);
}

bool FaceButton::event(QEvent *event) {
    const bool known = QPushButton::event(event);
    switch (event->type()) {
    case QEvent::Enter:
    case QEvent::Leave:
    case QEvent::EnabledChange:
    case QEvent::FocusIn:
    case QEvent::FocusOut:
        showPointed();
        break;
    default:
        break;
    }
    return known;
}

void FaceButton::showPointed() {
    const bool pointed = isEnabled() && underMouse() && !hasFocus(); // whose ring is enough
    if (pointed == !pointedRing.isNull())
        return;
    if (!pointed) {
        // Not at once: its window may be hiding its children one by one.
        pointedRing->surround(nullptr);
        pointedRing->deleteLater();
        pointedRing.clear();
        return;
    }
    // The face colour means something, so the pointer shows at the edge only.
    pointedRing = new Ring(parentWidget(), &colour::Ground::pointed, 1.0);
    pointedRing->surround(this);
}

void FaceButton::paintEvent(QPaintEvent *) {
    const colour::Ground &ground = colour::ground(palette());
    const double line = lineWidth(*this);
    const double radius = cornerRadius(*this);
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    const auto outline = [&](double outside, double width, const QColor &ink) {
        const double middle = outside + width / 2.0;
        painter.setPen(QPen(ink, width));
        painter.drawRoundedRect(QRectF(rect()).adjusted(middle, middle, -middle, -middle), radius,
                                radius);
    };
    QColor fill = face();
    if (!isEnabled())
        fill = colour::mixed(fill, ground.card, 0.18);
    else if (isDown())
        fill = fill.darker(118);
    painter.setBrush(fill);
    outline(0.0, line, fill.darker(isEnabled() ? 150 : 115));
    painter.setBrush(Qt::NoBrush);
    if (picked) {
        // Within the edge, which the next button may cover. Some of it shows in the focus's ring.
        const double screenPixel = 1.0 / devicePixelRatio();
        const double seen = hasFocus() ? 2.0 * line + screenPixel : 0.0;
        outline(line, std::max(lineWidth(*this, 2.0), seen - line), colour::textOn(fill));
    }
    painter.setPen(isEnabled() ? colour::textOn(fill) : ground.disabledText);
    painter.setFont(font());
    painter.drawText(rect(), Qt::AlignCenter | Qt::TextShowMnemonic, text());
}
