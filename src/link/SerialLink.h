#pragma once

#include "link/LinkState.h"
#include "link/LinkStatusDisplay.h"
#include "platform/EventPump.h"
#include "platform/SerialPort.h"
#include "protocol/ExchangeState.h"

#include <string_view>

/// The unit on a serial port. A write on a closed port opens it again with the last port, so the
/// link heals after the port was gone for a while.
class SerialLink {
public:
    SerialLink(LinkState &linkState, ExchangeState &exchangeState, SerialPort &serialPort,
               EventPump &eventPump, LinkStatusDisplay &statusDisplay);

    /// Leaves in `SerialPortOpen` whether COM port `port` can be opened. The port is closed after.
    void TestCommPort(int port);

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
    void SerialWrite(std::string_view text);

    /// Writes, collects what arrives in 0.3 s and classifies it. Always takes the whole period.
    /// @throws LinkError as SerialWrite
    void SerialWriteGetResponse(std::string_view text);

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
};
