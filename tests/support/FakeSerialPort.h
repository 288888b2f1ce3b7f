#pragma once

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
    std::set<int> present;                 ///< ports that open
    std::optional<std::size_t> writeLimit; ///< bytes that still go out before a write fails
    std::map<int, std::string> devices;    ///< of ports that are not tty and the number
    std::vector<std::string> log;          ///< "open 7 38400,N,8,1", "close"

    /// Takes the open device away, as when its cable is pulled, and tells so.
    void vanish();
    /// Bytes that arrive without having been asked for.
    void receive(std::string_view bytes) { input += bytes; }

    [[nodiscard]] SerialDevice device(int number) const override;
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
