#include "ModelCatalogueTest.h"

#include "protocol/ModelCatalogue.h"
#include "support/toString.h"

#include <QtTest/QtTest>

#include <array>

namespace {

/// What a unit of this model sets when its name and a line end come in. Without a description it
/// sets nothing, 0 inputs leave both counts and 0 as a first slot leaves the maps.
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

constexpr std::array<Outcome, 72> Outcomes{{
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
}};

constexpr int StaleInputs = 8;
constexpr int StaleFirst = 5;

using Map = Table<int, 32>;

QByteArray entries(const Map &map) {
    QByteArray text;
    for (const int entry : map)
        text += QByteArray::number(entry) + ' ';
    return text;
}

/// `count` numbers mapped to the slots from `first` on, over the maps that were there before.
void map(Map &slotOfNumber, Map &numberOfSlot, int first, int count) {
    for (int number = 1; first > 0 && number <= count; ++number) {
        slotOfNumber[number] = first + number - 1;
        numberOfSlot[first + number - 1] = number;
    }
}

void compareMaps(const ModelFacts &facts, const ModelFacts &expected) {
    QCOMPARE(entries(facts.InputButtonIndex), entries(expected.InputButtonIndex));
    QCOMPARE(entries(facts.ButtonInput), entries(expected.ButtonInput));
    QCOMPARE(entries(facts.OutputButtonIndex), entries(expected.OutputButtonIndex));
    QCOMPARE(entries(facts.ButtonOutput), entries(expected.ButtonOutput));
}

} // namespace

void ModelCatalogueTest::everyModel_data() {
    QTest::addColumn<int>("index");
    QTest::addColumn<bool>("stale");
    for (int index = 0; index < 72; ++index) {
        const char *const model = Outcomes.at(static_cast<std::size_t>(index)).model;
        QTest::addRow("%s first", model) << index << false;
        QTest::addRow("%s after an 8x8", model) << index << true;
    }
}

void ModelCatalogueTest::everyModel() {
    QFETCH(int, index);
    QFETCH(bool, stale);
    const Outcome &outcome = Outcomes.at(static_cast<std::size_t>(index));
    ModelFacts facts;
    ModelFacts expected;
    if (stale) {
        SelectModelSetup(facts, "KVN-8x8-RGBA", 1);
        expected.NumInputs = expected.NumOutputs = StaleInputs;
        expected.HasAudio = true;
        expected.SignalType = "RGB";
        expected.ModelDescription = "RGB 8 x 8 with Audio";
        map(expected.InputButtonIndex, expected.ButtonInput, StaleFirst, StaleInputs);
        map(expected.OutputButtonIndex, expected.ButtonOutput, StaleFirst, StaleInputs);
    }

    SelectModelSetup(facts, "\r\n" + std::string(outcome.model) + "\r\n", 3);

    if (outcome.inputs != 0) {
        expected.NumInputs = outcome.inputs;
        expected.NumOutputs = outcome.outputs;
    }
    if (*outcome.description != '\0') {
        expected.SignalType = outcome.signal;
        expected.HasAudio = outcome.audio;
        expected.ModelDescription = outcome.description;
    }
    map(expected.InputButtonIndex, expected.ButtonInput, outcome.inputFirst, expected.NumInputs);
    map(expected.OutputButtonIndex, expected.ButtonOutput, outcome.outputFirst, expected.NumInputs);
    QCOMPARE(facts.NumInputs, expected.NumInputs);
    QCOMPARE(facts.NumOutputs, expected.NumOutputs);
    QCOMPARE(facts.SignalType, expected.SignalType);
    QCOMPARE(facts.HasAudio, expected.HasAudio);
    QCOMPARE(facts.ModelDescription, expected.ModelDescription);
    compareMaps(facts, expected);
}

void ModelCatalogueTest::otherReplies_data() {
    QTest::addColumn<std::string>("reply");
    QTest::addColumn<std::string>("description");
    const auto row = [](const char *reply, const char *description) {
        QTest::newRow(reply) << std::string(reply) << std::string(description);
    };
    row("KVN-16x8-RGB", "RGB 16 x 8 No Audio");
    row("KVN-16x8-C", "COMPOSITE 16 x 8 with Audio");
    row("KVN-16x8-S", "SVIDEO 16 x 8 No Audio");
    row("KVN-16x8-RGB ", "");
    row("KVN-16x8-CA", "");
    row("KVN-8x4-RGB ", "RGB 8 x 4 No Audio");
    row("KVN-8x4-RGBAx", "RGB 8 x 4 with Audio");
    row("KVN-24x16-RGBA", "RGB 24 x16 no Audio");
    row("kvn-8x4-rgb", "");
    row("KVN-8x4-RG", "");
    row("KVN-9x9-RGB", "");
    row("RTQ-8x4-RGB", "");
    row(" KVN-8x4-RGB", "");
    row("", "");
}

void ModelCatalogueTest::otherReplies() {
    QFETCH(std::string, reply);
    ModelFacts facts;
    SelectModelSetup(facts, reply, 1);
    QTEST(facts.ModelDescription, "description");
}

void ModelCatalogueTest::lookUpStartsAtThePosition() {
    const std::string reply = "KVN-8x4-RGB";
    ModelFacts facts;
    SelectModelSetup(facts, reply, 2);
    SelectModelSetup(facts, reply, 12);
    SelectModelSetup(facts, reply, 13);
    QCOMPARE(facts.NumInputs, 0);
    SelectModelSetup(facts, reply, 1);
    QCOMPARE(facts.NumInputs, 8);
}

void ModelCatalogueTest::staleMapsStay() {
    ModelFacts facts;
    SelectModelSetup(facts, "KVN-32x32-RGBA", 1);
    const ModelFacts before = facts;
    SelectModelSetup(facts, "KVN-8x4-HD", 1);
    QCOMPARE(facts.NumInputs, 8);
    QCOMPARE(facts.NumOutputs, 4);
    compareMaps(facts, before);
    QCOMPARE(facts.InputButtonIndex[32], 32);

    // Every map keeps the entries that a smaller model does not write.
    SelectModelSetup(facts, "KVN-8x4-RGB", 1);
    QCOMPARE(facts.OutputButtonIndex[8], 14);
    QCOMPARE(facts.OutputButtonIndex[9], 9);
    QCOMPARE(facts.ButtonOutput[14], 8);
    QCOMPARE(facts.ButtonOutput[15], 15);
    QCOMPARE(facts.ButtonIndex, 15);
    QCOMPARE(facts.LoopIndex, 9);
}

void ModelCatalogueTest::staleCountThatDoesNotFit_data() {
    QTest::addColumn<std::string>("reply");
    QTest::addColumn<std::string>("text");
    QTest::addColumn<int>("lastSlot"); // the slot of input 29
    QTest::newRow("input buttons")
        << std::string("KVN-8x4-C") << std::string("ButtonInput has no index 33 (0 to 32)") << 33;
    QTest::newRow("output buttons")
        << std::string("KVN-16x8-S") << std::string("ButtonOutput has no index 33 (0 to 32)") << 29;
}

void ModelCatalogueTest::staleCountThatDoesNotFit() {
    QFETCH(std::string, reply);
    ModelFacts facts;
    SelectModelSetup(facts, "KVN-32x16-RGB", 1);
    std::string text;
    try {
        SelectModelSetup(facts, reply, 1);
    } catch (const RangeError &error) {
        text = error.what();
    }
    QTEST(text, "text");
    QCOMPARE(facts.NumInputs, 32);
    QCOMPARE(facts.NumOutputs, 16);
    QTEST(facts.InputButtonIndex[29], "lastSlot");
}
