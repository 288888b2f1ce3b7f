#include "support/TestProgram.h"

#include <map>

void TestProgram::answerMessages() {
    pump.eachTurn = [this] {
        if (!views.messages.dlgOK.form.loaded)
            return;
        messages += (messages.empty() ? "" : " | ") + views.messages.dlgOK.OKLabel.text;
        program.messages.dlgOK().unload();
    };
}

void TestProgram::typeAddress(const std::string &address) {
    program.connectForm.IPAddressQuadConnect_Change({0, 0, 0}, address);
}

void TestProgram::connectInDialog(bool overNetwork) {
    pump.in(0.1, [this, overNetwork] {
        dlgConnect &dialog = program.connectForm;
        if (overNetwork) {
            dialog.ConnectIPOption_Click();
            typeAddress("10.11.12.13");
            dialog.Connect2IPButton_Click();
        } else {
            dialog.ConnectSerialOption_Click();
            dialog.SerialPortsCombo_Click(0);
            dialog.Connect2SerialButton_Click();
        }
    });
}

void TestProgram::openPanel(bool overNetwork) {
    answerMessages();
    connectInDialog(overNetwork);
    program.startForm.MainControlButton_Click(0);
    takeWritten();
    messages.clear();
}

std::string TestProgram::loaded() const {
    const std::map<std::string, const FormView *> forms{
        {"dlgConnect", &views.connect.form},
        {"dlgControlExisting", &views.units.form},
        {"dlgOK", &views.messages.dlgOK.form},
        {"dlgPresets", &views.presets.form},
        {"dlgSetup", &views.setup},
        {"dlgYesNo", &views.messages.dlgYesNo.form},
        {"frmAbout", &views.about},
        {"frmMain", &views.main.form},
        {"KVN32x32Audio", &views.panel.form},
        {"plainBox", &views.messages.plainBox.form}};
    std::string names;
    for (const auto &[name, view] : forms) {
        if (view->loaded)
            names += (names.empty() ? "" : " ") + name;
    }
    return names;
}
