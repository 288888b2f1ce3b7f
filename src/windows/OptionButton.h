#pragma once

#include "ProgramLook.h"

#include <QRadioButton>
#include <QStyleOptionButton>
#include <QStylePainter>

/// One of several options. A click only tells that it was clicked; whoever shows the options says
/// which one is chosen.
class OptionButton : public QRadioButton {
public:
    explicit OptionButton(QWidget *parent) : QRadioButton(parent) {
        setAutoExclusive(false);
        setFocusPolicy(Qt::TabFocus);
    }

    [[nodiscard]] QSize sizeHint() const override {
        return QRadioButton::sizeHint() + QSize(2 * room(), 0);
    }

protected:
    void nextCheckState() override {}
    [[nodiscard]] bool hitButton(const QPoint &at) const override { return rect().contains(at); }

    void paintEvent(QPaintEvent *) override {
        QStyleOptionButton look;
        initStyleOption(&look);
        look.state.setFlag(QStyle::State_HasFocus, false); // its ring tells that
        look.rect.adjust(room(), 0, -room(), 0);
        QStylePainter(this).drawControl(QStyle::CE_RadioButton, look);
    }

private:
    /// Between the ring of the focus and what it surrounds.
    [[nodiscard]] static int room() { return grown(6); }
};
