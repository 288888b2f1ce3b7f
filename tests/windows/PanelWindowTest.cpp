#include "PanelLayout.h"
#include "look.h"

#include <QHelpEvent>
#include <QMouseEvent>
#include <QScreen>
#include <QScrollArea>
#include <QScrollBar>
#include <QTransform>
#include <QWindow>
#include <QtTest/QtTest>

#include <optional>
#include <set>

namespace {

constexpr const char *Panel = "KVN32x32Audio";

// clang-format off
/// All controls: name, x, y, width and height in twips. Of an array follow how far below row 1 its row 2 stands and what
/// is spoken after side and number; of others how they grow where the text needs it: to the right (r), to both sides (b).
constexpr const char *Places = R"(
InputNumberLabel 0 840 735 255 1380; InputVideoAudioButtons 0 1440 735 255 1440 video and audio;
InputVideoLamp 120 1200 135 135 1410 video lamp; InputAudioLamp 480 1200 135 135 1410 audio lamp;
InputVideoButtons 0 1680 375 255 1440 video; InputAudioButtons 360 1680 375 255 1440 audio;
OutputNumberLabel 0 4080 735 255 2160; OutputVidAudButtons 0 4680 735 255 2160 video and audio;
OutputVideoIndicator 120 4440 135 135 2160 video lamp; OutputAudioIndicator 480 4440 135 135 2160 audio lamp;
OutputVideoButtons 0 4920 375 255 2160 video; OutputAudioButtons 360 4920 375 255 2160 audio;
InputVideoConnected 0 5160 375 285 2160 video source; InputAudioConnected 360 5160 375 285 2160 audio source;
OutputVolumeValue 0 5400 735 285 2160 volume; MuteButton 0 5760 735 285 2160 mute;
Label2_0 240 480 0 255 r; Label2_1 210 3690 0 255 r; KVNNameLabel 240 120 5160 300;
CorvaneTypeLabel 6570 120 1005 405 b; ZarnConnectedLabel 11580 300 1635 255 r;
TakeButton 4230 8565 2535 375; ClearButton 7050 8565 2535 375; Label1 4620 9120 4560 240 b;
OutputVolumeLabel 6210 9360 1395 240 b; VolumeUpButton 5557 9765 1275 360;
VolumeDownButton 6982 9765 1275 360; GoToPresets 240 9615 1575 555; ExitButton 12150 9675 1575 495)";
// clang-format on

QWidget *on(const std::string &name) { return ProgramFixture::part(Panel, name); }

constexpr QMarginsF Slack(1.01, 1.01, 1.01, 1.01); ///< of places that are rounded to pixels

bool fits(const QWidget *control) {
    const QString text = control->property("text").toString();
    const QFontMetrics metrics(control->font());
    return text.isEmpty() || (metrics.horizontalAdvance(text) + 2 <= control->width() &&
                              metrics.height() <= control->height() + 2);
}

bool hasRing(const QWidget *control) {
    const QImage seen = control->parentWidget()->grab(control->geometry()).toImage();
    const int right = seen.width() - 1, bottom = seen.height() - 1;
    return std::set{seen.pixel(0, bottom / 2), seen.pixel(right, bottom / 2),
                    seen.pixel(right / 2, 0),
                    seen.pixel(right / 2, bottom)} == std::set{qRgb(0, 95, 184)};
}

/// What is wrong with the tip that comes when the pointer rests on a control.
std::string faultOfTip(const QWidget *control) {
    QWidget *sheet = control->parentWidget();
    const QPoint at = control->geometry().center();
    QWidget *under = sheet->childAt(at); // the pointer goes through a lamp
    under = under ? under : sheet;
    QHelpEvent rest(QEvent::ToolTip, under->mapFrom(sheet, at), sheet->mapToGlobal(at));
    for (int asked = 0; asked < 2; ++asked) // again where the pointer moves on it
        QApplication::sendEvent(under, &rest);
    const auto *tip = ProgramFixture::window("qtooltip_label");
    if (!tip || !tip->isVisible() || tip->property("text").toString() != control->toolTip())
        return "is another one";
    const QRect hidden(sheet->mapFromGlobal(tip->pos()), tip->size());
    for (const QWidget *other : sheet->findChildren<QWidget *>()) {
        const bool used = !qobject_cast<const QLabel *>(other) && other->isVisible();
        if (used && hidden.intersects(other->geometry()))
            return "hides " + other->objectName().toStdString();
    }
    return sheet->rect().contains(hidden) ? "" : "leaves the panel";
}

} // namespace

/// The panel's window, on a unit with 32 inputs and outputs, each in the slot of its number.
class PanelWindowTest : public QObject {
    Q_OBJECT

    std::optional<ProgramFixture> kvn;

    PanelView &open(const std::string &model = "KVN-32x32-RGBA") {
        kvn.emplace(UnitOptions{.model = model});
        kvn->openPanel();
        kvn->window(Panel)->activateWindow();
        QCoreApplication::processEvents();
        return kvn->program.views.panel;
    }

private Q_SLOTS:
    void standsWhereItWasDesigned() {
        PanelView &view = open();
        auto *window = kvn->window(Panel);
        auto *sheet = on("TakeButton")->parentWidget();
        const int menu = window->height() - sheet->height();
        for (int slot = 1; slot <= 31; ++slot) // a tip of more than one line
            (slot % 2 ? view.InputVideoConnected : view.InputAudioConnected)[slot].text = "32";
        view.OutputVolumeValue[32].text = "Vol -45";
        view.MuteButton[32].text = "MUTED";
        view.InputAudioConnected[32].text = "NC";
        view.OutputVolumeLabel.visible = true;
        view.KVNNameLabel = {.text = "<b>" + std::string(200, 'W')};
        int shown = 0;
        for (const auto &[size, scale, left] : {std::tuple(QSize(698, 518), 0.75, 0.0),
                                                {{1862, 1380}, 2.0, 0.0},
                                                {{931, 900}, 1.0, 0.0},
                                                {{1396, 690}, 1.0, 232.5},
                                                {{931, 690}, 1.0, 0.0}}) {
            for (int slot = 1; slot <= 32; ++slot) {
                view.InputShown[slot] = slot + shown;
                view.OutputShown[slot] = 33 - slot + shown;
            }
            kvn->windows.refresh();
            window->resize(size.width(), size.height() + menu);
            QCoreApplication::processEvents();
            QCOMPARE(sheet->size(), size);
            for (const QString &row :
                 QString::fromLatin1(Places).remove(u'\n').split(QStringLiteral(";"))) {
                const QStringList words = row.simplified().split(u' ');
                const QString growth = words.value(5);
                const int secondRow = growth.toInt();
                for (int slot = secondRow == 0 ? 32 : 1; slot <= 32; ++slot) {
                    std::string name = words[0].toStdString();
                    int column = (slot - 1) % 16;
                    if (slot > 16 && name == "MuteButton") // out of step
                        column = slot <= 24 ? 32 - slot : slot - 25;
                    QRectF place(words[1].toInt(), words[2].toInt(), words[3].toInt(),
                                 words[4].toInt());
                    if (secondRow != 0) {
                        name += "_" + std::to_string(slot);
                        place.translate(240 + 840 * column, slot > 16 ? secondRow : 0);
                    }
                    place = QTransform::fromScale(scale / 15, scale / 15).mapRect(place);
                    QWidget *control = on(name);
                    const QRectF at = control->geometry();
                    const double more = std::max(0.0, at.width() - place.width());
                    if (growth == u'r' || growth == u'b')
                        place.setWidth(place.width() + more);
                    place.translate(growth == u'b' ? left - more / 2 : left, 0);
                    QVERIFY2((place + Slack).contains(at) && (at + Slack).contains(place) &&
                                 fits(control),
                             name.c_str());
                    const bool input = words[2].toInt() < 4000;
                    const QString spoken = QStringLiteral("%1put %2 %3")
                                               .arg(QLatin1String(input ? "In" : "Out"))
                                               .arg((input ? slot : 33 - slot) + shown)
                                               .arg(words.mid(6).join(u' '));
                    QCOMPARE(control->accessibleName(), words.size() > 6 ? spoken : QString());
                    if (secondRow != 0 && slot % 16 > 1)
                        continue;
                    if (control->focusPolicy() != Qt::NoFocus && control->isVisible()) {
                        control->setFocus(Qt::TabFocusReason);
                        QVERIFY2(hasRing(control) && !control->property("hasSelectedText").toBool(),
                                 name.c_str());
                    }
                    for (int output = 1; name == "TakeButton" && output <= 32; ++output)
                        kvn->click(Panel, "OutputVidAudButtons_" + std::to_string(output));
                    if (name == "TakeButton" || words.size() > 6)
                        QCOMPARE(name + " " + faultOfTip(control), name + " ");
                }
            }
            kvn->click(Panel, "ClearButton");
            shown += 100;
        }
        faultOfTip(on("ExitButton")); // it has none
        QTRY_VERIFY(!QString::fromStdString(kvn->visibleWindows()).contains(u"tip"));
        kvn->click(Panel, "InputVideoAudioButtons_3");
        // The mark of what is picked, which leaves the caption its room.
        for (const auto &[height, slot, y, marked] : {std::tuple(518, 3, 1, true),
                                                      {518, 3, 2, false},
                                                      {1380, 3, 3, true},
                                                      {1380, 4, 3, false}}) {
            window->resize(1862, height + menu);
            QCoreApplication::processEvents();
            auto *button = on("InputVideoAudioButtons_" + std::to_string(slot));
            const QColor inside(QString::fromStdString(pixel(button, button->width() / 2, y)));
            QCOMPARE(inside.lightness() < 80, marked);
        }
        QWidget *pointed = on("InputVideoAudioButtons_5");
        QTest::mouseMove(window->windowHandle(), pointed->mapTo(window, QPoint(9, 9)));
        QVERIFY(hasRing(pointed));
        QVERIFY(QFontInfo(on("TakeButton")->font()).pixelSize() >= 18);
        QVERIFY(qobject_cast<QLabel *>(on("Label1"))->alignment() & Qt::AlignHCenter);
        QVERIFY(on("TakeButton")->font().bold() && !on("ClearButton")->font().bold());
        auto *name = qobject_cast<QLabel *>(on("KVNNameLabel"));
        QVERIFY(name->text().endsWith(u'\u2026') && name->textFormat() == Qt::PlainText);
        QCOMPARE(hints(name), view.KVNNameLabel.text + "/");
        view.status.caption = "Connected to an address that is longer than there is room for";
        window->resize(931, 690 + menu);
        kvn->windows.refresh();
        QVERIFY(fits(on("ZarnConnectedLabel")));
        QVERIFY(on("ZarnConnectedLabel")->geometry().right() < 931);
    }

    void opensAsLargeAsThereIsRoom() {
        for (const auto &[room, screenPixels, size] :
             {std::tuple(QSize(931, 690), 1.0, QSize(931, 690)),
              {{908, 466}, 1.5, {628, 466}},
              {{3838, 2100}, 1.0, {1862, 1380}},
              {{1080, 1870}, 1.0, {1080, 800}},
              {{2000, 400}, 1.0, {592, 400}}, // scrolls: 7 pixels of a font are 0.636
              {{300, 300}, 2.0, {300, 222}}})
            QCOMPARE(openingSize(room, smallestScale(screenPixels)), size);
    }

    void cardsEndBelowTheRowsInUse() {
        for (const auto &[model, inputs, outputs] : {std::tuple("KVN-8x4-RGBA", 1350, 2235),
                                                     {"KVN-16x16-RGB", 1110, 1875},
                                                     {"KVN-24x16-RGB", 2550, 1875},
                                                     {"KVN-32x32-RGBA", 2790, 4395}}) {
            const PanelView &view = open(model);
            auto *sheet = kvn->part(Panel, "TakeButton")->parentWidget();
            for (const Side side : {Side::Input, Side::Output}) {
                const TwipRect card = cardOf(side, view);
                QCOMPARE(card.height, side == Side::Input ? inputs : outputs);
                const QRect drawn = onSheet(card, sheet->size());
                QCOMPARE(pixel(sheet, drawn.center().x(), drawn.bottom() - 5) + " " +
                             pixel(sheet, drawn.center().x(), drawn.bottom() + 5),
                         std::string("#fafbfc #eef0f3"));
            }
        }
    }

    void panelFitsTheScreenAndScrolls() {
        kvn.emplace();
        // Its own frame is another one than that of the window that is open already.
        kvn->window("frmMain")->setWindowFlag(Qt::FramelessWindowHint);
        kvn->window("frmMain")->show();
        kvn->openPanel();
        QCoreApplication::processEvents();
        auto *window = kvn->window(Panel);
        const QRect screen = window->screen()->availableGeometry();
        const QRect frame = window->frameGeometry();
        QVERIFY(screen.contains(frame));
        QVERIFY(screen.width() - frame.width() <= 1 || screen.height() - frame.height() <= 1);
        auto *scroller = window->findChild<QScrollArea *>();
        QVERIFY(!scroller->verticalScrollBar()->isVisible());
        window->resize(300, 200);
        QCoreApplication::processEvents();
        QCOMPARE(scroller->widget()->size(), QSize(592, 439));
        QVERIFY(scroller->verticalScrollBar()->isVisible());
        // It opens anew where it does not fit any more, and stays as the user made it otherwise.
        for (const auto &[place, fitted] :
             {std::pair(QRect(50, 60, 400, 300), false), {QRect(50, 60, 3000, 300), true}}) {
            window->setGeometry(place);
            kvn->window(Panel)->close();
            kvn->openPanel();
            QCOMPARE(window->size() != place.size(), fitted);
            QVERIFY(screen.contains(window->frameGeometry()));
        }
    }

    void choosesAVolumeByMovementOnly() {
        open();
        // The box comes up where the pointer rests.
        auto *box = on("OutputVolumeValue_3");
        const QPointF rest = box->mapToGlobal(QPointF(box->rect().center()));
        box->hide();
        QCursor::setPos(rest.toPoint());
        QCoreApplication::processEvents();
        box->show();
        QCoreApplication::processEvents();
        for (const auto &[step, chosen] : {std::pair(0, false), {1, true}, {1, false}, {0, true}}) {
            kvn->click(Panel, "ClearButton");
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
