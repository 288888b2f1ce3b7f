#pragma once

#include "panel/PanelControls.h"
#include "panel/PanelView.h"

#include <QRect>
#include <QSize>

// Where the panel's controls stand on a sheet of any size. Lengths of the design are in twips, 15
// of them a logical pixel at the design size.

inline constexpr int TwipsPerPixel = 15;

/// The design size of the panel below its menu.
inline constexpr TwipRect PanelArea{0, 0, 13965, 10350};

/// The cards of the inputs and the outputs where all rows are in use.
inline constexpr TwipRect InputsCard{120, 735, 13725, 2790};
inline constexpr TwipRect OutputsCard{120, 3960, 13725, 4395};
/// Between the cards, where the tool tips of both hide nothing.
inline constexpr TwipRect TipStrip{1680, 3525, 12165, 435};

/// The font of the controls at the design size, and the smallest one that can be read on a screen,
/// in its own pixels.
inline constexpr double DesignFontPixels = 11.0;
inline constexpr double SmallestFontPixels = 7.0;

/// How much larger than the design the panel opens at most.
inline constexpr double LargestScale = 2.0;

inline constexpr TwipRect LinkPicturesPlace{10200, 225, 750, 405};
inline constexpr TwipRect StatusLabelPlace{11580, 300, 1635, 255};

/// The place of a slot of an array, 1 to 32. Slots 1 to 16 are row 1, 17 to 32 row 2, columns from
/// the left. Mute buttons of row 2 are out of step: slots 17 to 24 stand in columns 16 down to 9,
/// slots 25 to 32 in columns 1 to 8.
constexpr TwipRect slotRect(const SlotArray &array, int slot) {
    constexpr int SlotsInRow = 16;
    constexpr int FirstColumn = 240;
    constexpr int ColumnStep = 840;
    const int row = (slot - 1) / SlotsInRow;
    int column = (slot - 1) % SlotsInRow;
    if (array.controls == &PanelView::MuteButton && row == 1)
        column = slot <= 24 ? 32 - slot : slot - 25;
    const SlotPlace &place = array.place;
    return {FirstColumn + ColumnStep * column + place.columnOffset,
            place.top + row * place.secondRow, place.width, place.height};
}

/// The card that the controls of a side stand on: it ends below the lowest one that is seen. Empty
/// where none is.
TwipRect cardOf(Side side, const PanelView &view);

/// How much larger than the design the panel is drawn on a sheet of that size.
constexpr double sheetScale(const QSize &sheet) {
    const double across = sheet.width() * double(TwipsPerPixel) / PanelArea.width;
    const double down = sheet.height() * double(TwipsPerPixel) / PanelArea.height;
    return across < down ? across : down;
}

/// The size of a sheet on which the panel is drawn so much larger than its design.
QSize sheetSize(double scale);

/// The smallest scale at which the panel can be read on a screen of so many pixels to a logical
/// one.
constexpr double smallestScale(double screenPixels) {
    return SmallestFontPixels / DesignFontPixels / screenPixels;
}

/// The size at which the sheet opens where it has that much room: the largest one of the design's
/// shape up to the largest scale. Where even the smallest scale has no room it is all of the room.
QSize openingSize(const QSize &room, double smallest);

/// The place of `twips` in pixels on a sheet of that size, on which the panel is centred.
QRect onSheet(const TwipRect &twips, const QSize &sheet);
