#pragma once

#include "panel/PointerWatch.h"

#include <QLineEdit>

#include <functional>
#include <optional>

/// A read-only box that tells when it is pointed at: by a movement of the mouse, a click, or
/// Space or Enter while it has the focus. A box that comes up, or comes to light, where the pointer
/// rests is not pointed at.
class VolumeBox : public QLineEdit {
public:
    explicit VolumeBox(const PointerWatch &pointerWatch, QWidget *parent = nullptr);

    std::function<void()> pointedAt = [] {};

protected:
    void showEvent(QShowEvent *event) override;
    void enterEvent(QEnterEvent *event) override;
    void leaveEvent(QEvent *event) override;
    void mouseMoveEvent(QMouseEvent *event) override;
    void mousePressEvent(QMouseEvent *event) override;
    void keyPressEvent(QKeyEvent *event) override;

private:
    [[nodiscard]] bool isMovedTo(const QPointF &globalPosition);

    const PointerWatch &pointer;
    std::optional<QPoint> restsAt; ///< where the pointer was when it was noted here last
};
