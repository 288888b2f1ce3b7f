#include "FocusRing.h"

#include "FaceButton.h"
#include "ProgramLook.h"

#include <QApplication>
#include <QFrame>
#include <QMenuBar>
#include <QPainter>

FocusRing::FocusRing(QWidget *ofWindow) : Ring(ofWindow, &colour::Ground::focus, 2.0) {
    connect(qApp, &QApplication::focusChanged, this, [this, ofWindow](QWidget *, QWidget *now) {
        // A menu bar marks its title itself.
        const bool marked =
            now && now != ofWindow && now->window() == ofWindow && !qobject_cast<QMenuBar *>(now);
        surround(marked ? now : nullptr);
    });
}

Ring::Ring(QWidget *parent, QColor colour::Ground::*ofGround, double thinLines)
    : QFocusFrame(parent), ink(ofGround), lines(thinLines) {
    hide();
}

void Ring::surround(QWidget *surrounded) {
    if (control)
        control->removeEventFilter(this);
    control = surrounded;
    if (!control) {
        hide();
        return;
    }
    // Where the control is scrolled or hidden, so is the ring.
    setParent(control->parentWidget());
    control->installEventFilter(this);
    follow();
}

void Ring::follow() {
    setGeometry(control->geometry());
    setVisible(control->isVisibleTo(control->parentWidget()));
    raise();
    update();
}

bool Ring::eventFilter(QObject *watched, QEvent *event) {
    const QEvent::Type type = event->type();
    if (watched == control && (type == QEvent::Move || type == QEvent::Resize ||
                               type == QEvent::Show || type == QEvent::FontChange))
        follow();
    return false;
}

void Ring::paintEvent(QPaintEvent *) {
    if (!control)
        return;
    const double width = lineWidth(*control, lines);
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(
        QPen(colour::ground(palette()).*ink, width, Qt::SolidLine, Qt::SquareCap, Qt::MiterJoin));
    // Lists and labels have sharp corners, which would look out of round ones.
    const double radius = qobject_cast<QFrame *>(control) ? 0.0 : FaceButton::cornerRadius(*this);
    painter.drawRoundedRect(
        QRectF(rect()).marginsRemoved(QMarginsF(width, width, width, width) / 2), radius, radius);
}
