#pragma once

#include <QLabel>

#include <functional>

/// A label that does something when it is clicked, or by Space or Enter while it has the focus.
/// Until it is told what, it is a plain label.
class PressLabel : public QLabel {
public:
    explicit PressLabel(QWidget *parent) : QLabel(parent) {}

    /// Lets the label take the focus by Tab and be pressed from now on.
    void whenPressed(std::function<void()> action);
    [[nodiscard]] bool canBePressed() const { return static_cast<bool>(pressed); }
    void press();

protected:
    void mouseReleaseEvent(QMouseEvent *event) override;
    void keyPressEvent(QKeyEvent *event) override;
    void paintEvent(QPaintEvent *event) override;

private:
    std::function<void()> pressed;
};
