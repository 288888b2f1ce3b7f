#include "PanelLayout.h"
#include "ProgramLook.h"
#include "start/ProgramTitle.h"
#include "support/ProgramFixture.h"

#include <QListWidget>
#include <QProcess>
#include <QPushButton>
#include <QScreen>
#include <QScrollArea>
#include <QScrollBar>
#include <QTemporaryDir>
#include <QtTest/QtTest>

#include <cmath>

namespace {

constexpr const char *Panel = "KVN32x32Audio";
const std::string UnitsFile = "program/KVNConfigurator.ini";

/// How well one colour is told from another, 1 to 21, as the web's accessibility rules reckon it.
double contrast(const QColor &one, const QColor &other) {
    const auto light = [](const QColor &colour) {
        const auto linear = [](double part) {
            return part <= 0.04045 ? part / 12.92 : std::pow((part + 0.055) / 1.055, 2.4);
        };
        return 0.2126 * linear(colour.redF()) + 0.7152 * linear(colour.greenF()) +
               0.0722 * linear(colour.blueF());
    };
    const auto [darker, lighter] = std::minmax(light(one), light(other));
    return (lighter + 0.05) / (darker + 0.05);
}

QColor pixelOf(QWidget *widget, const QPoint &at) {
    return widget->grab(QRect(at, QSize(1, 1))).toImage().pixelColor(0, 0);
}

/// Shows every form that has nothing to wait for, and the panel.
void showAll(ProgramFixture &kvn) {
    kvn.openPanel();
    for (Form *form : std::initializer_list<Form *>{
             &kvn.program.connectForm, &kvn.program.aboutForm, &kvn.program.setupForm,
             &kvn.program.helpForms.at(0), &kvn.program.messages.dlgOK(),
             &kvn.program.messages.dlgYesNo(), &kvn.program.panelForm.presetsForm()})
        form->present();
    kvn.program.unitsForm.LoadForm();
    kvn.windows.refresh();
    QCoreApplication::processEvents();
}

QWidgetList openWindows() {
    QWidgetList all;
    for (QWidget *window : QApplication::topLevelWidgets()) {
        if (dynamic_cast<Window *>(window) && window->isVisible())
            all.push_back(window);
    }
    return all;
}

} // namespace

class FitTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void init() {
        QApplication::setPalette(QPalette(QColor(224, 224, 224), QColor(239, 239, 239)));
        QFont font = QApplication::font();
        font.setPixelSize(12);
        QApplication::setFont(font);
    }

    void opensAsLargeAsThereIsRoom() {
        struct Row {
            QSize room;
            double screenPixels; ///< to a logical one
            QSize size;
        };
        for (const Row &row :
             {Row{{931, 690}, 1.0, {931, 690}},
              {{1366, 720}, 1.0, {971, 720}},
              {{908, 466}, 1.5, {628, 466}},
              {{3838, 2100}, 1.0, {1862, 1380}},
              {{1918, 1030}, 2.0, {1389, 1030}},
              {{1080, 1870}, 1.0, {1080, 800}},
              {{2000, 400}, 1.0, {592, 400}}, // scrolls: 7 pixels of a font are 0.636
              {{300, 300}, 1.0, {300, 300}},
              {{300, 300}, 2.0, {300, 222}}})
            QCOMPARE(openingSize(row.room, smallestScale(row.screenPixels)), row.size);
    }

    void cardsEndBelowTheRowsInUse() {
        struct Row {
            const char *model;
            int inputs, outputs; ///< heights in twips
        };
        for (const Row &row : {Row{"KVN-8x4-RGBA", 1350, 2235},
                               {"KVN-16x16-RGB", 1110, 1875},
                               {"KVN-24x16-RGB", 2550, 1875},
                               {"KVN-32x32-RGBA", 2790, 4395}}) {
            ProgramFixture kvn({.model = row.model});
            kvn.openPanel();
            const PanelView &view = kvn.program.views.panel;
            for (const auto &[side, height] :
                 {std::pair(Side::Input, row.inputs), {Side::Output, row.outputs}}) {
                const TwipRect card = cardOf(side, view);
                QCOMPARE(card.height, height);
                auto *sheet = kvn.part(Panel, "TakeButton")->parentWidget();
                const QRect drawn = onSheet(card, sheet->size());
                const QPoint edge(drawn.center().x(), drawn.bottom());
                QCOMPARE(pixelOf(sheet, edge - QPoint(0, 5)), QColor(250, 251, 252));
                QCOMPARE(pixelOf(sheet, edge + QPoint(0, 5)), QColor(238, 240, 243));
            }
        }
        PanelView none;
        for (const SlotArray &array : SlotArrays)
            (none.*array.controls).fill({.visible = false});
        QVERIFY(cardOf(Side::Input, none) == TwipRect{});
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

    void nothingCutsTheRingOrTheMark() {
        ProgramFixture kvn({.model = "KVN-32x32-RGBA"});
        kvn.openPanel();
        auto *window = kvn.window(Panel);
        auto *sheet = kvn.part(Panel, "TakeButton")->parentWidget();
        const int menu = window->height() - sheet->height();
        for (const double scale : {0.75, 1.0, 2.0}) {
            window->resize(sheetSize(scale) + QSize(0, menu));
            QCoreApplication::processEvents();
            for (const char *const name :
                 {"InputVideoAudioButtons_3", "InputVideoButtons_18", "InputAudioButtons_1",
                  "InputVideoConnected_7", "InputAudioConnected_32", "OutputVolumeValue_5"}) {
                auto *control = kvn.part(Panel, name);
                control->setFocus();
                const QRect at = control->geometry();
                for (const QPoint &edge :
                     {QPoint(at.left(), at.center().y()), QPoint(at.right(), at.center().y()),
                      QPoint(at.center().x(), at.top()), QPoint(at.center().x(), at.bottom())})
                    QVERIFY2(pixelOf(sheet, edge) == QColor(0, 95, 184), name);
            }
        }
        kvn.part(Panel, "ExitButton")->setFocus();
        kvn.click(Panel, "InputVideoAudioButtons_3");
        for (const auto &[name, marked] :
             {std::pair("InputVideoAudioButtons_3", true), {"InputVideoAudioButtons_4", false}}) {
            auto *button = kvn.part(Panel, name);
            const QColor inside = pixelOf(button, QPoint(button->width() / 2, 3));
            QCOMPARE(contrast(inside, QColor(224, 224, 224)) > 7, marked);
        }
    }

    void followsTheDesktopsLight() {
        for (const bool dark : {false, true}) {
            if (dark)
                QApplication::setPalette(QPalette(QColor(49, 54, 59), QColor(42, 46, 50)));
            ProgramFixture kvn;
            showAll(kvn);
            QCOMPARE(openWindows().size(), 10);
            for (QWidget *window : openWindows()) {
                const QByteArray name = window->objectName().toLatin1();
                const QColor ground = pixelOf(window, window->rect().bottomLeft());
                QVERIFY2((ground.lightness() < 64) == dark && ground.lightness() != 0, name);
                for (const auto *button : window->findChildren<QPushButton *>())
                    QVERIFY2(name == Panel ||
                                 button->palette().color(QPalette::Button) == QColor(224, 224, 224),
                             name);
                for (const QLabel *label : window->findChildren<QLabel *>()) {
                    const QColor behind = label->autoFillBackground()
                                              ? label->palette().color(QPalette::Window)
                                              : ground;
                    const QColor ink = label->palette().color(QPalette::WindowText);
                    QVERIFY2(!label->isEnabled() || contrast(ink, behind) >= 3.9, name);
                }
                for (const QLineEdit *box : window->findChildren<QLineEdit *>()) {
                    const QColor field = box->palette().color(QPalette::Base);
                    QVERIFY2(!box->isEnabled() ||
                                 contrast(box->palette().color(QPalette::Text), field) > 7,
                             name);
                    // Only what takes typing looks like it.
                    QVERIFY2((field != ground) == (box->isEnabled() && !box->isReadOnly()),
                             box->objectName().toLatin1());
                }
            }
            QVERIFY((QApplication::palette("QMenu").color(QPalette::Window).lightness() < 64) ==
                    dark);
        }
    }

    void windowsGrowWithTheFont() {
        std::map<QString, QSize> designed;
        for (const int pixels : {12, 26}) {
            QFont font = QApplication::font();
            font.setPixelSize(pixels);
            QApplication::setFont(font);
            ProgramFixture kvn;
            showAll(kvn);
            for (const QWidget *window : openWindows()) {
                const QString name = window->objectName();
                const QSize size = designed.try_emplace(name, window->size()).first->second;
                const bool limited = name == QLatin1String(Panel) || name == QLatin1String(Units);
                if (pixels == 26 && !limited)
                    QVERIFY2(window->width() >= size.width() * 1.8 &&
                                 window->height() >= size.height() * 1.7,
                             name.toLatin1());
                for (const QPushButton *button : window->findChildren<QPushButton *>())
                    QVERIFY2(!button->isVisible() || button->fontMetrics().horizontalAdvance(
                                                         button->text()) < button->width(),
                             button->objectName().toLatin1());
            }
        }
    }

    void unitsShowWholeNames() {
        ProgramFixture kvn;
        for (int unit = 1; unit <= 8; ++unit)
            kvn.files.contentsOf[UnitsFile] +=
                "KVN NAME = Main auditorium, west wing, ground floor, rack " +
                std::to_string(unit) + "\r\nKVN TYPE = SERIAL\r\n";
        kvn.program.unitsForm.LoadForm();
        kvn.windows.refresh();
        kvn.click(Units, "OptionsCommand_1");
        QCoreApplication::processEvents();
        for (const char *const name : {"AvailCorvanesList", "ConnectChoiceList"}) {
            const auto *list = kvn.part<QListWidget>(Units, name);
            QCOMPARE(list->horizontalScrollBar()->maximum(), 0);
            QCOMPARE(list->verticalScrollBar()->maximum(), 0);
        }
    }

    void aboutShowsTheProgram() {
        ProgramFixture kvn;
        kvn.program.aboutForm.present();
        kvn.windows.refresh();
        auto *picture = kvn.part("frmAbout", "picIcon");
        QCOMPARE(picture->accessibleName(), QLatin1String(ProgramTitle));
        QCOMPARE(pixelOf(picture, picture->rect().center()),
                 QColor(38, 50, 66)); // between the points
    }

    void saysThatThereIsNoFont() {
        const QTemporaryDir folder;
        QFile settings(folder.filePath(QStringLiteral("fonts.conf")));
        QVERIFY(settings.open(QIODevice::WriteOnly));
        settings.write("<fontconfig></fontconfig>");
        settings.close();
        QProcess program;
        QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
        environment.insert(QStringLiteral("FONTCONFIG_FILE"), settings.fileName());
        program.setProcessEnvironment(environment);
        program.start(qEnvironmentVariable("KVN_BIN") + QStringLiteral("/KVNController"), {});
        QVERIFY(program.waitForFinished());
        QCOMPARE(program.exitCode(), 1);
        QVERIFY(program.readAllStandardError().contains("no font is installed"));
    }

private:
    static constexpr const char *Units = "dlgControlExisting";
};

QTEST_MAIN(FitTest)
#include "FitTest.moc"
