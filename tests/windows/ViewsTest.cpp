#include "Window.h"
#include "look.h"
#include "support/rows.h"

#include <QAccessible>
#include <QProcess>
#include <QProxyStyle>
#include <QScreen>
#include <QScrollBar>
#include <QStyle>
#include <QTemporaryFile>
#include <QToolTip>

#include <optional>
#include <set>

namespace {

constexpr const char *Units = "dlgControlExisting";
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
dlgConnect IPAddressQuadConnect_2 = EditableText Address part )" R"(3
dlgConnect ZarnConnectedImage = Graphic Link up; dlgConnect ZarnNotConnectedImage = Graphic Link down
dlgControlExisting Text3 = EditableText Unit name
dlgControlExisting AvailCorvanesList = List Saved units; dlgControlExisting ConnectChoiceList = List Connection kind
dlgControlExisting ControlledbyText = EditableText Controlled via)";

// clang-format on

/// Whether one colour can be read on the other.
bool differ(const QColor &one, const QColor &other) {
    return std::abs(qGray(one.rgb()) - qGray(other.rgb())) > 100;
}

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

} // namespace

/// Windows in the light and font of the desktop, and what screen readers are told of them. That
/// they show what their views say is seen in MonkeyTest.
class ViewsTest : public QObject {
    Q_OBJECT

    std::optional<ProgramFixture> kvn;

private Q_SLOTS:
    void init() { kvn.emplace(UnitOptions{.model = "KVN-32x32-RGBA"}); }

    void showTheLink() {
        Views &views = kvn->program.views;
        for (const auto &[window, form, status] :
             {std::tuple("frmMain", &views.main.form, &views.main.status),
              {"dlgConnect", &views.connect.form, &views.connect.status},
              {Units, &views.units.form, &views.units.status},
              {Panel, &views.panel.form, &views.panel.status}}) {
            form->loaded = true;
            for (const auto &[colour, colours] :
                 {std::pair(LinkColour::ButtonFace, "#e0e0e0 #1c2128"),
                  {LinkColour::NetworkUp, "#ff8000 #1c2128"},
                  {LinkColour::SerialUp, "#00c000 #ffffff"},
                  {LinkColour::SerialDown, "#c00000 #ffffff"},
                  {LinkColour::NotConnected, "#ff0000 #ffffff"}}) {
                const bool hidden = colour == LinkColour::SerialUp, up = !status->linkUp;
                *status = {"<b>" + std::string(colours), colour, up, !hidden};
                kvn->windows.refresh();
                auto *label = kvn->part(window, "ZarnConnectedLabel");
                QCOMPARE(look(label), status->caption + (hidden ? " hidden" : ""));
                const QString ink = label->palette().windowText().color().name();
                QCOMPARE(pixel(label, 1, 1) + " " + ink.toStdString(), std::string(colours));
                auto *image =
                    kvn->part(window, up ? "ZarnConnectedImage" : "ZarnNotConnectedImage");
                auto *other =
                    kvn->part(window, up ? "ZarnNotConnectedImage" : "ZarnConnectedImage");
                QVERIFY(!image->isHidden() && other->isHidden());
                const std::string plug =
                    pixel(image, image->width() * 20 / 56, image->height() / 2);
                QCOMPARE(plug, std::string(up ? "#148c3c" : "#b02828"));
                QCOMPARE(pixel(image, image->width() / 2, image->height() * 11 / 28) == plug, up);
            }
        }
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
                const bool twice =
                    thing->role() == QAccessible::Grouping && !frames.insert(name).second;
                QVERIFY2(!name.trimmed().isEmpty() && !twice,
                         qPrintable(window->objectName() + u' ' + name));
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
        for (const QString &row : QString::fromLatin1(Spoken)
                                      .replace(u'\n', QStringLiteral("; "))
                                      .split(QStringLiteral("; "))) {
            const QStringList sides = row.split(QStringLiteral(" = "));
            QAccessibleInterface *thing = spokenAt(sides[0].toStdString());
            const QAccessible::State state = thing->state();
            QString all = QVariant::fromValue(thing->role()).toString() + u' ';
            all += thing->text(QAccessible::Name);
            all += QLatin1String(!state.checkable ? "" : state.checked ? " on" : " off");
            const QString more = thing->text(QAccessible::Description).replace(u'\n', u'/');
            QCOMPARE(more.isEmpty() ? all : all + u':' + more, sides[1]);
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

    void unitsShowWholeNames() {
        for (int unit = 1; unit <= 8; ++unit)
            kvn->files.contentsOf["program/KVNConfigurator.ini"] +=
                "KVN NAME = Main auditorium, west wing, ground floor, rack " +
                std::to_string(unit) + (unit == 8 ? std::string(200, '<') : "") +
                "\r\nKVN TYPE = SERIAL\r\n";
        kvn->program.unitsForm.LoadForm();
        kvn->windows.refresh();
        const QSize opened = kvn->window(Units)->size();
        kvn->click(Units, "OptionsCommand_1");
        QCoreApplication::processEvents();
        for (const char *const name : {"AvailCorvanesList", "ConnectChoiceList"}) {
            const auto *list = kvn->part<QListWidget>(Units, name);
            QCOMPARE(list->horizontalScrollBar()->maximum(), 0);
            QCOMPARE(list->verticalScrollBar()->maximum(), 0);
        }
        // Only a name that is cut is told by the pointer.
        auto *units = kvn->part<QListWidget>(Units, "AvailCorvanesList");
        for (const int row : {0, 7}) {
            const QPoint at = units->visualItemRect(units->item(row)).center();
            QHelpEvent pointed(QEvent::ToolTip, at, units->viewport()->mapToGlobal(at));
            QCoreApplication::sendEvent(units->viewport(), &pointed);
            const QString tip = QToolTip::text().remove(QChar(0x200B));
            QCOMPARE(tip.contains(units->item(row)->text().toHtmlEscaped()), row == 7);
            for (const QWidget *shown : QApplication::topLevelWidgets())
                QVERIFY(!shown->inherits("QTipLabel") || shown->width() < 700);
        }
        kvn->click(Units, "CancelCommand");
        QCoreApplication::processEvents();
        QCOMPARE(kvn->window(Units)->size(), opened);
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
            kvn.emplace();
            kvn->openPanel();
            kvn->program.panelForm.presetsForm().LoadForm();
            for (FormView *form : kvn->program.views.forms())
                form->loaded = true;
            kvn->windows.refresh();
            desktopIs(dark);
            QCoreApplication::processEvents();
            const QPalette program = QApplication::palette();
            const auto *style = qobject_cast<QProxyStyle *>(QApplication::style());
            QCOMPARE(style->baseStyle()->name() + program.color(QPalette::Highlight).name() +
                         program.color(QPalette::Link).name(), // as of the focus
                     QLatin1String(dark ? "fusion#1e62ba#2684f0" : "fusion#005fb8#005fb8"));
            for (QWidget *window : QApplication::topLevelWidgets()) {
                const QString name = window->objectName();
                if (!dynamic_cast<Window *>(window) || !window->isVisible())
                    continue;
                const bool panel = name == QLatin1String(Panel);
                const bool limited =
                    name == QLatin1String(Units) || name == QLatin1String("dlgPresets") || panel;
                const QSize size = designed.try_emplace(name, window->size()).first->second;
                const QSize screen = window->screen()->availableSize();
                QVERIFY2(limited ? window->width() <= screen.width() &&
                                       window->height() <= screen.height()
                                 : pixels == 12 || (window->width() >= size.width() * 1.8 &&
                                                    window->height() >= size.height() * 1.7),
                         qPrintable(name));
                const QColor ground(QString::fromStdString(pixel(window, 0, window->height() - 1)));
                QVERIFY2((ground.lightness() < 64) == dark && ground.lightness() != 0,
                         qPrintable(name));
                for (const QWidget *part : window->findChildren<QWidget *>()) {
                    const QPalette &colours = part->palette();
                    const QColor field = colours.color(QPalette::Base);
                    const QString text = part->property("text").toString();
                    bool right = true;
                    if (part->inherits("QPushButton"))
                        right = (panel || colours.button() == QColor(224, 224, 224)) &&
                                (!part->isVisible() ||
                                 part->fontMetrics().horizontalAdvance(text) < part->width());
                    else if (part->inherits("QLabel") && part->isEnabled())
                        right =
                            differ(colours.windowText().color(),
                                   part->autoFillBackground() ? colours.window().color() : ground);
                    else if (const auto *box = qobject_cast<const QLineEdit *>(part))
                        // Only what takes typing looks like it.
                        right = (field != ground) == (box->isEnabled() && !box->isReadOnly()) &&
                                (!box->isEnabled() || differ(colours.text().color(), field));
                    QVERIFY2(right, qPrintable(name + u' ' + part->objectName()));
                }
            }
            auto *picture = kvn->part("frmAbout", "picIcon"); // between the points:
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
        program.start(QStringLiteral("env"),
                      {QStringLiteral("FONTCONFIG_FILE=") + settings.fileName(),
                       qEnvironmentVariable("KVN_BIN") + QStringLiteral("/KVNController")});
        QVERIFY(program.waitForFinished());
        QCOMPARE(program.exitCode(), 1);
        QVERIFY(program.readAllStandardError().contains("no font is installed"));
    }
};

QTEST_MAIN(ViewsTest)
#include "ViewsTest.moc"
