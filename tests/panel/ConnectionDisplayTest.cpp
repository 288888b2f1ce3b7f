#include "ConnectionDisplayTest.h"

#include "PanelFixture.h"
#include "support/DataTable.h"

namespace {

const QColor Neutral(224, 224, 224);
const QColor Muted(247, 166, 157);
const QColor Unmuted(214, 241, 194);

} // namespace

void ConnectionDisplayTest::showsWhatTheUnitReports_data() {
    const DataTable<std::string, std::string, std::string, QColor> row("model", "fields", "texts",
                                                                       "muteFace");
    const std::string audio = "KVN-8x4-RGBA";
    const std::string muted = "A,M,0,V,-1,4,D,4";
    row("connected", audio, "A,U,0,V,-20,3,D,7", "7|3|MUTE|Vol -20|", Unmuted);
    row("muted", audio, "A,M,0,V,5,12,D,7", "7|12|MUTED|Vol 5|", Muted);
    row("no video", audio, "A,U,0,V,0,3,D,255", "NC|3|MUTE|Vol 0|", Unmuted);
    row("no audio", audio, "A,U,0,V,-45,255,D,1", "1|NC|MUTE|Vol -45|", Unmuted);
    row("not a number", audio, "A,U,0,V,2.5,3,D,xy", "xy|3|MUTE|Vol 2.5|", Unmuted);
    row("other mute flag", audio, "A,X,0,V,-20,3,D,7", "7|3|Mute|Vol -20|", Neutral);
    row("other flag after M", audio, muted + ";A,X,0,V,-2,3,D,7", "7|3|MUTED|Vol -2|", Muted);
    row("U after M", audio, muted + ";A,U,0,V,-2,3,D,7", "7|3|MUTE|Vol -2|", Unmuted);
    row("video only", "KVN-8x4-RGB", "A,M,0,V,-20,3,D,255", "NC||Mute||", Neutral);
}

void ConnectionDisplayTest::showsWhatTheUnitReports() {
    QFETCH(std::string, model);
    QFETCH(std::string, fields);
    PanelFixture kvn(model);
    kvn.clicks("exit");
    for (const QString &report : QString::fromStdString(fields).split(QLatin1Char(';'))) {
        const auto unitAnswer = kvn.serialPort.wire.device;
        kvn.serialPort.wire.device = [&](std::string_view text) {
            return text.starts_with("STA")
                       ? "\r\nSTA O A\r\n  Output 1 (" + report.toStdString() + ")\r\n"
                       : unitAnswer(text);
        };
        if (kvn.isShown("KVN32x32Audio"))
            kvn.clicks("take");
        else
            kvn.open();
        kvn.serialPort.wire.device = unitAnswer;
    }
    std::string texts; // output 1 of the model stands in slot 7
    for (const char *const name :
         {"InputVideoConnected_7", "InputAudioConnected_7", "MuteButton_7", "OutputVolumeValue_7"})
        texts += kvn.textOf(name) + "|";
    QTEST(texts, "texts");
    QTEST(kvn.face("MuteButton_7"), "muteFace");
}

void ConnectionDisplayTest::lightsWhatTheInputFeeds_data() {
    const DataTable<std::string, std::string> row("click", "lamps");
    row("both", "iB4", "iV4 iA4 oV2 oV4 oA4 oA9");
    row("video", "iV4", "iV4 oV2 oV4");
    row("audio", "iA4", "iA4 oA4 oA9");
    row("different sources", "iB5", "iV5 iA5 oV5 oA2 oA5");
    row("feeds nothing", "iB10", "iV10 iA10");
}

void ConnectionDisplayTest::lightsWhatTheInputFeeds() {
    QFETCH(std::string, click);
    PanelFixture kvn;
    for (const char *const route : {"Con 4(2)5F (2)", "Con 4F (9)", "Con 1(10)1F (10)"})
        QCOMPARE(kvn.unit.answer(route), std::string("\r\nOk\r\n"));
    kvn.clicks("take " + click);
    QTEST(kvn.litLamps(), "lamps");
}
