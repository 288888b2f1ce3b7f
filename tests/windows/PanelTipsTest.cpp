#include "Lamp.h"
#include "support/ProgramFixture.h"

#include <QHelpEvent>
#include <QTextDocument>
#include <QtTest/QtTest>

namespace {

constexpr const char *Panel = "KVN32x32Audio";

/// Rests the pointer on a control; the tip that comes, if any.
QWidget *tipOn(QWidget *control) {
    QWidget *sheet = control->parentWidget();
    const QPoint at = control->geometry().center();
    QWidget *under = sheet->childAt(at); // the pointer goes through a lamp
    under = under ? under : sheet;
    QHelpEvent rest(QEvent::ToolTip, under->mapFrom(sheet, at), sheet->mapToGlobal(at));
    QApplication::sendEvent(under, &rest);
    for (QWidget *tip : QApplication::topLevelWidgets()) {
        if (tip->inherits("QTipLabel") && tip->isVisible())
            return tip;
    }
    return nullptr;
}

} // namespace

class PanelTipsTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void hideNoControl() {
        ProgramFixture kvn({.model = "KVN-32x32-RGBA"});
        kvn.openPanel();
        for (int output = 1; output <= 32; ++output)
            kvn.click(Panel, "OutputVidAudButtons_" + std::to_string(output));
        QWidget *const sheet = kvn.part(Panel, "TakeButton")->parentWidget();
        const int menu = kvn.window(Panel)->height() - sheet->height();
        for (const QSize size : {QSize(698, 518), QSize(931, 690), QSize(1862, 1380)}) {
            kvn.window(Panel)->resize(size + QSize(0, menu));
            QCoreApplication::processEvents();
            for (const char *const name :
                 {"InputVideoLamp_1", "InputAudioButtons_32", "OutputNumberLabel_1",
                  "OutputAudioIndicator_32", "OutputVolumeValue_17", "MuteButton_17",
                  "MuteButton_32", "OutputVidAudButtons_16", "TakeButton"}) {
                auto *control = kvn.part(Panel, name);
                QVERIFY2(!control->toolTip().isEmpty(), name);
                QWidget *tip = tipOn(control);
                QVERIFY2(tip, name);
                QCOMPARE(tip->property("text").toString(), control->toolTip());
                const QRect hidden(sheet->mapFromGlobal(tip->pos()), tip->size());
                for (const QWidget *other : sheet->findChildren<QWidget *>()) {
                    const bool used = !qobject_cast<const QLabel *>(other) && other->isVisible();
                    QVERIFY2(!used || !hidden.intersects(other->geometry()),
                             (name + (" hides " + other->objectName().toStdString())).c_str());
                }
                QVERIFY2(sheet->rect().contains(hidden), name);
            }
        }
        QWidget *last = tipOn(kvn.part(Panel, "TakeButton"));
        tipOn(kvn.part(Panel, "ExitButton"));
        QTRY_VERIFY(!last->isVisible());
    }

    void areToldToScreenReadersToo() {
        ProgramFixture kvn;
        kvn.openPanel();
        kvn.click(Panel, "InputAudioButtons_5");
        kvn.click(Panel, "OutputAudioButtons_7");
        auto *take = kvn.part(Panel, "TakeButton");
        QCOMPARE(take->accessibleDescription(), QStringLiteral("Input 5 to output 7, audio"));
        QCOMPARE(kvn.part(Panel, "InputAudioLamp_5")->accessibleDescription(),
                 QStringLiteral("lit"));
        kvn.click(Panel, "TakeButton");
        QVERIFY(take->toolTip().startsWith(QLatin1String("Pick ")));
        QCOMPARE(kvn.part(Panel, "MuteButton_7")->accessibleDescription(),
                 QStringLiteral("video from input 7, audio from input 5, volume -20, not muted"));
    }

    void showTextsAsTheyAre() {
        ProgramFixture kvn;
        kvn.openPanel();
        kvn.program.views.panel.InputVideoConnected[3].text = "<b>";
        kvn.windows.refresh();
        QTextDocument tip;
        tip.setHtml(kvn.part(Panel, "MuteButton_3")->toolTip());
        QVERIFY(tip.toPlainText().startsWith(QLatin1String("Output 3: video from input <b>, ")));
    }
};

QTEST_MAIN(PanelTipsTest)
#include "PanelTipsTest.moc"
