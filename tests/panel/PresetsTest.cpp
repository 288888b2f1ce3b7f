#include "PresetsTest.h"

#include "PanelFixture.h"
#include "support/DataTable.h"

#include <sstream>

namespace {

/// The buttons that are not neutral: "7" for a chosen preset, "execute" for a busy EXECUTE.
std::string coloured() {
    std::string marks;
    for (const auto *button :
         ProgramFixture::window("dlgPresets")->findChildren<QAbstractButton *>()) {
        const std::string name = button->objectName().toStdString();
        const QColor face = button->palette().color(QPalette::Button);
        const bool isExecute = name == "ExecutePresetButton";
        const QColor marked = isExecute ? QColor(255, 128, 128) : QColor(214, 241, 194);
        if (face != QColor(224, 224, 224))
            marks += (isExecute ? "execute" : name.substr(name.find('_') + 1)) +
                     (face == marked ? " " : "? ");
    }
    return marks;
}

void openPresets() {
    PanelFixture::clicks("presets");
    QVERIFY(ProgramFixture::isShown("dlgPresets"));
    QCoreApplication::processEvents(); // the window becomes the active one
}

} // namespace

void PresetsTest::recallsTheChosen_data() {
    const DataTable<std::string, std::string, std::string, std::string> row("clicks", "colours",
                                                                            "during", "sent");
    row("nothing chosen", "execute", "", "", "");
    row("first", "1 execute", "", "execute 1 ", "PST X 1\r");
    row("last", "32 execute", "", "execute 32 ", "PST X 32\r");
    row("another one", "3 7", "7 ", "", "");
    row("another one, recalled", "3 7 execute", "", "execute 7 ", "PST X 7\r");
    row("the same again", "7 7", "7 ", "", "");
    row("recalled once", "7 execute execute", "", "execute 7 ", "PST X 7\r");
    row("kept, not shown", "5 close", "", "", "");
    row("kept and recalled", "5 close execute", "", "execute ", "PST X 5\r");
    row("kept and replaced", "5 close 6 execute", "", "execute 6 ", "PST X 6\r");
}

void PresetsTest::recallsTheChosen() {
    QFETCH(std::string, clicks);
    PanelFixture kvn;
    openPresets();
    QCOMPARE(kvn.text("dlgPresets", "NewPresetButton_32"), std::string("Preset 32"));
    std::string during;
    std::istringstream words(clicks);
    for (std::string word; words >> word;) {
        if (word == "execute")
            kvn.pump.in(0.1, [&] { during += coloured(); });
        const std::string name = word == "execute" ? "ExecutePresetButton"
                                 : word == "close" ? "ExitPresets"
                                                   : "NewPresetButton_" + word;
        kvn.click("dlgPresets", name.c_str());
        if (word == "close")
            openPresets();
    }
    kvn.pump.runFor(0.2, [] { return false; });
    QTEST(during, "during");
    QTEST(coloured(), "colours");
    QTEST(kvn.takeWritten(), "sent");
}

void PresetsTest::minimisesThePanel_data() {
    const DataTable<std::string> row("way");
    for (const char *const way : {"button", "frame", "Escape"})
        row(way, way);
}

void PresetsTest::minimisesThePanel() {
    QFETCH(std::string, way);
    PanelFixture kvn;
    kvn.clickAnything("KVN32x32Audio", "OutputVolumeValue_1");
    openPresets();
    QVERIFY(kvn.window("KVN32x32Audio")->isMinimized());
    if (way == "button")
        kvn.click("dlgPresets", "ExitPresets");
    else if (way == "frame")
        kvn.window("dlgPresets")->close();
    else
        QTest::keyClick(kvn.window("dlgPresets"), Qt::Key_Escape);
    QCOMPARE(kvn.visibleWindows(), std::string("KVN32x32Audio frmMain"));
    QVERIFY(!kvn.window("KVN32x32Audio")->isMinimized());
    QVERIFY(!kvn.on("VolumeUpButton")->isVisible());
}
