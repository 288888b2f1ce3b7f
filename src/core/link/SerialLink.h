#pragma once

#include "link/ExchangeState.h"
#include "link/Link.h"
#include "link/LinkState.h"
#include "link/LinkStatusDisplay.h"
#include "link/PortReport.h"
#include "machine/EventPump.h"

/// The unit on a serial port. A write on a closed port opens the device again that was open, so the
/// link heals after it was gone for a while. Read period: 0.3 s.
class SerialLink : public Link {
public:
    SerialLink(LinkState &linkState, ExchangeState &exchangeState, SerialPort &serialPort,
               EventPump &eventPump, LinkStatusDisplay &statusDisplay);
    ~SerialLink() override;

    /// Leaves in `SerialPortOpen` whether COM port `port` can be opened. The port is closed after.
    PortTest TestCommPort(int port);

    /// What the system tells of ports that were tried, one for each.
    [[nodiscard]] std::vector<PortReport> report(const std::vector<PortTest> &tests) const;

    /// Opens COM port `port` for use, which makes it the selected one.
    /// @throws LinkError with `SerialPortOpen` false and the selected port as it was
    void OpenSerialPort(int port);

    /// Opens the device in use again, whatever bears its number by now.
    void open() override;

    /// Closes an open port for good and clears `LinkKind`. Does nothing at all when the port is not
    /// open.
    void close() override;
    void disconnect() override;
    void send(std::string text) override;
    void sendGetResponse(std::string text) override;
    [[nodiscard]] const std::string &rawReply() const override { return exchange.SerialRawReply; }
    void markFailed() override { link.SerialPortOpen = port.isOpen(); }
    [[nodiscard]] bool isUp() const override { return link.SerialPortOpen; }

private:
    void closePort();
    void reopenIfClosed();
    void ReopenSerialPort();
    void openForUse(const SerialDevice &device);
    void ReadSerialResponse();
    void AppendSerialInput();

    int opening = 0; ///< counts the opens for use and the closes

    LinkState &link;
    ExchangeState &exchange;
    SerialPort &port;
    EventPump &pump;
    LinkStatusDisplay &display;
};
