#pragma once

#include "forms/Control.h"
#include "forms/Form.h"
#include "link/LinkStatusDisplay.h"
#include "protocol/Table.h"

/// A row of controls, one per slot. Slot 0 exists but has no place on screen and is never seen.
using SlotControls = Table<Control, 32>;

/// The routing panel. PanelControls.h lists all its controls with their kinds and places.
struct PanelView {
    FormView form;
    LinkStatusView status;

    SlotControls InputNumberLabel{"InputNumberLabel"};
    SlotControls InputVideoLamp{"InputVideoLamp"};
    SlotControls InputAudioLamp{"InputAudioLamp"};
    SlotControls InputVideoAudioButtons{"InputVideoAudioButtons"};
    SlotControls InputVideoButtons{"InputVideoButtons"};
    SlotControls InputAudioButtons{"InputAudioButtons"};
    SlotControls OutputNumberLabel{"OutputNumberLabel"};
    SlotControls OutputVideoIndicator{"OutputVideoIndicator"};
    SlotControls OutputAudioIndicator{"OutputAudioIndicator"};
    SlotControls OutputVidAudButtons{"OutputVidAudButtons"};
    SlotControls OutputVideoButtons{"OutputVideoButtons"};
    SlotControls OutputAudioButtons{"OutputAudioButtons"};
    SlotControls InputVideoConnected{"InputVideoConnected"};
    SlotControls InputAudioConnected{"InputAudioConnected"};
    SlotControls OutputVolumeValue{"OutputVolumeValue"};
    SlotControls MuteButton{"MuteButton"};
    Table<int, 32> InputShown{"InputShown"};   ///< number of the input that a slot shows; 0: none
    Table<int, 32> OutputShown{"OutputShown"}; ///< number of the output that a slot shows; 0: none

    Control Label2_0{.text = "Inputs"};
    Control Label2_1{.text = "Outputs"};
    Control KVNNameLabel{.visible = false};
    Control CorvaneTypeLabel;
    Control TakeButton{.text = "TAKE"};
    Control ClearButton{.text = "ESCAPE"};
    Control GoToPresets{.text = "Execute Presets"};
    Control ExitButton{.text = "Exit"};
    Control Label1{.text = "Click on an Output Volume to adjust it's volume."};
    Control OutputVolumeLabel{.text = "Output volume"};
    Control VolumeUpButton{.text = "Volume Up"};
    Control VolumeDownButton{.text = "Volume Down"};
    Control SelectedOutputsHolder{.visible = false};
    Control SelectedAudioOutputsHolder{.visible = false};
    Control CurrentInputHolder{.visible = false};
};
