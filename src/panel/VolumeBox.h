#pragma once

#include <QLineEdit>

#include <functional>

/// A read-only box that tells when it is pointed at: by the mouse, a click, or
/// Space or Enter while it has the focus.
class VolumeBox : public QLineEdit {
public:
    explicit VolumeBox(const QString &text, QWidget *parent = nullptr);

    std::function<void()> pointedAt = [] {};

protected:
    void enterEvent(QEnterEvent *event) override;
    void mouseMoveEvent(QMouseEvent *event) override;
    void mousePressEvent(QMouseEvent *event) override;
    void keyPressEvent(QKeyEvent *event) override;
};
