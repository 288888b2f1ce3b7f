#pragma once

#include "AddressBoxes.h"
#include "Window.h"
#include "connect/dlgConnect.h"

#include <QComboBox>

/// The window of `dlgConnect`.
class ConnectWindow : public Window {
public:
    ConnectWindow(dlgConnect &connectForm, const ConnectView &connectView);

protected:
    void refreshRest() override;

private:
    QGroupBox *buildOptions();
    QGroupBox *buildNetworkFrame();
    QGroupBox *buildSerialFrame();

    dlgConnect &dialog;
    const ConnectView &view;
    AddressBoxes *address = nullptr;
    QComboBox *SerialPortsCombo = nullptr;
    ListControl shownPorts;
};
