#include "FocusRing.h"

#include "Colours.h"
#include "FaceButton.h"
#include "ProgramLook.h"

#include <QApplication>
#include <QPainter>

FocusRing::FocusRing(QWidget *ofWindow) : QFocusFrame(ofWindow), window(ofWindow) {
    hide();
    connect(qApp, &QApplication::focusChanged, this, [this](QWidget *, QWidget *now) {
        surround(now && now != window && now->window() == window ? now : nullptr);
    });
}

void FocusRing::surround(QWidget *focused) {
    if (control)
        control->removeEventFilter(this);
    control = focused;
    if (!control) {
        hide();
        return;
    }
    // Where the control is scrolled or hidden, so is the ring.
    setParent(control->parentWidget());
    control->installEventFilter(this);
    follow();
}

void FocusRing::follow() {
    setGeometry(control->geometry());
    setVisible(control->isVisibleTo(control->parentWidget()));
    raise();
    update();
}

bool FocusRing::eventFilter(QObject *watched, QEvent *event) {
    const QEvent::Type type = event->type();
    if (watched == control && (type == QEvent::Move || type == QEvent::Resize ||
                               type == QEvent::Show || type == QEvent::FontChange))
        follow();
    return false;
}

void FocusRing::paintEvent(QPaintEvent *) {
    if (!control)
        return;
    const double width = 2.0 * lineWidth(*control);
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(QPen(colour::ground(palette()).focus, width));
    const double radius = FaceButton::cornerRadius(*this);
    painter.drawRoundedRect(
        QRectF(rect()).marginsRemoved(QMarginsF(width, width, width, width) / 2), radius, radius);
}
