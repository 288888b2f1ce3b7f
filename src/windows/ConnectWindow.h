#pragma once

#include "AddressBoxes.h"
#include "PortList.h"
#include "Window.h"
#include "connect/dlgConnect.h"

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
    PortList *SerialPortsCombo = nullptr;
    ListControl shownPorts;
};
