#pragma once

#include "machine/LinkError.h"
#include "machine/SerialPort.h"
#include "support/FakeWire.h"

#include <map>
#include <optional>
#include <set>
#include <vector>

/// The serial ports of a machine in memory. One device answers, on whichever port is open.
class FakeSerialPort : public SerialPort {
public:
    explicit FakeSerialPort(FakePump &pump) : wire(pump) {}

    FakeWire wire;
    std::set<int> present;                  ///< ports that open
    std::optional<std::size_t> writeLimit;  ///< bytes that still go out before a write fails
    std::map<int, std::string> devices;     ///< of ports that are not tty and the number
    std::map<int, LinkFailure> failures;    ///< of ports that do not open; the others': NoDevice
    std::map<int, SerialDeviceFacts> facts; ///< of ports that are not just there
    std::string holderName;                 ///< of every port
    std::vector<std::string> log;           ///< "open 7 38400,N,8,1", "close"

    /// Takes the open device away, as when its cable is pulled, and tells so.
    void vanish();
    /// Bytes that arrive without having been asked for.
    void receive(std::string_view bytes) { input += bytes; }

    [[nodiscard]] SerialDevice device(int number) const override;
    [[nodiscard]] std::vector<SerialDeviceFacts>
    look(const std::vector<SerialDevice> &asked) const override;
    [[nodiscard]] std::string holder(const SerialDevice &) const override { return holderName; }
    void open(const SerialDevice &device, std::string_view settings) override;
    void close() override;
    [[nodiscard]] bool isOpen() const override { return openPort != 0; }
    void discardBuffers() override;
    void write(std::string_view text) override;
    std::string readAll() override;

private:
    int openPort = 0;
    int lastPort = 0;
    std::string input;
};
