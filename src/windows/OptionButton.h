#pragma once

#include <QRadioButton>

/// One of several options. A click only tells that it was clicked; whoever shows the options says
/// which one is chosen.
class OptionButton : public QRadioButton {
public:
    explicit OptionButton(QWidget *parent) : QRadioButton(parent) {
        setAutoExclusive(false);
        setFocusPolicy(Qt::TabFocus);
    }

protected:
    void nextCheckState() override {}
};
