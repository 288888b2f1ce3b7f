#pragma once

#include <QFocusFrame>
#include <QPointer>

/// The ring around the control of a window that has the focus. It lies over the control and its
/// neighbours, so that none of them cuts it. As a focus frame it is passed over by screen readers
/// and by the mouse.
class FocusRing : public QFocusFrame {
public:
    /// @param ofWindow the window whose focus it shows
    explicit FocusRing(QWidget *ofWindow);

protected:
    bool eventFilter(QObject *watched, QEvent *event) override;
    void paintEvent(QPaintEvent *event) override;

private:
    void surround(QWidget *focused);
    void follow();

    QWidget *window;
    QPointer<QWidget> control;
};
