#include "ModelCatalogueTest.h"

#include "protocol/ModelCatalogue.h"
#include "support/DataTable.h"
#include "support/failureOf.h"
#include "support/toString.h"

namespace {

/// What a unit of this model sets when its name and a line end come in. Without a description it
/// sets nothing; 0 inputs leave both counts, and 0 as a first slot the maps.
struct Outcome {
    const char *model;
    int inputs = 0;
    int outputs = 0;
    const char *signal = "";
    bool audio = false;
    const char *description = "";
    int inputFirst = 0;
    int outputFirst = 0;
};

constexpr Outcome Outcomes[] = {
    {"KVN-8x4-RGBA", 8, 4, "RGB", true, "RGB 8 x 4 with Audio", 5, 7},
    {"KVN-8x8-RGBA", 8, 8, "RGB", true, "RGB 8 x 8 with Audio", 5, 5},
    {"KVN-12x8-RGBA", 12, 8, "RGB", true, "RGB 12 x 8 with Audio", 3, 5},
    {"KVN-16x8-RGBA", 16, 8, "RGB", true, "RGB 16 x 8 with Audio", 1, 5},
    {"KVN-16x16-RGBA", 16, 16, "RGB", true, "RGB 16x16 with Audio", 1, 1},
    {"KVN-24x24-RGBA", 24, 24, "RGB", true, "RGB 24x24 with Audio", 1, 1},
    {"KVN-32x32-RGBA", 32, 32, "RGB", true, "RGB 32x32 with Audio", 1, 1},
    {"KVN-8x4-RGB", 8, 4, "RGB", false, "RGB 8 x 4 No Audio", 5, 7},
    {"KVN-8x8-RGB", 8, 8, "RGB", false, "RGB 8 x 8 No Audio", 5, 5},
    {"KVN-12x8-RGB", 12, 8, "RGB", false, "RGB 12 x 8 No Audio", 3, 5},
    {"KVN-16x8-RGB"},
    {"KVN-16x16-RGB", 16, 16, "RGB", false, "RGB 16x16 No Audio", 1, 1},
    {"KVN-24x24-RGB", 24, 24, "RGB", false, "RGB 24x24 No Audio", 1, 1},
    {"KVN-32x32-RGB", 32, 32, "RGB", false, "RGB 32x32 No Audio", 1, 1},
    {"KVN-8x4-HDA", 8, 4, "HD", true, "HD 8 x 4 with Audio", 0, 0},
    {"KVN-8x8-HDA", 8, 8, "HD", true, "HD 8 x 8 with Audio", 0, 0},
    {"KVN-12x8-HDA", 12, 8, "HD", true, "HD 12 x 8 with Audio", 0, 0},
    {"KVN-16x8-HDA", 16, 8, "HD", true, "HD 16 x 8 with Audio", 1, 5},
    {"KVN-16x16-HDA", 16, 16, "HD", true, "HD 16x16 with Audio", 1, 1},
    {"KVN-24x24-HDA", 24, 24, "HD", true, "HD 24x24 with Audio", 1, 1},
    {"KVN-32x32-HDA", 32, 32, "HD", true, "HD 32x32 with Audio", 1, 1},
    {"KVN-8x4-HD", 8, 4, "HD", false, "HD 8 x 4 No Audio", 0, 0},
    {"KVN-8x8-HD", 8, 8, "HD", false, "HD 8 x 8 No Audio", 0, 0},
    {"KVN-12x8-HD", 12, 8, "HD", false, "HD 12 x 8 No Audio", 0, 0},
    {"KVN-16x8-HD", 16, 8, "HD", false, "HD 16 x 8 No Audio", 1, 5},
    {"KVN-16x16-HD", 16, 16, "HD", false, "HD 16x16 No Audio", 1, 1},
    {"KVN-24x24-HD", 24, 24, "HD", false, "HD 24x24 No Audio", 1, 1},
    {"KVN-32x32-HD", 32, 32, "HD", false, "HD 32x32 No Audio", 1, 1},
    {"KVN-8x4-CA", 0, 0, "CV", false, "COMPOSITE  8 x 4 No Audio", 5, 7},
    {"KVN-8x8-CA", 0, 0, "CV", false, "COMPOSITE 8 x 8 No Audio", 5, 5},
    {"KVN-12x8-CA", 0, 0, "CV", false, "COMPOSITE 12 x 8 No Audio", 3, 5},
    {"KVN-16x8-CA"},
    {"KVN-16x16-CA", 0, 0, "CV", false, "COMPOSITE 16x16 No Audio", 1, 1},
    {"KVN-24x24-CA", 0, 0, "CV", false, "COMPOSITE 24x24 No Audio", 1, 1},
    {"KVN-32x32-CA", 0, 0, "CV", true, "COMPOSITE 32x32 with Audio", 1, 1},
    {"KVN-8x4-C", 0, 0, "CV", false, "COMPOSITE  8 x 4 No Audio", 5, 7},
    {"KVN-8x8-C", 0, 0, "CV", false, "COMPOSITE 8 x 8 No Audio", 5, 5},
    {"KVN-12x8-C", 0, 0, "CV", false, "COMPOSITE 12 x 8 No Audio", 3, 5},
    {"KVN-16x8-C"},
    {"KVN-16x16-C", 0, 0, "CV", false, "COMPOSITE 16x16 No Audio", 1, 1},
    {"KVN-24x24-C", 0, 0, "CV", false, "COMPOSITE 24x24 No Audio", 1, 1},
    {"KVN-32x32-C", 0, 0, "CV", false, "COMPOSITE 32x32 No Audio", 1, 1},
    {"KVN-8x4-SA", 0, 0, "SV", false, "SVIDEO  8 x 4 No Audio", 5, 7},
    {"KVN-8x8-SA", 0, 0, "SV", false, "SVIDEO 8 x 8 No Audio", 5, 5},
    {"KVN-12x8-SA", 0, 0, "SV", false, "SVIDEO 12 x 8 No Audio", 3, 5},
    {"KVN-16x8-SA"},
    {"KVN-16x16-SA", 0, 0, "SV", false, "SVIDEO 16x16 No Audio", 1, 1},
    {"KVN-24x24-SA", 0, 0, "SV", false, "SVIDEO 24x24 No Audio", 1, 1},
    {"KVN-32x32-SA", 0, 0, "SV", true, "SVIDEO 32x32 with Audio", 1, 1},
    {"KVN-8x4-S", 0, 0, "SV", false, "SVIDEO  8 x 4 No Audio", 5, 7},
    {"KVN-8x8-S", 0, 0, "SV", false, "SVIDEO 8 x 8 No Audio", 5, 5},
    {"KVN-12x8-S", 0, 0, "SV", false, "SVIDEO 12 x 8 No Audio", 3, 5},
    {"KVN-16x8-S"},
    {"KVN-16x16-S", 0, 0, "SV", false, "SVIDEO 16x16 No Audio", 1, 1},
    {"KVN-24x24-S", 0, 0, "SV", false, "SVIDEO 24x24 No Audio", 1, 1},
    {"KVN-32x32-S", 0, 0, "SV", false, "SVIDEO 32x32 No Audio", 1, 1},
    {"KVN-24x16-RGB", 24, 16, "RGB", false, "RGB 24 x16 no Audio", 1, 1},
    {"KVN-24x16-RGBA", 24, 16, "RGB", false, "RGB 24 x16 no Audio", 1, 1},
    {"KVN-32x16-RGB", 32, 16, "RGB", false, "RGB 32 x16 no Audio", 1, 1},
    {"KVN-32x16-RGBA", 32, 16, "RGB", false, "RGB 32 x16 no Audio", 1, 1},
    {"KVN-24x16-S", 24, 16, "SV", false, "SVideo 24 x16 no Audio", 1, 1},
    {"KVN-24x16-SA", 24, 16, "SV", false, "SVideo 24 x16 no Audio", 1, 1},
    {"KVN-32x16-S", 32, 16, "SV", false, "SVIDEO 32 x16 no Audio", 1, 1},
    {"KVN-32x16-SA", 32, 16, "SV", false, "SVIDEO 32 x16 no Audio", 1, 1},
    {"KVN-24x16-C", 0, 0, "CV", false, "COMPOSITE 24x16 with Audio", 1, 1},
    {"KVN-24x16-CA", 0, 0, "CV", false, "COMPOSITE 24x16 with Audio", 1, 1},
    {"KVN-32x16-C", 0, 0, "CV", false, "COMPOSITE 32x16 with Audio", 1, 1},
    {"KVN-32x16-CA", 0, 0, "CV", false, "COMPOSITE 32x16 with Audio", 1, 1},
    {"KVN-24x16-HD", 24, 16, "HD", false, "HD 24x16 with Audio", 1, 1},
    {"KVN-24x16-HDA", 24, 16, "HD", false, "HD 24x16 with Audio", 1, 1},
    {"KVN-32x16-HD", 32, 16, "HD", false, "HD 32x16 with Audio", 1, 1},
    {"KVN-32x16-HDA", 32, 16, "HD", false, "HD 32x16 with Audio", 1, 1},
};

QByteArray entries(const Table<int, 32> &map) {
    QByteArray text;
    for (const int entry : map)
        text += QByteArray::number(entry) + ' ';
    return text;
}

/// The entries of a map that holds `first`, `first` + 1 and so on from index `at`, `count` of them.
QByteArray ramp(int at, int first, int count) {
    Table<int, 32> map("expected");
    for (int step = 0; step < count; ++step)
        map[at + step] = first + step;
    return entries(map);
}

} // namespace

void ModelCatalogueTest::everyModel_data() {
    const DataTable<const Outcome *> row("outcome");
    for (const Outcome &outcome : Outcomes)
        row(outcome.model, &outcome);
}

void ModelCatalogueTest::everyModel() {
    QFETCH(const Outcome *, outcome);
    constexpr int CountBefore = 9;
    ModelFacts facts;
    facts.NumInputs = facts.NumOutputs = CountBefore;

    SelectModelSetup(facts, "\r\n" + std::string(outcome->model) + "\r\n", 3);

    const int inputs = outcome->inputs == 0 ? CountBefore : outcome->inputs;
    QCOMPARE(facts.NumInputs, inputs);
    QCOMPARE(facts.NumOutputs, outcome->outputs == 0 ? CountBefore : outcome->outputs);
    QCOMPARE(facts.SignalType, std::string(outcome->signal));
    QCOMPARE(facts.HasAudio, outcome->audio);
    QCOMPARE(facts.ModelDescription, std::string(outcome->description));
    const int in = outcome->inputFirst;
    const int out = outcome->outputFirst;
    // Both sides are counted by the inputs.
    QCOMPARE(entries(facts.InputButtonIndex), ramp(1, in, in == 0 ? 0 : inputs));
    QCOMPARE(entries(facts.ButtonInput), ramp(in, 1, in == 0 ? 0 : inputs));
    QCOMPARE(entries(facts.OutputButtonIndex), ramp(1, out, out == 0 ? 0 : inputs));
    QCOMPARE(entries(facts.ButtonOutput), ramp(out, 1, out == 0 ? 0 : inputs));
}

void ModelCatalogueTest::otherReplies_data() {
    const DataTable<int, std::string> row("position", "description");
    row("KVN-16x8-RGB", 1, "RGB 16 x 8 No Audio");
    row("KVN-16x8-C", 1, "COMPOSITE 16 x 8 with Audio");
    row("KVN-16x8-S", 1, "SVIDEO 16 x 8 No Audio");
    row("KVN-16x8-RGB ", 1, "");
    row("KVN-8x4-RGB ", 1, "RGB 8 x 4 No Audio");
    row("KVN-8x4-RGBAx", 1, "RGB 8 x 4 with Audio");
    row("kvn-8x4-rgb", 1, "");
    row("KVN-9x9-RGB", 1, "");
    row("RTQ-8x4-RGB", 1, "");
    row("xKVN-8x4-RGB", 1, "");
    row("KVN-8x4-HD", 2, "");
    row("KVN-8x4-HDA", 12, "");
    row("", 1, "");
}

void ModelCatalogueTest::otherReplies() {
    QFETCH(int, position);
    ModelFacts facts;
    SelectModelSetup(facts, QTest::currentDataTag(), position);
    QTEST(facts.ModelDescription, "description");
}

void ModelCatalogueTest::unwrittenFactsStay() {
    ModelFacts facts;
    SelectModelSetup(facts, "KVN-8x4-C", 1);
    QCOMPARE(facts.NumInputs, 0);
    QCOMPARE(entries(facts.OutputButtonIndex), ramp(0, 0, 0));

    SelectModelSetup(facts, "KVN-32x32-RGBA", 1);
    SelectModelSetup(facts, "KVN-8x4-HD", 1);
    QCOMPARE(facts.NumInputs, 8);
    QCOMPARE(entries(facts.InputButtonIndex), ramp(1, 1, 32));
    SelectModelSetup(facts, "KVN-8x4-RGB", 1);
    QCOMPARE(facts.OutputButtonIndex[8], 14);
    QCOMPARE(facts.OutputButtonIndex[9], 9);
    QCOMPARE(facts.ButtonOutput[15], 15);
    QCOMPARE(facts.ButtonIndex, 15);
    QCOMPARE(facts.LoopIndex, 9);
}

void ModelCatalogueTest::countThatDoesNotFit() {
    for (const auto &[model, table] :
         {std::pair("KVN-8x4-C", "ButtonInput"), std::pair("KVN-16x8-S", "ButtonOutput")}) {
        ModelFacts facts;
        SelectModelSetup(facts, "KVN-32x16-RGB", 1);
        const auto fit = [&, name = model] { SelectModelSetup(facts, name, 1); };
        QCOMPARE(failureOf<RangeError>(fit), std::string(table) + " has no index 33 (0 to 32)");
        QCOMPARE(facts.ModelDescription, std::string("RGB 32 x16 no Audio"));
        QCOMPARE(entries(facts.ButtonInput), ramp(1, 1, 32));
    }
}
