#include "app/Program.h"

#include "platform/thenAlways.h"

#include <QApplication>

Program::Program(const Machine &machine)
    : pump(machine.pump),
      messages(pump),
      display(linkState),
      serial(linkState, exchange, machine.serialPort, pump, display),
      network(linkState, exchange, machine.socket, pump, display),
      dispatch(linkState, exchange, serial, network, pump),
      guard(dispatch, display, messages),
      outputStatus(linkState, exchange, model, routing, dispatch, messages),
      configuration(linkState, exchange, model, dispatch),
      tools{linkState, exchange, pump,  serial,       network,      dispatch,
            display,   messages, guard, outputStatus, configuration},
      unitsFile(savedUnits, linkState, machine.files, machine.appPath),
      helpWindows{HelpWindow(HelpTopic::Connecting, pump),
                  HelpWindow(HelpTopic::Disconnecting, pump), HelpWindow(HelpTopic::Volume, pump)},
      setup(pump, linkState),
      about(pump),
      connectDialog(tools),
      unitsDialog(tools, savedUnits, unitsFile, connectDialog, *this),
      panel(tools, model, routing, panelState, *this),
      startWindow(tools, connectDialog, *this) {}

void Program::start() {
    display.ConnecthandleConnectionStatus();
    startWindow.present();
    if (const std::string failure = unitsFile.CheckGetIniFile(); !failure.empty())
        messages.ShowMessage(failure);
}

void Program::openPanel() { panel.LoadForm(); }

void Program::openSavedUnits(const std::string &word) {
    modeWord = word;
    unitsDialog.LoadForm();
    if (modeWord == "Add")
        unitsDialog.chooseOperation(dlgControlExisting::Operation::Add);
}

void Program::controlUnit(const std::string &unitName) {
    panelState.SelectedUnitName = unitName;
    panelState.PanelFromSavedUnits = true;
    thenAlways(
        [this] {
            panel.LoadForm();
            pump.runUntil([this] { return !panelState.PanelFromSavedUnits; });
        },
        [this] { panelState.PanelFromSavedUnits = false; });
}

void Program::showStartWindow() { startWindow.present(); }

void Program::openAbout() { about.present(); }

void Program::forgetUnitName() { panelState.SelectedUnitName.clear(); }

void Program::endProgram() {
    pump.end();
    for (QWidget *window : QApplication::topLevelWidgets())
        window->hide();
    // Not quit(): that asks the windows first, and they answer a close in their own way.
    QApplication::exit(0);
}

void Program::showSetup() {
    setup.present();
    pump.runQueued();
}

void Program::hideSetup() { setup.unload(); }

void Program::showHelp(HelpTopic topic) {
    helpWindows.at(static_cast<std::size_t>(topic)).present();
}

void Program::restoreStartWindow() {
    startWindow.setWindowState(startWindow.windowState() & ~Qt::WindowMinimized);
}
