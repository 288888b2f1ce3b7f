#include "panel/PanelSheet.h"

#include "panel/PanelLayout.h"
#include "widgets/Colours.h"

#include <QPainter>

void PanelSheet::paintEvent(QPaintEvent *) {
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    const double scale = sheetScale(width(), height()) / TwipsPerPixel;
    painter.translate((width() - PanelArea.width * scale) / 2.0, 0.0);
    painter.setPen(QPen(colour::CardEdge, 1.0));
    painter.setBrush(colour::Card);
    for (const TwipRect &card : {place::InputsCard, place::OutputsCard})
        painter.drawRoundedRect(QRectF(card.x * scale + 0.5, card.y * scale + 0.5,
                                       card.width * scale, card.height * scale),
                                6.0, 6.0);
}
