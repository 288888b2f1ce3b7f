#pragma once

#include <QLabel>

#include <functional>

/// A label that does something when it is clicked, or by Space or Enter while it has the focus.
/// Until it is told what, it is a plain label. Only while a press would do something it can be gone
/// to by keys and is told to be one that can be pressed.
class PressLabel : public QLabel {
public:
    explicit PressLabel(QWidget *parent) : QLabel(parent) {}

    void whenPressed(std::function<void()> action);
    void setPressable(bool pressable);
    [[nodiscard]] bool canBePressed() const { return focusPolicy() == Qt::TabFocus; }
    void press();

protected:
    void mouseReleaseEvent(QMouseEvent *event) override;
    void keyPressEvent(QKeyEvent *event) override;
    void paintEvent(QPaintEvent *event) override;

private:
    std::function<void()> pressed;
};
