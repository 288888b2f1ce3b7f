#pragma once

#include "panel/PanelControls.h"

#include <QWidget>

#include <array>
#include <functional>

/// The ground that the panel's controls stand on, with a card for the inputs and one for the
/// outputs.
class PanelSheet : public QWidget {
public:
    using Cards = std::array<TwipRect, 2>; ///< an empty one is not drawn

    explicit PanelSheet(QWidget *parent) : QWidget(parent) {}

    void setCards(const Cards &shownCards);

    std::function<void()> resized = [] {};

protected:
    void paintEvent(QPaintEvent *event) override;
    void resizeEvent(QResizeEvent *) override { resized(); }

private:
    Cards cards{};
};
