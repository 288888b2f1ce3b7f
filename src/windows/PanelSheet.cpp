#include "PanelSheet.h"

#include "Colours.h"
#include "PanelLayout.h"

#include <QPainter>

#include <algorithm>

void PanelSheet::setCards(const Cards &shownCards) {
    if (cards == shownCards)
        return;
    cards = shownCards;
    update();
}

void PanelSheet::paintEvent(QPaintEvent *) {
    const colour::Ground &ground = colour::ground(palette());
    const double scale = sheetScale(size());
    const double line = std::max(1.0, scale);
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(QPen(ground.edge, line));
    painter.setBrush(ground.card);
    for (const TwipRect &card : cards) {
        const QRectF place = onSheet(card, size());
        if (!place.isEmpty())
            painter.drawRoundedRect(place.adjusted(line / 2, line / 2, -line / 2, -line / 2),
                                    6.0 * scale, 6.0 * scale);
    }
}
