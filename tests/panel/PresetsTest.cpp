#include "PresetsTest.h"

#include "PanelFixture.h"
#include "support/DataTable.h"

#include <sstream>

namespace {

const QColor Neutral(224, 224, 224);
const QColor Chosen(214, 241, 194);
const QColor Busy(255, 128, 128);

QString button(const std::string &mark) {
    if (mark == "execute")
        return QStringLiteral("ExecutePresetButton");
    if (mark == "close")
        return QStringLiteral("ExitPresets");
    return QStringLiteral("NewPresetButton_") + QString::fromStdString(mark);
}

/// The buttons that are not neutral: "7", or "execute" for EXECUTE.
std::string coloured() {
    std::string names;
    const auto look = [&names](const std::string &mark, const QColor &colour) {
        const QColor face = ProgramFixture::control<>("dlgPresets", button(mark))
                                ->palette()
                                .color(QPalette::Button);
        if (face == colour)
            names += (names.empty() ? "" : " ") + mark;
        else if (face != Neutral)
            names += " " + mark + "?";
    };
    for (int preset = 1; preset <= 32; ++preset)
        look(std::to_string(preset), Chosen);
    look("execute", Busy);
    return names;
}

void openPresets() {
    PanelFixture::clicks("presets");
    QVERIFY(ProgramFixture::isShown("dlgPresets"));
    QCoreApplication::processEvents();
}

} // namespace

void PresetsTest::recallsTheChosen_data() {
    const DataTable<std::string, std::string, std::string, std::string> row("clicks", "colours",
                                                                            "during", "sent");
    row("nothing chosen", "execute", "", "", "");
    row("chosen", "3", "3", "", "");
    row("first", "1 execute", "", "1 execute", "PST X 1\r");
    row("last", "32 execute", "", "32 execute", "PST X 32\r");
    row("another one", "3 7", "7", "", "");
    row("another one, recalled", "3 7 execute", "", "7 execute", "PST X 7\r");
    row("the same again", "7 7", "7", "", "");
    row("recalled once", "7 execute execute", "", "7 execute", "PST X 7\r");
    row("kept, not shown", "5 close", "", "", "");
    row("kept and recalled", "5 close execute", "", "execute", "PST X 5\r");
    row("kept and replaced", "5 close 6 execute", "", "6 execute", "PST X 6\r");
}

void PresetsTest::recallsTheChosen() {
    QFETCH(std::string, clicks);
    QFETCH(std::string, during);
    PanelFixture kvn;
    kvn.open();
    openPresets();
    QCOMPARE(ProgramFixture::control<>("dlgPresets", button("32"))->text(),
             QStringLiteral("Preset 32"));
    std::string seen;
    std::istringstream words(clicks);
    for (std::string word; words >> word;) {
        if (word == "execute")
            kvn.pump.in(0.1, [&] { seen += coloured(); });
        ProgramFixture::click("dlgPresets", button(word));
        if (word == "close")
            openPresets();
    }
    kvn.pump.runFor(0.2, [] { return false; });
    if (!during.empty())
        QVERIFY2(seen.starts_with(during), seen.c_str());
    else
        QCOMPARE(seen, std::string());
    QTEST(coloured(), "colours");
    QTEST(kvn.takeWritten(), "sent");
}

void PresetsTest::minimisesThePanel_data() {
    const DataTable<std::string> row("way");
    row("CLOSE PRESETS", "button");
    row("the frame", "frame");
    row("Escape", "key");
}

void PresetsTest::minimisesThePanel() {
    QFETCH(std::string, way);
    PanelFixture kvn;
    kvn.open();
    QTest::mouseClick(PanelFixture::on("OutputVolumeValue_1"), Qt::LeftButton);
    QVERIFY(PanelFixture::on("VolumeUpButton")->isVisible());
    openPresets();
    QVERIFY(ProgramFixture::window("KVN32x32Audio")->isMinimized());
    if (way == "button")
        ProgramFixture::click("dlgPresets", button("close"));
    else if (way == "frame")
        ProgramFixture::window("dlgPresets")->close();
    else
        QTest::keyClick(ProgramFixture::window("dlgPresets"), Qt::Key_Escape);
    QVERIFY(!ProgramFixture::isShown("dlgPresets"));
    QVERIFY(!ProgramFixture::window("KVN32x32Audio")->isMinimized());
    QVERIFY(!PanelFixture::on("VolumeUpButton")->isVisible());
}

void PresetsTest::failedRecallIsPutBack() {
    PanelFixture kvn;
    kvn.open();
    openPresets();
    ProgramFixture::click("dlgPresets", button("9"));
    kvn.serialPort.vanish();
    ProgramFixture::click("dlgPresets", button("execute"));
    QCOMPARE(kvn.messages.size(), std::size_t(1));
    QVERIFY2(kvn.messages.front().contains(QLatin1String("COM7")), kvn.messageTexts().c_str());
    QCOMPARE(coloured(), std::string());
    kvn.serialPort.present = {7};
    ProgramFixture::click("dlgPresets", button("execute"));
    QCOMPARE(kvn.takeWritten(), std::string());
}
