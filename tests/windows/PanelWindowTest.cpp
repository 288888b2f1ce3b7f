#include "look.h"
#include "support/ProgramFixture.h"
#include "support/checkRows.h"

#include <QAction>
#include <QMouseEvent>
#include <QTextDocumentFragment>

#include <cmath>

namespace {

constexpr const char *Panel = "KVN32x32Audio";
const std::string Queries = "\rSTA O A\rSTA O A\r";

/// A control array: its place in twips, and what a screen reader says after side and number.
struct Row {
    const char *name;
    SlotControls PanelView::*controls;
    int x, y, secondRow, width, height;
    const char *spoken;
};

// clang-format off
constexpr Row Rows[] = {
    {"InputNumberLabel", &PanelView::InputNumberLabel, 0, 840, 1380, 735, 255, ""},
    {"InputVideoLamp", &PanelView::InputVideoLamp, 120, 1200, 1410, 135, 135, "video lamp"},
    {"InputAudioLamp", &PanelView::InputAudioLamp, 480, 1200, 1410, 135, 135, "audio lamp"},
    {"InputVideoAudioButtons", &PanelView::InputVideoAudioButtons, 0, 1440, 1440, 735, 255, "video and audio"},
    {"InputVideoButtons", &PanelView::InputVideoButtons, 0, 1680, 1440, 375, 255, "video"},
    {"InputAudioButtons", &PanelView::InputAudioButtons, 360, 1680, 1440, 375, 255, "audio"},
    {"OutputNumberLabel", &PanelView::OutputNumberLabel, 0, 4080, 2160, 735, 255, ""},
    {"OutputVideoIndicator", &PanelView::OutputVideoIndicator, 120, 4440, 2160, 135, 135, "video lamp"},
    {"OutputAudioIndicator", &PanelView::OutputAudioIndicator, 480, 4440, 2160, 135, 135, "audio lamp"},
    {"OutputVidAudButtons", &PanelView::OutputVidAudButtons, 0, 4680, 2160, 735, 255, "video and audio"},
    {"OutputVideoButtons", &PanelView::OutputVideoButtons, 0, 4920, 2160, 375, 255, "video"},
    {"OutputAudioButtons", &PanelView::OutputAudioButtons, 360, 4920, 2160, 375, 255, "audio"},
    {"InputVideoConnected", &PanelView::InputVideoConnected, 0, 5160, 2160, 375, 285, "video source"},
    {"InputAudioConnected", &PanelView::InputAudioConnected, 360, 5160, 2160, 375, 285, "audio source"},
    {"OutputVolumeValue", &PanelView::OutputVolumeValue, 0, 5400, 2160, 735, 285, "volume"},
    {"MuteButton", &PanelView::MuteButton, 0, 5760, 2160, 735, 285, "mute"},
};

/// A control that stands alone. It may take more room where its text needs it: to the right, or to
/// both sides.
struct Single {
    const char *name;
    Control PanelView::*control; ///< null: the status label
    int x, y, width, height;
    char growth = '-';
};
constexpr Single Singles[] = {
    {"Label2_0", &PanelView::Label2_0, 240, 480, 0, 255, 'r'},
    {"Label2_1", &PanelView::Label2_1, 210, 3690, 0, 255, 'r'},
    {"KVNNameLabel", &PanelView::KVNNameLabel, 240, 120, 5160, 300},
    {"CorvaneTypeLabel", &PanelView::CorvaneTypeLabel, 6570, 120, 1005, 405, 'b'},
    {"ZarnConnectedLabel", nullptr, 11580, 300, 1635, 255, 'r'},
    {"TakeButton", &PanelView::TakeButton, 4230, 8565, 2535, 375},
    {"ClearButton", &PanelView::ClearButton, 7050, 8565, 2535, 375},
    {"Label1", &PanelView::Label1, 4620, 9120, 4560, 240, 'b'},
    {"OutputVolumeLabel", &PanelView::OutputVolumeLabel, 6210, 9360, 1395, 240, 'b'},
    {"VolumeUpButton", &PanelView::VolumeUpButton, 5557, 9765, 1275, 360},
    {"VolumeDownButton", &PanelView::VolumeDownButton, 6982, 9765, 1275, 360},
    {"GoToPresets", &PanelView::GoToPresets, 240, 9615, 1575, 555},
    {"ExitButton", &PanelView::ExitButton, 12150, 9675, 1575, 495},
};
// clang-format on

template <class Widget = QWidget> Widget *on(const std::string &name) {
    return ProgramFixture::part<Widget>(Panel, name);
}

std::string inSlot(const char *array, int slot) { return array + ("_" + std::to_string(slot)); }

/// Whether a control stands at a place, in twips, on a sheet drawn so much larger and moved so far.
bool isAt(const std::string &name, QRectF twips, double scale, double left, char growth = '-') {
    const QRect at = on(name)->geometry();
    const double more = std::max(0.0, at.width() * 15 / scale - twips.width());
    if (growth != '-')
        twips.adjust(growth == 'r' ? 0 : -more / 2, 0, growth == 'r' ? more : more / 2, 0);
    const auto near = [scale](double pixels, double length) {
        return std::abs(pixels - length * scale / 15.0) <= 1.0;
    };
    return near(at.x() - left, twips.x()) && near(at.y(), twips.y()) &&
           near(at.x() - left + at.width(), twips.right()) &&
           near(at.y() + at.height(), twips.bottom());
}

bool fits(const QWidget *control) {
    const QString text = control->property("text").toString();
    const int frame = control->inherits("QLineEdit") ? 4 : 2;
    const QFontMetrics metrics(control->font());
    return text.isEmpty() || (metrics.horizontalAdvance(text) + frame <= control->width() &&
                              metrics.height() <= control->height() + 2);
}

void moveTo(QWidget *box, const QPointF &at) {
    QMouseEvent moved(QEvent::MouseMove, box->mapFromGlobal(at), at, Qt::NoButton, Qt::NoButton,
                      Qt::NoModifier);
    QCoreApplication::sendEvent(box, &moved);
}

} // namespace

/// The panel's window, on a unit with 32 inputs and outputs, each in the slot of its number.
class PanelWindowTest : public QObject {
    Q_OBJECT

    ProgramFixture kvn{{.model = "KVN-32x32-RGBA"}};
    PanelView &view = kvn.program.views.panel;

private Q_SLOTS:
    void initTestCase() { kvn.openPanel(); }
    void init();
    void showsItsView();
    void standsWhereItWasDesigned();
    void showsNamesAsTheyAre();
    void tabGoesDownAndRight();
    void reportsClicks();
    void reportsKeys();
    void choosesAVolumeByMovementOnly();
    void opensHelp();
};

void PanelWindowTest::init() {
    kvn.program.panelForm.LoadForm();
    kvn.windows.refresh();
    kvn.window(Panel)->activateWindow();
    QCoreApplication::processEvents();
    kvn.takeWritten();
}

void PanelWindowTest::showsItsView() {
    for (int round = 0; round < 2; ++round) {
        int number = 0;
        for (const Row &row : Rows) {
            for (int slot = 1; slot <= 32; ++slot)
                change((view.*row.controls)[slot], ++number, round);
        }
        for (int slot = 1; slot <= 32; ++slot) {
            view.InputShown[slot] = slot + 100 * round;
            view.OutputShown[slot] = 33 - slot + 100 * round;
        }
        kvn.windows.refresh();
        for (const Row &row : Rows) {
            const bool input = std::string(row.name).starts_with("Input") && row.y < 4000;
            for (int slot = 1; slot <= 32; ++slot) {
                auto *widget = on(inSlot(row.name, slot));
                const Control &control = (view.*row.controls)[slot];
                QCOMPARE(look(widget), wanted(widget, control));
                if (dynamic_cast<Lamp *>(widget))
                    QCOMPARE(widget->accessibleDescription() == QLatin1String("lit"), control.lit);
                const int shown = (input ? slot : 33 - slot) + 100 * round;
                QCOMPARE(widget->accessibleName().toStdString(),
                         *row.spoken ? (input ? "Input " : "Output ") + std::to_string(shown) +
                                           " " + row.spoken
                                     : "");
            }
        }
        PanelView before;
        for (const Single &single : Singles) {
            if (!single.control)
                continue;
            Control &control = view.*single.control;
            before.*single.control = control;
            change(control, ++number, round);
            kvn.windows.refresh();
            QCOMPARE(look(on(single.name)), wanted(on(single.name), control));
            control = before.*single.control;
        }
    }
    for (const char *const name :
         {"SelectedOutputsHolder", "SelectedAudioOutputsHolder", "CurrentInputHolder"})
        QVERIFY(!on(name)->isVisible());
}

void PanelWindowTest::standsWhereItWasDesigned() {
    auto *window = kvn.window(Panel);
    auto *sheet = on("TakeButton")->parentWidget();
    QCOMPARE(sheet->size(), QSize(931, 690));
    const int menu = window->height() - sheet->height();
    view.OutputVolumeValue[32].text = "Vol -45";
    view.MuteButton[32].text = "MUTED";
    view.InputAudioConnected[32].text = "NC";
    for (Control PanelView::*const hidden :
         {&PanelView::OutputVolumeLabel, &PanelView::VolumeUpButton, &PanelView::VolumeDownButton})
        (view.*hidden).visible = true;
    struct Size {
        QSize sheet;
        double scale;
        double left = 0.0;
    };
    for (const Size &size : {Size{{698, 518}, 0.75},
                             {{1862, 1380}, 2.0},
                             {{931, 900}, 1.0},
                             {{1396, 690}, 1.0, 232.5},
                             {{931, 690}, 1.0}}) {
        kvn.windows.refresh();
        window->resize(size.sheet + QSize(0, menu));
        QCoreApplication::processEvents();
        QCOMPARE(sheet->size(), size.sheet);
        for (const Row &row : Rows) {
            for (int slot = 1; slot <= 32; ++slot) {
                int column = (slot - 1) % 16;
                if (slot > 16 && row.controls == &PanelView::MuteButton) // out of step
                    column = slot <= 24 ? 32 - slot : slot - 25;
                const QRectF place(240 + 840 * column + row.x,
                                   row.y + (slot > 16 ? row.secondRow : 0), row.width, row.height);
                const std::string name = inSlot(row.name, slot);
                QVERIFY2(isAt(name, place, size.scale, size.left), name.c_str());
                QVERIFY2(fits(on(name)), name.c_str());
            }
        }
        for (const Single &single : Singles) {
            const QRectF place(single.x, single.y, single.width, single.height);
            QVERIFY2(isAt(single.name, place, size.scale, size.left, single.growth), single.name);
            QVERIFY2(fits(on(single.name)), single.name);
        }
    }
    window->resize(1862, 1380 + menu);
    QVERIFY(QFontInfo(on("TakeButton")->font()).pixelSize() >= 18);
    view.status.caption = "Connected to an address that is longer than there is room for";
    window->resize(931, 690 + menu);
    kvn.windows.refresh();
    QVERIFY(fits(on("ZarnConnectedLabel")));
    QVERIFY(on("ZarnConnectedLabel")->geometry().right() < 931);
}

void PanelWindowTest::showsNamesAsTheyAre() {
    auto *label = on<QLabel>("KVNNameLabel");
    for (const std::string &name : {std::string("<b>A</b> & &lt; <i>"), std::string(200, 'W')}) {
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

void PanelWindowTest::tabGoesDownAndRight() {
    kvn.clickAnything(Panel, "OutputVolumeValue_7"); // brings the volume buttons
    const auto *window = kvn.window(Panel);
    QWidget *const start = on("InputVideoAudioButtons_5");
    start->setFocus();
    int stops = 0;
    int turns = 0;
    do {
        const QPoint from = window->focusWidget()->geometry().center();
        kvn.clickAnything(Panel, "OutputVolumeValue_7"); // leaves the focus
        QTest::keyClick(window->focusWidget(), Qt::Key_Tab);
        const QPoint to = window->focusWidget()->geometry().center();
        const bool sameRow = std::abs(to.y() - from.y()) < 5;
        turns += (sameRow ? to.x() > from.x() : to.y() > from.y()) ? 0 : 1;
    } while (window->focusWidget() != start && ++stops < 1000);
    QCOMPARE(stops + 1, 32 * 3 + 32 * 7 + 6);
    QCOMPARE(turns, 1);
}

void PanelWindowTest::reportsClicks() {
    PanelState &state = kvn.program.panel;
    on("GoToPresets")->setFocus();
    for (const int slot : {1, 25, 32}) {
        const std::string number = std::to_string(slot);
        for (const auto &[array, picked] : {std::pair("InputVideoAudioButtons", "Bi"),
                                            {"InputVideoButtons", "Vi"},
                                            {"InputAudioButtons", "Ai"},
                                            {"OutputVidAudButtons", "Bo"},
                                            {"OutputVideoButtons", "Vo"},
                                            {"OutputAudioButtons", "Ao"}}) {
            kvn.click(Panel, inSlot(array, slot));
            std::string result(1, state.PanelMode);
            result += state.CurrentInput != 0 ? "i" + std::to_string(state.CurrentInput) : "";
            for (const std::string &output : state.SelectedOutputs)
                result += output.empty() ? "" : "o" + output;
            QCOMPARE(result, picked + number);
            kvn.click(Panel, "ClearButton");
            QVERIFY(state.SelectedOutputs[slot].empty());
            state.CurrentInput = 0;
        }
        kvn.click(Panel, inSlot("MuteButton", slot));
        QCOMPARE(kvn.takeWritten(), "MUT M " + number + Queries);
        kvn.clickAnything(Panel, inSlot("OutputVolumeValue", slot));
        QCOMPARE(state.VolumeOutput, slot);
    }
    for (const auto &[button, bytes] : {std::pair("VolumeUpButton", "VOL L 32 -19\rVOL L 32?\r"),
                                        {"VolumeDownButton", "VOL L 32 -20\rVOL L 32?\r"},
                                        {"TakeButton", "DIS \rSTA O A\rSTA O A\r"}}) {
        kvn.click(Panel, button);
        QCOMPARE(kvn.takeWritten(), std::string(bytes));
    }
    QVERIFY(on("GoToPresets")->hasFocus()); // a mouse click leaves it
    kvn.click(Panel, "GoToPresets");
    QCOMPARE(kvn.visibleWindows(), std::string("KVN32x32Audio dlgPresets frmMain"));
    QVERIFY(kvn.window(Panel)->isMinimized());
    kvn.window(Panel)->showNormal(); // by the user, who may look at it meanwhile
    QVERIFY(!view.form.minimised);
    kvn.window(Panel)->close();
    QCOMPARE(kvn.visibleWindows(), std::string("frmMain"));
    init();
    kvn.click(Panel, "ExitButton");
    QCOMPARE(kvn.visibleWindows(), std::string("frmMain"));
    kvn.openPanel();
}

void PanelWindowTest::reportsKeys() {
    const std::string taken = "Con 3(1)3F (1)" + Queries;
    for (const bool repeated : {false, true}) {
        for (const auto key : {Qt::Key_F9, Qt::Key_Return, Qt::Key_Enter, Qt::Key_Space,
                               Qt::Key_Escape, Qt::Key_F1}) {
            init();
            kvn.click(Panel, "InputVideoAudioButtons_3");
            kvn.click(Panel, "OutputVidAudButtons_1");
            auto *take = on("TakeButton");
            take->setFocus();
            QTest::simulateEvent(take, true, key, {}, QString(), repeated);
            QTest::simulateEvent(take, false, key, {}, QString(), repeated);
            const bool takes = !repeated && key != Qt::Key_Escape && key != Qt::Key_F1;
            QCOMPARE(kvn.takeWritten(), takes ? taken : "");
            QCOMPARE(kvn.program.panel.SelectedOutputs[1].empty(),
                     takes || (key == Qt::Key_Escape && !repeated));
            QCOMPARE(kvn.isShown("dlgInputConnect"), key == Qt::Key_F1 && !repeated);
            kvn.program.helpForms[0].unload();
        }
    }
}

void PanelWindowTest::choosesAVolumeByMovementOnly() {
    auto *box = on("OutputVolumeValue_3");
    const auto chosen = [&](const std::function<void()> &action) {
        kvn.click(Panel, "ClearButton");
        action();
        return std::string(on("VolumeUpButton")->isVisible() ? "chosen" : "");
    };
    for (const auto key : {Qt::Key_Space, Qt::Key_Return, Qt::Key_Enter})
        QCOMPARE(chosen([&] { QTest::keyClick(box, key); }), std::string("chosen"));
    QCOMPARE(chosen([&] { QTest::keyClick(box, Qt::Key_A); }), std::string());
    QCOMPARE(chosen([&] { box->setFocus(Qt::TabFocusReason); }), std::string());
    // The box comes up where the pointer rests.
    const QPointF rest = box->mapToGlobal(QPointF(box->rect().center()));
    box->hide();
    QCursor::setPos(rest.toPoint());
    QCoreApplication::processEvents();
    box->show();
    QCoreApplication::processEvents();
    for (const auto &[step, result] : {std::pair(0, ""), {1, "chosen"}, {1, ""}, {0, "chosen"}})
        QCOMPARE(chosen([&, x = step] { moveTo(box, rest + QPointF(x, 0)); }), std::string(result));
}

// clang-format off
const std::vector<std::array<std::string, 2>> HelpWindows{
    {"ConnectionHelp dlgInputConnect", "How to Connect|How to Connect Inputs to Outputs|To Connect inputs to Outputs:|"
     "You can connect inputs to outputs by clicking the input's Vid/Aud, Vid, or Aud button. Then click the same button "
     "on the output to be connected to, multiple outputs may be connected. Then click the TAKE button.|"
     "The Escape button clears all selections."},
    {"disconnectHelp dlgDisconnect", "How to Disconnect|Disconnecting Outputs|To Disconnect Outputs:|"
     "Disconnecting outputs are a simple as selecting the output using the Aud, Vid or Vid/Aud button for the output to "
     "disconnect, then click the Take button.|The Escape button clears all selections."},
    {"AdjustingVolumes VolumeHelpDialog", "Adjusting Volumes (if applicable)|Adjusting Volumes|To Adjust Ouput Volumes:|"
     "You can adjust the volume of an output by clicking on the VOL XX area of the output status. The volume up and "
     "volume down buttons will appear at the bottom of the screen.|"
     "The Escape button clears all selections from the screen."}};
// clang-format on

void PanelWindowTest::opensHelp() {
    checkRows(HelpWindows, [this](const std::string &names) {
        auto *item = on<QAction>(names.substr(0, names.find(' ')));
        std::string texts;
        for (const char *const way : {"OK", "Escape", "frame"}) {
            item->trigger();
            auto *help = kvn.window(names.substr(names.find(' ') + 1));
            texts = (item->text() + QLatin1Char('|') + help->windowTitle()).toStdString();
            for (const QLabel *label : help->findChildren<QLabel *>())
                texts += "|" + label->text().toStdString();
            texts += help->isVisible() && !help->isModal() ? "" : " not shown";
            QCoreApplication::processEvents(); // it becomes the active one
            if (*way == 'f')
                help->close();
            else
                QTest::keyClick(help, *way == 'O' ? Qt::Key_Return : Qt::Key_Escape);
            texts += help->isVisible() ? std::string(" stays after ") + way : "";
        }
        return texts;
    });
}

QTEST_MAIN(PanelWindowTest)
#include "PanelWindowTest.moc"
