#include "ButtonGroupsTest.h"

#include "PanelFixture.h"
#include "support/DataTable.h"

void ButtonGroupsTest::enablesOneKind_data() {
    const DataTable<std::string, std::string> row("clicks", "groups");
    row("nothing picked", "", "BVA BVA");
    row("input", "iB3", "B-- B--");
    row("input video", "iV3", "-V- -V-");
    row("input audio", "iA3", "--A --A");
    row("input again", "iB3 iB3", "BVA BVA");
    row("input video again", "iV3 iV3", "BVA BVA");
    row("input audio again", "iA3 iA3", "BVA BVA");
    row("output", "oB1", "B-- B--");
    row("output video", "oV1", "-V- -V-");
    row("output audio", "oA1", "--A --A");
    row("output again", "oB1 oB1", "BVA BVA");
    row("output video again: no audio", "oV1 oV1", "BV- BV-");
    row("output audio again", "oA1 oA1", "BVA BVA");
    row("one output of two again", "oB1 oB2 oB1", "BVA BVA");
    row("output again, input kept", "iB3 oB1 oB1", "B-- B--");
    row("output video again, input kept", "iV3 oV1 oV1", "BV- BV-");
    row("output audio again, input kept", "iA3 oA1 oA1", "BVA BVA");
    row("the other kind after that", "oV1 oV1 oB2", "B-- B--");
    row("unpicked after that", "oV1 oV1 oB2 oB2", "BVA BVA");
    row("input video over an audio one", "iA3 oA1 oA1 iV4", "-V- -V-");
    row("escape", "iV3 oV1 oV1 escape", "BVA BVA");
    row("take", "iA3 oA1 take", "BVA BVA");
}

void ButtonGroupsTest::enablesOneKind() {
    QFETCH(std::string, clicks);
    PanelFixture kvn("KVN-8x8-RGBA");
    kvn.open();
    // The table's slots 1 to 4 are the model's slots 5 to 8.
    for (char &mark : clicks) {
        if (mark >= '1' && mark <= '4')
            mark = static_cast<char>(mark + 4);
    }
    PanelFixture::clicks(clicks);
    QTEST(PanelFixture::groups(), "groups");
}
