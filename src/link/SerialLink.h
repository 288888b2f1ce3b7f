#pragma once

#include "link/LinkState.h"
#include "link/LinkStatusDisplay.h"
#include "platform/EventPump.h"
#include "platform/SerialPort.h"
#include "protocol/ExchangeState.h"

#include <string>

/// The unit on a serial port. A device that goes marks the link as down on every window. A write on
/// a closed port opens the same device again, so the link heals after it was gone for a while.
class SerialLink {
public:
    SerialLink(LinkState &linkState, ExchangeState &exchangeState, SerialPort &serialPort,
               EventPump &eventPump, LinkStatusDisplay &statusDisplay);
    SerialLink(const SerialLink &) = delete;
    SerialLink &operator=(const SerialLink &) = delete;
    ~SerialLink();

    /// Leaves in `SerialPortOpen` whether COM port `port` can be opened. The port is closed after.
    /// Events run first; a port that is opened for use among them stays open and is not tested.
    void TestCommPort(int port);

    /// Makes COM port `port` the `SelectedCommPort`: whatever opens it from now on opens the device
    /// that has the number now, even if another gets the number later.
    void selectPort(int port);

    /// Opens `SelectedCommPort` for use.
    /// @throws LinkError with `SerialPortOpen` false
    void OpenSerialPort();

    /// Closes an open port for good and clears `LinkKind`, which stays when the port is closed
    /// already.
    void CloseSerialPort();

    /// Closes the port if it is open, without a word to anybody.
    void closePort();

    /// Writes without waiting.
    /// @throws LinkError if the port is closed and does not open again
    void SerialWrite(std::string text);

    /// Writes, collects what arrives in 0.3 s and classifies it. Always takes the whole period.
    /// @throws LinkError as SerialWrite
    void SerialWriteGetResponse(std::string text);

    /// Whether the port behind an open link is still there.
    [[nodiscard]] bool portIsOpen() const { return port.isOpen(); }

private:
    void reopenIfClosed();
    void ReopenSerialPort(int portNumber);
    void openForUse(int portNumber);
    void ReadSerialResponse();
    void AppendSerialInput();

    LinkState &link;
    ExchangeState &exchange;
    SerialPort &port;
    EventPump &pump;
    LinkStatusDisplay &display;
    int deviceNumber = 0; ///< the COM number by which `device` was selected
    std::string device;
};
