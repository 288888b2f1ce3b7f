#pragma once

#include "protocol/Table.h"

#include <string>

/// Values of `PanelMode`, the route kind of the pending take.
inline constexpr char VideoAndAudio = 'B';
inline constexpr char VideoOnly = 'V';
inline constexpr char AudioOnly = 'A';

/// The panel's pending selection and what else outlives its window.
struct PanelState {
    char PanelMode = ' ';
    int CurrentInput = 0;  ///< input picked for the take; 0: none
    int CurrentOutput = 0; ///< output clicked last; 0: none
    Table<std::string, 32> SelectedOutputs{"SelectedOutputs"}; ///< number as text when picked
    bool OutputWasSelected = false;                            ///< result of ClearOutputIfSelected
    std::string SelectedOutputsHolder;                         ///< list for the next command: "1,3"
    std::string SelectedAudioOutputsHolder;                    ///< the same for audio: "1F,3F"
    std::string CurrentInputHolder;                            ///< the picked input: "5 5F"
    int VolumeOutput = 0;             ///< output whose volume is stepped; 0: none
    bool VolumeWaiting = false;       ///< a step is under way; no other one begins
    int CurrentPreset = 0;            ///< preset chosen and not yet executed; 0: none
    bool PanelFromSavedUnits = false; ///< the saved-units dialog waits for the panel to close
};
