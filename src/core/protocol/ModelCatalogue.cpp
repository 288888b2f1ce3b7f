#include "protocol/ModelCatalogue.h"

#include "protocol/Text.h"

#include <array>

namespace {

// Some rows do not behave as their names suggest: comparison lengths of 0 never match, lengths one
// too long match at the end of a reply only, and in the x16 rows the shorter string shadows the
// longer one. Units in the field rely on what the panel makes of that.
// clang-format off
constexpr std::array<ModelRow, 72> Catalogue{{
    {"KVN-8x4-RGBA", 12, 8, 4, "RGB", true, "RGB 8 x 4 with Audio", 5, 7},
    {"KVN-8x8-RGBA", 12, 8, 8, "RGB", true, "RGB 8 x 8 with Audio", 5, 5},
    {"KVN-12x8-RGBA", 13, 12, 8, "RGB", true, "RGB 12 x 8 with Audio", 3, 5},
    {"KVN-16x8-RGBA", 13, 16, 8, "RGB", true, "RGB 16 x 8 with Audio", 1, 5},
    {"KVN-16x16-RGBA", 14, 16, 16, "RGB", true, "RGB 16x16 with Audio", 1, 1},
    {"KVN-24x24-RGBA", 14, 24, 24, "RGB", true, "RGB 24x24 with Audio", 1, 1},
    {"KVN-32x32-RGBA", 14, 32, 32, "RGB", true, "RGB 32x32 with Audio", 1, 1},
    {"KVN-8x4-RGB", 11, 8, 4, "RGB", false, "RGB 8 x 4 No Audio", 5, 7},
    {"KVN-8x8-RGB", 11, 8, 8, "RGB", false, "RGB 8 x 8 No Audio", 5, 5},
    {"KVN-12x8-RGB", 12, 12, 8, "RGB", false, "RGB 12 x 8 No Audio", 3, 5},
    {"KVN-16x8-RGB", 13, 16, 8, "RGB", false, "RGB 16 x 8 No Audio", 1, 5},
    {"KVN-16x16-RGB", 13, 16, 16, "RGB", false, "RGB 16x16 No Audio", 1, 1},
    {"KVN-24x24-RGB", 13, 24, 24, "RGB", false, "RGB 24x24 No Audio", 1, 1},
    {"KVN-32x32-RGB", 13, 32, 32, "RGB", false, "RGB 32x32 No Audio", 1, 1},
    {"KVN-8x4-HDA", 11, 8, 4, "HD", true, "HD 8 x 4 with Audio", Unchanged, Unchanged},
    {"KVN-8x8-HDA", 11, 8, 8, "HD", true, "HD 8 x 8 with Audio", Unchanged, Unchanged},
    {"KVN-12x8-HDA", 12, 12, 8, "HD", true, "HD 12 x 8 with Audio", Unchanged, Unchanged},
    {"KVN-16x8-HDA", 12, 16, 8, "HD", true, "HD 16 x 8 with Audio", 1, 5},
    {"KVN-16x16-HDA", 13, 16, 16, "HD", true, "HD 16x16 with Audio", 1, 1},
    {"KVN-24x24-HDA", 13, 24, 24, "HD", true, "HD 24x24 with Audio", 1, 1},
    {"KVN-32x32-HDA", 13, 32, 32, "HD", true, "HD 32x32 with Audio", 1, 1},
    {"KVN-8x4-HD", 10, 8, 4, "HD", false, "HD 8 x 4 No Audio", Unchanged, Unchanged},
    {"KVN-8x8-HD", 10, 8, 8, "HD", false, "HD 8 x 8 No Audio", Unchanged, Unchanged},
    {"KVN-12x8-HD", 11, 12, 8, "HD", false, "HD 12 x 8 No Audio", Unchanged, Unchanged},
    {"KVN-16x8-HD", 11, 16, 8, "HD", false, "HD 16 x 8 No Audio", 1, 5},
    {"KVN-16x16-HD", 12, 16, 16, "HD", false, "HD 16x16 No Audio", 1, 1},
    {"KVN-24x24-HD", 12, 24, 24, "HD", false, "HD 24x24 No Audio", 1, 1},
    {"KVN-32x32-HD", 12, 32, 32, "HD", false, "HD 32x32 No Audio", 1, 1},
    {"KVN-8x4-CA", 0, Unchanged, Unchanged, "CV", true, "COMPOSITE  8 x 4 with Audio", 5, 7},
    {"KVN-8x8-CA", 0, Unchanged, Unchanged, "CV", true, "COMPOSITE  8 x 8 with Audio", 5, 5},
    {"KVN-12x8-CA", 0, Unchanged, Unchanged, "CV", true, "COMPOSITE 12 x 8 with Audio", 3, 5},
    {"KVN-16x8-CA", 0, Unchanged, Unchanged, "CV", false, "COMPOSITE 16 x 8 No Audio", 1, 5},
    {"KVN-16x16-CA", 0, Unchanged, Unchanged, "CV", true, "COMPOSITE 16x16 with Audio", 1, 1},
    {"KVN-24x24-CA", 0, Unchanged, Unchanged, "CV", true, "COMPOSITE 24x24 with Audio", 1, 1},
    {"KVN-32x32-CA", 12, Unchanged, Unchanged, "CV", true, "COMPOSITE 32x32 with Audio", 1, 1},
    {"KVN-8x4-C", 9, Unchanged, Unchanged, "CV", false, "COMPOSITE  8 x 4 No Audio", 5, 7},
    {"KVN-8x8-C", 9, Unchanged, Unchanged, "CV", false, "COMPOSITE 8 x 8 No Audio", 5, 5},
    {"KVN-12x8-C", 10, Unchanged, Unchanged, "CV", false, "COMPOSITE 12 x 8 No Audio", 3, 5},
    {"KVN-16x8-C", 11, Unchanged, Unchanged, "CV", true, "COMPOSITE 16 x 8 with Audio", 1, 5},
    {"KVN-16x16-C", 11, Unchanged, Unchanged, "CV", false, "COMPOSITE 16x16 No Audio", 1, 1},
    {"KVN-24x24-C", 11, Unchanged, Unchanged, "CV", false, "COMPOSITE 24x24 No Audio", 1, 1},
    {"KVN-32x32-C", 11, Unchanged, Unchanged, "CV", false, "COMPOSITE 32x32 No Audio", 1, 1},
    {"KVN-8x4-SA", 0, Unchanged, Unchanged, "SV", true, "SVIDEO  8 x 4 with Audio", 5, 7},
    {"KVN-8x8-SA", 0, Unchanged, Unchanged, "SV", true, "SVIDEO  8 x 8 with Audio", 5, 5},
    {"KVN-12x8-SA", 0, Unchanged, Unchanged, "SV", true, "SVIDEO 12 x 8 with Audio", 3, 5},
    {"KVN-16x8-SA", 0, Unchanged, Unchanged, "SV", true, "SVIDEO 16x8 with Audio", 1, 5},
    {"KVN-16x16-SA", 0, Unchanged, Unchanged, "SV", true, "SVIDEO 16x16 with Audio", 1, 1},
    {"KVN-24x24-SA", 0, Unchanged, Unchanged, "SV", true, "SVIDEO 24x24 with Audio", 1, 1},
    {"KVN-32x32-SA", 12, Unchanged, Unchanged, "SV", true, "SVIDEO 32x32 with Audio", 1, 1},
    {"KVN-8x4-S", 9, Unchanged, Unchanged, "SV", false, "SVIDEO  8 x 4 No Audio", 5, 7},
    {"KVN-8x8-S", 9, Unchanged, Unchanged, "SV", false, "SVIDEO 8 x 8 No Audio", 5, 5},
    {"KVN-12x8-S", 10, Unchanged, Unchanged, "SV", false, "SVIDEO 12 x 8 No Audio", 3, 5},
    {"KVN-16x8-S", 11, Unchanged, Unchanged, "SV", false, "SVIDEO 16 x 8 No Audio", 1, 5},
    {"KVN-16x16-S", 11, Unchanged, Unchanged, "SV", false, "SVIDEO 16x16 No Audio", 1, 1},
    {"KVN-24x24-S", 11, Unchanged, Unchanged, "SV", false, "SVIDEO 24x24 No Audio", 1, 1},
    {"KVN-32x32-S", 11, Unchanged, Unchanged, "SV", false, "SVIDEO 32x32 No Audio", 1, 1},
    {"KVN-24x16-RGB", 13, 24, 16, "RGB", false, "RGB 24 x16 no Audio", 1, 1},
    {"KVN-24x16-RGBA", 14, 24, 16, "RGB", true, "RGB 24x16 with Audio", 1, 1},
    {"KVN-32x16-RGB", 13, 32, 16, "RGB", false, "RGB 32 x16 no Audio", 1, 1},
    {"KVN-32x16-RGBA", 14, 32, 16, "RGB", true, "RGB 32x16 with Audio", 1, 1},
    {"KVN-24x16-S", 11, 24, 16, "SV", false, "SVideo 24 x16 no Audio", 1, 1},
    {"KVN-24x16-SA", 12, 24, 16, "SV", true, "SVideo 24 x 16 with Audio", 1, 1},
    {"KVN-32x16-S", 11, 32, 16, "SV", false, "SVIDEO 32 x16 no Audio", 1, 1},
    {"KVN-32x16-SA", 12, 32, 16, "SV", true, "SVIDEO 32x16 with Audio", 1, 1},
    {"KVN-24x16-C", 11, Unchanged, Unchanged, "CV", false, "COMPOSITE 24x16 with Audio", 1, 1},
    {"KVN-24x16-CA", 12, Unchanged, Unchanged, "CV", true, "COMPOSITE 24x16 with Audio", 1, 1},
    {"KVN-32x16-C", 11, Unchanged, Unchanged, "CV", false, "COMPOSITE 32x16 with Audio", 1, 1},
    {"KVN-32x16-CA", 12, Unchanged, Unchanged, "CV", true, "COMPOSITE 32x16 with Audio", 1, 1},
    {"KVN-24x16-HD", 12, 24, 16, "HD", false, "HD 24x16 with Audio", 1, 1},
    {"KVN-24x16-HDA", 13, 24, 16, "HD", true, "HD 32x16 with Audio", 1, 1},
    {"KVN-32x16-HD", 12, 32, 16, "HD", false, "HD 32x16 with Audio", 1, 1},
    {"KVN-32x16-HDA", 13, 32, 16, "HD", true, "HD 32x16 with Audio", 1, 1},
}};
// clang-format on

void mapButtons(ModelFacts &facts, Table<int, 32> &slotOfNumber, Table<int, 32> &numberOfSlot,
                int first) {
    facts.ButtonIndex = first;
    // Outputs are counted by the inputs too: smaller output sides get map entries that the panel
    // never shows.
    for (facts.LoopIndex = 1; facts.LoopIndex <= facts.NumInputs; ++facts.LoopIndex) {
        slotOfNumber[facts.LoopIndex] = facts.ButtonIndex;
        numberOfSlot[facts.ButtonIndex] = facts.LoopIndex;
        ++facts.ButtonIndex;
    }
}

void setUp(ModelFacts &facts, const ModelRow &row) {
    if (row.Inputs != Unchanged)
        facts.NumInputs = row.Inputs;
    if (row.Outputs != Unchanged)
        facts.NumOutputs = row.Outputs;
    facts.SignalType = row.SignalType;
    facts.HasAudio = row.HasAudio;
    facts.ModelDescription = row.Description;
    if (row.InputFirst != Unchanged)
        MapInputButtons(facts, row.InputFirst);
    if (row.OutputFirst != Unchanged)
        MapOutputButtons(facts, row.OutputFirst);
}

} // namespace

std::span<const ModelRow> modelCatalogue() { return Catalogue; }

void SelectModelSetup(ModelFacts &facts, std::string_view responseText, int modelPosition) {
    for (const ModelRow &row : Catalogue) {
        if (mid(responseText, modelPosition, row.Chars) == row.Model) {
            // A model that does not fit must not leave half of its maps behind.
            ModelFacts next = facts;
            setUp(next, row);
            facts = next;
            return;
        }
    }
}

void MapInputButtons(ModelFacts &facts, int first) {
    mapButtons(facts, facts.InputButtonIndex, facts.ButtonInput, first);
}

void MapOutputButtons(ModelFacts &facts, int first) {
    mapButtons(facts, facts.OutputButtonIndex, facts.ButtonOutput, first);
}
