#include "link/SerialLink.h"

#include "machine/LinkError.h"
#include "protocol/ReplyClass.h"

namespace {
constexpr std::string_view SettingsForUse = "38400,N,8,1";
constexpr std::string_view SettingsForTest = "115200,N,8,1";
constexpr double ReadPeriodSeconds = 0.3;
} // namespace

SerialLink::SerialLink(LinkState &linkState, ExchangeState &exchangeState, SerialPort &serialPort,
                       EventPump &eventPump, LinkStatusDisplay &statusDisplay)
    : link(linkState),
      exchange(exchangeState),
      port(serialPort),
      pump(eventPump),
      display(statusDisplay) {
    port.lost = [this] {
        link.SerialPortOpen = false;
        display.refreshAll();
        pump.show();
    };
}

SerialLink::~SerialLink() {
    port.lost = [] {};
}

PortTest SerialLink::TestCommPort(int portNumber) {
    pump.runQueued();
    PortTest test{port.device(portNumber), std::nullopt};
    // One that was opened for use meanwhile stays open.
    if (pump.ended() || port.isOpen())
        return test;
    link.SerialPortOpen = false;
    try {
        port.open(test.device, SettingsForTest);
    } catch (const LinkError &error) {
        test.failure = error;
        return test;
    }
    link.SerialPortOpen = true;
    port.close();
    return test;
}

std::vector<PortReport> SerialLink::report(const std::vector<PortTest> &tests) const {
    std::vector<SerialDevice> devices;
    devices.reserve(tests.size());
    for (const PortTest &test : tests)
        devices.push_back(test.device);
    const std::vector<SerialDeviceFacts> facts = port.look(devices);
    std::vector<PortReport> reports;
    for (std::size_t index = 0; index < tests.size(); ++index) {
        const PortTest &test = tests[index];
        const std::string holder =
            isHeld(test, facts.at(index)) ? port.holder(test.device) : std::string();
        reports.push_back(reportOn(test, facts.at(index), holder));
    }
    return reports;
}

void SerialLink::open() {
    openForUse(link.DeviceInUse);
    pump.runQueued();
}

void SerialLink::OpenSerialPort(int portNumber) {
    openForUse(port.device(portNumber));
    pump.runQueued();
}

void SerialLink::ReopenSerialPort() {
    try {
        openForUse(link.DeviceInUse);
    } catch (const LinkError &) {
        return;
    }
    display.refreshAll();
    const int mine = opening;
    pump.runQueued();
    // What is open by now may lead to another unit.
    if (mine != opening)
        throw LinkError("Writing to", "COM" + std::to_string(link.SelectedCommPort),
                        "the port was opened or closed meanwhile");
}

void SerialLink::openForUse(const SerialDevice &device) {
    closePort();
    link.SerialPortOpen = false;
    port.open(device, SettingsForUse);
    port.discardBuffers();
    ++opening;
    link.SerialPortOpen = true;
    link.SelectedCommPort = device.number;
    link.DeviceInUse = device;
}

void SerialLink::closePort() {
    ++opening;
    if (port.isOpen())
        port.close();
}

void SerialLink::close() {
    if (!port.isOpen())
        return;
    closePort();
    link.LinkKind = NoLinkKind;
    link.SerialPortOpen = false;
    display.refreshAll();
}

void SerialLink::disconnect() {
    closePort();
    link.SerialPortOpen = false;
}

void SerialLink::send(std::string text) {
    reopenIfClosed();
    port.write(text);
}

void SerialLink::sendGetResponse(std::string text) {
    // Reopening runs events; an exchange among them must not leave its reply in this one's.
    reopenIfClosed();
    exchange.SerialRawReply.clear();
    port.write(text);
    ReadSerialResponse();
}

void SerialLink::reopenIfClosed() {
    if (!port.isOpen())
        ReopenSerialPort();
}

void SerialLink::ReadSerialResponse() {
    exchange.ResponseText.clear();
    exchange.ReplyStatus = UnknownReply;
    const double end = pump.now() + ReadPeriodSeconds;
    do {
        AppendSerialInput();
        pump.runEvents(end);
    } while (pump.now() < end && !pump.ended());
    AppendSerialInput();
    exchange.ReplyStatus = classifyReply(exchange.SerialRawReply);
    if (exchange.ReplyStatus == RecognisedReply)
        exchange.ResponseText = exchange.SerialRawReply;
}

void SerialLink::AppendSerialInput() { appendReceived(exchange.SerialRawReply, port.readAll()); }
