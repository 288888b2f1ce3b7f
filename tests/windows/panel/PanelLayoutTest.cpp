#include "PanelLayoutTest.h"

#include "PanelFixture.h"
#include "support/checkRows.h"

#include <QAction>
#include <QTextDocumentFragment>

#include <cmath>

namespace {

enum class Seen { Always, WithAudio, Never };

/// A control array, or a control that stands alone and has no second row: its place, in twips, and
/// when it is seen. A label may take more room where its text needs it.
struct Row {
    const char *name;
    int x, y, secondRow, width, height;
    Seen seen;
    const char *caption; ///< "#" is the slot's number; empty is not looked at
    const char *spoken;  ///< what a screen reader says after side and number; empty: nothing
};

constexpr Row Rows[] = {
    {"InputNumberLabel", 0, 840, 1380, 735, 255, Seen::Always, "#", ""},
    {"InputVideoLamp", 120, 1200, 1410, 135, 135, Seen::Always, "", "video lamp"},
    {"InputAudioLamp", 480, 1200, 1410, 135, 135, Seen::WithAudio, "", "audio lamp"},
    {"InputVideoAudioButtons", 0, 1440, 1440, 735, 255, Seen::Always, "Vid/Aud", "video and audio"},
    {"InputVideoButtons", 0, 1680, 1440, 375, 255, Seen::WithAudio, "V", "video"},
    {"InputAudioButtons", 360, 1680, 1440, 375, 255, Seen::WithAudio, "A", "audio"},
    {"OutputNumberLabel", 0, 4080, 2160, 735, 255, Seen::Always, "#", ""},
    {"OutputVideoIndicator", 120, 4440, 2160, 135, 135, Seen::Always, "", "video lamp"},
    {"OutputAudioIndicator", 480, 4440, 2160, 135, 135, Seen::WithAudio, "", "audio lamp"},
    {"OutputVidAudButtons", 0, 4680, 2160, 735, 255, Seen::Always, "Vid/Aud", "video and audio"},
    {"OutputVideoButtons", 0, 4920, 2160, 375, 255, Seen::WithAudio, "V", "video"},
    {"OutputAudioButtons", 360, 4920, 2160, 375, 255, Seen::WithAudio, "A", "audio"},
    {"InputVideoConnected", 0, 5160, 2160, 375, 285, Seen::WithAudio, "", "video source"},
    {"InputAudioConnected", 360, 5160, 2160, 375, 285, Seen::WithAudio, "", "audio source"},
    {"OutputVolumeValue", 0, 5400, 2160, 735, 285, Seen::Always, "", "volume"},
    {"MuteButton", 0, 5760, 2160, 735, 285, Seen::WithAudio, "MUTE", "mute"},
    {"Label2_0", 240, 480, 0, 0, 255, Seen::Always, "Inputs", ""},
    {"Label2_1", 210, 3690, 0, 0, 255, Seen::Always, "Outputs", ""},
    {"CorvaneTypeLabel", 6570, 120, 0, 1005, 405, Seen::Always, "", ""},
    {"ZarnConnectedLabel", 11580, 300, 0, 1635, 255, Seen::Always, "Connected on COM7", ""},
    {"TakeButton", 4230, 8565, 0, 2535, 375, Seen::Always, "TAKE", ""},
    {"ClearButton", 7050, 8565, 0, 2535, 375, Seen::Always, "ESCAPE", ""},
    {"Label1", 4620, 9120, 0, 4560, 240, Seen::WithAudio,
     "Click on an Output Volume to adjust it's volume.", ""},
    {"OutputVolumeLabel", 6210, 9360, 0, 1395, 240, Seen::Never, "Output volume", ""},
    {"VolumeUpButton", 5557, 9765, 0, 1275, 360, Seen::Never, "Volume Up", ""},
    {"VolumeDownButton", 6982, 9765, 0, 1275, 360, Seen::Never, "Volume Down", ""},
    {"GoToPresets", 240, 9615, 0, 1575, 555, Seen::Always, "Execute Presets", ""},
    {"ExitButton", 12150, 9675, 0, 1575, 495, Seen::Always, "Exit", ""},
};

bool isAt(const QWidget *control, const Row &row, int slot, double scale = 1.0) {
    QRectF twips(row.x, row.y, row.width, row.height);
    if (row.secondRow) {
        int column = (slot - 1) % 16;
        if (slot > 16 && std::string(row.name) == "MuteButton")
            column = slot <= 24 ? 32 - slot : slot - 25;
        twips.translate(240 + 840 * column, slot > 16 ? row.secondRow : 0);
    }
    const QRect at = control->geometry();
    const double more = at.width() * 15 / scale - twips.width();
    if (more > 0 && qobject_cast<const QLabel *>(control)) {
        const bool toTheRight = row.width == 0 || row.name == std::string("ZarnConnectedLabel");
        twips.adjust(toTheRight ? 0 : -more / 2, 0, toTheRight ? more : more / 2, 0);
    }
    const auto near = [scale](int pixels, double length) {
        return std::abs(pixels - length * scale / 15.0) <= 1.0;
    };
    return near(at.x(), twips.x()) && near(at.y(), twips.y()) &&
           near(at.x() + at.width(), twips.right()) && near(at.y() + at.height(), twips.bottom());
}

/// Calls `look` with every control that the table gives a place: its row, its slot and its name.
template <class Look> void forEachControl(const Look &look) {
    for (const Row &row : Rows) {
        for (int slot = 1; slot <= (row.secondRow ? 32 : 1); ++slot)
            look(row, slot, row.name + (row.secondRow ? "_" + std::to_string(slot) : ""));
    }
}

void fits(const std::string &name, const std::string &text) {
    const QWidget *control = PanelFixture::on(name);
    if (text.empty())
        return;
    const int frame = qobject_cast<const QLineEdit *>(control) ? 4 : 2;
    const QFontMetrics metrics(control->font());
    QVERIFY2(metrics.horizontalAdvance(QString::fromStdString(text)) + frame <= control->width() &&
                 metrics.height() <= control->height() + 2,
             (name + " " + text).c_str());
}

} // namespace

void PanelLayoutTest::showsWhatTheUnitHas() {
    const auto shows = [](const std::string &model) {
        PanelFixture kvn(model);
        const bool audio = model.ends_with('A');
        const bool small = kvn.unit.outputs() == 4;
        forEachControl([&](const Row &row, int slot, const std::string &name) {
            const bool ofInput = name.starts_with("Input") && name.find("Connected") == name.npos;
            const int number = slot - (small ? ofInput ? 4 : 6 : 0);
            const bool exists =
                number >= 1 && number <= (ofInput ? kvn.unit.inputs() : kvn.unit.outputs());
            const bool seen = (exists || !row.secondRow) && row.seen != Seen::Never &&
                              (audio || row.seen == Seen::Always);
            const QWidget *control = kvn.on(name);
            QVERIFY2(control->isVisible() == seen && isAt(control, row, slot), name.c_str());
            if (!seen)
                return;
            std::string caption = row.caption[0] == '#' ? std::to_string(number) : row.caption;
            if (!audio && caption == "Vid/Aud")
                caption = "Video";
            if (!caption.empty())
                QCOMPARE(kvn.textOf(name), caption);
            if (*row.spoken)
                QCOMPARE(control->accessibleName().toStdString(), (ofInput ? "Input " : "Output ") +
                                                                      std::to_string(number) + " " +
                                                                      row.spoken);
            fits(name, kvn.textOf(name));
        });
        std::string hidden;
        for (const char *const name :
             {"SelectedOutputsHolder", "SelectedAudioOutputsHolder", "CurrentInputHolder"})
            hidden += kvn.on(name)->isVisible() ? name : "";
        return kvn.textOf("CorvaneTypeLabel") + hidden;
    };
    checkRows({{"KVN-8x4-RGBA", "RGB 8 x 4 with Audio"},
               {"KVN-8x4-RGB", "RGB 8 x 4 No Audio"},
               {"KVN-16x16-RGBA", "RGB 16x16 with Audio"},
               {"KVN-16x16-RGB", "RGB 16x16 No Audio"},
               {"KVN-32x32-RGBA", "RGB 32x32 with Audio"},
               {"KVN-32x32-RGB", "RGB 32x32 No Audio"}},
              shows);
}

void PanelLayoutTest::scalesAndHoldsTheLongestTexts() {
    PanelFixture kvn("KVN-32x32-RGBA");
    kvn.clickAnything("KVN32x32Audio", "OutputVolumeValue_32");
    for (const auto &[name, text] : std::initializer_list<std::pair<const char *, const char *>>{
             {"OutputNumberLabel_32", "Out32"},
             {"MuteButton_32", "MUTED"},
             {"OutputVolumeValue_32", "Vol -45"},
             {"InputAudioConnected_32", "NC"},
             {"VolumeDownButton", "Volume Down"}})
        fits(name, text);
    auto *window = kvn.window("KVN32x32Audio");
    const QWidget *button = kvn.on("InputVideoAudioButtons_32");
    QCOMPARE(button->parentWidget()->size(), QSize(931, 690));
    const int before = button->fontMetrics().horizontalAdvance(QStringLiteral("Vid/Aud"));
    window->resize(931 * 3 / 2, 690 / 2 + window->height());
    QCoreApplication::processEvents();
    forEachControl([&](const Row &row, int slot, const std::string &name) {
        QVERIFY2(isAt(kvn.on(name), row, slot, 1.5), name.c_str());
    });
    const int after = button->fontMetrics().horizontalAdvance(QStringLiteral("Vid/Aud"));
    QVERIFY(after * 10 > before * 13);
}

void PanelLayoutTest::showsNamesAsTheyAre() {
    const std::string name = "<b>A</b> & &lt; <i>";
    PanelFixture kvn;
    kvn.program.unit.SelectedUnitName = name;
    kvn.part<QAction>("frmMain", "Connect2Corvane")->trigger();
    const auto *label = kvn.on<QLabel>("KVNNameLabel");
    QCOMPARE(label->text().toStdString(), name);
    const QString toolTip = label->toolTip();
    QVERIFY(Qt::mightBeRichText(toolTip));
    QCOMPARE(QTextDocumentFragment::fromHtml(toolTip).toPlainText().toStdString(), name);
    // A label that takes its text for markup is as wide as what the markup leaves.
    for (const auto &[window, labelName] : {std::pair("KVN32x32Audio", "KVNNameLabel"),
                                            {"KVN32x32Audio", "CorvaneTypeLabel"},
                                            {"KVN32x32Audio", "ZarnConnectedLabel"},
                                            {"frmMain", "ZarnConnectedLabel"},
                                            {"dlgConnect", "ZarnConnectedLabel"},
                                            {"dlgConnect", "Label2"},
                                            {"dlgOK", "OKLabel"}}) {
        auto *shown = kvn.part<QLabel>(window, labelName);
        shown->setWordWrap(false);
        shown->setText(QString::fromStdString(name));
        QVERIFY2(shown->sizeHint().width() >=
                     shown->fontMetrics().horizontalAdvance(QString::fromStdString(name)),
                 labelName);
    }
}

void PanelLayoutTest::tabGoesDownAndRight() {
    const auto walk = [](const std::string &model) {
        PanelFixture kvn(model);
        kvn.clickAnything("KVN32x32Audio", "OutputVolumeValue_7"); // brings the volume buttons
        const auto *window = kvn.window("KVN32x32Audio");
        QWidget *const start = kvn.on("InputVideoAudioButtons_5");
        start->setFocus();
        int stops = 0;
        int turns = 0;
        do {
            const QPoint from = window->focusWidget()->geometry().center();
            kvn.clickAnything("KVN32x32Audio", "OutputVolumeValue_7"); // leaves the focus
            QTest::keyClick(window->focusWidget(), Qt::Key_Tab);
            const QPoint to = window->focusWidget()->geometry().center();
            const bool sameRow = std::abs(to.y() - from.y()) < 5;
            turns += (sameRow ? to.x() > from.x() : to.y() > from.y()) ? 0 : 1;
        } while (window->focusWidget() != start && ++stops < 1000);
        return std::to_string(stops + 1) + " stops, " + std::to_string(turns) + " turn";
    };
    checkRows({{"KVN-8x4-RGBA", std::to_string(8 * 3 + 4 * 7 + 6) + " stops, 1 turn"},
               {"KVN-16x16-RGB", std::to_string(16 + 16 * 2 + 4) + " stops, 1 turn"},
               {"KVN-32x32-RGBA", std::to_string(32 * 3 + 32 * 7 + 6) + " stops, 1 turn"}},
              walk);
}
