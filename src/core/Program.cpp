#include "Program.h"

#include "forms/AtExit.h"

std::vector<FormView *> Views::forms() {
    std::vector<FormView *> all{&main.form,
                                &messages.dlgOK.form,
                                &messages.plainBox.form,
                                &messages.dlgYesNo.form,
                                &connect.form,
                                &units.form,
                                &panel.form,
                                &presets.form,
                                &setup,
                                &about};
    for (FormView &window : help)
        all.push_back(&window);
    return all;
}

Program::Program(const Machine &machine)
    : pump(machine.pump),
      display(link, {.Start = views.main.status,
                     .SavedUnits = views.units.status,
                     .Connect = views.connect.status,
                     .Panel = views.panel.status,
                     .ToDisconnectPortLabel = views.main.ToDisconnectPortLabel,
                     .ConnectProgress = views.connect.Label2}),
      serial(link, unit.exchange, machine.serialPort, pump, display),
      network(link, unit.exchange, machine.socket, pump, display),
      messages(messageState, views.messages, pump),
      talk(link, unit, serial, network, messages, pump),
      guard(talk, display, messages),
      unitsFile(savedUnits, link, machine.files, machine.appPath),
      startForm(views.main, link, unit, talk, display, guard, messages, pump,
                {.connectDialog = [this] { connect(); },
                 .panel = [this] { panelForm.LoadForm(); },
                 .savedUnits = [this] { unitsForm.LoadForm(); },
                 .newSavedUnit = [this] { unitsForm.LoadFormToAdd(); },
                 .endProgram = [this] { endProgram(); }}),
      connectForm(views.connect, link, serial, network, display, guard, messages, pump),
      unitsForm(views.units, savedUnits, unitsFile, link, unit, talk, display, guard, messages,
                pump,
                {.connectNetwork =
                     [this] {
                         connectForm.HandleIPOnly();
                         connectForm.waitUntilLeft();
                     },
                 .connectSerial =
                     [this] {
                         connectForm.HandleSerialOnly();
                         connectForm.waitUntilLeft();
                     },
                 .controlUnit = [this](const std::string &name) { controlUnit(name); },
                 .showStartWindow = [this] { startForm.present(); }}),
      panelForm(views.panel, views.presets, panel, link, unit, talk, display, guard, pump,
                {.showSetup =
                     [this] {
                         setupForm.present();
                         pump.runQueued();
                     },
                 .hideSetup = [this] { setupForm.unload(); },
                 .restoreStartWindow = [this] { startForm.minimise(false); }}),
      setupForm(views.setup, link, pump),
      aboutForm(views.about, pump),
      helpForms{Form(views.help[0], pump), Form(views.help[1], pump), Form(views.help[2], pump)} {}

void Program::start() {
    display.refreshAll();
    startForm.present();
    if (const std::string failure = unitsFile.CheckGetIniFile(); !failure.empty())
        messages.ShowMessage(failure);
}

void Program::connect() {
    connectForm.LoadForm();
    connectForm.waitUntilLeft();
}

void Program::controlUnit(const std::string &name) {
    unit.SelectedUnitName = name;
    panel.PanelFromSavedUnits = true;
    const AtExit release([this] { panel.PanelFromSavedUnits = false; });
    panelForm.LoadForm();
    pump.runUntil([this] { return !panel.PanelFromSavedUnits || !panelForm.isLoaded(); });
}

void Program::endProgram() {
    pump.end();
    for (FormView *form : views.forms())
        form->loaded = false;
}
