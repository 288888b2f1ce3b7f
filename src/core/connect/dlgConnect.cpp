#include "connect/dlgConnect.h"

#include "machine/LinkError.h"
#include "protocol/Text.h"

#include <utility>

namespace {
constexpr const char *ConnectPrompt = "Connect to ...";
}

dlgConnect::dlgConnect(ConnectView &connectView, LinkState &linkState, SerialLink &serialLink,
                       NetworkLink &networkLink, LinkStatusDisplay &statusDisplay,
                       ActionGuard &actionGuard, Messages &messages, EventPump &eventPump)
    : Form(connectView.form, eventPump),
      view(connectView),
      link(linkState),
      serial(serialLink),
      network(networkLink),
      display(statusDisplay),
      guard(actionGuard),
      user(messages),
      address(view.IPAddressQuadConnect, link.IPAddressQuads) {}

// What was begun before is stale from here on, and leaves nothing disabled.
int dlgConnect::takeOver() {
    link.FindingPortsFlag = false;
    view.Connect2IPButton.enabled = true;
    if (std::exchange(connecting, false)) {
        link.IPConnectingFlag = false;
        network.IPCheckifPortOpenwithClose();
    }
    view.Label2.text = ConnectPrompt;
    return beginShowing();
}

void dlgConnect::LoadForm() {
    takeOver();
    Form_Load();
    present();
    user.modalFormOpened();
}

void dlgConnect::Form_Load() {
    choose(Option::None);
    MakeSerialInvisible();
    makeIPAddressInVisible();
    view.SerialPortsCombo.entries.clear();
    view.SerialPortsCombo.chosen = -1;
    view.Connect2SerialButton.enabled = false;
    forgetPorts();
    address.fill({});
    view.status.labelVisible = false;
    view.status.linkUp = false;
    display.refreshAll();
    focusOn("ConnectIPOption");
    if (!link.IPAddressQuads[0].empty()) {
        // The address entered last is offered again, ready to connect.
        address.fill(link.IPAddressQuads);
        choose(Option::Network);
        makeIPAddressVisible();
    }
}

void dlgConnect::choose(Option option) {
    view.ConnectIPOption.lit = option == Option::Network;
    view.ConnectSerialOption.lit = option == Option::Serial;
}

void dlgConnect::HandleIPOnly() {
    LoadForm();
    choose(Option::Network);
    address.fill(link.IPAddressQuads);
    MakeSerialInvisible();
    makeIPAddressVisible();
    link.LinkKind = NetworkLinkKind;
    connectNetwork();
}

void dlgConnect::HandleSerialOnly() {
    LoadForm();
    focusOn("ConnectSerialOption");
    chooseSerial();
}

void dlgConnect::waitUntilLeft() {
    // A connect that was given up for the other kind of link clears the flag and leaves the dialog
    // open.
    pump.runUntil([this] { return !link.IPConnectingFlag && !isLoaded(); });
}

void dlgConnect::unload() {
    if (!isLoaded())
        return;
    takeOver();
    link.IPConnectingFlag = false;
    Form::unload();
    user.modalFormClosed();
}

void dlgConnect::ConnectIPOption_Click() {
    guard.run(*this, [this] { chooseNetwork(); });
}

void dlgConnect::ConnectSerialOption_Click() {
    guard.run(*this, [this] { chooseSerial(); });
}

void dlgConnect::Connect2IPButton_Click() {
    guard.run(*this, [this] { connectNetwork(); });
}

void dlgConnect::Connect2SerialButton_Click() {
    guard.run(*this, [this] { unload(); });
}

void dlgConnect::SerialPortsCombo_Click(int item) {
    const auto &entries = view.SerialPortsCombo.entries;
    if (!isLoaded() || item < 0 || item >= static_cast<int>(entries.size()))
        return;
    view.SerialPortsCombo.chosen = item;
    const std::string_view name = entries.at(static_cast<std::size_t>(item));
    guard.run(*this, [this, port = static_cast<int>(leadingNumber(mid(name, 5, 2)))] {
        choosePort(port);
    });
}

void dlgConnect::IPAddressQuadConnect_Change(const AddressPlace &before, const std::string &now) {
    if (view.IPAddressFrame.visible)
        address.change(before, now);
}

void dlgConnect::IPAddressQuadConnect_Backspace(int box) { address.backspace(box); }

void dlgConnect::IPAddressQuadConnect_Enter(int box) {
    if (box + 1 < AddressEntry::BoxCount) {
        address.goTo(box + 1);
    } else if (view.Connect2IPButton.enabled) {
        guard.run(*this, [this] {
            if (!connectNetwork())
                focusOn("Connect2IPButton"); // as if it had been pressed
        });
    }
}

void dlgConnect::IPAddressQuadConnect_Left(int box) {
    const double value = leadingNumber(address.text(box));
    if (value < 1.0 || value > 255.0)
        address.empty(box);
    else
        link.IPAddressQuads.at(static_cast<std::size_t>(box)) = decimalText(value);
}

void dlgConnect::chooseNetwork() {
    // A connect that is under way is of this option, so it goes on.
    if (!connecting)
        takeOver();
    choose(Option::Network);
    // A port picked before would stay taken for the rest of the run.
    serial.close();
    view.Connect2SerialButton.enabled = false;
    MakeSerialInvisible();
    makeIPAddressVisible();
    link.LinkKind = NetworkLinkKind;
    if (!link.IPAddressQuads[0].empty()) {
        address.fill({});
        for (std::size_t quad = 0; quad < 4; ++quad)
            link.IPAddressQuads.at(quad).clear();
    }
    address.goTo(0);
}

bool dlgConnect::connectNetwork() {
    const int mine = takeOver();
    connecting = true;
    view.Connect2IPButton.enabled = false;
    link.LinkKind = NetworkLinkKind;
    link.RemoteIPAddress = joinAddress(link.IPAddressQuads);
    view.Label2.text = "Connecting to " + link.RemoteIPAddress;
    if (!link.IPConnectedFlag) {
        // The outcome is read from flags that only a close clears.
        network.IPCheckifPortOpenwithClose();
        network.SetupConnectIP();
        if (!link.IPConnectedFlag && isShowing(mine))
            network.SetupConnectIP();
    }
    if (!isShowing(mine))
        return true;
    connecting = false;
    if (link.IPConnectedFlag) {
        link.LinkMadeCode = 1;
        display.refreshAll();
        unload();
        return true;
    }
    // The last attempt must not come through behind the user's back.
    network.IPCheckifPortOpenwithClose();
    user.ShowMessage("Unable to connect using that IP address, check the address and try again.",
                     link.ConnectFailure);
    if (!isShowing(mine))
        return true;
    view.Label2.text = ConnectPrompt;
    view.Connect2IPButton.enabled = true;
    return false;
}

void dlgConnect::chooseSerial() {
    const int mine = takeOver();
    choose(Option::Serial);
    // The search opens and closes ports; one that was picked before would be closed by it
    // unnoticed.
    serial.close();
    view.Connect2SerialButton.enabled = false;
    makeIPAddressInVisible();
    MakeSerialVisible();
    view.SerialPortsCombo.control.visible = false;
    view.Label1.text = "Finding Comm Ports";
    link.FindingPortsFlag = true;
    FindCommPorts(mine);
    if (!isShowing(mine))
        return;
    view.SerialPortsCombo.control.visible = true;
    link.LinkKind = SerialLinkKind;
}

void dlgConnect::FindCommPorts(int mine) {
    link.PortsFoundCount = 0;
    forgetPorts();
    std::vector<PortTest> tests;
    for (int port = 1; port <= LastCommPort; ++port) {
        tests.push_back(serial.TestCommPort(port));
        if (!isShowing(mine)) {
            // The flag may still be the answer of the test.
            serial.markFailed();
            return;
        }
        // The flag is the answer; the port itself is closed again.
        const bool found = std::exchange(link.SerialPortOpen, false);
        link.PortAvailable[port] = found ? 1 : 0;
        if (!found)
            continue;
        view.SerialPortsCombo.entries.push_back("Comm" + std::to_string(port));
        ++link.PortsFoundCount;
    }
    ports = serial.report(tests);
    std::erase_if(ports, [](const PortReport &report) { return !report.exists; });
    tellPorts();
    if (link.PortsFoundCount != 0) {
        view.Label1.text = "Found Comm Ports";
        view.SerialPortsCombo.chosen = -1;
    } else {
        user.ShowMessage("There are no COM ports available for updating\r\nClose any serial "
                         "communications programs in use, or connect a USB to Serial "
                         "Adapter Cable.",
                         textOf(ports));
        if (!isShowing(mine))
            return;
        choose(Option::None);
        MakeSerialInvisible();
    }
    link.FindingPortsFlag = false;
}

void dlgConnect::forgetPorts() {
    ports.clear();
    for (Control *control : {&view.ConnectSerialOption, &view.SerialPortsCombo.control})
        control->toolTip = control->description = {};
}

void dlgConnect::tellPorts() {
    const std::string text = textOf(ports);
    for (Control *control : {&view.ConnectSerialOption, &view.SerialPortsCombo.control})
        control->toolTip = control->description = text;
}

void dlgConnect::tellPort(int port, const std::optional<LinkError> &failure) {
    for (PortReport &report : ports) {
        if (report.number == port)
            report = serial.report({{{port, report.device}, failure}}).front();
    }
    tellPorts();
}

void dlgConnect::choosePort(int port) {
    const int mine = takeOver();
    link.PreviousCommPort = port;
    user.ShowMessage("Please make sure the Zarn is connected to the Comm Port " +
                     std::to_string(port) + " Cable before proceeding!");
    if (isShowing(mine))
        openPort(port, mine);
}

void dlgConnect::openPort(int port, int mine) {
    std::optional<LinkError> failure;
    try {
        serial.OpenSerialPort(port);
    } catch (const LinkError &error) {
        // Shown by the status below, as every port that does not open.
        failure = error;
    }
    // A port that has opened is the link in use, whatever became of the dialog.
    if (!link.SerialPortOpen && !isShowing(mine))
        return;
    tellPort(port, failure);
    link.LinkKind = SerialLinkKind;
    view.status.labelVisible = true;
    view.Connect2SerialButton.enabled = link.SerialPortOpen;
    link.LinkMadeCode = link.SerialPortOpen ? 1 : 0;
    if (link.SerialPortOpen) {
        display.refreshAll();
        link.ActiveCommPort = port;
        link.SerialSelectedFlag = true;
        return;
    }
    display.refreshAll();
    view.status = {.caption = "Not Connected", .colour = LinkColour::SerialDown};
    display.handleZarnConnectedFlag();
}
