#include "PanelLayout.h"

#include <algorithm>
#include <cmath>

namespace {

constexpr int BelowLowest = 150;

} // namespace

TwipRect cardOf(Side side, const PanelView &view) {
    int bottom = 0;
    for (const SlotArray &array : SlotArrays) {
        if (array.side != side)
            continue;
        for (int slot = 1; slot <= SlotControls::last(); ++slot) {
            const TwipRect place = slotRect(array, slot);
            if ((view.*array.controls)[slot].visible)
                bottom = std::max(bottom, place.y + place.height);
        }
    }
    if (bottom == 0)
        return {};
    TwipRect card = side == Side::Input ? InputsCard : OutputsCard;
    card.height = bottom + BelowLowest - card.y;
    return card;
}

QSize sheetSize(double scale) {
    // The least that keeps the scale, whichever way the room was rounded.
    const auto pixels = [scale](int twips) {
        return static_cast<int>(std::floor(twips * scale / TwipsPerPixel + 1e-6));
    };
    return {pixels(PanelArea.width), pixels(PanelArea.height)};
}

QSize openingSize(const QSize &room, double smallest) {
    const double scale = std::clamp(sheetScale(room), smallest, LargestScale);
    return sheetSize(scale).boundedTo(room);
}

QRect onSheet(const TwipRect &twips, const QSize &sheet) {
    const double scale = sheetScale(sheet) / TwipsPerPixel;
    const double left = (sheet.width() - PanelArea.width * scale) / 2.0;
    const auto pixels = [](double length) { return static_cast<int>(std::lround(length)); };
    // Sizes are rounded apart from places, so that equal controls stay equal.
    return {pixels(left + twips.x * scale), pixels(twips.y * scale), pixels(twips.width * scale),
            pixels(twips.height * scale)};
}
