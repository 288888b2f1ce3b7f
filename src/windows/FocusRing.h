#pragma once

#include "Colours.h"

#include <QFocusFrame>
#include <QPointer>

/// A ring around a control. It lies over the control and its neighbours, so that none of them cuts
/// it. As a focus frame it is passed over by screen readers and by the mouse.
class Ring : public QFocusFrame {
public:
    /// @param ofGround its colour
    /// @param thinLines how many of them it is as heavy as
    Ring(QWidget *parent, QColor colour::Ground::*ofGround, double thinLines);

    /// @param surrounded null: none, the ring is hidden
    void surround(QWidget *surrounded);

protected:
    bool eventFilter(QObject *watched, QEvent *event) override;
    void paintEvent(QPaintEvent *event) override;

private:
    void follow();

    QColor colour::Ground::*ink;
    double lines;
    QPointer<QWidget> control;
};

/// The ring around the control of a window that has the focus.
class FocusRing : public Ring {
public:
    /// @param ofWindow the window whose focus it shows
    explicit FocusRing(QWidget *ofWindow);
};
