#pragma once

/// Lengths of the panel's design are in twips, 1/1440 inch; 15 of them make a logical pixel at the
/// design size.
inline constexpr int TwipsPerPixel = 15;

struct TwipRect {
    int x = 0;
    int y = 0;
    int width = 0;
    int height = 0;
    bool operator==(const TwipRect &) const = default;
};

/// The design size of the panel below its menu.
inline constexpr TwipRect PanelArea{0, 0, 13965, 10350};

/// How much larger than the design the panel is drawn in `width` x `height` logical pixels.
constexpr double sheetScale(int width, int height) {
    const double across = width * double(TwipsPerPixel) / PanelArea.width;
    const double down = height * double(TwipsPerPixel) / PanelArea.height;
    return across < down ? across : down;
}

/// Where the controls of one array stand: offsets from the column's start, the top of row 1, and
/// how much further down row 2 is.
struct SlotPlace {
    int columnOffset;
    int top;
    int secondRow;
    int width;
    int height;
};

namespace place {

inline constexpr SlotPlace InputNumberLabel{0, 840, 1380, 735, 255};
inline constexpr SlotPlace InputVideoLamp{120, 1200, 1410, 135, 135};
inline constexpr SlotPlace InputAudioLamp{480, 1200, 1410, 135, 135};
inline constexpr SlotPlace InputVideoAudioButtons{0, 1440, 1440, 735, 255};
inline constexpr SlotPlace InputVideoButtons{0, 1680, 1440, 375, 255};
inline constexpr SlotPlace InputAudioButtons{360, 1680, 1440, 375, 255};
inline constexpr SlotPlace OutputNumberLabel{0, 4080, 2160, 735, 255};
inline constexpr SlotPlace OutputVideoIndicator{120, 4440, 2160, 135, 135};
inline constexpr SlotPlace OutputAudioIndicator{480, 4440, 2160, 135, 135};
inline constexpr SlotPlace OutputVidAudButtons{0, 4680, 2160, 735, 255};
inline constexpr SlotPlace OutputVideoButtons{0, 4920, 2160, 375, 255};
inline constexpr SlotPlace OutputAudioButtons{360, 4920, 2160, 375, 255};
inline constexpr SlotPlace InputVideoConnected{0, 5160, 2160, 375, 285};
inline constexpr SlotPlace InputAudioConnected{360, 5160, 2160, 375, 285};
inline constexpr SlotPlace OutputVolumeValue{0, 5400, 2160, 735, 285};
inline constexpr SlotPlace MuteButton{0, 5760, 2160, 735, 285};

inline constexpr TwipRect InputsCard{120, 735, 13725, 2790};
inline constexpr TwipRect OutputsCard{120, 3960, 13725, 4395};
inline constexpr TwipRect InputsHeading{240, 480, 1200, 255};
inline constexpr TwipRect OutputsHeading{210, 3690, 1200, 255};
inline constexpr TwipRect KVNNameLabel{240, 120, 5160, 300};
inline constexpr TwipRect CorvaneTypeLabel{6570, 120, 1005, 405};
inline constexpr TwipRect LinkPictures{10200, 225, 750, 405};
inline constexpr TwipRect ZarnConnectedLabel{11580, 300, 1635, 255};
inline constexpr TwipRect TakeButton{4230, 8565, 2535, 375};
inline constexpr TwipRect ClearButton{7050, 8565, 2535, 375};
inline constexpr TwipRect Label1{4620, 9120, 4560, 240};
inline constexpr TwipRect OutputVolumeLabel{6210, 9360, 1395, 240};
inline constexpr TwipRect VolumeUpButton{5557, 9765, 1275, 360};
inline constexpr TwipRect VolumeDownButton{6982, 9765, 1275, 360};
inline constexpr TwipRect GoToPresets{240, 9615, 1575, 555};
inline constexpr TwipRect ExitButton{12150, 9675, 1575, 495};

// The list holders lie below the visible area.
inline constexpr TwipRect SelectedOutputsHolder{240, 10680, 4500, 225};
inline constexpr TwipRect SelectedAudioOutputsHolder{4920, 10680, 4500, 225};
inline constexpr TwipRect CurrentInputHolder{9600, 10680, 1500, 225};

} // namespace place

namespace layout_detail {

inline constexpr int SlotsInRow = 16;
inline constexpr int FirstColumn = 240;
inline constexpr int ColumnStep = 840;

/// Row and column count from 0.
constexpr TwipRect rectAt(const SlotPlace &control, int row, int column) {
    return {FirstColumn + ColumnStep * column + control.columnOffset,
            control.top + row * control.secondRow, control.width, control.height};
}

} // namespace layout_detail

/// The place of a slot, 1 to 32. Slots 1 to 16 are row 1, 17 to 32 row 2, columns from the left.
constexpr TwipRect slotRect(const SlotPlace &control, int slot) {
    using namespace layout_detail;
    return rectAt(control, (slot - 1) / SlotsInRow, (slot - 1) % SlotsInRow);
}

/// The place of a mute button, slot 1 to 32. Row 2 is out of step: slots 17 to 24 stand in columns
/// 16 down to 9, slots 25 to 32 in columns 1 to 8.
constexpr TwipRect muteRect(int slot) {
    using namespace layout_detail;
    if (slot <= 16)
        return rectAt(place::MuteButton, 0, slot - 1);
    return rectAt(place::MuteButton, 1, slot <= 24 ? 32 - slot : slot - 25);
}
