#include "look.h"
#include "support/toString.h"

#include <QMouseEvent>
#include <QTextDocumentFragment>

#include <cmath>

namespace {

constexpr const char *Panel = "KVN32x32Audio";

/// Where a control stands, in twips. One that takes more room where its text needs it grows to the
/// right or to both sides. One of an array has a second row, which is further down, and a name that
/// is spoken after its side and number.
struct Place {
    const char *name;
    int x, y, width, height;
    char growth = '-';
    int secondRow = 0;
    const char *spoken = "";
};

// clang-format off
constexpr Place Places[] = {
    {"InputNumberLabel", 0, 840, 735, 255, '-', 1380, ""},
    {"InputVideoLamp", 120, 1200, 135, 135, '-', 1410, "video lamp"},
    {"InputAudioLamp", 480, 1200, 135, 135, '-', 1410, "audio lamp"},
    {"InputVideoAudioButtons", 0, 1440, 735, 255, '-', 1440, "video and audio"},
    {"InputVideoButtons", 0, 1680, 375, 255, '-', 1440, "video"},
    {"InputAudioButtons", 360, 1680, 375, 255, '-', 1440, "audio"},
    {"OutputNumberLabel", 0, 4080, 735, 255, '-', 2160, ""},
    {"OutputVideoIndicator", 120, 4440, 135, 135, '-', 2160, "video lamp"},
    {"OutputAudioIndicator", 480, 4440, 135, 135, '-', 2160, "audio lamp"},
    {"OutputVidAudButtons", 0, 4680, 735, 255, '-', 2160, "video and audio"},
    {"OutputVideoButtons", 0, 4920, 375, 255, '-', 2160, "video"},
    {"OutputAudioButtons", 360, 4920, 375, 255, '-', 2160, "audio"},
    {"InputVideoConnected", 0, 5160, 375, 285, '-', 2160, "video source"},
    {"InputAudioConnected", 360, 5160, 375, 285, '-', 2160, "audio source"},
    {"OutputVolumeValue", 0, 5400, 735, 285, '-', 2160, "volume"},
    {"MuteButton", 0, 5760, 735, 285, '-', 2160, "mute"},
    {"Label2_0", 240, 480, 0, 255, 'r'},
    {"Label2_1", 210, 3690, 0, 255, 'r'},
    {"KVNNameLabel", 240, 120, 5160, 300},
    {"CorvaneTypeLabel", 6570, 120, 1005, 405, 'b'},
    {"ZarnConnectedLabel", 11580, 300, 1635, 255, 'r'},
    {"TakeButton", 4230, 8565, 2535, 375},
    {"ClearButton", 7050, 8565, 2535, 375},
    {"Label1", 4620, 9120, 4560, 240, 'b'},
    {"OutputVolumeLabel", 6210, 9360, 1395, 240, 'b'},
    {"VolumeUpButton", 5557, 9765, 1275, 360},
    {"VolumeDownButton", 6982, 9765, 1275, 360},
    {"GoToPresets", 240, 9615, 1575, 555},
    {"ExitButton", 12150, 9675, 1575, 495},
};
// clang-format on

template <class Widget = QWidget> Widget *on(const std::string &name) {
    return ProgramFixture::part<Widget>(Panel, name);
}

bool fits(const QWidget *control) {
    const QString text = control->property("text").toString();
    const int frame = control->inherits("QLineEdit") ? 4 : 2;
    const QFontMetrics metrics(control->font());
    return text.isEmpty() || (metrics.horizontalAdvance(text) + frame <= control->width() &&
                              metrics.height() <= control->height() + 2);
}

} // namespace

/// The panel's window, on a unit with 32 inputs and outputs, each in the slot of its number.
class PanelWindowTest : public QObject {
    Q_OBJECT

    ProgramFixture kvn{{.model = "KVN-32x32-RGBA"}};
    PanelView &view = kvn.program.views.panel;

private Q_SLOTS:
    void initTestCase() { kvn.openPanel(); }

    void init() {
        kvn.program.panelForm.LoadForm();
        kvn.windows.refresh();
        kvn.window(Panel)->activateWindow();
        QCoreApplication::processEvents();
        kvn.takeWritten();
    }

    void standsWhereItWasDesigned() {
        auto *window = kvn.window(Panel);
        auto *sheet = on("TakeButton")->parentWidget();
        const int menu = window->height() - sheet->height();
        view.OutputVolumeValue[32].text = "Vol -45";
        view.MuteButton[32].text = "MUTED";
        view.InputAudioConnected[32].text = "NC";
        view.OutputVolumeLabel.visible = true;
        int shown = 0;
        for (const auto &[width, height, scale, left] : {std::tuple(698, 518, 0.75, 0.0),
                                                         {1862, 1380, 2.0, 0.0},
                                                         {931, 900, 1.0, 0.0},
                                                         {1396, 690, 1.0, 232.5},
                                                         {931, 690, 1.0, 0.0}}) {
            for (int slot = 1; slot <= 32; ++slot) {
                view.InputShown[slot] = slot + shown;
                view.OutputShown[slot] = 33 - slot + shown;
            }
            kvn.windows.refresh();
            window->resize(width, height + menu);
            QCoreApplication::processEvents();
            QCOMPARE(sheet->size(), QSize(width, height));
            for (const Place &place : Places) {
                for (int slot = place.secondRow == 0 ? 32 : 1; slot <= 32; ++slot) {
                    int column = (slot - 1) % 16;
                    if (slot > 16 && place.spoken == std::string("mute")) // out of step
                        column = slot <= 24 ? 32 - slot : slot - 25;
                    std::string name = place.name;
                    QRectF twips(place.x, place.y, place.width, place.height);
                    if (place.secondRow != 0) {
                        name += "_" + std::to_string(slot);
                        twips.translate(240 + 840 * column, slot > 16 ? place.secondRow : 0);
                    }
                    const QRect at = on(name)->geometry();
                    const double more = std::max(0.0, at.width() * 15 / scale - twips.width());
                    if (place.growth != '-')
                        twips.adjust(place.growth == 'b' ? -more / 2 : 0, 0,
                                     place.growth == 'b' ? more / 2 : more, 0);
                    const QRectF off(at.x() - left - twips.x() * scale / 15,
                                     at.y() - twips.y() * scale / 15,
                                     at.width() - twips.width() * scale / 15,
                                     at.height() - twips.height() * scale / 15);
                    QVERIFY2(std::abs(off.x()) <= 1 && std::abs(off.y()) <= 1 &&
                                 std::abs(off.width()) <= 1 && std::abs(off.height()) <= 1,
                             name.c_str());
                    QVERIFY2(fits(on(name)), name.c_str());
                    const bool input = place.y < 4000;
                    QCOMPARE(on(name)->accessibleName().toStdString(),
                             !*place.spoken
                                 ? ""
                                 : (input ? "Input " : "Output ") +
                                       std::to_string((input ? slot : 33 - slot) + shown) + " " +
                                       place.spoken);
                }
            }
            shown += 100;
        }
        window->resize(1862, 1380 + menu);
        QVERIFY(QFontInfo(on("TakeButton")->font()).pixelSize() >= 18);
        QVERIFY(on("TakeButton")->font().bold() && !on("ClearButton")->font().bold());
        QVERIFY(pixel(sheet, 24, 120) != pixel(sheet, 6, 120)); // a card
        view.status.caption = "Connected to an address that is longer than there is room for";
        window->resize(931, 690 + menu);
        kvn.windows.refresh();
        QVERIFY(fits(on("ZarnConnectedLabel")));
        QVERIFY(on("ZarnConnectedLabel")->geometry().right() < 931);
    }

    void showsNamesAsTheyAre() {
        auto *label = on<QLabel>("KVNNameLabel");
        for (const std::string &name :
             {std::string("<b>A</b> & &lt; <i>"), std::string(200, 'W')}) {
            view.KVNNameLabel = {.text = name};
            kvn.windows.refresh();
            QCOMPARE(label->textFormat(), Qt::PlainText);
            QCOMPARE(QTextDocumentFragment::fromHtml(label->toolTip()).toPlainText().toStdString(),
                     name);
            QVERIFY(fits(label));
            const std::string shown = label->text().toStdString();
            QVERIFY(name.size() < 200 ? shown == name : shown.ends_with("W\u2026"));
        }
    }

    void isMinimisedForThePresets() {
        kvn.click(Panel, "GoToPresets");
        QVERIFY(kvn.window(Panel)->isMinimized());
        kvn.window(Panel)->showNormal(); // by the user, who may look at it meanwhile
        QVERIFY(!view.form.minimised);
        kvn.window(Panel)->close();
        QCOMPARE(kvn.visibleWindows(), std::string("frmMain"));
    }

    void choosesAVolumeByMovementOnly() {
        // The box comes up where the pointer rests.
        auto *box = on("OutputVolumeValue_3");
        const QPointF rest = box->mapToGlobal(QPointF(box->rect().center()));
        box->hide();
        QCursor::setPos(rest.toPoint());
        QCoreApplication::processEvents();
        box->show();
        QCoreApplication::processEvents();
        for (const auto &[step, chosen] : {std::pair(0, false), {1, true}, {1, false}, {0, true}}) {
            kvn.click(Panel, "ClearButton");
            const QPointF at = rest + QPointF(step, 0);
            QMouseEvent moved(QEvent::MouseMove, box->mapFromGlobal(at), at, Qt::NoButton,
                              Qt::NoButton, Qt::NoModifier);
            QCoreApplication::sendEvent(box, &moved);
            QCOMPARE(on("VolumeUpButton")->isVisible(), chosen);
        }
    }
};

QTEST_MAIN(PanelWindowTest)
#include "PanelWindowTest.moc"
