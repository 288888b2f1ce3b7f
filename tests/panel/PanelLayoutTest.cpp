#include "PanelLayoutTest.h"

#include "PanelFixture.h"
#include "support/DataTable.h"

#include <QAction>
#include <QMenuBar>

#include <cmath>

namespace {

/// A control array: where it stands, in twips, and when it is seen.
struct Row {
    const char *array;
    int x, y, secondRow, width, height;
    bool audioOnly;
    const char *caption; ///< in the audio look; "#" is the slot's number, null is not looked at
};

constexpr Row Rows[] = {
    {"InputNumberLabel", 0, 840, 1380, 735, 255, false, "#"},
    {"InputVideoLamp", 120, 1200, 1410, 135, 135, false, nullptr},
    {"InputAudioLamp", 480, 1200, 1410, 135, 135, true, nullptr},
    {"InputVideoAudioButtons", 0, 1440, 1440, 735, 255, false, "Vid/Aud"},
    {"InputVideoButtons", 0, 1680, 1440, 375, 255, true, "V"},
    {"InputAudioButtons", 360, 1680, 1440, 375, 255, true, "A"},
    {"OutputNumberLabel", 0, 4080, 2160, 735, 255, false, "#"},
    {"OutputVideoIndicator", 120, 4440, 2160, 135, 135, false, nullptr},
    {"OutputAudioIndicator", 480, 4440, 2160, 135, 135, true, nullptr},
    {"OutputVidAudButtons", 0, 4680, 2160, 735, 255, false, "Vid/Aud"},
    {"OutputVideoButtons", 0, 4920, 2160, 375, 255, true, "V"},
    {"OutputAudioButtons", 360, 4920, 2160, 375, 255, true, "A"},
    {"InputVideoConnected", 0, 5160, 2160, 375, 285, true, nullptr},
    {"InputAudioConnected", 360, 5160, 2160, 375, 285, true, nullptr},
    {"OutputVolumeValue", 0, 5400, 2160, 735, 285, false, nullptr},
    {"MuteButton", 0, 5760, 2160, 735, 285, true, "MUTE"},
};

QRectF placeOf(const Row &row, int slot) {
    int column = (slot - 1) % 16 + 1;
    if (slot > 16 && std::string(row.array) == "MuteButton")
        column = slot <= 24 ? 33 - slot : slot - 24;
    return QRectF(240 + 840 * (column - 1) + row.x, row.y + (slot > 16 ? row.secondRow : 0),
                  row.width, row.height);
}

bool isAt(const QWidget *control, const QRectF &twips, double scale = 1.0) {
    const auto near = [scale](double pixels, double length) {
        return std::abs(pixels - length * scale / 15.0) <= 1.0;
    };
    const QRect at = control->geometry();
    return near(at.x(), twips.x()) && near(at.y(), twips.y()) &&
           near(at.x() + at.width(), twips.right()) && near(at.y() + at.height(), twips.bottom());
}

bool textFits(const QWidget *control, const QString &text) {
    const bool isBox = qobject_cast<const QLineEdit *>(control);
    const QFontMetrics metrics(control->font());
    return metrics.horizontalAdvance(text) + (isBox ? 4 : 2) <= control->width() &&
           metrics.height() <= control->height() + 2;
}

} // namespace

void PanelLayoutTest::showsAsManyAsTheUnitHas_data() {
    const DataTable<int, int, int, int, std::string> row("inputs", "outputs", "firstInput",
                                                         "firstOutput", "description");
    row("KVN-8x4-RGBA", 8, 4, 5, 7, "RGB 8 x 4 with Audio");
    row("KVN-8x4-RGB", 8, 4, 5, 7, "RGB 8 x 4 No Audio");
    row("KVN-12x8-RGBA", 12, 8, 3, 5, "RGB 12 x 8 with Audio");
    row("KVN-16x16-RGBA", 16, 16, 1, 1, "RGB 16x16 with Audio");
    row("KVN-16x16-RGB", 16, 16, 1, 1, "RGB 16x16 No Audio");
    row("KVN-32x32-RGBA", 32, 32, 1, 1, "RGB 32x32 with Audio");
    row("KVN-32x32-RGB", 32, 32, 1, 1, "RGB 32x32 No Audio");
}

void PanelLayoutTest::showsAsManyAsTheUnitHas() {
    QFETCH(int, inputs);
    QFETCH(int, outputs);
    QFETCH(int, firstInput);
    QFETCH(int, firstOutput);
    const std::string model = QTest::currentDataTag();
    const bool audio = model.ends_with('A');
    PanelFixture kvn(model);
    kvn.open();
    QTEST(PanelFixture::text("CorvaneTypeLabel"), "description");
    QCOMPARE(PanelFixture::on("CorvaneTypeLabel")->y(), 8);
    for (const Row &row : Rows) {
        const std::string array = row.array;
        const bool ofInput = array.starts_with("Input") && !array.ends_with("Connected");
        const int first = ofInput ? firstInput : firstOutput;
        const int count = ofInput ? inputs : outputs;
        for (int slot = 1; slot <= 32; ++slot) {
            const std::string name = array + "_" + std::to_string(slot);
            const QWidget *control = PanelFixture::on(name);
            const bool seen = slot >= first && slot < first + count && (audio || !row.audioOnly);
            QVERIFY2(control->isVisible() == seen, name.c_str());
            QVERIFY2(isAt(control, placeOf(row, slot)), name.c_str());
            if (!seen || !row.caption)
                continue;
            const std::string number = std::to_string(slot - first + 1);
            const std::string caption = row.caption[0] == '#' ? number : row.caption;
            QCOMPARE(PanelFixture::text(name), audio || caption == number ? caption : "Video");
        }
        QVERIFY2(!PanelFixture::on(array + "_0")->isVisible(), row.array);
    }
}

void PanelLayoutTest::placesTheSingleControls_data() {
    const DataTable<QRectF, std::string, bool, bool> row("place", "caption", "seen",
                                                         "seenVideoOnly");
    row("Label2_0", {240, 480, 0, 255}, "Inputs", true, true);
    row("Label2_1", {210, 3690, 0, 255}, "Outputs", true, true);
    row("ZarnConnectedLabel", {11580, 300, 1635, 255}, "Connected on COM7", true, true);
    row("TakeButton", {4230, 8565, 2535, 375}, "TAKE", true, true);
    row("ClearButton", {7050, 8565, 2535, 375}, "ESCAPE", true, true);
    row("Label1", {4620, 9120, 4560, 240}, "Click on an Output Volume to adjust it's volume.", true,
        false);
    row("OutputVolumeLabel", {6210, 9360, 1395, 240}, "Output volume", false, false);
    row("VolumeUpButton", {5557, 9765, 1275, 360}, "Volume Up", false, false);
    row("VolumeDownButton", {6982, 9765, 1275, 360}, "Volume Down", false, false);
    row("GoToPresets", {240, 9615, 1575, 555}, "Execute Presets", true, true);
    row("ExitButton", {12150, 9675, 1575, 495}, "Exit", true, true);
    row("SelectedOutputsHolder", {}, "", false, false);
    row("SelectedAudioOutputsHolder", {}, "", false, false);
    row("CurrentInputHolder", {}, "", false, false);
}

void PanelLayoutTest::placesTheSingleControls() {
    QFETCH(QRectF, place);
    QFETCH(std::string, caption);
    QFETCH(bool, seen);
    QFETCH(bool, seenVideoOnly);
    const std::string name = QTest::currentDataTag();
    for (const bool audio : {true, false}) {
        PanelFixture kvn(audio ? "KVN-16x16-RGBA" : "KVN-16x16-RGB");
        kvn.open();
        const QWidget *control = PanelFixture::on(name);
        QCOMPARE(control->isVisible(), audio ? seen : seenVideoOnly);
        QCOMPARE(PanelFixture::text(name), caption);
        if (place.isNull())
            continue;
        const double more = control->width() * 15 - place.width();
        if (place.width() == 0) // a heading is as wide as its text
            place.setWidth(more);
        else if (more > 0 && qobject_cast<const QLabel *>(control)) // a text that needs more room
            place.adjust(-more / 2, 0, more / 2, 0);
        QVERIFY2(isAt(control, place), qPrintable(QDebug::toString(control->geometry())));
    }
}

void PanelLayoutTest::scales() {
    PanelFixture kvn("KVN-32x32-RGBA");
    kvn.open();
    auto *window = ProgramFixture::window("KVN32x32Audio");
    QWidget *sheet = PanelFixture::on("TakeButton")->parentWidget();
    QCOMPARE(sheet->size(), QSize(931, 690));
    const auto textWidth = [] {
        const QWidget *button = PanelFixture::on("InputVideoAudioButtons_32");
        return button->fontMetrics().horizontalAdvance(QStringLiteral("Vid/Aud"));
    };
    const int before = textWidth();
    window->resize(931 * 3 / 2, 690 * 3 / 2 + window->height() - sheet->height());
    QCoreApplication::processEvents();
    for (const Row &row : Rows) {
        for (const int slot : {1, 16, 17, 32})
            QVERIFY2(isAt(PanelFixture::on(std::string(row.array) + "_" + std::to_string(slot)),
                          placeOf(row, slot), 1.5),
                     row.array);
    }
    QVERIFY(isAt(PanelFixture::on("TakeButton"), {4230, 8565, 2535, 375}, 1.5));
    QVERIFY2(textWidth() * 10 > before * 13, qPrintable(QString::number(textWidth())));
}

void PanelLayoutTest::textsFit() {
    for (const char *const model : {"KVN-32x32-RGBA", "KVN-32x32-RGB"}) {
        PanelFixture kvn(model);
        kvn.open();
        for (QWidget *control : ProgramFixture::window("KVN32x32Audio")->findChildren<QWidget *>()) {
            const QString text = control->property("text").toString();
            if (control->isVisible() && !text.isEmpty())
                QVERIFY2(textFits(control, text), qPrintable(control->objectName() + text));
        }
        QVERIFY(textFits(PanelFixture::on("OutputNumberLabel_32"), QStringLiteral("Out32")));
        QVERIFY(textFits(PanelFixture::on("MuteButton_32"), QStringLiteral("MUTED")));
        QVERIFY(textFits(PanelFixture::on("OutputVolumeValue_32"), QStringLiteral("Vol -45")));
        QVERIFY(textFits(PanelFixture::on("InputAudioConnected_32"), QStringLiteral("NC")));
    }
}

void PanelLayoutTest::tabGoesDownAndRight_data() {
    const DataTable<int> row("stops");
    row("KVN-8x4-RGBA", 8 * 3 + 4 * 7 + 6);
    row("KVN-16x16-RGB", 16 + 16 * 2 + 4);
    row("KVN-32x32-RGBA", 32 * 3 + 32 * 7 + 6);
}

void PanelLayoutTest::tabGoesDownAndRight() {
    PanelFixture kvn(QTest::currentDataTag());
    kvn.open();
    auto *window = ProgramFixture::window("KVN32x32Audio");
    for (const char *const box : {"OutputVolumeValue_1", "OutputVolumeValue_7"})
        QTest::mouseClick(PanelFixture::on(box), Qt::LeftButton);
    std::vector<QWidget *> stops;
    PanelFixture::on("InputVideoAudioButtons_5")->setFocus();
    QWidget *const start = window->focusWidget();
    do {
        stops.push_back(window->focusWidget());
        QTest::keyClick(window->focusWidget(), Qt::Key_Tab);
    } while (window->focusWidget() != start && stops.size() < 1000);
    QTEST(static_cast<int>(stops.size()), "stops");

    const auto center = [](const QWidget *stop) { return stop->geometry().center(); };
    int turns = 0;
    for (std::size_t stop = 0; stop < stops.size(); ++stop) {
        const QPoint from = center(stops[stop]);
        const QPoint to = center(stops[(stop + 1) % stops.size()]);
        const bool sameRow = std::abs(to.y() - from.y()) < 5;
        const bool onward = sameRow ? to.x() > from.x() : to.y() > from.y();
        turns += onward ? 0 : 1;
        QVERIFY2(turns <= 1, qPrintable(stops[stop]->objectName()));
    }
}

void PanelLayoutTest::speaksItsControls_data() {
    const DataTable<std::string> row("name");
    row("InputVideoAudioButtons_5", "Input 1 video and audio");
    row("InputVideoButtons_12", "Input 8 video");
    row("InputAudioButtons_7", "Input 3 audio");
    row("InputVideoLamp_7", "Input 3 video lamp");
    row("InputAudioLamp_7", "Input 3 audio lamp");
    row("OutputVidAudButtons_7", "Output 1 video and audio");
    row("OutputVideoButtons_8", "Output 2 video");
    row("OutputAudioButtons_9", "Output 3 audio");
    row("OutputVideoIndicator_9", "Output 3 video lamp");
    row("OutputAudioIndicator_9", "Output 3 audio lamp");
    row("InputVideoConnected_9", "Output 3 video source");
    row("InputAudioConnected_9", "Output 3 audio source");
    row("OutputVolumeValue_10", "Output 4 volume");
    row("MuteButton_10", "Output 4 mute");
}

void PanelLayoutTest::speaksItsControls() {
    PanelFixture kvn("KVN-8x4-RGBA");
    kvn.open();
    const auto name = [] {
        return PanelFixture::on(QTest::currentDataTag())->accessibleName().toStdString();
    };
    QTEST(name(), "name");
    PanelFixture::clicks("escape");
    QTEST(name(), "name");
}

void PanelLayoutTest::clicksLeaveTheFocus() {
    PanelFixture kvn;
    kvn.open();
    auto *window = ProgramFixture::window("KVN32x32Audio");
    QWidget *const focused = PanelFixture::on("GoToPresets");
    focused->setFocus();
    for (const char *const name :
         {"InputVideoAudioButtons_3", "OutputVidAudButtons_1", "InputVideoConnected_1",
          "InputAudioConnected_1", "OutputVolumeValue_1", "VolumeUpButton", "MuteButton_1",
          "TakeButton", "ClearButton"}) {
        QTest::mouseClick(PanelFixture::on(name), Qt::LeftButton);
        QCOMPARE(window->focusWidget(), focused);
    }
    QVERIFY(kvn.takeWritten().ends_with("Con 3(1)3F (1)\rSTA O A\rSTA O A\r"));
}

void PanelLayoutTest::showsTheSavedName() {
    PanelFixture kvn;
    const QWidget *label = PanelFixture::on("KVNNameLabel");
    kvn.program.panelState.SelectedUnitName = "Hall";
    kvn.open(); // by the button, which forgets the name
    QVERIFY(!label->isVisible());
    PanelFixture::clicks("exit");
    kvn.program.panelState.SelectedUnitName = "Hall";
    kvn.connectInDialog(false);
    ProgramFixture::window("frmMain")
        ->findChild<QAction *>(QStringLiteral("Connect2Corvane"))
        ->trigger();
    QVERIFY(label->isVisible());
    QCOMPARE(PanelFixture::text("KVNNameLabel"), std::string("Hall"));
}
