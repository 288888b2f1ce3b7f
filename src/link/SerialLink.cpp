#include "link/SerialLink.h"

#include "platform/LinkError.h"
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
    };
}

SerialLink::~SerialLink() {
    port.lost = [] {};
}

void SerialLink::TestCommPort(int portNumber) {
    pump.runQueued();
    if (port.isOpen())
        return;
    link.SerialPortOpen = false;
    if (pump.ended())
        return;
    try {
        port.open(portNumber, SettingsForTest);
    } catch (const LinkError &) {
        return;
    }
    link.SerialPortOpen = true;
    port.close();
}

void SerialLink::selectPort(int portNumber) {
    link.SelectedCommPort = portNumber;
    deviceNumber = portNumber;
    device = port.deviceOf(portNumber);
}

void SerialLink::OpenSerialPort() { openForUse(link.SelectedCommPort); }

void SerialLink::ReopenSerialPort(int portNumber) {
    try {
        openForUse(portNumber);
    } catch (const LinkError &) {
        link.SerialPortOpen = false;
    }
}

void SerialLink::openForUse(int portNumber) {
    closePort();
    link.SerialPortOpen = false;
    if (deviceNumber != portNumber) {
        deviceNumber = portNumber;
        device = port.deviceOf(portNumber);
    }
    port.open(portNumber, device, SettingsForUse);
    port.discardBuffers();
    link.SerialPortOpen = true;
    pump.runQueued();
}

void SerialLink::closePort() {
    if (port.isOpen())
        port.close();
}

void SerialLink::CloseSerialPort() {
    if (!port.isOpen())
        return;
    port.close();
    link.LinkKind = NoLinkKind;
    link.SerialPortOpen = false;
    display.ConnecthandleConnectionStatus();
}

// Reopening runs events, so the text belongs to the write and not to its caller.
// NOLINTNEXTLINE(performance-unnecessary-value-param)
void SerialLink::SerialWrite(std::string text) {
    reopenIfClosed();
    port.write(text);
}

// NOLINTNEXTLINE(performance-unnecessary-value-param)
void SerialLink::SerialWriteGetResponse(std::string text) {
    // An exchange among the events of a reopening must not leave its reply in this one's.
    reopenIfClosed();
    exchange.SerialRawReply.clear();
    port.write(text);
    ReadSerialResponse();
}

void SerialLink::reopenIfClosed() {
    if (port.isOpen())
        return;
    ReopenSerialPort(link.SelectedCommPort);
    if (link.SerialPortOpen)
        display.refreshAll();
}

void SerialLink::ReadSerialResponse() {
    exchange.ResponseText.clear();
    exchange.ReplyStatus = UnknownReply;
    pump.runFor(ReadPeriodSeconds, [this] {
        AppendSerialInput();
        return false;
    });
    exchange.ReplyStatus = classifyReply(exchange.SerialRawReply);
    if (exchange.ReplyStatus == RecognisedReply)
        exchange.ResponseText = exchange.SerialRawReply;
}

void SerialLink::AppendSerialInput() { appendReceived(exchange.SerialRawReply, port.readAll()); }
