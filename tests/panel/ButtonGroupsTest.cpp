#include "ButtonGroupsTest.h"

#include "PanelFixture.h"
#include "support/DataTable.h"

void ButtonGroupsTest::followEveryPick_data() {
    const DataTable<std::string, std::string, std::string, std::string> row("clicks", "groups",
                                                                            "lamps", "holders");
    row("nothing picked", "", "BVA BVA", "", "||");
    row("input", "iB3", "B-- B--", "iV3 iA3 oV3 oA3", "||3 3F");
    row("input video", "iV3", "-V- -V-", "iV3 oV3", "||3 3F");
    row("input audio", "iA3", "--A --A", "iA3 oA3", "||3 3F");
    row("other input", "iB3 iB12", "B-- B--", "iV12 iA12 oV12 oA12", "||12 12F");
    row("input again", "iB3 oB1 iB3", "BVA BVA", "", "||");
    row("input video again", "iV3 oV1 iV3", "BVA BVA", "", "||");
    row("input audio again", "iA3 oA1 iA3", "BVA BVA", "", "||");
    row("outputs", "oB2 oB1", "B-- B--", "oV1 oV2 oA1 oA2", "1,2|1F,2F|");
    row("outputs video", "oV2 oV1", "-V- -V-", "oV1 oV2", "1,2||");
    row("output audio", "oA2", "--A --A", "oA2", "2|2F|");
    row("output again", "oB1 oB1", "BVA BVA", "", "||");
    row("one output of two again", "oB1 oB2 oB1", "BVA BVA", "oV2 oA2", "2|2F|");
    row("output video again: no audio", "oV1 oV1", "BV- BV-", "", "||");
    row("output audio again", "oA1 oA1", "BVA BVA", "", "||");
    row("output again, input kept", "iB3 oB1 oB1", "B-- B--", "iV3 iA3 oV3 oA3", "||3 3F");
    row("output video again, input kept", "iV3 oV1 oV1", "BV- BV-", "iV3 oV3", "||3 3F");
    row("output audio again, input kept", "iA3 oA1 oA1", "BVA BVA", "iA3 oA3", "||3 3F");
    row("the other kind after that", "oV1 oV1 oB2", "B-- B--", "oV2 oA2", "2|2F|");
    row("unpicked after that", "oV1 oV1 oB2 oB2", "BVA BVA", "", "||");
    row("audio lamp that stays", "iA3 oA1 oA1 iV4", "-V- -V-", "iV4 iA3 oV4", "||4 4F");
    row("kind kept by the input", "iA3 oA1 oA2 oA2 oV4", "-V- -V-", "iA3 oV4 oA1 oA3",
        "1,4|1F,4F|3 3F");
    row("outputs before the input", "oB1 oB2 iB3", "B-- B--", "iV3 iA3 oV3 oA3", "1,2|1F,2F|3 3F");
    row("escape", "iV3 oV1 oV1 escape", "BVA BVA", "", "||");
}

void ButtonGroupsTest::followEveryPick() {
    QFETCH(std::string, clicks);
    PanelFixture kvn;
    kvn.clicks(clicks);
    QTEST(kvn.groups(), "groups");
    QTEST(kvn.litLamps(), "lamps");
    QTEST(kvn.holders(), "holders");
    QCOMPARE(kvn.takeWritten(), std::string());
}
