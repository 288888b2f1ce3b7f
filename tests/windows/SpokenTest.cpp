#include "hands.h"
#include "support/checkRows.h"

#include <QAccessible>
#include <QMetaEnum>

#include <set>

/// What a screen reader is told.
class SpokenTest : public QObject {
    Q_OBJECT

    ProgramFixture kvn{{.model = "KVN-32x32-RGBA"}};
    Views &views = kvn.program.views;

private Q_SLOTS:
    void initTestCase();
    void namesEveryControl();
    void tellsWhatThingsAre();
    void pressesWhatCanBePressed();
    void speaksWhatChangesElsewhere();
};

namespace {

constexpr const char *Panel = "KVN32x32Audio";

QAccessibleInterface *spoken(QObject *object) {
    return QAccessible::queryAccessibleInterface(object);
}

std::string nameOf(QObject *object) {
    return spoken(object)->text(QAccessible::Name).toStdString();
}

/// What the windows hold to be spoken, with a bar behind each; it is gone then.
std::string notices() {
    std::string all;
    for (QWidget *window : QApplication::topLevelWidgets()) {
        for (auto *part : window->findChildren<QWidget *>(Qt::FindDirectChildrenOnly)) {
            if (spoken(part)->role() != QAccessible::Notification || nameOf(part).empty())
                continue;
            all += nameOf(part) + "|";
            part->setAccessibleName(QString());
        }
    }
    return all;
}

/// Everything below `parent` that is seen and that a user can meet.
void walk(QAccessibleInterface *parent, const std::function<void(QAccessibleInterface &)> &meet) {
    static const std::set<QAccessible::Role> grounds{QAccessible::Client, QAccessible::MenuBar,
                                                     QAccessible::Notification};
    for (int index = 0; index < parent->childCount(); ++index) {
        QAccessibleInterface *child = parent->child(index);
        if (!child || child->state().invisible)
            continue;
        if (!grounds.contains(child->role()))
            meet(*child);
        walk(child, meet);
    }
}

} // namespace

void SpokenTest::initTestCase() {
    kvn.openPanel();
    kvn.program.panelForm.presetsForm().LoadForm();
    for (FormView *form : views.forms())
        form->loaded = true;
    views.connect.IPAddressFrame.visible = views.connect.SerialConnectionFrame.visible = true;
    views.units.AddCorvaneFrame.visible = views.units.IPAddressFrame.visible = true;
    views.units.AvailCorvanesList.entries.resize(30, "A"); // more than there is room for
    kvn.windows.refresh();
    notices();
}

void SpokenTest::namesEveryControl() {
    std::size_t met = 0;
    for (QWidget *window : QApplication::topLevelWidgets()) {
        std::set<QString> frames;
        const auto meet = [&](QAccessibleInterface &control) {
            const QString name = control.text(QAccessible::Name);
            const QString object = control.object() ? control.object()->objectName() : name;
            ++met;
            QVERIFY2(!name.trimmed().isEmpty(), qPrintable(window->objectName() + u' ' + object));
            QVERIFY2(control.role() != QAccessible::Grouping || frames.insert(name).second,
                     qPrintable(object));
        };
        if (!window->isVisible())
            continue;
        meet(*spoken(window));
        walk(spoken(window), meet);
    }
    QVERIFY2(met > 32 * 16 + 32 + 60, qPrintable(QString::number(met)));
}

void SpokenTest::tellsWhatThingsAre() {
    views.connect.SerialPortsCombo.entries = {"Comm3", "Comm7"};
    views.connect.SerialPortsCombo.chosen = 1;
    views.connect.SerialPortsCombo.control.description = views.messages.dlgOK.OKLabel.description =
        "why";
    views.messages.dlgOK.OKLabel.text = "Failed.";
    views.connect.ConnectIPOption.lit = true;
    views.messages.dlgYesNo.YesNoText.text = "Sure?";
    views.panel.MuteButton[3].face = Face::Muted;
    views.panel.MuteButton[4].face = Face::Unmuted;
    views.presets.NewPresetButton[5].face = Face::Chosen;
    kvn.windows.refresh();
    // clang-format off
    checkRows({{"frmMain", "Window Corvane Controller 1.14"}, {"KVN32x32Audio", "Window Corvane Control Panel"},
               {"dlgConnect", "Dialog Connect to Zarn-Lt"}, {"dlgControlExisting", "Dialog Control Existing Corvane"},
               {"dlgPresets", "Dialog Preset Handler"}, {"dlgSetup", "Dialog Initializing Display"},
               {"frmAbout", "Dialog About Corvane Controller 1.14"}, {"dlgYesNo", "AlertMessage Question: Sure?"},
               {"dlgOK", "AlertMessage Confirm: Failed.\nwhy"},
               {"dlgInputConnect", "Dialog How to Connect Inputs to Outputs"},
               {"KVN32x32Audio HlpFiles", "PopupMenu Help Files"},
               {"KVN32x32Audio InputVideoLamp_3", "Graphic Input 3 video lamp: unlit"},
               {"dlgPresets NewPresetButton_5", "Button Preset 5 on"}, {"dlgPresets NewPresetButton_6", "Button Preset 6 off"},
               {"dlgConnect ConnectIPOption", "RadioButton Ethernet on"}, {"dlgConnect SerialPortsCombo", "ComboBox Serial ports: Comm7. why"},
               {"frmMain ZarnConnectedLabel", "StaticText Connected on COM7"}},
              [](const std::string &names) {
                  const std::size_t blank = names.find(' ');
                  QWidget *window = ProgramFixture::window(names.substr(0, blank));
                  QAccessibleInterface *thing = spoken(blank == std::string::npos ? window
                      : window->findChild<QWidget *>(QString::fromStdString(names.substr(blank + 1))));
                  QString all = QLatin1String(QMetaEnum::fromType<QAccessible::Role>().valueToKey(thing->role()));
                  all += u' ' + thing->text(QAccessible::Name);
                  all += thing->state().checkable ? QLatin1String(thing->state().checked ? " on" : " off") : QLatin1String();
                  const QString description = thing->text(QAccessible::Description);
                  return (description.isEmpty() ? all : all + QStringLiteral(": ") + description).toStdString();
              });
    // clang-format on
    for (const int slot : {3, 4})
        QCOMPARE(spoken(kvn.part(Panel, "MuteButton_" + std::to_string(slot)))->state().checked,
                 slot == 3 ? 1U : 0U);
}

void SpokenTest::pressesWhatCanBePressed() {
    const QString press = QAccessibleActionInterface::pressAction();
    const auto actions = [](const char *window, const char *name) {
        return spoken(ProgramFixture::part(window, name))->actionInterface();
    };
    kvn.takeWritten();
    actions(Panel, "MuteButton_3")->doAction(press);
    QTRY_COMPARE(kvn.serialPort.wire.written, std::string("MUT M 3\rSTA O A\rSTA O A\r"));
    QVERIFY(!actions(Panel, "ZarnConnectedLabel")->actionNames().contains(press));
    QVERIFY(actions("frmMain", "ZarnConnectedLabel")->actionNames().contains(press));
    actions("frmMain", "ZarnConnectedLabel")->doAction(press);
    QTRY_VERIFY(!kvn.serialPort.isOpen());
    QAccessibleInterface *ports = spoken(kvn.part("dlgConnect", "SerialPortsCombo"));
    for (const bool open : {true, false}) {
        ports->actionInterface()->doAction(press);
        QCOMPARE(ports->state().expanded != 0U, open);
    }
}

void SpokenTest::speaksWhatChangesElsewhere() {
    const auto heard = [this] {
        kvn.windows.refresh();
        return notices();
    };
    const auto says = [&](Control &control, const char *text) {
        control.visible = true;
        control.text = text;
        return heard();
    };
    Control &volume = views.panel.OutputVolumeLabel;
    Control &take = views.panel.TakeButton;
    heard();
    QCOMPARE(says(volume, "Wait..."), std::string("Wait...|"));
    QCOMPARE(says(volume, "Output 3 volume"), std::string("Output 3 volume|"));
    Control &progress = views.connect.Label2;
    QCOMPARE(says(progress, "Connecting to 1.2.3.4"), std::string("Connecting to 1.2.3.4|"));
    QCOMPARE(says(progress, "Connecting to 1.2.3.4 . ."), std::string()); // goes on
    take.face = Face::Busy;
    QCOMPARE(heard(), std::string());
    take.face = Face::Neutral;
    QCOMPARE(heard(), std::string("TAKE finished|"));
    views.main.status.caption = views.panel.status.caption = "Lost";
    QCOMPARE(heard(), std::string("Lost|")); // once, though two windows show it
    views.panel.form.loaded = false;
    heard();
    views.panel.status.caption = "Nobody sees it";
    QCOMPARE(heard(), std::string());
}

QTEST_MAIN(SpokenTest)
#include "SpokenTest.moc"
