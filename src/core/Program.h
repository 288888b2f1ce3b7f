#pragma once

#include "connect/dlgConnect.h"
#include "machine/Machine.h"
#include "panel/KVN32x32Audio.h"
#include "start/HelpTexts.h"
#include "start/dlgSetup.h"
#include "start/frmMain.h"
#include "units/SavedUnitsFile.h"
#include "units/dlgControlExisting.h"

#include <array>
#include <vector>

/// What all windows show.
struct Views {
    MainView main;
    MessageViews messages;
    ConnectView connect;
    UnitsView units;
    PanelView panel;
    PresetsView presets;
    FormView setup;
    FormView about;
    std::array<FormView, HelpTexts.size()> help;

    /// Of every form.
    [[nodiscard]] std::vector<FormView *> forms();
};

/// The whole program: owns all state and all forms, and wires them. It has no window.
class Program {
public:
    explicit Program(const Machine &machine);

    /// Shows the start window and reads the saved units.
    void start();

    EventPump &pump;

    LinkState link;
    UnitState unit;
    PanelState panel;
    SavedUnits savedUnits;
    MessageState messageState;
    Views views;

    LinkStatusDisplay display;
    SerialLink serial;
    NetworkLink network;
    Messages messages;
    UnitTalk talk;
    ActionGuard guard;
    SavedUnitsFile unitsFile;

    frmMain startForm;
    dlgConnect connectForm;
    dlgControlExisting unitsForm;
    KVN32x32Audio panelForm;
    dlgSetup setupForm;
    Form aboutForm;
    std::array<Form, HelpTexts.size()> helpForms;

private:
    void connect();
    void controlUnit(const std::string &name);
    void endProgram();
};
