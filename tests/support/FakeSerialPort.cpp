#include "support/FakeSerialPort.h"

#include "platform/LinkError.h"

#include <utility>

void FakeSerialPort::vanish() {
    present.erase(openPort);
    if (std::exchange(openPort, 0) != 0)
        lost();
}

std::string FakeSerialPort::deviceOf(int port) const {
    const auto renamed = devices.find(port);
    return renamed == devices.end() ? "tty" + std::to_string(port) : renamed->second;
}

void FakeSerialPort::open(int port, const std::string &device, std::string_view settings) {
    openPort = 0;
    lastPort = port;
    if (!present.contains(port))
        throw LinkError("Opening", "COM" + std::to_string(port), "no such device");
    openPort = port;
    const bool usual = device == "tty" + std::to_string(port);
    log.push_back("open " + std::to_string(port) + " " + std::string(settings) +
                  (usual ? "" : " " + device));
}

void FakeSerialPort::close() {
    openPort = 0;
    log.emplace_back("close");
}

void FakeSerialPort::discardBuffers() { input.clear(); }

void FakeSerialPort::write(std::string_view text) {
    const std::string place = "COM" + std::to_string(lastPort);
    if (!isOpen())
        throw LinkError("Writing to", place, "the port is not open");
    if (writeLimit && text.size() > *writeLimit)
        throw LinkError("Writing to", place, "input/output error");
    if (writeLimit)
        *writeLimit -= text.size();
    wire.pass(text, [this](const std::string &piece) { input += piece; });
}

std::string FakeSerialPort::readAll() { return std::exchange(input, {}); }
