#pragma once

#include <QLineEdit>
#include <QPoint>

#include <functional>
#include <optional>

/// A read-only box that tells when it is pointed at: by a movement of the mouse, a click, or Space
/// or Enter while it has the focus. A box that comes up under a pointer at rest is not pointed at.
/// Nothing in it can be selected. Where it is told what steps mean, plus and minus and each notch
/// of the wheel make one.
class VolumeBox : public QLineEdit {
public:
    explicit VolumeBox(QWidget *parent = nullptr);

    enum class Step { Up, Down };

    std::function<void()> pointedAt = [] {};
    std::function<void(Step)> stepped;

protected:
    void showEvent(QShowEvent *event) override;
    void leaveEvent(QEvent *event) override;
    void mouseMoveEvent(QMouseEvent *event) override;
    void mousePressEvent(QMouseEvent *event) override;
    void keyPressEvent(QKeyEvent *event) override;
    void wheelEvent(QWheelEvent *event) override;

private:
    int wheelTurned = 0;           ///< since the last whole notch, in eighths of a degree
    std::optional<QPoint> restsAt; ///< where the pointer was last seen here, in global pixels
};
