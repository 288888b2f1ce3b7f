#include "look.h"
#include "panel/PanelControls.h"
#include "support/toString.h"

/// Each window shows what its view says.
class ViewsTest : public QObject {
    Q_OBJECT

    ProgramFixture kvn;
    Views &views = kvn.program.views;

    /// Gives the controls of those names looks that differ from one to the next and from one round
    /// to the next.
    template <class View>
    void check(const char *window, View &view, const std::string &names,
               const std::vector<Control *> &controls) {
        const View before = view;
        view.form.loaded = true;
        for (int round = 0; round < 3; ++round) {
            int number = round;
            for (Control *control : controls) {
                ++number;
                *control = {.text = "<b>" + std::to_string(number) + "\xE4",
                            .visible = number % 3 != 0,
                            .enabled = number % 4 != 0,
                            .lit = number % 2 != 0,
                            .face = static_cast<Face>(number % 5),
                            .toolTip = round == 1 ? "" : "<b>\u20AC\n" + std::to_string(number),
                            .description = round == 1 ? "" : "<i>" + std::to_string(number)};
            }
            kvn.windows.refresh();
            std::istringstream words(names);
            std::string name;
            for (const Control *control : controls) {
                words >> name;
                QWidget *widget = kvn.part(window, name);
                QCOMPARE(name + ": " + look(widget), name + ": " + wanted(widget, *control));
                if (!dynamic_cast<Lamp *>(widget) && name != "KVNNameLabel")
                    QCOMPARE(hints(widget), control->toolTip + "/" + control->description);
            }
        }
        view = before;
        kvn.windows.refresh();
    }

private Q_SLOTS:
    void showListsAndAddresses() {
        ConnectView &connect = views.connect;
        UnitsView &units = views.units;
        for (auto *address : {&connect.IPAddressQuadConnect, &units.CntrlIPAddressQuad}) {
            for (std::size_t box = 0; box < 4; ++box)
                address->boxes.at(box).text = std::to_string(10 + box);
            address->cursor = {2, 1, 2};
            address->cursorMoved = 1; // before there was a window: nothing to repeat
        }
        connect.form.loaded = units.form.loaded = true;
        const auto lists = {&connect.SerialPortsCombo, &units.AvailCorvanesList,
                            &units.ConnectChoiceList};
        const auto shown = [&] {
            kvn.windows.refresh();
            return entries(kvn.part("dlgConnect", "SerialPortsCombo")) + ", " +
                   entries(kvn.part("dlgControlExisting", "AvailCorvanesList")) + ", " +
                   entries(kvn.part("dlgControlExisting", "ConnectChoiceList")) + ", " +
                   addressIn("dlgConnect") + ", " + addressIn("dlgControlExisting");
        };
        QCOMPARE(shown(), std::string(", , , 10.11.12.13, 10.11.12.13"));
        for (ListControl *list : lists) {
            list->entries = {"<b>1", "\xE4"};
            list->chosen = 1;
        }
        for (auto *address : {&connect.IPAddressQuadConnect, &units.CntrlIPAddressQuad})
            ++address->cursorMoved;
        QCOMPARE(shown(), std::string(" <b>1 [\u00E4],  <b>1 [\u00E4],  <b>1 [\u00E4], "
                                      "10.11.1[2]*.13, 10.11.1[2]*.13"));
        for (ListControl *list : lists)
            list->chosen = -1;
        kvn.part("dlgConnect", "ConnectIPOption")->setFocus(); // by the user
        units.CntrlIPAddressQuad.cursor = {0, 1, 1};
        ++units.CntrlIPAddressQuad.cursorMoved;
        QCOMPARE(shown(), std::string(" <b>1  \u00E4 ,  <b>1  \u00E4 ,  <b>1  \u00E4 , "
                                      "10.11.1[2].13, 10*.11.1[2].13"));
    }

    void showTheLink() {
        const std::tuple<LinkColour, const char *, const char *> colours[] = {
            {LinkColour::ButtonFace, "#e0e0e0", "#1c2128"},
            {LinkColour::NetworkUp, "#ff8000", "#1c2128"},
            {LinkColour::SerialUp, "#00c000", "#ffffff"},
            {LinkColour::SerialDown, "#c00000", "#ffffff"},
            {LinkColour::NotConnected, "#ff0000", "#ffffff"}};
        for (const auto &[window, form, status] :
             {std::tuple("frmMain", &views.main.form, &views.main.status),
              {"dlgConnect", &views.connect.form, &views.connect.status},
              {"dlgControlExisting", &views.units.form, &views.units.status},
              {"KVN32x32Audio", &views.panel.form, &views.panel.status}}) {
            form->loaded = true;
            for (const auto &[colour, rgb, ink] : colours) {
                const bool hidden = colour == LinkColour::SerialUp;
                *status = {"<b>" + std::string(rgb), colour, !status->linkUp, !hidden};
                kvn.windows.refresh();
                auto *label = kvn.part(window, "ZarnConnectedLabel");
                QCOMPARE(look(label), status->caption + (hidden ? " hidden" : ""));
                QCOMPARE(pixel(label, 1, 1), std::string(rgb));
                QCOMPARE(label->palette().windowText().color().name(), QLatin1String(ink));
                for (const bool up : {true, false}) {
                    auto *picture =
                        kvn.part(window, up ? "ZarnConnectedImage" : "ZarnNotConnectedImage");
                    const QSize size = picture->size();
                    const std::string plug = up ? "#148c3c" : "#b02828";
                    QCOMPARE(!picture->isHidden(), up == status->linkUp);
                    QCOMPARE(pixel(picture, size.width() * 20 / 56, size.height() / 2), plug);
                    // The middle: joined, or apart.
                    QCOMPARE(pixel(picture, size.width() / 2, size.height() * 11 / 28) == plug, up);
                }
            }
        }
    }

    void showTheirControls() {
        // clang-format off
        auto &[main, messages, c, u, panel, presets, setup, about, help] = views;
        check("frmMain", main, "MainControlButton_0 MainControlButton_2 ToDisconnectPortLabel",
              {&main.MainControlButton_0, &main.MainControlButton_2, &main.ToDisconnectPortLabel});
        check("dlgConnect", c, "Frame1 ConnectIPOption ConnectSerialOption IPAddressFrame Connect2IPButton Label2 "
              "SerialConnectionFrame Label1 SerialPortsCombo Connect2SerialButton",
              {&c.Frame1, &c.ConnectIPOption, &c.ConnectSerialOption, &c.IPAddressFrame, &c.Connect2IPButton, &c.Label2,
               &c.SerialConnectionFrame, &c.Label1, &c.SerialPortsCombo.control, &c.Connect2SerialButton});
        check("dlgControlExisting", u, "OptionsFrame OptionsCommand_0 OptionsCommand_1 OptionsCommand_2 OptionsCommand_3 "
              "OKButton AddCorvaneFrame Label2_0 Label2_1 Text3 AvailCorvanesList Label3 ConnectChoiceList "
              "ControlledbyText IPAddressFrame AddCorvaneCommand CancelCommand StatusLabel",
              {&u.OptionsFrame, &u.OptionsCommand[0], &u.OptionsCommand[1], &u.OptionsCommand[2], &u.OptionsCommand[3],
               &u.OKButton, &u.AddCorvaneFrame, &u.Label2_0, &u.Label2_1, &u.Text3, &u.AvailCorvanesList.control, &u.Label3,
               &u.ConnectChoiceList.control, &u.ControlledbyText, &u.IPAddressFrame, &u.AddCorvaneCommand, &u.CancelCommand,
               &u.StatusLabel});
        // clang-format on
        std::string names = "ExecutePresetButton ExitPresets";
        std::vector<Control *> controls{&presets.ExecutePresetButton, &presets.ExitPresets};
        for (int preset = 1; preset <= 32; ++preset) {
            names += " NewPresetButton_" + std::to_string(preset);
            controls.push_back(&presets.NewPresetButton[preset]);
        }
        check("dlgPresets", presets, names, controls);
        names.clear();
        controls.clear();
        for (const SingleControl &single : SingleControls) {
            names += single.name + std::string(" ");
            controls.push_back(&(panel.*single.control));
        }
        for (const SlotArray &array : SlotArrays) {
            for (int slot = 1; slot <= 32; ++slot) {
                names += array.name + ("_" + std::to_string(slot) + " ");
                controls.push_back(&(panel.*array.controls)[slot]);
            }
        }
        check("KVN32x32Audio", panel, names, controls);
    }

    void haveSpokenNames() {
        // clang-format off
        for (const auto &[window, name, spoken] : {
            std::tuple("dlgConnect", "SerialPortsCombo", "Serial ports"),
            {"dlgConnect", "IPAddressQuadConnect_0", "Address part 1"},
            {"dlgConnect", "ZarnConnectedImage", "Link up"},
            {"dlgConnect", "ZarnNotConnectedImage", "Link down"},
            {"dlgControlExisting", "AvailCorvanesList", "Saved units"},
            {"dlgControlExisting", "ConnectChoiceList", "Connection kind"},
            {"dlgControlExisting", "ControlledbyText", "Controlled via"},
            {"dlgControlExisting", "Text3", "Unit name"},
            {"dlgControlExisting", "CntrlIPAddressQuad_3", "Address part 4"}})
            QCOMPARE(kvn.part(window, name)->accessibleName(), QLatin1String(spoken));
        // clang-format on
        QCOMPARE(kvn.part<QComboBox>("dlgConnect", "SerialPortsCombo")->placeholderText(),
                 QStringLiteral("Select Port"));
    }
};

QTEST_MAIN(ViewsTest)
#include "ViewsTest.moc"
