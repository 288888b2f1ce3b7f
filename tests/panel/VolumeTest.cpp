#include "VolumeTest.h"

#include "PanelFixture.h"
#include "support/DataTable.h"

#include <QMouseEvent>

namespace {

using Device = std::function<std::string(std::string_view)>;

const std::string Level17 = "\r\nVOL L 1 -17\r\n";

/// A unit that reports output 1 with these fields, whatever was set, and answers every query of a
/// level with `levelReply`.
Device reporting(const Device &unit, const std::string &flagToLevel, const std::string &levelReply) {
    return [=](std::string_view text) {
        if (text.starts_with("STA"))
            return "\r\nSTA O A\r\n  Output 1 (A," + flagToLevel + ",1,D,1)\r\n";
        return text.starts_with("VOL") && text.ends_with("?\r") ? levelReply : unit(text);
    };
}

void pointAt(const std::string &name, const std::string &how) {
    auto *box = PanelFixture::on(name);
    const QPointF at(3, 3);
    QMouseEvent moved(QEvent::MouseMove, at, box->mapToGlobal(at), Qt::NoButton, Qt::NoButton,
                      Qt::NoModifier);
    QEnterEvent entered(at, at, box->mapToGlobal(at));
    if (how == "click")
        QTest::mouseClick(box, Qt::LeftButton);
    else if (how == "Tab")
        box->setFocus(Qt::TabFocusReason);
    else
        QCoreApplication::sendEvent(box, how == "enter" ? static_cast<QEvent *>(&entered) : &moved);
}

/// The volume controls and the hint that are seen.
std::string shownControls() {
    std::string shown;
    for (const char *const name :
         {"VolumeUpButton", "VolumeDownButton", "OutputVolumeLabel", "Label1"})
        shown += PanelFixture::on(name)->isVisible() ? std::string(name) + " " : "";
    return shown;
}

const std::string AllControls = "VolumeUpButton VolumeDownButton OutputVolumeLabel Label1 ";

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
    row("fraction", "-20", "down", "-21", "\r\nVOL L 1 -0.50\r\n", "Vol -0.5");
}

void VolumeTest::steps() {
    QFETCH(std::string, level);
    QFETCH(std::string, button);
    QFETCH(std::string, sent);
    QFETCH(std::string, reply);
    PanelFixture kvn;
    kvn.serialPort.wire.device =
        reporting(kvn.serialPort.wire.device, "U,0,V," + level, reply);
    kvn.open();
    pointAt("OutputVolumeValue_1", "move");
    std::string captionDuring;
    kvn.pump.in(0.1, [&] {
        captionDuring = PanelFixture::text("OutputVolumeLabel");
        PanelFixture::clicks("up down");
    });
    PanelFixture::clicks(button);
    const bool steps = !sent.empty();
    if (steps)
        QCOMPARE(captionDuring, std::string("Wait..."));
    QCOMPARE(kvn.takeWritten(), steps ? "VOL L 1 " + sent + "\rVOL L 1?\r" : sent);
    QTEST(PanelFixture::text("OutputVolumeValue_1"), "box");
    QCOMPARE(PanelFixture::text("OutputVolumeLabel"), std::string("Output 1 volume"));
    QCOMPARE(shownControls(), AllControls);
}

void VolumeTest::choosesTheOutput_data() {
    const DataTable<std::string, std::string, std::string, std::string> row("model", "how",
                                                                            "clicks", "caption");
    row("entered", "KVN-8x4-RGBA", "enter", "", "Output 2 volume");
    row("moved over", "KVN-8x4-RGBA", "move", "", "Output 2 volume");
    row("clicked", "KVN-8x4-RGBA", "click", "", "Output 2 volume");
    row("reached by Tab", "KVN-8x4-RGBA", "Tab", "", "Output 2 volume");
    row("after a clear", "KVN-8x4-RGBA", "move", "escape", "Output Out2 volume");
    row("video only", "KVN-8x4-RGB", "move", "", "");
    row("video only clicked", "KVN-8x4-RGB", "click", "", "");
}

void VolumeTest::choosesTheOutput() {
    QFETCH(std::string, model);
    QFETCH(std::string, how);
    QFETCH(std::string, clicks);
    QFETCH(std::string, caption);
    PanelFixture kvn(model);
    kvn.open();
    QCOMPARE(shownControls(), std::string(model.ends_with('A') ? "Label1 " : ""));
    PanelFixture::clicks(clicks);
    pointAt("OutputVolumeValue_8", how);
    QCOMPARE(shownControls(), caption.empty() ? "" : AllControls);
    if (caption.empty())
        return;
    QCOMPARE(PanelFixture::text("OutputVolumeLabel"), caption);
    PanelFixture::clicks("up");
    QCOMPARE(kvn.unit.volume(2), std::string("-19"));
    QCOMPARE(PanelFixture::text("OutputVolumeValue_8"), std::string("Vol -19"));
}

void VolumeTest::hidesTheButtons_data() {
    const DataTable<std::string, std::string> row("clicks", "left");
    row("output", "oB1", "Label1 ");
    row("output video", "oV1", "");
    row("output audio", "oA1", "");
    row("escape", "escape", "Label1 ");
    row("take", "take", "Label1 ");
    row("mute", "m1", "Label1 ");
    row("input changes nothing", "iV3", AllControls);
}

void VolumeTest::hidesTheButtons() {
    QFETCH(std::string, clicks);
    PanelFixture kvn;
    kvn.open();
    pointAt("OutputVolumeValue_1", "move");
    QCOMPARE(shownControls(), AllControls);
    PanelFixture::clicks(clicks);
    if (clicks == "oV1" || clicks == "oA1") // the hint follows the kind of the selection before
        PanelFixture::clicks(clicks == "oV1" ? "oV2" : "oA2");
    QTEST(shownControls(), "left");
}

void VolumeTest::failedStepKeepsTheLevel() {
    PanelFixture kvn;
    kvn.open();
    pointAt("OutputVolumeValue_1", "move");
    kvn.serialPort.vanish();
    PanelFixture::clicks("up");
    QCOMPARE(kvn.messages.size(), std::size_t(1));
    QVERIFY2(kvn.messages.front().contains(QLatin1String("COM7")), kvn.messageTexts().c_str());
    QCOMPARE(PanelFixture::text("OutputVolumeLabel"), std::string("Output 1 volume"));
    kvn.serialPort.present = {7};
    kvn.takeWritten();
    PanelFixture::clicks("up");
    QCOMPARE(kvn.takeWritten(), std::string("VOL L 1 -19\rVOL L 1?\r"));
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
        kvn.serialPort.wire.device = reporting(unitAnswer, fields, Level17);
    kvn.open();
    kvn.serialPort.wire.device = unitAnswer;
    PanelFixture::clicks(click);
    QCOMPARE(kvn.takeWritten(), sent + "\rSTA O A\rSTA O A\r");
    const bool mutes = sent.starts_with("MUT M");
    QCOMPARE(PanelFixture::text("MuteButton_" + click.substr(1)),
             std::string(mutes ? "MUTED" : "MUTE"));
    QCOMPARE(PanelFixture::face("MuteButton_" + click.substr(1)),
             mutes ? QColor(247, 166, 157) : QColor(214, 241, 194));
}
