#include "PanelLayoutTest.h"

#include "PanelFixture.h"
#include "support/DataTable.h"

#include <QAction>

#include <cmath>

namespace {

/// A control array: where it stands, in twips, and when it is seen.
struct Row {
    const char *array;
    int x, y, secondRow, width, height;
    bool audioOnly;
    const char *caption; ///< in the audio look; "#" is the slot's number, null is not looked at
    const char *spoken;  ///< its name, without side and number; null has none
};

constexpr Row Rows[] = {
    {"InputNumberLabel", 0, 840, 1380, 735, 255, false, "#", nullptr},
    {"InputVideoLamp", 120, 1200, 1410, 135, 135, false, nullptr, "video lamp"},
    {"InputAudioLamp", 480, 1200, 1410, 135, 135, true, nullptr, "audio lamp"},
    {"InputVideoAudioButtons", 0, 1440, 1440, 735, 255, false, "Vid/Aud", "video and audio"},
    {"InputVideoButtons", 0, 1680, 1440, 375, 255, true, "V", "video"},
    {"InputAudioButtons", 360, 1680, 1440, 375, 255, true, "A", "audio"},
    {"OutputNumberLabel", 0, 4080, 2160, 735, 255, false, "#", nullptr},
    {"OutputVideoIndicator", 120, 4440, 2160, 135, 135, false, nullptr, "video lamp"},
    {"OutputAudioIndicator", 480, 4440, 2160, 135, 135, true, nullptr, "audio lamp"},
    {"OutputVidAudButtons", 0, 4680, 2160, 735, 255, false, "Vid/Aud", "video and audio"},
    {"OutputVideoButtons", 0, 4920, 2160, 375, 255, true, "V", "video"},
    {"OutputAudioButtons", 360, 4920, 2160, 375, 255, true, "A", "audio"},
    {"InputVideoConnected", 0, 5160, 2160, 375, 285, true, nullptr, "video source"},
    {"InputAudioConnected", 360, 5160, 2160, 375, 285, true, nullptr, "audio source"},
    {"OutputVolumeValue", 0, 5400, 2160, 735, 285, false, nullptr, "volume"},
    {"MuteButton", 0, 5760, 2160, 735, 285, true, "MUTE", "mute"},
};

enum class Seen { Always, WithAudio, Never };

/// A control that stands alone. A label may take more room than its place where its text needs it.
struct Single {
    const char *name;
    int x, y, width, height;
    Seen seen;
    const char *caption; ///< null is not looked at
};

constexpr Single Singles[] = {
    {"Label2_0", 240, 480, 0, 255, Seen::Always, "Inputs"},
    {"Label2_1", 210, 3690, 0, 255, Seen::Always, "Outputs"},
    {"CorvaneTypeLabel", 6570, 120, 1005, 405, Seen::Always, nullptr},
    {"ZarnConnectedLabel", 11580, 300, 1635, 255, Seen::Always, "Connected on COM7"},
    {"TakeButton", 4230, 8565, 2535, 375, Seen::Always, "TAKE"},
    {"ClearButton", 7050, 8565, 2535, 375, Seen::Always, "ESCAPE"},
    {"Label1", 4620, 9120, 4560, 240, Seen::WithAudio,
     "Click on an Output Volume to adjust it's volume."},
    {"OutputVolumeLabel", 6210, 9360, 1395, 240, Seen::Never, "Output volume"},
    {"VolumeUpButton", 5557, 9765, 1275, 360, Seen::Never, "Volume Up"},
    {"VolumeDownButton", 6982, 9765, 1275, 360, Seen::Never, "Volume Down"},
    {"GoToPresets", 240, 9615, 1575, 555, Seen::Always, "Execute Presets"},
    {"ExitButton", 12150, 9675, 1575, 495, Seen::Always, "Exit"},
};

QRectF placeOf(const Row &row, int slot) {
    int column = (slot - 1) % 16 + 1;
    if (slot > 16 && std::string(row.array) == "MuteButton")
        column = slot <= 24 ? 33 - slot : slot - 24;
    return QRectF(240 + 840 * (column - 1) + row.x, row.y + (slot > 16 ? row.secondRow : 0),
                  row.width, row.height);
}

bool isAt(const QWidget *control, QRectF twips, double scale = 1.0) {
    const auto near = [scale](double pixels, double length) {
        return std::abs(pixels - length * scale / 15.0) <= 1.0;
    };
    const QRect at = control->geometry();
    const double more = at.width() * 15 / scale - twips.width();
    if (more > 0 && qobject_cast<const QLabel *>(control)) // headings grow to the right
        twips.adjust(twips.width() == 0 ? 0 : -more / 2, 0, twips.width() == 0 ? more : more / 2,
                     0);
    return near(at.x(), twips.x()) && near(at.y(), twips.y()) &&
           near(at.x() + at.width(), twips.right()) && near(at.y() + at.height(), twips.bottom());
}

bool textFits(const std::string &name, const std::string &text) {
    const QWidget *control = PanelFixture::on(name);
    const int frame = qobject_cast<const QLineEdit *>(control) ? 4 : 2;
    const QFontMetrics metrics(control->font());
    return metrics.horizontalAdvance(QString::fromStdString(text)) + frame <= control->width() &&
           metrics.height() <= control->height() + 2;
}

} // namespace

void PanelLayoutTest::showsWhatTheUnitHas_data() {
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

void PanelLayoutTest::showsWhatTheUnitHas() {
    QFETCH(int, inputs);
    QFETCH(int, outputs);
    QFETCH(int, firstInput);
    QFETCH(int, firstOutput);
    const std::string model = QTest::currentDataTag();
    const bool audio = model.ends_with('A');
    PanelFixture kvn(model);
    QTEST(kvn.textOf("CorvaneTypeLabel"), "description");
    for (const Row &row : Rows) {
        const std::string array = row.array;
        const bool ofInput = array.starts_with("Input") && !array.ends_with("Connected");
        const int first = ofInput ? firstInput : firstOutput;
        const int last = first + (ofInput ? inputs : outputs) - 1;
        QVERIFY2(!kvn.on(array + "_0")->isVisible(), row.array);
        for (int slot = 1; slot <= 32; ++slot) {
            const std::string name = array + "_" + std::to_string(slot);
            const QWidget *control = kvn.on(name);
            const bool seen = slot >= first && slot <= last && (audio || !row.audioOnly);
            QVERIFY2(control->isVisible() == seen && isAt(control, placeOf(row, slot)),
                     name.c_str());
            const std::string number = std::to_string(slot - first + 1);
            const std::string caption = row.caption ? row.caption : "";
            if (seen && row.caption)
                QCOMPARE(kvn.textOf(name), caption == "#" ? number : audio ? caption : "Video");
            if (seen && row.spoken)
                QCOMPARE(control->accessibleName().toStdString(),
                         (ofInput ? "Input " : "Output ") + number + " " + row.spoken);
        }
    }
    for (const Single &single : Singles) {
        const QWidget *control = kvn.on(single.name);
        const bool seen = single.seen == Seen::Always || (single.seen == Seen::WithAudio && audio);
        QCOMPARE(control->isVisible(), seen);
        if (single.caption)
            QCOMPARE(kvn.textOf(single.name), std::string(single.caption));
        QVERIFY2(isAt(control, QRectF(single.x, single.y, single.width, single.height)),
                 single.name);
    }
    for (const char *const holder :
         {"SelectedOutputsHolder", "SelectedAudioOutputsHolder", "CurrentInputHolder"})
        QVERIFY(!kvn.on(holder)->isVisible());
}

void PanelLayoutTest::scales() {
    PanelFixture kvn("KVN-32x32-RGBA");
    auto *window = kvn.window("KVN32x32Audio");
    const QWidget *sheet = kvn.on("TakeButton")->parentWidget();
    QCOMPARE(sheet->size(), QSize(931, 690));
    const QWidget *button = kvn.on("InputVideoAudioButtons_32");
    const auto textWidth = [=] {
        return button->fontMetrics().horizontalAdvance(QStringLiteral("Vid/Aud"));
    };
    const int before = textWidth();
    window->resize(931 * 3 / 2, 690 * 3 / 2 + window->height() - sheet->height());
    QCoreApplication::processEvents();
    for (const Row &row : Rows) {
        for (const int slot : {1, 16, 17, 32})
            QVERIFY2(isAt(kvn.on(std::string(row.array) + "_" + std::to_string(slot)),
                          placeOf(row, slot), 1.5),
                     row.array);
    }
    for (const Single &single : Singles)
        QVERIFY2(
            isAt(kvn.on(single.name), QRectF(single.x, single.y, single.width, single.height), 1.5),
            single.name);
    QVERIFY2(textWidth() * 10 > before * 13, qPrintable(QString::number(textWidth())));
}

void PanelLayoutTest::textsFit() {
    PanelFixture kvn("KVN-32x32-RGBA");
    for (const Single &single : Singles)
        QVERIFY2(textFits(single.name, kvn.textOf(single.name)), single.name);
    const std::pair<const char *, const char *> longest[] = {
        {"OutputNumberLabel_32", "Out32"},   {"InputVideoAudioButtons_32", "Vid/Aud"},
        {"InputVideoButtons_32", "V"},       {"MuteButton_32", "MUTED"},
        {"OutputVolumeValue_32", "Vol -45"}, {"InputAudioConnected_32", "NC"}};
    for (const auto &[name, text] : longest)
        QVERIFY2(textFits(name, text), name);
    kvn.clicks("escape");
    kvn.clickAnything("KVN32x32Audio", "OutputVolumeValue_32");
    QCOMPARE(kvn.textOf("OutputVolumeLabel"), std::string("Output Out32 volume"));
    QVERIFY(textFits("OutputVolumeLabel", "Output Out32 volume"));
}

void PanelLayoutTest::tabGoesDownAndRight_data() {
    const DataTable<int> row("stops");
    row("KVN-8x4-RGBA", 8 * 3 + 4 * 7 + 6);
    row("KVN-16x16-RGB", 16 + 16 * 2 + 4);
    row("KVN-32x32-RGBA", 32 * 3 + 32 * 7 + 6);
}

void PanelLayoutTest::tabGoesDownAndRight() {
    PanelFixture kvn(QTest::currentDataTag());
    kvn.clickAnything("KVN32x32Audio", "OutputVolumeValue_7"); // brings the volume buttons
    const auto *window = kvn.window("KVN32x32Audio");
    std::vector<QWidget *> stops;
    kvn.on("InputVideoAudioButtons_5")->setFocus();
    do {
        stops.push_back(window->focusWidget());
        QTest::keyClick(window->focusWidget(), Qt::Key_Tab);
    } while (window->focusWidget() != stops.front() && stops.size() < 1000);
    QTEST(static_cast<int>(stops.size()), "stops");

    int turns = 0;
    for (std::size_t stop = 0; stop < stops.size(); ++stop) {
        const QPoint from = stops[stop]->geometry().center();
        const QPoint to = stops[(stop + 1) % stops.size()]->geometry().center();
        const bool sameRow = std::abs(to.y() - from.y()) < 5;
        turns += (sameRow ? to.x() > from.x() : to.y() > from.y()) ? 0 : 1;
        QVERIFY2(turns <= 1, qPrintable(stops[stop]->objectName()));
    }
}

void PanelLayoutTest::clicksLeaveTheFocus() {
    PanelFixture kvn;
    QWidget *const focused = kvn.on("GoToPresets");
    focused->setFocus();
    for (const char *const name :
         {"InputVideoAudioButtons_3", "OutputVidAudButtons_1", "InputVideoConnected_1",
          "OutputVolumeValue_1", "VolumeUpButton", "MuteButton_1", "TakeButton", "ClearButton"}) {
        kvn.clickAnything("KVN32x32Audio", name);
        QCOMPARE(kvn.window("KVN32x32Audio")->focusWidget(), focused);
    }
    QVERIFY(kvn.takeWritten().ends_with("Con 3(1)3F (1)\rSTA O A\rSTA O A\r"));
}

void PanelLayoutTest::showsTheSavedName() {
    PanelFixture kvn;
    const QWidget *label = kvn.on("KVNNameLabel");
    kvn.clicks("exit");
    kvn.program.panelState.SelectedUnitName = "Hall";
    kvn.open(); // by the button, which forgets the name
    QVERIFY(!label->isVisible());
    kvn.clicks("exit");
    kvn.program.panelState.SelectedUnitName = "Hall";
    kvn.connectInDialog(false);
    kvn.control<QAction>("frmMain", QStringLiteral("Connect2Corvane"))->trigger();
    QVERIFY(label->isVisible());
    QCOMPARE(kvn.textOf("KVNNameLabel"), std::string("Hall"));
}
