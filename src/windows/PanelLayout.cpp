#include "PanelLayout.h"

#include <cmath>

QRect onSheet(const TwipRect &twips, const QSize &sheet) {
    const double scale = sheetScale(sheet) / TwipsPerPixel;
    const double left = (sheet.width() - PanelArea.width * scale) / 2.0;
    const auto pixels = [](double length) { return static_cast<int>(std::lround(length)); };
    // Sizes are rounded apart from places, so that equal controls stay equal.
    return {pixels(left + twips.x * scale), pixels(twips.y * scale), pixels(twips.width * scale),
            pixels(twips.height * scale)};
}
