#pragma once

#include <QPointer>
#include <QPushButton>

#include <optional>

class Ring;

/// A push button whose face colour means something. The colour is the palette's Button colour. A
/// picked button has a heavy outline. A mouse click leaves the focus where it is, so that a later
/// Space cannot press the button again.
class FaceButton : public QPushButton {
public:
    explicit FaceButton(const QString &caption, QWidget *parent = nullptr);

    void setFace(const QColor &colour);
    [[nodiscard]] QColor face() const;
    void setPicked(bool isPicked);

    /// What a screen reader is told of a button that stays chosen. A button that was never told is
    /// one that is just pressed.
    void setSpokenChecked(bool checked);
    [[nodiscard]] std::optional<bool> spokenChecked() const { return checkedAsSpoken; }

    [[nodiscard]] QSize sizeHint() const override;

    /// How round the corners of a widget of that height are, in pixels.
    static double cornerRadius(const QWidget &widget);

protected:
    bool event(QEvent *event) override;
    void paintEvent(QPaintEvent *event) override;

private:
    void showPointed();

    QPointer<Ring> pointedRing; ///< while the pointer is on it
    bool picked = false;
    std::optional<bool> checkedAsSpoken;
};
