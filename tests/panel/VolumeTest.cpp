#include "VolumeTest.h"

#include "PanelFixture.h"
#include "support/DataTable.h"

#include <QMouseEvent>

namespace {

const std::string Level17 = "\r\nVOL L 1 -17\r\n";
const std::string All = "VolumeUpButton VolumeDownButton OutputVolumeLabel Label1 ";

/// From the next status on the unit reports output 1 with these fields, whatever was set, and
/// answers every query of a level with `levelReply`.
void report(PanelFixture &kvn, const std::string &flagToLevel, const std::string &levelReply) {
    auto &device = kvn.serialPort.wire.device;
    device = [=, unit = device](std::string_view text) {
        if (text.starts_with("STA"))
            return "\r\nSTA O A\r\n  Output 1 (A," + flagToLevel + ",1,D,1)\r\n";
        return text.starts_with("VOL") && text.ends_with("?\r") ? levelReply : unit(text);
    };
    kvn.clicks("take");
    kvn.takeWritten();
}

void pointAt(const std::string &name, const std::string &how) {
    auto *box = PanelFixture::on(name);
    const QPointF at(3, 3);
    QMouseEvent moved(QEvent::MouseMove, at, box->mapToGlobal(at), Qt::NoButton, Qt::NoButton,
                      Qt::NoModifier);
    if (how == "click")
        QTest::mouseClick(box, Qt::LeftButton);
    else if (how == "Space" || how == "Enter")
        QTest::keyClick(box, how == "Space" ? Qt::Key_Space : Qt::Key_Return);
    else if (how == "Tab")
        box->setFocus(Qt::TabFocusReason);
    else
        QCoreApplication::sendEvent(box, &moved);
}

/// The volume controls and the hint that are seen.
std::string shownControls() {
    std::string shown;
    for (const char *const name :
         {"VolumeUpButton", "VolumeDownButton", "OutputVolumeLabel", "Label1"})
        shown += PanelFixture::on(name)->isVisible() ? std::string(name) + " " : "";
    return shown;
}

} // namespace

void VolumeTest::steps_data() {
    const DataTable<std::string, std::string, std::string, std::string, std::string> row(
        "level", "button", "sent", "reply", "box");
    row("up at the top", "5", "up", "", Level17, "Vol 5");
    row("down from the top", "5", "down", "4", Level17, "Vol -17");
    row("down at the bottom", "-45", "down", "", Level17, "Vol -45");
    row("up from the bottom", "-45", "up", "-44", Level17, "Vol -17");
    row("down below the bottom", "-46", "down", "-47", Level17, "Vol -17");
    row("up above the top", "6", "up", "7", Level17, "Vol -17");
    row("half up", "2.5", "up", "3", Level17, "Vol -17");
    row("odd half up", "3.5", "up", "5", Level17, "Vol -17");
    row("half down", "2.5", "down", "1.5", Level17, "Vol -17");
    row("rounded to the top", "5.4", "up", "", Level17, "Vol 5.4");
    row("short reply", "-20", "up", "-19", "\r\nVOL L 1", "Vol 0");
    row("not a number", "-20", "up", "-19", "\r\nVOL L 1 loud\r\n", "Vol 0");
    row("unknown reply", "-20", "up", "-19", "what is it?", "Vol 0");
    row("no reply", "-20", "up", "-19", "", "Vol 0");
    row("padded", "-20", "down", "-21", "\r\nVOL L 1 -09.0\r\n", "Vol -9");
}

void VolumeTest::steps() {
    QFETCH(std::string, level);
    QFETCH(std::string, button);
    QFETCH(std::string, sent);
    QFETCH(std::string, reply);
    PanelFixture kvn;
    report(kvn, "U,0,V," + level, reply);
    pointAt("OutputVolumeValue_1", "move");
    kvn.pump.in(0.1, [&] {
        QCOMPARE(kvn.textOf("OutputVolumeLabel"), std::string("Wait..."));
        kvn.clicks("up down");
    });
    kvn.clicks(button);
    QCOMPARE(kvn.takeWritten(), sent.empty() ? sent : "VOL L 1 " + sent + "\rVOL L 1?\r");
    QTEST(kvn.textOf("OutputVolumeValue_1"), "box");
    QCOMPARE(kvn.textOf("OutputVolumeLabel"),
             sent.empty() ? "Output Out1 volume" : "Output 1 volume");
    QCOMPARE(shownControls(), All);
}

void VolumeTest::choosesTheOutput_data() {
    const DataTable<std::string, std::string, std::string, std::string, std::string> row(
        "how", "clicksBefore", "clicksAfter", "shown", "caption");
    row("moved over", "move", "", "", All, "Output 2 volume");
    row("clicked", "click", "", "", All, "Output 2 volume");
    row("Space", "Space", "", "", All, "Output 2 volume");
    row("Enter", "Enter", "", "", All, "Output 2 volume");
    row("Tab only passes", "Tab", "", "", "Label1 ", "Output volume");
    row("after a clear", "move", "escape", "", All, "Output Out2 volume");
    row("input", "move", "", "iV8", All, "Output 2 volume");
    row("output", "move", "", "oB8", "Label1 ", "Output 2 volume");
    row("hint of the kind before", "move", "", "oV8", "Label1 ", "Output 2 volume");
    row("no hint for video", "move", "", "oV8 oV9", "", "Output 2 volume");
    row("no hint for audio", "move", "", "oA8 oA9", "", "Output 2 volume");
    row("escape", "move", "", "escape", "Label1 ", "Output 2 volume");
    row("take", "move", "", "take", "Label1 ", "Output 2 volume");
    row("mute", "move", "", "m8", "Label1 ", "Output 2 volume");
    row("video only", "move", "", "", "", "Output volume");
    row("video only, clicked", "click", "", "", "", "Output volume");
}

void VolumeTest::choosesTheOutput() {
    QFETCH(std::string, how);
    QFETCH(std::string, clicksBefore);
    QFETCH(std::string, clicksAfter);
    const bool videoOnly = std::string(QTest::currentDataTag()).starts_with("video only");
    PanelFixture kvn(videoOnly ? "KVN-8x4-RGB" : "KVN-8x4-RGBA");
    kvn.clicks(clicksBefore);
    pointAt("OutputVolumeValue_8", how);
    kvn.clicks(clicksAfter);
    QTEST(shownControls(), "shown");
    QTEST(kvn.textOf("OutputVolumeLabel"), "caption");
    if (shownControls() != All)
        return;
    kvn.clicks("up");
    QCOMPARE(kvn.unit.volume(2), std::string("-19"));
    QCOMPARE(kvn.textOf("OutputVolumeValue_8"), std::string("Vol -19"));
}

void VolumeTest::togglesMute_data() {
    const DataTable<std::string, std::string, std::string, std::string> row("model", "fields",
                                                                            "click", "sent");
    row("unmuted", "KVN-16x16-RGBA", "U,0,V,-20", "m1", "MUT M 1");
    row("muted", "KVN-16x16-RGBA", "M,0,V,-20", "m1", "MUT U 1");
    row("not reported", "KVN-16x16-RGBA", "X,0,V,-20", "m1", "MUT U 1");
    row("later slot", "KVN-8x4-RGBA", "U,0,V,-20", "m7", "MUT M 1");
    row("second row, by its own slot", "KVN-32x32-RGBA", "", "m17", "MUT M 17");
}

void VolumeTest::togglesMute() {
    QFETCH(std::string, model);
    QFETCH(std::string, fields);
    QFETCH(std::string, click);
    QFETCH(std::string, sent);
    PanelFixture kvn(model);
    const auto unitAnswer = kvn.serialPort.wire.device;
    if (!fields.empty())
        report(kvn, fields, Level17);
    kvn.serialPort.wire.device = unitAnswer;
    kvn.clicks(click);
    QCOMPARE(kvn.takeWritten(), sent + "\rSTA O A\rSTA O A\r");
    const bool mutes = sent.starts_with("MUT M");
    QCOMPARE(kvn.textOf("MuteButton_" + click.substr(1)), mutes ? "MUTED" : "MUTE");
    QCOMPARE(kvn.face("MuteButton_" + click.substr(1)),
             mutes ? QColor(247, 166, 157) : QColor(214, 241, 194));
}
