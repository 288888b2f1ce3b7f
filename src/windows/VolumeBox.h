#pragma once

#include <QLineEdit>
#include <QPoint>

#include <functional>
#include <optional>

/// A read-only box that tells when it is pointed at: by a movement of the mouse, a click, or Space
/// or Enter while it has the focus. A box that comes up under a pointer at rest is not pointed at.
class VolumeBox : public QLineEdit {
public:
    explicit VolumeBox(QWidget *parent = nullptr);

    std::function<void()> pointedAt = [] {};

protected:
    void showEvent(QShowEvent *event) override;
    void leaveEvent(QEvent *event) override;
    void mouseMoveEvent(QMouseEvent *event) override;
    void mousePressEvent(QMouseEvent *event) override;
    void keyPressEvent(QKeyEvent *event) override;

private:
    std::optional<QPoint> restsAt; ///< where the pointer was last seen here, in global pixels
};
