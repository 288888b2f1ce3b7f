#include "TakeTest.h"

#include "PanelFixture.h"
#include "support/DataTable.h"

void TakeTest::sendsWhatWasPicked_data() {
    const DataTable<std::string, int, std::string, std::string> row("model", "firstOutputSlot",
                                                                    "clicks", "command");
    const std::string audio = "KVN-16x16-RGBA";
    row("both", audio, 1, "iB3 oB1 oB2", "Con 3(1,2)3F (1,2)");
    row("video", audio, 1, "iV3 oV9 oV10 oV2", "Con 3(2,9,10)");
    row("audio", audio, 1, "iA16 oA2 oA5", "Con 16F (2,5)");
    row("both off", audio, 1, "oB5 oB4", "DIS 4,5,4F,5F");
    row("video off", audio, 1, "oV5 oV4", "DIS 4,5");
    row("audio off", audio, 1, "oA5 oA4", "DIS 4F,5F");
    row("two digits", "KVN-32x32-RGBA", 1, "iB32 oB31 oB10", "Con 32(10,31)32F (10,31)");
    row("output taken back", audio, 1, "iB3 oB1 oB2 oB1", "Con 3(2)3F (2)");
    row("all outputs taken back", audio, 1, "iB3 oB1 oB1", "Con 3()3F ()");
    row("other input", audio, 1, "iB3 iB4 oB1", "Con 4(1)4F (1)");
    row("input taken back", audio, 1, "iB3 oB1 iB3", "DIS ,");
    row("outputs before the input", audio, 1, "oB1 oB2 iB3", "Con 3(1,2)3F (1,2)");
    row("dropped by the input", audio, 1, "oB1 oB2 iB3 oB4", "Con 3(4)3F (4)");
    row("escape keeps the input", audio, 1, "iB3 oB1 escape", "Con 3()3F ()");
    row("nothing", audio, 1, "", "DIS ,");
    row("kind of the last take", audio, 1, "oA1 take", "DIS 1F\rSTA O A\rSTA O A\rDIS ");
    row("small model", "KVN-8x4-RGBA", 7, "iB5 oB7 oB10", "Con 1(1,4)1F (1,4)");
    row("video only", "KVN-8x4-RGB", 7, "iB12 oB7 oB8", "Con 8(1,2)");
    row("video only off", "KVN-8x4-RGB", 7, "oB9", "DIS 3");
}

void TakeTest::sendsWhatWasPicked() {
    QFETCH(std::string, model);
    QFETCH(std::string, clicks);
    QFETCH(std::string, command);
    QFETCH(int, firstOutputSlot);
    const auto shownAs = [](int input) {
        return input == Unit::NotConnected ? "NC" : std::to_string(input);
    };
    for (const bool overNetwork : {false, true}) {
        PanelFixture kvn(model, overNetwork);
        kvn.clicks(clicks);
        QColor faceDuring;
        kvn.pump.in(0.2, [&] { faceDuring = kvn.face("TakeButton"); });
        kvn.clicks("take");
        QCOMPARE(kvn.takeWritten(), command + "\rSTA O A\rSTA O A\r");
        QCOMPARE(faceDuring, QColor(255, 128, 128));
        QCOMPARE(kvn.pending() + kvn.messageTexts(), std::string());
        for (int output = 1; output <= kvn.unit.outputs(); ++output) {
            const std::string slot = "_" + std::to_string(firstOutputSlot + output - 1);
            QCOMPARE(kvn.textOf("OutputNumberLabel" + slot), "Out" + std::to_string(output));
            QCOMPARE(kvn.textOf("InputVideoConnected" + slot),
                     shownAs(kvn.unit.videoInput(output)));
            if (model.ends_with('A'))
                QCOMPARE(kvn.textOf("InputAudioConnected" + slot),
                         shownAs(kvn.unit.audioInput(output)));
        }
    }
}

void TakeTest::startsEmptyAtEveryOpening() {
    PanelFixture kvn;
    kvn.clicks("iB3 oB1 oB2 exit");
    kvn.open();
    QCOMPARE(kvn.pending(), std::string());
    QCOMPARE(kvn.textOf("InputNumberLabel_3"), std::string("3"));
    kvn.clicks("take");
    QCOMPARE(kvn.takeWritten(), std::string("DIS ,\rSTA O A\rSTA O A\r"));
}
