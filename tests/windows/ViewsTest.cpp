#include "hands.h"
#include "panel/PanelControls.h"
#include "support/rows.h"

#include <QAccessible>
#include <QMetaEnum>

#include <optional>
#include <set>

namespace {

constexpr const char *Panel = "KVN32x32Audio";

// clang-format off
/// A window, or a control in it, and the role, name, state and description that are spoken.
constexpr const char *Spoken = R"(frmMain = Window Corvane Controller 1.14; KVN32x32Audio = Window Corvane Control Panel
dlgConnect = Dialog Connect to Zarn-Lt; dlgControlExisting = Dialog Control Existing Corvane
dlgPresets = Dialog Preset Handler; dlgSetup = Dialog Initializing Display; frmAbout = Dialog About Corvane Controller 1.14
frmAbout picIcon = Graphic Corvane Controller 1.14; dlgYesNo = AlertMessage Question:Sure?; dlgOK = AlertMessage Confirm:Failed./why
dlgInputConnect = Dialog How to Connect Inputs to Outputs; KVN32x32Audio HlpFiles = PopupMenu Help Files
KVN32x32Audio InputVideoLamp_3 = Graphic Input 3 video lamp:unlit; frmMain ZarnConnectedLabel = StaticText Connected on COM7
KVN32x32Audio MuteButton_3 = Button Output 3 mute on:video from input 3, audio from input 3, volume -20, muted
KVN32x32Audio MuteButton_4 = Button Output 4 mute off:video from input 4, audio from input 4, volume -20, not muted
KVN32x32Audio InputVideoButtons_5 = Button Input 5 video on:video to output 5, audio to output 5
KVN32x32Audio InputVideoButtons_6 = Button Input 6 video off:video to output 6, audio to output 6
dlgPresets NewPresetButton_5 = Button Preset 5 on; dlgPresets NewPresetButton_6 = Button Preset 6 off
dlgConnect ConnectIPOption = RadioButton Ethernet on; dlgConnect SerialPortsCombo = ComboBox Serial ports:Comm7. why
dlgConnect ZarnConnectedImage = Graphic Link up; dlgConnect ZarnNotConnectedImage = Graphic Link down
dlgControlExisting Text3 = EditableText Unit name
dlgControlExisting AvailCorvanesList = List Saved units; dlgControlExisting ConnectChoiceList = List Connection kind
dlgControlExisting ControlledbyText = EditableText Controlled via)";

// clang-format on

QAccessibleInterface *spoken(QObject *object) {
    return QAccessible::queryAccessibleInterface(object);
}

/// The window of that name, or with a second word a control in it.
QAccessibleInterface *spokenAt(const std::string &names) {
    const QStringList words = QString::fromStdString(names).split(u' ');
    QWidget *window = ProgramFixture::window(words[0].toStdString());
    return spoken(words.size() == 1 ? window : window->findChild<QWidget *>(words[1]));
}

/// What the windows hold to be spoken, with a bar behind each; it is gone then.
std::string notices() {
    std::string all;
    for (QWidget *window : QApplication::topLevelWidgets()) {
        for (auto *part : window->findChildren<QWidget *>(Qt::FindDirectChildrenOnly)) {
            const std::string text = part->accessibleName().toStdString();
            if (spoken(part)->role() != QAccessible::Notification || text.empty())
                continue;
            all += text + "|";
            part->setAccessibleName(QString());
        }
    }
    return all;
}

/// Everything that is seen, from `thing` on, and that a user can meet.
std::vector<QAccessibleInterface *> met(QAccessibleInterface *thing) {
    std::vector<QAccessibleInterface *> all;
    if (!thing || thing->state().invisible)
        return all;
    if (!std::set{QAccessible::Client, QAccessible::Notification}.contains(thing->role()))
        all.push_back(thing);
    for (int index = 0; index < thing->childCount(); ++index) {
        const auto below = met(thing->child(index));
        all.insert(all.end(), below.begin(), below.end());
    }
    return all;
}

/// What a control should look like.
std::string wanted(const QWidget *widget, const Control &control) {
    static constexpr const char *Faces[] = {" #e0e0e0", " #ff8080", " #d6f1c2", " #f7a69d",
                                            " #d6f1c2"};
    const bool hasText = widget->property("text").isValid() || widget->inherits("QGroupBox");
    std::string all = hasText ? QString::fromLatin1(control.text).toStdString() : "";
    all += control.visible ? "" : " hidden";
    all += control.enabled ? "" : " greyed";
    if (widget->inherits("QPushButton"))
        all += widget->isEnabled() && widget->isVisible() ? Faces[int(control.face)] : "";
    else if (widget->inherits("QRadioButton") || dynamic_cast<const Lamp *>(widget))
        all += control.lit ? " lit" : "";
    return all;
}

// clang-format off
/// The names of controls and where they are.
#define LISTED(...) #__VA_ARGS__, {__VA_ARGS__}
// clang-format on

} // namespace

/// Each window shows what its view says, and tells it to screen readers.
class ViewsTest : public QObject {
    Q_OBJECT

    std::optional<ProgramFixture> kvn;

    /// Gives the controls of those names looks that differ from one to the next and from one round
    /// to the next.
    template <class View>
    void check(const char *window, View &view, const QByteArray &names,
               const std::vector<Control *> &controls) {
        const View before = view;
        view.form.loaded = true;
        for (int round = 0; round < 3; ++round) {
            int number = round;
            for (Control *control : controls) {
                const std::string count = std::to_string(++number);
                *control = {.text = "<b>" + count + "\xE4",
                            .visible = number % 3 != 0,
                            .enabled = number % 4 != 0,
                            .lit = number % 2 != 0,
                            .face = static_cast<Face>(number % 5),
                            .toolTip = round == 1 ? "" : "<b>\u20AC\n" + count,
                            .description = round == 1 ? "" : "<i>" + count};
            }
            kvn->windows.refresh();
            QStringList words =
                QString::fromLatin1(names)
                    .remove(QRegularExpression(QStringLiteral("&\\w+.|\\.control|\\]")))
                    .replace(u'[', u'_')
                    .split(QStringLiteral(", "));
            for (const Control *control : controls) {
                const std::string name = words.takeFirst().toStdString();
                QWidget *widget = kvn->part(window, name);
                QCOMPARE(name + ": " + look(widget), name + ": " + wanted(widget, *control));
                if (!dynamic_cast<Lamp *>(widget) && name != "KVNNameLabel")
                    QCOMPARE(hints(widget), control->toolTip + "/" + control->description);
            }
        }
        view = before;
        kvn->windows.refresh();
    }

private Q_SLOTS:
    void init() { kvn.emplace(UnitOptions{.model = "KVN-32x32-RGBA"}); }

    void showListsAndAddresses() {
        ConnectView &connect = kvn->program.views.connect;
        UnitsView &units = kvn->program.views.units;
        const auto addresses = {&connect.IPAddressQuadConnect, &units.CntrlIPAddressQuad};
        for (auto *address : addresses) {
            for (std::size_t box = 0; box < 4; ++box)
                address->boxes.at(box).text = std::to_string(10 + box);
            address->cursor = {2, 1, 2};
            address->cursorMoved = 1; // before there was a window: nothing to repeat
        }
        connect.form.loaded = units.form.loaded = true;
        const auto lists = {&connect.SerialPortsCombo, &units.AvailCorvanesList,
                            &units.ConnectChoiceList};
        const auto shows = [&](const std::string &boxes, const std::string &list) {
            kvn->windows.refresh();
            QCOMPARE(addressIn("dlgConnect") + " " + addressIn("dlgControlExisting"), boxes);
            QCOMPARE(entries(kvn->part("dlgConnect", "SerialPortsCombo")), list);
            for (const char *const name : {"AvailCorvanesList", "ConnectChoiceList"})
                QCOMPARE(entries(kvn->part("dlgControlExisting", name)), list);
        };
        shows("10.11.12.13 10.11.12.13", "");
        for (int box = 0; box < 4; ++box)
            QCOMPARE(kvn->part("dlgConnect", "IPAddressQuadConnect_" + std::to_string(box))
                         ->accessibleName(),
                     QStringLiteral("Address part %1").arg(box + 1));
        for (ListControl *list : lists)
            *list = {.entries = {"<b>1", "\xE4"}, .chosen = 1};
        for (auto *address : addresses)
            ++address->cursorMoved;
        shows("10.11.1[2]*.13 10.11.1[2]*.13", " <b>1 [\u00E4]");
        for (ListControl *list : lists)
            list->chosen = -1;
        kvn->part("dlgConnect", "ConnectIPOption")->setFocus(); // by the user
        units.CntrlIPAddressQuad.cursor = {0, 1, 1};
        ++units.CntrlIPAddressQuad.cursorMoved;
        shows("10.11.1[2].13 10*.11.1[2].13", " <b>1  \u00E4 ");
    }

    void showTheLink() {
        Views &views = kvn->program.views;
        for (const auto &[window, form, status] :
             {std::tuple("frmMain", &views.main.form, &views.main.status),
              {"dlgConnect", &views.connect.form, &views.connect.status},
              {"dlgControlExisting", &views.units.form, &views.units.status},
              {Panel, &views.panel.form, &views.panel.status}}) {
            form->loaded = true;
            for (const auto &[colour, colours] :
                 {std::pair(LinkColour::ButtonFace, "#e0e0e0 #1c2128"),
                  {LinkColour::NetworkUp, "#ff8000 #1c2128"},
                  {LinkColour::SerialUp, "#00c000 #ffffff"},
                  {LinkColour::SerialDown, "#c00000 #ffffff"},
                  {LinkColour::NotConnected, "#ff0000 #ffffff"}}) {
                const bool hidden = colour == LinkColour::SerialUp;
                *status = {"<b>" + std::string(colours), colour, !status->linkUp, !hidden};
                kvn->windows.refresh();
                auto *label = kvn->part(window, "ZarnConnectedLabel");
                QCOMPARE(look(label), status->caption + (hidden ? " hidden" : ""));
                const QString ink = label->palette().windowText().color().name();
                QCOMPARE(pixel(label, 1, 1) + " " + ink.toStdString(), std::string(colours));
                for (const bool up : {true, false}) {
                    auto *image =
                        kvn->part(window, up ? "ZarnConnectedImage" : "ZarnNotConnectedImage");
                    const std::string plug =
                        pixel(image, image->width() * 20 / 56, image->height() / 2);
                    const std::string middle =
                        pixel(image, image->width() / 2, image->height() * 11 / 28);
                    QCOMPARE(plug, std::string(up ? "#148c3c" : "#b02828"));
                    QCOMPARE(image->isHidden() ? "hidden"
                             : middle == plug  ? "joined"
                                               : "apart",
                             up != status->linkUp ? "hidden"
                             : up                 ? "joined"
                                                  : "apart");
                }
            }
        }
    }

    void showTheirControls() {
        auto &[main, messages, c, u, panel, presets, setup, about, help] = kvn->program.views;
        check("frmMain", main,
              LISTED(&main.MainControlButton_0, &main.MainControlButton_2,
                     &main.ToDisconnectPortLabel));
        check("dlgConnect", c,
              LISTED(&c.Frame1, &c.ConnectIPOption, &c.ConnectSerialOption, &c.IPAddressFrame,
                     &c.Connect2IPButton, &c.Label2, &c.SerialConnectionFrame, &c.Label1,
                     &c.SerialPortsCombo.control, &c.Connect2SerialButton));
        check("dlgControlExisting", u,
              LISTED(&u.OptionsFrame, &u.OptionsCommand[0], &u.OptionsCommand[1],
                     &u.OptionsCommand[2], &u.OptionsCommand[3], &u.OKButton, &u.AddCorvaneFrame,
                     &u.Label2_0, &u.Label2_1, &u.Text3, &u.AvailCorvanesList.control, &u.Label3,
                     &u.ConnectChoiceList.control, &u.ControlledbyText, &u.IPAddressFrame,
                     &u.AddCorvaneCommand, &u.CancelCommand, &u.StatusLabel));
        QByteArray names = "ExecutePresetButton, ExitPresets";
        std::vector<Control *> controls{&presets.ExecutePresetButton, &presets.ExitPresets};
        for (int preset = 1; preset <= 32; ++preset) {
            names += ", NewPresetButton_" + QByteArray::number(preset);
            controls.push_back(&presets.NewPresetButton[preset]);
        }
        check("dlgPresets", presets, names, controls);
        names.clear();
        controls.clear();
        for (const SingleControl &single : SingleControls) {
            names += single.name + QByteArray(", ");
            controls.push_back(&(panel.*single.control));
        }
        for (int number = 0; number < 16 * 32; ++number) {
            const SlotArray &array = SlotArrays.at(std::size_t(number / 32));
            names += array.name + ("_" + QByteArray::number(number % 32 + 1)) + ", ";
            controls.push_back(&(panel.*array.controls)[number % 32 + 1]);
        }
        check(Panel, panel, names, controls);
    }

    void areSpokenAndPressed() {
        Views &views = kvn->program.views;
        kvn->openPanel();
        kvn->click(Panel, "InputVideoButtons_5");
        kvn->program.panelForm.presetsForm().LoadForm();
        for (FormView *form : views.forms())
            form->loaded = true;
        views.connect.IPAddressFrame.visible = views.connect.SerialConnectionFrame.visible = true;
        views.units.AddCorvaneFrame.visible = views.units.IPAddressFrame.visible = true;
        views.units.AvailCorvanesList.entries.resize(30, "A"); // more than there is room for
        kvn->windows.refresh();
        std::size_t count = 0;
        for (QWidget *window : QApplication::topLevelWidgets()) {
            std::set<QString> frames;
            for (QAccessibleInterface *thing : met(spoken(window))) {
                const QString name = thing->text(QAccessible::Name);
                const QString object = thing->object() ? thing->object()->objectName() : name;
                QVERIFY2(!name.trimmed().isEmpty() &&
                             (thing->role() != QAccessible::Grouping || frames.insert(name).second),
                         qPrintable(window->objectName() + u' ' + object));
                ++count;
            }
        }
        QVERIFY2(count > 32 * 16 + 32 + 60, qPrintable(QString::number(count)));

        ListControl &ports = views.connect.SerialPortsCombo;
        QCOMPARE(kvn->part<QComboBox>("dlgConnect", "SerialPortsCombo")->placeholderText(),
                 QStringLiteral("Select Port"));
        ports = {.control = {.description = "why"}, .entries = {"Comm3", "Comm7"}, .chosen = 1};
        views.messages.dlgOK.OKLabel = {.text = "Failed.", .description = "why"};
        views.messages.dlgYesNo.YesNoText.text = "Sure?";
        views.connect.ConnectIPOption.lit = true;
        views.panel.MuteButton[3] = {.text = "Mute", .face = Face::Muted};
        views.panel.MuteButton[4] = {.text = "Mute", .face = Face::Unmuted};
        views.presets.NewPresetButton[5].face = Face::Chosen;
        kvn->windows.refresh();
        for (const QString &row :
             QString::fromLatin1(Spoken).split(QRegularExpression(QStringLiteral("; |\n")))) {
            QAccessibleInterface *thing =
                spokenAt(row.section(QStringLiteral(" = "), 0, 0).toStdString());
            QString all =
                QLatin1String(QMetaEnum::fromType<QAccessible::Role>().valueToKey(thing->role()));
            all += u' ' + thing->text(QAccessible::Name);
            all += QLatin1String(!thing->state().checkable ? ""
                                 : thing->state().checked  ? " on"
                                                           : " off");
            all += u':' + thing->text(QAccessible::Description).replace(u'\n', u'/');
            all.remove(QRegularExpression(QStringLiteral(":$")));
            QCOMPARE(all, row.section(QStringLiteral(" = "), 1));
        }
        const QString press = QAccessibleActionInterface::pressAction();
        const auto actions = [](const char *names) { return spokenAt(names)->actionInterface(); };
        kvn->takeWritten();
        actions("KVN32x32Audio MuteButton_3")->doAction(press);
        QTRY_COMPARE(kvn->serialPort.wire.written, std::string("MUT M 3\rSTA O A\rSTA O A\r"));
        QVERIFY(!actions("KVN32x32Audio ZarnConnectedLabel")->actionNames().contains(press));
        QVERIFY(actions("frmMain ZarnConnectedLabel")->actionNames().contains(press));
        actions("frmMain ZarnConnectedLabel")->doAction(press);
        QTRY_VERIFY(!kvn->serialPort.isOpen());
        QVERIFY(!actions("frmMain ZarnConnectedLabel")->actionNames().contains(press));
        for (const bool open : {true, false}) {
            actions("dlgConnect SerialPortsCombo")->doAction(press);
            QCOMPARE(spokenAt("dlgConnect SerialPortsCombo")->state().expanded != 0U, open);
            QCOMPARE(spokenAt("dlgConnect SerialPortsCombo")->childCount() != 0, open);
        }
    }

    void speakOfWhatChangesElsewhere() {
        Views &views = kvn->program.views;
        kvn->openPanel();
        views.connect.form.loaded = true;
        kvn->windows.refresh();
        notices();
        Control &volume = views.panel.OutputVolumeLabel;
        Control &progress = views.connect.Label2;
        Control &take = views.panel.TakeButton;
        // clang-format off
        const std::pair<std::function<void()>, const char *> changes[] = {
            {[&] { volume = {.text = "Wait..."}; }, "Wait...|"},
            {[&] { volume.text = "Output 3 volume"; }, "Output 3 volume|"},
            {[&] { progress = {.text = "Connecting to 1.2.3.4"}; }, "Connecting to 1.2.3.4|"},
            {[&] { progress.text += " . ."; }, ""}, // goes on
            {[&] { progress.text = "Connect to ..."; }, ""}, // nothing goes on
            {[&] { take.face = Face::Busy; }, ""},
            {[&] { take.face = Face::Neutral; }, "TAKE finished|"},
            {[&] { views.main.status.caption = views.panel.status.caption = "Lost"; }, "Lost|"}, // once, though two show it
            {[&] { views.panel.form.loaded = false; }, ""},
            {[&] { views.panel.status.caption = "Nobody sees it"; }, ""}};
        // clang-format on
        for (const auto &[change, heard] : changes) {
            change();
            kvn->windows.refresh();
            QCOMPARE(notices(), std::string(heard));
        }
    }
};

QTEST_MAIN(ViewsTest)
#include "ViewsTest.moc"
