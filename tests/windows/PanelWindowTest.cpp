#include "PanelLayout.h"
#include "look.h"

#include <QHelpEvent>
#include <QMouseEvent>
#include <QScreen>
#include <QScrollArea>
#include <QWindow>
#include <QtTest/QtTest>

#include <optional>

namespace {

constexpr const char *Panel = "KVN32x32Audio";

QWidget *on(const std::string &name) { return ProgramFixture::part(Panel, name); }

constexpr QMarginsF Slack(1.01, 1.01, 1.01, 1.01); ///< of places that are rounded to pixels

bool fits(const QWidget *control) {
    const QString text = control->property("text").toString();
    const QFontMetrics metrics(control->font());
    return text.isEmpty() || (metrics.horizontalAdvance(text) + 2 <= control->width() &&
                              metrics.height() <= control->height() + 2);
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
    QWidget *window = nullptr, *sheet = nullptr;

    PanelView &open(const std::string &model = "KVN-32x32-RGBA") {
        kvn.emplace(UnitOptions{.model = model});
        kvn->openPanel();
        window = kvn->window(Panel);
        sheet = on("TakeButton")->parentWidget();
        QCoreApplication::processEvents();
        return kvn->program.views.panel;
    }
    void resize(const QSize &size) {
        window->resize(size + window->size() - sheet->size());
        QCoreApplication::processEvents();
    }

private Q_SLOTS:
    void standsWhereItWasDesigned() {
        PanelView &view = open();
        for (int slot = 1; slot <= 31; ++slot) // a tip of more than one line
            (slot % 2 ? view.InputVideoConnected : view.InputAudioConnected)[slot].text = "32";
        view.MuteButton[32].text = "MUTED";
        view.KVNNameLabel = {.text = "<b>" + std::string(200, 'W')};
        kvn->click(Panel, "InputVideoAudioButtons_3");
        for (const auto &[size, scale, left, mark] : {std::tuple(QSize(698, 518), 0.75, 0.0, 1),
                                                      {{1862, 1380}, 2.0, 0.0, 4},
                                                      {{931, 900}, 1.0, 0.0, 2},
                                                      {{1396, 690}, 1.0, 232.5, 2}}) {
            resize(size);
            QCOMPARE(sheet->size(), size);
            // With all that its text needs.
            const auto stands = [&, left = left, pixels = scale / 15](
                                    const std::string &name, const TwipRect &twips, Growth growth) {
                const QWidget *control = on(name);
                const QRectF at = control->geometry();
                const double width = twips.width * pixels;
                const double more =
                    growth == Growth::None ? 0.0 : std::max(0.0, at.width() - width);
                const double before = growth == Growth::ToBothSides ? more / 2 : 0.0;
                const QRectF place(left + twips.x * pixels - before, twips.y * pixels, width + more,
                                   twips.height * pixels);
                QVERIFY2((place + Slack).contains(at) && (at + Slack).contains(place) &&
                             fits(control),
                         name.c_str());
                if (!control->toolTip().isEmpty() && name != "KVNNameLabel")
                    QCOMPARE(name + " " + faultOfTip(control), name + " ");
            };
            for (const SingleControl &single : SingleControls)
                stands(single.name, single.place, single.growth);
            for (const SlotArray &array : SlotArrays) {
                for (const int slot : {1, 16, 17, 32})
                    stands(array.name + ("_" + std::to_string(slot)), slotRect(array, slot),
                           Growth::None);
            }
            stands("ZarnConnectedLabel", {11580, 300, 1635, 255}, Growth::ToTheRight);
            stands("InputAudioButtons_16", {13200, 1680, 375, 255}, Growth::None);
            stands("OutputVolumeValue_20", {2760, 7560, 735, 285}, Growth::None);
            stands("MuteButton_24", {6960, 7920, 735, 285}, Growth::None); // out of step
            stands("MuteButton_32", {6120, 7920, 735, 285}, Growth::None);
            // The mark of what is picked, which leaves the caption its room.
            for (const int y : {mark, mark + 1}) {
                auto *button = on("InputVideoAudioButtons_3");
                const QColor drawn(QString::fromStdString(pixel(button, button->width() / 2, y)));
                QCOMPARE(drawn.lightness() < 80, y == mark);
            }
            for (int output = 1; output <= 32; ++output) // the tip of what is sent is long then
                kvn->click(Panel, "OutputVidAudButtons_" + std::to_string(output));
            QCOMPARE(faultOfTip(on("TakeButton")), std::string());
            kvn->click(Panel, "ClearButton");
        }
        QWidget *pointed = on("InputVideoAudioButtons_5");
        QTest::mouseMove(window->windowHandle(), pointed->mapTo(window, QPoint(9, 9)));
        QCOMPARE(pixel(sheet, pointed->x(), pointed->geometry().center().y()),
                 std::string("#606872"));
        QVERIFY(qobject_cast<QLabel *>(on("Label1"))->alignment() & Qt::AlignHCenter);
        QVERIFY(on("TakeButton")->font().bold() && !on("ClearButton")->font().bold());
        auto *name = qobject_cast<QLabel *>(on("KVNNameLabel"));
        QVERIFY(name->text().endsWith(u'\u2026') && name->textFormat() == Qt::PlainText);
        QVERIFY(name->toolTip().contains(QStringLiteral("&lt;b&gt;WWW")));
        view.status.caption = "Connected to an address that is longer than there is room for";
        resize({931, 690});
        kvn->windows.refresh();
        QVERIFY(fits(on("ZarnConnectedLabel")) &&
                on("ZarnConnectedLabel")->geometry().right() < 931);
    }

    void opensAsLargeAsThereIsRoom() {
        for (const auto &[room, screenPixels, size] :
             {std::tuple(QSize(931, 690), 1.0, QSize(931, 690)),
              {{908, 466}, 1.5, {628, 466}},
              {{3838, 2100}, 1.0, {1862, 1380}},
              {{2000, 400}, 1.0, {592, 400}}, // scrolls: 7 pixels of a font are 0.636
              {{300, 300}, 2.0, {300, 222}}})
            QCOMPARE(openingSize(room, smallestScale(screenPixels)), size);
    }

    void cardsEndBelowTheRowsInUse() {
        for (const auto &[model, inputs, outputs] : {std::tuple("KVN-8x4-RGBA", 1350, 2235),
                                                     {"KVN-24x16-RGB", 2550, 1875},
                                                     {"KVN-32x32-RGBA", 2790, 4395}}) {
            open(model);
            for (const TwipRect &card :
                 {TwipRect{120, 735, 13725, inputs}, {120, 3960, 13725, outputs}}) {
                const QRect drawn = onSheet(card, sheet->size());
                QCOMPARE(pixel(sheet, drawn.center().x(), drawn.bottom() - 5) + " " +
                             pixel(sheet, drawn.center().x(), drawn.bottom() + 5),
                         std::string("#fafbfc #eef0f3"));
            }
        }
    }

    void panelFitsTheScreenAndScrolls() {
        open();
        const QRect screen = window->screen()->availableGeometry();
        const QSize left = screen.size() - window->frameGeometry().size();
        QVERIFY(screen.contains(window->frameGeometry()) &&
                std::min(left.width(), left.height()) <= 1);
        QVERIFY((screen.center() - window->frameGeometry().center()).manhattanLength() <= 2);
        window->resize(300, 200); // and is scrolled
        QCOMPARE(window->findChild<QScrollArea *>()->widget()->size(), QSize(592, 439));
        // It opens anew where it does not fit any more, and stays as the user made it otherwise.
        for (const auto &[place, fitted] :
             {std::pair(QRect(50, 60, 400, 300), false), {QRect(50, 60, 3000, 300), true}}) {
            window->setGeometry(place);
            window->close();
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
        box->show();
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
