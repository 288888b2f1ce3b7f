#pragma once

#include "protocol/ModelFacts.h"

#include <span>
#include <string_view>

/// Stands for "the model leaves this fact as it is".
inline constexpr int Unchanged = 0;

/// One model of the catalogue.
struct ModelRow {
    std::string_view Model; ///< the model string as the unit writes it
    int Chars;              ///< how many characters of the reply are compared with Model
    int Inputs;             ///< Unchanged or the number of inputs
    int Outputs;            ///< Unchanged or the number of outputs
    std::string_view SignalType;
    bool HasAudio;
    std::string_view Description;
    int InputFirst;  ///< slot of input 1, or Unchanged: the input maps stay as they are
    int OutputFirst; ///< slot of output 1, or Unchanged: the output maps stay as they are
};

/// The 72 models in the order in which they are tried.
std::span<const ModelRow> modelCatalogue();

/// Sets the facts of the first model whose Chars characters of `responseText`, taken from the
/// 1-based position `modelPosition` (at least 1), equal its model string. No match changes nothing.
/// @throws RangeError if the model's button maps run past index 32; the facts stay as they were
void SelectModelSetup(ModelFacts &facts, std::string_view responseText, int modelPosition);

/// Maps the inputs 1..NumInputs to the slots `first` upward.
/// @throws RangeError past index 32
void MapInputButtons(ModelFacts &facts, int first);

/// Maps as many outputs as the model has inputs to the slots `first` upward.
/// @throws RangeError past index 32
void MapOutputButtons(ModelFacts &facts, int first);
