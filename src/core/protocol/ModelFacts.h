#pragma once

#include "protocol/Table.h"

#include <string_view>

/// What the program knows of the connected unit's model. Written by the model catalogue only;
/// nothing resets it between connections, so a model that leaves a fact alone inherits the one of
/// the model before it.
struct ModelFacts {
    int NumInputs = 0;
    int NumOutputs = 0;
    std::string_view SignalType; ///< "RGB", "HD", "CV" or "SV"
    bool HasAudio = false;
    std::string_view ModelDescription; ///< lies in the catalogue, as the one above does

    Table<int, 32> InputButtonIndex{"InputButtonIndex"};   ///< input number -> panel slot
    Table<int, 32> ButtonInput{"ButtonInput"};             ///< panel slot -> input number
    Table<int, 32> OutputButtonIndex{"OutputButtonIndex"}; ///< output number -> panel slot
    Table<int, 32> ButtonOutput{"ButtonOutput"};           ///< panel slot -> output number

    int ButtonIndex = 0; ///< next slot while mapping; the panel's scratch slot afterwards
    int LoopIndex = 0;   ///< counter of the mapping loops
};
