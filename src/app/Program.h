#pragma once

#include "app/HelpWindow.h"
#include "app/MessageDialogs.h"
#include "app/dlgSetup.h"
#include "app/frmAbout.h"
#include "app/frmMain.h"
#include "link/LinkTools.h"
#include "link/dlgConnect.h"
#include "panel/KVN32x32Audio.h"
#include "platform/Machine.h"
#include "units/SavedUnits.h"
#include "units/SavedUnitsFile.h"
#include "units/dlgControlExisting.h"

#include <array>
#include <string>

/// The whole program: owns all state and all windows, and wires them.
class Program : private StartHost, private PanelHost, private UnitsHost {
public:
    explicit Program(const Machine &machine);

    /// Shows the start window and reads the saved units.
    void start();

    LinkState linkState;
    ExchangeState exchange;
    ModelFacts model;
    RoutingState routing;
    PanelState panelState;
    SavedUnits savedUnits;
    std::string modeWord; ///< how the saved units were opened: "Add" or "Cntl"

private:
    void openPanel() override;
    void openSavedUnits(const std::string &word) override;
    void openAbout() override;
    void forgetUnitName() override;
    void endProgram() override;
    void showSetup() override;
    void hideSetup() override;
    void showHelp(HelpTopic topic) override;
    void restoreStartWindow() override;
    void controlUnit(const std::string &unitName) override;
    void showStartWindow() override;

    EventPump &pump;
    MessageDialogs messages;
    LinkStatusDisplay display;
    SerialLink serial;
    NetworkLink network;
    LinkDispatch dispatch;
    ActionGuard guard;
    OutputStatusQuery outputStatus;
    ConfigurationQuery configuration;
    LinkTools tools;
    SavedUnitsFile unitsFile;

    std::array<HelpWindow, 3> helpWindows;
    dlgSetup setup;
    frmAbout about;
    dlgConnect connectDialog;
    dlgControlExisting unitsDialog;
    KVN32x32Audio panel;
    frmMain startWindow;
};
