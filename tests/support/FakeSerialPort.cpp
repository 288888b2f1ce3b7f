#include "support/FakeSerialPort.h"

#include "platform/LinkError.h"

#include <utility>

void FakeSerialPort::vanish() {
    present.erase(openPort);
    openPort = 0;
}

void FakeSerialPort::open(int port, std::string_view settings) {
    openPort = 0;
    lastPort = port;
    if (!present.contains(port))
        throw LinkError("Opening", "COM" + std::to_string(port), "no such device");
    openPort = port;
    log.push_back("open " + std::to_string(port) + " " + std::string(settings));
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
