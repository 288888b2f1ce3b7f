#include "PanelSheet.h"

#include "Colours.h"
#include "PanelLayout.h"

#include <QPainter>

void PanelSheet::paintEvent(QPaintEvent *) {
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(QPen(colour::CardEdge, 1.0));
    painter.setBrush(colour::Card);
    for (const TwipRect &card : {InputsCard, OutputsCard})
        painter.drawRoundedRect(QRectF(onSheet(card, size())).translated(0.5, 0.5), 6.0, 6.0);
}
