#include "PanelLayout.h"
#include "look.h"

#include <QProcess>
#include <QScreen>
#include <QScrollArea>
#include <QScrollBar>
#include <QTemporaryFile>
#include <QToolTip>
#include <QWindow>
#include <QtTest/QtTest>

namespace {

constexpr const char *Panel = "KVN32x32Audio";
constexpr const char *Units = "dlgControlExisting";

/// Whether one colour can be read on the other.
bool differ(const QColor &one, const QColor &other) {
    return std::abs(qGray(one.rgb()) - qGray(other.rgb())) > 100;
}

} // namespace

/// Windows on other screens, with other fonts and colours than they were designed for.
class FitTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
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
        PanelView none;
        for (const SlotArray &array : SlotArrays)
            (none.*array.controls).fill({.visible = false});
        QVERIFY(cardOf(Side::Input, none) == TwipRect{});
        for (const auto &[model, inputs, outputs] : {std::tuple("KVN-8x4-RGBA", 1350, 2235),
                                                     {"KVN-16x16-RGB", 1110, 1875},
                                                     {"KVN-24x16-RGB", 2550, 1875},
                                                     {"KVN-32x32-RGBA", 2790, 4395}}) {
            ProgramFixture kvn({.model = model});
            kvn.openPanel();
            auto *sheet = kvn.part(Panel, "TakeButton")->parentWidget();
            for (const Side side : {Side::Input, Side::Output}) {
                const TwipRect card = cardOf(side, kvn.program.views.panel);
                QCOMPARE(card.height, side == Side::Input ? inputs : outputs);
                const QRect drawn = onSheet(card, sheet->size());
                QCOMPARE(pixel(sheet, drawn.center().x(), drawn.bottom() - 5) + " " +
                             pixel(sheet, drawn.center().x(), drawn.bottom() + 5),
                         std::string("#fafbfc #eef0f3"));
            }
        }
    }

    void panelFitsTheScreenAndScrolls() {
        ProgramFixture kvn;
        kvn.openPanel();
        auto *window = kvn.window(Panel);
        QTRY_VERIFY(window->windowHandle()->isExposed());
        const QRect screen = window->screen()->availableGeometry();
        const QRect frame = window->frameGeometry();
        QVERIFY(screen.contains(frame));
        QVERIFY(screen.width() - frame.width() <= 1 || screen.height() - frame.height() <= 1);
        auto *scroller = window->findChild<QScrollArea *>();
        QCOMPARE(scroller->verticalScrollBar()->maximum(), 0);
        QCOMPARE(scroller->horizontalScrollBar()->maximum(), 0);
        window->resize(300, 200);
        QCoreApplication::processEvents();
        QCOMPARE(scroller->widget()->size(), QSize(592, 439));
        QVERIFY(scroller->verticalScrollBar()->isVisible());
        // It opens anew where it does not fit any more, and stays as the user made it otherwise.
        for (const auto &[place, fitted] :
             {std::pair(QRect(50, 60, 400, 300), false), {QRect(50, 60, 3000, 300), true}}) {
            window->setGeometry(place);
            kvn.window(Panel)->close();
            kvn.openPanel();
            QCOMPARE(window->size() != place.size(), fitted);
            QVERIFY(screen.contains(window->frameGeometry()));
        }
    }

    void unitsShowWholeNames() {
        ProgramFixture kvn;
        for (int unit = 1; unit <= 8; ++unit)
            kvn.files.contentsOf["program/KVNConfigurator.ini"] +=
                "KVN NAME = Main auditorium, west wing, ground floor, rack " +
                std::to_string(unit) + (unit == 8 ? std::string(200, '<') : "") +
                "\r\nKVN TYPE = SERIAL\r\n";
        kvn.program.unitsForm.LoadForm();
        kvn.windows.refresh();
        const QSize opened = kvn.window(Units)->size();
        kvn.click(Units, "OptionsCommand_1");
        QCoreApplication::processEvents();
        for (const char *const name : {"AvailCorvanesList", "ConnectChoiceList"}) {
            const auto *list = kvn.part<QListWidget>(Units, name);
            QCOMPARE(list->horizontalScrollBar()->maximum(), 0);
            QCOMPARE(list->verticalScrollBar()->maximum(), 0);
        }
        // Only a name that is cut is told by the pointer.
        auto *units = kvn.part<QListWidget>(Units, "AvailCorvanesList");
        for (const int row : {0, 7}) {
            const QPoint at = units->visualItemRect(units->item(row)).center();
            QHelpEvent pointed(QEvent::ToolTip, at, units->viewport()->mapToGlobal(at));
            QCoreApplication::sendEvent(units->viewport(), &pointed);
            QCOMPARE(QToolTip::text()
                         .remove(QChar(0x200B))
                         .contains(units->item(row)->text().toHtmlEscaped()),
                     row == 7);
            for (const QWidget *tip : QApplication::topLevelWidgets())
                QVERIFY(!tip->inherits("QTipLabel") || tip->width() < 700);
        }
        kvn.click(Units, "CancelCommand");
        QCoreApplication::processEvents();
        QCOMPARE(kvn.window(Units)->size(), opened);
    }

    void followTheDesktopsLightAndFont() {
        std::map<QString, QSize> designed;
        const auto desktopIs = [](bool dark) {
            QApplication::setPalette(dark ? QPalette(QColor(49, 54, 59), QColor(42, 46, 50))
                                          : QPalette(QColor(224, 224, 224), QColor(239, 239, 239)));
        };
        for (const auto &[started, dark, pixels] : {std::tuple(false, false, 12),
                                                    {true, true, 26},
                                                    {false, true, 26},
                                                    {true, false, 12}}) {
            desktopIs(started);
            QFont font = QApplication::font();
            font.setPixelSize(pixels);
            QApplication::setFont(font);
            ProgramFixture kvn;
            kvn.openPanel();
            kvn.program.panelForm.presetsForm().LoadForm();
            for (FormView *form : kvn.program.views.forms())
                form->loaded = true;
            kvn.windows.refresh();
            desktopIs(dark);
            QCoreApplication::processEvents();
            for (QWidget *window : QApplication::topLevelWidgets()) {
                if (!dynamic_cast<Window *>(window) || !window->isVisible())
                    continue;
                const QString windowName = window->objectName();
                const bool panel = windowName == QLatin1String(Panel);
                const QSize size = designed.try_emplace(windowName, window->size()).first->second;
                const bool limited = panel || windowName == QLatin1String(Units) ||
                                     windowName == QLatin1String("dlgPresets");
                const QSize screen = window->screen()->availableSize();
                QVERIFY2(limited ? window->width() <= screen.width() &&
                                       window->height() <= screen.height()
                                 : pixels == 12 || (window->width() >= size.width() * 1.8 &&
                                                    window->height() >= size.height() * 1.7),
                         qPrintable(windowName));
                const QColor ground(QString::fromStdString(pixel(window, 0, window->height() - 1)));
                QVERIFY2((ground.lightness() < 64) == dark && ground.lightness() != 0,
                         qPrintable(windowName));
                for (const QWidget *part : window->findChildren<QWidget *>()) {
                    const auto colour = [part](QPalette::ColorRole role) {
                        return part->palette().color(role);
                    };
                    const QString text = part->property("text").toString();
                    bool right = true;
                    if (part->inherits("QPushButton"))
                        right = (panel || colour(QPalette::Button) == QColor(224, 224, 224)) &&
                                (!part->isVisible() ||
                                 part->fontMetrics().horizontalAdvance(text) < part->width());
                    else if (part->inherits("QLabel") && part->isEnabled())
                        right =
                            differ(colour(QPalette::WindowText),
                                   part->autoFillBackground() ? colour(QPalette::Window) : ground);
                    else if (const auto *box = qobject_cast<const QLineEdit *>(part)) {
                        // Only what takes typing looks like it.
                        const QColor field = colour(QPalette::Base);
                        right = (field != ground) == (box->isEnabled() && !box->isReadOnly()) &&
                                (!box->isEnabled() || differ(colour(QPalette::Text), field));
                    }
                    QVERIFY2(right, qPrintable(windowName + u' ' + part->objectName()));
                }
            }
            auto *picture = kvn.part("frmAbout", "picIcon"); // between the points:
            QCOMPARE(picture->accessibleName(), QStringLiteral("Corvane Controller 1.14"));
            QCOMPARE(pixel(picture, picture->width() * 3 / 8, picture->height() * 3 / 8),
                     std::string("#263242"));
            QCOMPARE(QApplication::palette("QMenu").color(QPalette::Window).lightness() < 64, dark);
        }
    }

    void saysThatThereIsNoFont() {
        QTemporaryFile settings;
        QVERIFY(settings.open() && settings.write("<fontconfig></fontconfig>") && settings.flush());
        QProcess program;
        QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
        environment.insert(QStringLiteral("FONTCONFIG_FILE"), settings.fileName());
        program.setProcessEnvironment(environment);
        program.start(qEnvironmentVariable("KVN_BIN") + QStringLiteral("/KVNController"), {});
        QVERIFY(program.waitForFinished());
        QCOMPARE(program.exitCode(), 1);
        QVERIFY(program.readAllStandardError().contains("no font is installed"));
    }
};

QTEST_MAIN(FitTest)
#include "FitTest.moc"
