#include "Window.h"
#include "look.h"
#include "support/rows.h"

#include <QAccessible>
#include <QProcess>
#include <QProxyStyle>
#include <QScreen>
#include <QScrollBar>
#include <QTemporaryFile>
#include <QToolTip>

#include <optional>

namespace {

constexpr const char *Units = "dlgControlExisting";
constexpr const char *Panel = "KVN32x32Audio";

// clang-format off
/// Some of what is spoken: role, name, state and description. The link is on COM7, input 5 is picked.
constexpr const char *Spoken = R"(Window Corvane Controller 1.14; Window Corvane Control Panel; Dialog Connect to Zarn-Lt
Dialog Control Existing Corvane; Dialog Preset Handler; Dialog Initializing Display; StaticText Setting Output
StaticText Setting Input; Dialog About Corvane Controller 1.14; StaticText Version 1.14.0; Graphic Corvane Controller 1.14
AlertMessage Question:<b>Größe; AlertMessage Confirm:<b>Größe/why; AlertMessage Corvane Controller 1.14:<b>Größe
Graphic Input 3 video lamp:unlit; Graphic Input 5 video lamp:lit; Graphic Input 107 video lamp:unlit
StaticText Connected on COM7; StaticText Connected on COM7 to press
Button Output 3 mute on:video from input 3, audio from input 3, volume -20, muted
Button Output 4 mute off:video from input 4, audio from input 4, volume -20, not muted
Button Input 5 video on:video to output 5, audio to output 5; Button Input 6 video off:video to output 6, audio to output 6
Button Preset 5 on; Button Preset 6 off; RadioButton Ethernet on; ComboBox Serial ports:Comm7. why
EditableText Address part)" R"( 4; Graphic Link up; EditableText Unit name; List Saved units; List Connection kind
EditableText Controlled via; ScrollBar Scroll up and down)";
// clang-format on

const QString Press = QAccessibleActionInterface::pressAction();

/// Whether one colour can be read on the other.
bool differ(const QColor &one, const QColor &other) {
    return std::abs(qGray(one.rgb()) - qGray(other.rgb())) > 100;
}

QAccessibleInterface *spoken(QObject *object) {
    return QAccessible::queryAccessibleInterface(object);
}

/// Everything that is seen, from `thing` on, and that a user can meet, as in `Spoken`.
QStringList met(QAccessibleInterface *thing) {
    if (!thing || thing->state().invisible)
        return {};
    QStringList all;
    if (thing->role() != QAccessible::Client && thing->role() != QAccessible::Notification) {
        const QAccessible::State state = thing->state();
        const bool pressed = thing->role() == QAccessible::StaticText &&
                             thing->actionInterface()->actionNames().contains(Press);
        const QString name = thing->text(QAccessible::Name).trimmed();
        const QString more = thing->text(QAccessible::Description).replace(u'\n', u'/');
        all += QVariant::fromValue(thing->role()).toString() + u' ' +
               (name.isEmpty() ? QStringLiteral("nameless") : name) +
               QLatin1String(pressed ? " to press" : "") +
               QLatin1String(state.checkable ? (state.checked ? " on" : " off") : "") +
               (more.isEmpty() ? more : u':' + more);
    }
    for (int index = 0; index < thing->childCount(); ++index)
        all += met(thing->child(index));
    return all;
}

/// What the windows hold to be spoken, with a bar behind each; it is gone then.
std::string notices() {
    std::string all;
    for (QWidget *part : QApplication::allWidgets()) {
        const std::string text = part->accessibleName().toStdString();
        if (text.empty() || part->isHidden() || spoken(part)->role() != QAccessible::Notification)
            continue;
        all += text + "|";
        part->setAccessibleName(QString());
    }
    return all;
}

} // namespace

/// Windows in the light and font of the desktop, and what screen readers are told of them. That
/// they show what their views say is seen in MonkeyTest.
class ViewsTest : public QObject {
    Q_OBJECT

    std::optional<ProgramFixture> kvn;

    /// Opens every window.
    Views &openAll() {
        kvn->openPanel();
        kvn->program.panelForm.presetsForm().LoadForm();
        Views &views = kvn->program.views;
        for (FormView *form : views.forms())
            form->loaded = true;
        kvn->windows.refresh();
        return views;
    }

private Q_SLOTS:
    void init() { kvn.emplace(UnitOptions{.model = "KVN-32x32-RGBA"}); }

    void showTheLink() {
        MainView &view = openAll().main;
        const QSize size = kvn->window("frmMain")->sizeHint();
        for (const auto &[colour, up, looks] :
             {std::tuple(LinkColour::ButtonFace, true, "<b> #e0e0e0 #1c2128 #148c3c #148c3c"),
              {LinkColour::NetworkUp, false, "<b> #ff8000 #1c2128 #b02828 #eef0f3"},
              {LinkColour::SerialUp, true, "<b> hidden #00c000 #ffffff #148c3c #148c3c"},
              {LinkColour::SerialDown, false, "<b> #c00000 #ffffff #b02828 #eef0f3"},
              {LinkColour::NotConnected, true, "<b> #ff0000 #ffffff #148c3c #148c3c"}}) {
            view.status = {"<b>", colour, up, colour != LinkColour::SerialUp};
            view.ToDisconnectPortLabel.visible = up; // which keeps its place
            kvn->windows.refresh();
            auto *label = kvn->part("frmMain", "ZarnConnectedLabel");
            auto *image = kvn->part("frmMain", up ? "ZarnConnectedImage" : "ZarnNotConnectedImage");
            auto *other = kvn->part("frmMain", up ? "ZarnNotConnectedImage" : "ZarnConnectedImage");
            QVERIFY(!image->isHidden() && other->isHidden());
            QVERIFY(label->isHidden() || kvn->window("frmMain")->sizeHint() == size);
            const int width = image->width(), height = image->height();
            const std::string ink = label->palette().windowText().color().name().toStdString();
            QCOMPARE(look(label) + " " + pixel(label, 1, 1) + " " + ink + " " +
                         pixel(image, width * 20 / 56, height / 2) + " " +
                         pixel(image, width / 2, height * 11 / 28), // within and between the plugs
                     std::string(looks));
        }
    }

    void areSpokenAndPressed() {
        Views &views = openAll();
        kvn->click(Panel, "InputVideoButtons_5");
        views.connect.IPAddressFrame.visible = views.connect.SerialConnectionFrame.visible = true;
        views.units.AddCorvaneFrame.visible = views.units.IPAddressFrame.visible = true;
        views.units.AvailCorvanesList.entries.resize(30, "A"); // more than there is room for
        views.connect.SerialPortsCombo = {{.description = "why"}, {"Comm3", "Comm7"}, 1};
        views.messages.dlgOK.OKLabel = {.text = "<b>Größe", .description = "why"};
        views.messages.plainBox.OKLabel.text = views.messages.dlgYesNo.YesNoText.text = "<b>Größe";
        views.connect.ConnectIPOption.lit = views.panel.InputVideoLamp[5].lit = true;
        views.panel.MuteButton[3] = {.text = "Mute", .face = Face::Muted};
        views.panel.MuteButton[4] = {.text = "Mute", .face = Face::Unmuted};
        views.presets.NewPresetButton[5].face = Face::Chosen;
        views.panel.InputShown[7] = 107;
        kvn->windows.refresh();
        QStringList all;
        auto expected =
            QString::fromUtf8(Spoken).split(QRegularExpression(QStringLiteral("; |\n")));
        for (const HelpText &help : HelpTexts) {
            expected += QStringLiteral("Dialog ") + QLatin1String(help.caption);
            for (const char *const paragraph : help.paragraphs)
                expected += QStringLiteral("StaticText ") + QLatin1String(paragraph);
        }
        for (QWidget *window : QApplication::topLevelWidgets()) {
            const QStringList here = met(spoken(window));
            QCOMPARE(here.filter(QStringLiteral("nameless")), QStringList());
            QCOMPARE(here.filter(QStringLiteral("Grouping ")).removeDuplicates(), 0);
            for (const auto *label : window->findChildren<QLabel *>())
                QVERIFY(label->textFormat() == Qt::PlainText ||
                        !Qt::mightBeRichText(label->text()));
            all += here;
        }
        QVERIFY(all.size() > 32 * 16 + 32 + 60);
        QCOMPARE(all.count(QStringLiteral("Graphic Link up")), 4);
        for (const QString &row : expected)
            QVERIFY2(all.contains(row), qPrintable(row));
        QCOMPARE(kvn->part<QComboBox>("dlgConnect", "SerialPortsCombo")->placeholderText(),
                 QStringLiteral("Select Port"));

        kvn->takeWritten();
        spoken(kvn->part(Panel, "MuteButton_3"))->actionInterface()->doAction(Press);
        QTRY_COMPARE(kvn->serialPort.wire.written, std::string("MUT M 3\rSTA O A\rSTA O A\r"));
        spoken(kvn->part("frmMain", "ZarnConnectedLabel"))->actionInterface()->doAction(Press);
        QTRY_VERIFY(!kvn->serialPort.isOpen());
        auto *ports = spoken(kvn->part("dlgConnect", "SerialPortsCombo"));
        for (const bool open : {true, false}) {
            ports->actionInterface()->doAction(Press);
            QVERIFY(ports->state().expanded == open && (ports->childCount() != 0) == open);
        }
    }

    void speakOfWhatChangesElsewhere() {
        Views &views = openAll();
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
            {[&] { progress.text = "Connecting to 5.6.7.8", kvn->windows.refresh(); volume.text = "Output 4 volume"; },
             "Output 4 volume|"},
            {[&] { views.panel.form.loaded = false; }, ""},
            {[&] { views.panel.status.caption = volume.text = "Nobody sees it"; }, ""}};
        // clang-format on
        for (const auto &[change, announced] : changes) {
            change();
            kvn->windows.refresh();
            QCOMPARE(notices(), std::string(announced));
        }
    }

    void unitsShowWholeNames() {
        kvn->program.unitsForm.LoadForm();
        kvn->windows.refresh();
        const QSize opened = kvn->window(Units)->size();
        kvn->click(Units, "OptionsCommand_1");
        auto &entries = kvn->program.views.units.AvailCorvanesList.entries;
        entries.assign(7, "Main auditorium, west wing, ground floor, rack 1");
        entries.emplace_back(200, '<');
        kvn->windows.refresh();
        QCoreApplication::processEvents();
        auto *units = kvn->part<QListWidget>(Units, "AvailCorvanesList");
        QCOMPARE(units->horizontalScrollBar()->maximum(), 0);
        // Only a name that is cut is told by the pointer.
        for (const int row : {0, 7}) {
            const QPoint at = units->visualItemRect(units->item(row)).center();
            QHelpEvent pointed(QEvent::ToolTip, at, units->viewport()->mapToGlobal(at));
            QCoreApplication::sendEvent(units->viewport(), &pointed);
            const QString tip = QToolTip::text().remove(QChar(0x200B));
            QCOMPARE(tip.contains(units->item(row)->text().toHtmlEscaped()), row == 7);
        }
        QVERIFY(kvn->window("qtooltip_label")->width() < 700);
        kvn->click(Units, "CancelCommand");
        QCoreApplication::processEvents();
        QCOMPARE(kvn->window(Units)->size(), opened);
    }

    void followTheDesktopsLightAndFont() {
        const auto desktopIs = [](bool dark) {
            QApplication::setPalette(dark ? QPalette(QColor(49, 54, 59), QColor(42, 46, 50))
                                          : QPalette(QColor(224, 224, 224), QColor(239, 239, 239)));
        };
        for (const auto &[started, dark, pixels] :
             {std::tuple(false, false, 12), {false, true, 26}, {true, false, 12}}) {
            desktopIs(started);
            QFont font = QApplication::font();
            font.setPixelSize(pixels);
            QApplication::setFont(font);
            init();
            openAll();
            desktopIs(dark);
            QCoreApplication::processEvents();
            const auto *style = qobject_cast<QProxyStyle *>(QApplication::style());
            const QPalette program = QApplication::palette();
            QCOMPARE(style->baseStyle()->name() + program.color(QPalette::Highlight).name() +
                         program.color(QPalette::Link).name(), // as of the focus
                     QLatin1String(dark ? "fusion#1e62ba#2684f0" : "fusion#005fb8#005fb8"));
            QCOMPARE(kvn->window("dlgConnect")->width(), 420 * std::max(13, pixels) / 13);
            for (QWidget *window : QApplication::topLevelWidgets()) {
                const QString name = window->objectName();
                if (!dynamic_cast<Window *>(window) || !window->isVisible())
                    continue;
                const QSize size = window->size(), screen = window->screen()->availableSize();
                const bool fixed = size == window->minimumSize() && size == window->maximumSize();
                QVERIFY2(fixed || size.boundedTo(screen) == size, qPrintable(name));
                const QColor ground(QString::fromStdString(pixel(window, 0, window->height() - 1)));
                QVERIFY2((ground.lightness() < 64) == dark && ground.lightness() != 0,
                         qPrintable(name));
                for (const QWidget *part : window->findChildren<QWidget *>()) {
                    const QPalette &colours = part->palette();
                    const auto *box = qobject_cast<const QLineEdit *>(part);
                    const bool typed = box && box->isEnabled() && !box->isReadOnly();
                    const QColor under = colours.color(box ? QPalette::Base : QPalette::Window);
                    const QColor ink = colours.color(box ? QPalette::Text : QPalette::WindowText);
                    bool right = true;
                    const QString text = part->property("text").toString();
                    if (part->inherits("QPushButton") && part->isVisible())
                        right = part->fontMetrics().horizontalAdvance(text) < part->width();
                    else if (box || part->inherits("QLabel"))
                        // Only what takes typing looks like it.
                        right = (!part->isEnabled() || differ(ink, under)) &&
                                (!box || (under != ground) == typed);
                    QVERIFY2(right, qPrintable(name + u' ' + part->objectName()));
                }
            }
            auto *icon = kvn->part("frmAbout", "picIcon"); // between the points:
            QCOMPARE(pixel(icon, icon->width() * 3 / 8, icon->height() * 3 / 8),
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
