#pragma once

#include "forms/AddressEntry.h"
#include "link/ActionGuard.h"
#include "link/NetworkLink.h"
#include "link/SerialLink.h"

/// The connection dialog. Options are lit when they are chosen.
struct ConnectView {
    FormView form;
    LinkStatusView status;
    Control Frame1{.text = "Connect using..."};
    Control ConnectIPOption{.text = "Ethernet"};
    Control ConnectSerialOption{.text = "Serial Port"};
    Control IPAddressFrame{.text = "Enter IP Address Here"};
    AddressView IPAddressQuadConnect;
    Control Connect2IPButton{.text = "Connect"};
    Control Label2{.text = "Connect to ..."};
    Control SerialConnectionFrame{.text = "Connect to Serial using..."};
    ListControl SerialPortsCombo{.control = {.text = "Select Port"}};
    Control Label1{.text = "Finding Comm Ports"};
    Control Connect2SerialButton{.text = "Connect"};
};

/// Chooses and opens the link: a network address, or one of the serial ports that are found. A new
/// choice takes over from what is under way. Every way out clears `IPConnectingFlag`.
class dlgConnect : public Form {
public:
    dlgConnect(ConnectView &connectView, LinkState &linkState, SerialLink &serialLink,
               NetworkLink &networkLink, LinkStatusDisplay &statusDisplay, ActionGuard &actionGuard,
               Messages &messages, EventPump &eventPump);

    /// Puts the dialog into its start state and shows it, modal.
    void LoadForm();

    /// Connects the address of `IPAddressQuads` without asking; the dialog shows the progress, goes
    /// away on success and stays with its message on failure.
    void HandleIPOnly();

    /// Chooses the serial option: shows the dialog and searches the ports.
    void HandleSerialOnly();

    /// Holds the caller, letting events run, until the dialog is left.
    void waitUntilLeft();

    /// Cancels what is under way.
    void unload() override;

    // What the user does. Boxes are 0 to 3.
    void ConnectIPOption_Click();
    void ConnectSerialOption_Click();
    void Connect2IPButton_Click();
    void Connect2SerialButton_Click();
    void SerialPortsCombo_Click(int item);
    void IPAddressQuadConnect_Change(const AddressPlace &before, const std::string &now);
    void IPAddressQuadConnect_Backspace(int box);
    void IPAddressQuadConnect_Enter(int box);
    void IPAddressQuadConnect_Left(int box);

private:
    int takeOver();
    void Form_Load();
    void makeIPAddressVisible() { view.IPAddressFrame.visible = true; }
    void makeIPAddressInVisible() { view.IPAddressFrame.visible = false; }
    void MakeSerialVisible() { view.SerialConnectionFrame.visible = true; }
    void MakeSerialInvisible() { view.SerialConnectionFrame.visible = false; }
    enum class Option { None, Network, Serial };
    void choose(Option option);
    void chooseNetwork();
    void chooseSerial();
    void FindCommPorts(int mine);
    void forgetPorts();
    void tellPorts();
    void tellPort(int port, const std::optional<LinkError> &failure);
    void choosePort(int port);
    void openPort(int port, int mine);
    /// @return false where it failed and the dialog is open for another try
    bool connectNetwork();

    ConnectView &view;
    LinkState &link;
    SerialLink &serial;
    NetworkLink &network;
    LinkStatusDisplay &display;
    ActionGuard &guard;
    Messages &user;
    AddressEntry address;
    bool connecting = false; ///< a network connect is under way
    /// What the last search, and a pick since, found of each device. The tool tips and descriptions
    /// of the serial option and of the port list tell it.
    std::vector<PortReport> ports;
};
