#pragma once

#include "panel/KVN32x32Audio.h"
#include "panel/PanelView.h"

#include <array>

/// A place in the panel's design, in twips, 1/1440 inch.
struct TwipRect {
    int x = 0;
    int y = 0;
    int width = 0;
    int height = 0;
    bool operator==(const TwipRect &) const = default;
};

/// Where the controls of one array stand, in twips: offset from the column's start, the top of
/// row 1, and how much further down row 2 is.
struct SlotPlace {
    int columnOffset;
    int top;
    int secondRow;
    int width;
    int height;
};

enum class ControlKind { Button, Label, Lamp, Box };
enum class Side { Input, Output };
enum class Look { EveryModel, AudioModels };

/// One of the panel's control arrays.
struct SlotArray {
    SlotControls PanelView::*controls;
    const char *name; ///< object name, the slot follows
    ControlKind kind;
    Side side;
    Look look;
    const char *caption;      ///< as designed
    const char *videoCaption; ///< on models without audio; null: none of its own
    const char *spoken;       ///< follows "Input 3 " for a screen reader
    SlotPlace place;
    void (KVN32x32Audio::*clicked)(int slot); ///< null: a click does nothing
};

// clang-format off
inline constexpr std::array<SlotArray, 16> SlotArrays{{
    {&PanelView::InputNumberLabel, "InputNumberLabel", ControlKind::Label, Side::Input,
     Look::EveryModel, "Input1", nullptr, "", {0, 840, 1380, 735, 255}, nullptr},
    {&PanelView::InputVideoLamp, "InputVideoLamp", ControlKind::Lamp, Side::Input,
     Look::EveryModel, "", nullptr, "video lamp", {120, 1200, 1410, 135, 135}, nullptr},
    {&PanelView::InputAudioLamp, "InputAudioLamp", ControlKind::Lamp, Side::Input,
     Look::AudioModels, "", nullptr, "audio lamp", {480, 1200, 1410, 135, 135}, nullptr},
    {&PanelView::InputVideoAudioButtons, "InputVideoAudioButtons", ControlKind::Button, Side::Input,
     Look::EveryModel, "Vid/Aud", "Video", "video and audio", {0, 1440, 1440, 735, 255},
     &KVN32x32Audio::InputVideoAudioButtons_Click},
    {&PanelView::InputVideoButtons, "InputVideoButtons", ControlKind::Button, Side::Input,
     Look::AudioModels, "V", nullptr, "video", {0, 1680, 1440, 375, 255},
     &KVN32x32Audio::InputVideoButtons_Click},
    {&PanelView::InputAudioButtons, "InputAudioButtons", ControlKind::Button, Side::Input,
     Look::AudioModels, "A", nullptr, "audio", {360, 1680, 1440, 375, 255},
     &KVN32x32Audio::InputAudioButtons_Click},
    {&PanelView::OutputNumberLabel, "OutputNumberLabel", ControlKind::Label, Side::Output,
     Look::EveryModel, "Output 1", nullptr, "", {0, 4080, 2160, 735, 255}, nullptr},
    {&PanelView::OutputVideoIndicator, "OutputVideoIndicator", ControlKind::Lamp, Side::Output,
     Look::EveryModel, "", nullptr, "video lamp", {120, 4440, 2160, 135, 135}, nullptr},
    {&PanelView::OutputAudioIndicator, "OutputAudioIndicator", ControlKind::Lamp, Side::Output,
     Look::AudioModels, "", nullptr, "audio lamp", {480, 4440, 2160, 135, 135}, nullptr},
    {&PanelView::OutputVidAudButtons, "OutputVidAudButtons", ControlKind::Button, Side::Output,
     Look::EveryModel, "Vid/Aud", "Video", "video and audio", {0, 4680, 2160, 735, 255},
     &KVN32x32Audio::OutputVidAudButtons_Click},
    {&PanelView::OutputVideoButtons, "OutputVideoButtons", ControlKind::Button, Side::Output,
     Look::AudioModels, "V", nullptr, "video", {0, 4920, 2160, 375, 255},
     &KVN32x32Audio::OutputVideoButtons_Click},
    {&PanelView::OutputAudioButtons, "OutputAudioButtons", ControlKind::Button, Side::Output,
     Look::AudioModels, "A", nullptr, "audio", {360, 4920, 2160, 375, 255},
     &KVN32x32Audio::OutputAudioButtons_Click},
    {&PanelView::InputVideoConnected, "InputVideoConnected", ControlKind::Box, Side::Output,
     Look::AudioModels, "", nullptr, "video source", {0, 5160, 2160, 375, 285}, nullptr},
    {&PanelView::InputAudioConnected, "InputAudioConnected", ControlKind::Box, Side::Output,
     Look::AudioModels, "", nullptr, "audio source", {360, 5160, 2160, 375, 285}, nullptr},
    {&PanelView::OutputVolumeValue, "OutputVolumeValue", ControlKind::Box, Side::Output,
     Look::EveryModel, "", nullptr, "volume", {0, 5400, 2160, 735, 285},
     &KVN32x32Audio::OutputVolumeValue_PointedAt},
    {&PanelView::MuteButton, "MuteButton", ControlKind::Button, Side::Output,
     Look::AudioModels, "Mute", nullptr, "mute", {0, 5760, 2160, 735, 285},
     &KVN32x32Audio::MuteButton_Click},
}};
// clang-format on

/// How a label takes more room when its text needs it.
enum class Growth { None, ToTheRight, ToBothSides };
enum class Weight { Normal, Bold };

/// A control of the panel that stands alone.
struct SingleControl {
    Control PanelView::*control;
    const char *name; ///< object name
    ControlKind kind;
    TwipRect place;
    Growth growth;
    Weight weight;
    void (KVN32x32Audio::*clicked)(); ///< null: a click does nothing
};

// The list holders lie below the visible area.
// clang-format off
inline constexpr std::array<SingleControl, 15> SingleControls{{
    {&PanelView::Label2_0, "Label2_0", ControlKind::Label, {240, 480, 1200, 255},
     Growth::ToTheRight, Weight::Bold, nullptr},
    {&PanelView::Label2_1, "Label2_1", ControlKind::Label, {210, 3690, 1200, 255},
     Growth::ToTheRight, Weight::Bold, nullptr},
    {&PanelView::KVNNameLabel, "KVNNameLabel", ControlKind::Label, {240, 120, 5160, 300},
     Growth::None, Weight::Bold, nullptr},
    {&PanelView::CorvaneTypeLabel, "CorvaneTypeLabel", ControlKind::Label, {6570, 120, 1005, 405},
     Growth::ToBothSides, Weight::Bold, nullptr},
    {&PanelView::TakeButton, "TakeButton", ControlKind::Button, {4230, 8565, 2535, 375},
     Growth::None, Weight::Bold, &KVN32x32Audio::TakeButton_Click},
    {&PanelView::ClearButton, "ClearButton", ControlKind::Button, {7050, 8565, 2535, 375},
     Growth::None, Weight::Normal, &KVN32x32Audio::ClearButton_Click},
    {&PanelView::GoToPresets, "GoToPresets", ControlKind::Button, {240, 9615, 1575, 555},
     Growth::None, Weight::Normal, &KVN32x32Audio::GoToPresets_Click},
    {&PanelView::ExitButton, "ExitButton", ControlKind::Button, {12150, 9675, 1575, 495},
     Growth::None, Weight::Normal, &KVN32x32Audio::ExitButton_Click},
    {&PanelView::Label1, "Label1", ControlKind::Label, {4620, 9120, 4560, 240},
     Growth::ToBothSides, Weight::Normal, nullptr},
    {&PanelView::OutputVolumeLabel, "OutputVolumeLabel", ControlKind::Label,
     {6210, 9360, 1395, 240}, Growth::ToBothSides, Weight::Normal, nullptr},
    {&PanelView::VolumeUpButton, "VolumeUpButton", ControlKind::Button, {5557, 9765, 1275, 360},
     Growth::None, Weight::Normal, &KVN32x32Audio::VolumeUpButton_Click},
    {&PanelView::VolumeDownButton, "VolumeDownButton", ControlKind::Button,
     {6982, 9765, 1275, 360}, Growth::None, Weight::Normal,
     &KVN32x32Audio::VolumeDownButton_Click},
    {&PanelView::SelectedOutputsHolder, "SelectedOutputsHolder", ControlKind::Box,
     {240, 10680, 4500, 225}, Growth::None, Weight::Normal, nullptr},
    {&PanelView::SelectedAudioOutputsHolder, "SelectedAudioOutputsHolder", ControlKind::Box,
     {4920, 10680, 4500, 225}, Growth::None, Weight::Normal, nullptr},
    {&PanelView::CurrentInputHolder, "CurrentInputHolder", ControlKind::Box,
     {9600, 10680, 1500, 225}, Growth::None, Weight::Normal, nullptr},
}};
// clang-format on
