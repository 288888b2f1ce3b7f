#include "PanelSheet.h"

#include "Colours.h"
#include "PanelLayout.h"
#include "ProgramLook.h"

#include <QPaintEvent>
#include <QPainter>

#include <algorithm>
#include <cmath>

void PanelSheet::setCards(const Cards &shownCards) {
    if (cards == shownCards)
        return;
    cards = shownCards;
    update();
}

void PanelSheet::paintEvent(QPaintEvent *event) {
    const colour::Ground &ground = colour::ground(palette());
    const double scale = sheetScale(size());
    const double line = screenLine(*this, scale);
    const double corner = 6.0 * scale;
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(QPen(ground.edge, line));
    painter.setBrush(ground.card);
    for (const TwipRect &card : cards) {
        const QRect place = onSheet(card, size());
        if (!place.intersects(event->rect()))
            continue;
        // Behind controls that changed there is seldom an edge to draw.
        const int edge = static_cast<int>(std::ceil(corner));
        const QRect inside = place.adjusted(edge, edge, -edge, -edge);
        if (inside.contains(event->rect(), true))
            painter.fillRect(inside, ground.card);
        else
            painter.drawRoundedRect(
                QRectF(place).adjusted(line / 2, line / 2, -line / 2, -line / 2), corner, corner);
    }
}
