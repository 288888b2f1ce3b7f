#pragma once

#include <QPushButton>

/// A push button whose face colour means something. The colour is the palette's Button colour. A
/// mouse click leaves the focus where it is, so that a later Space cannot press the button again.
class FaceButton : public QPushButton {
public:
    explicit FaceButton(const QString &caption, QWidget *parent = nullptr);

    void setFace(const QColor &colour);
    [[nodiscard]] QColor face() const;

    [[nodiscard]] QSize sizeHint() const override;

protected:
    void paintEvent(QPaintEvent *event) override;
};
