#include "support/FakeSerialPort.h"

#include <utility>

void FakeSerialPort::vanish() {
    present.erase(openPort);
    if (std::exchange(openPort, 0) != 0)
        lost();
}

SerialDevice FakeSerialPort::device(int number) const {
    const auto renamed = devices.find(number);
    return {number, renamed == devices.end() ? "tty" + std::to_string(number) : renamed->second};
}

std::vector<SerialDeviceFacts> FakeSerialPort::look(const std::vector<SerialDevice> &asked) const {
    std::vector<SerialDeviceFacts> all;
    for (const SerialDevice &device : asked) {
        const auto known = facts.find(device.number);
        all.push_back(known != facts.end() ? known->second : SerialDeviceFacts());
        if (present.contains(device.number))
            all.back().presence = SerialDeviceFacts::Presence::There;
    }
    return all;
}

void FakeSerialPort::open(const SerialDevice &device, std::string_view settings) {
    const std::string number = std::to_string(device.number);
    openPort = 0;
    lastPort = device.number;
    if (!present.contains(device.number)) {
        const auto failure = failures.find(device.number);
        throw LinkError("Opening", "COM" + number, "no such device",
                        failure != failures.end() ? failure->second : LinkFailure::NoDevice);
    }
    openPort = device.number;
    const bool usual = device.name == "tty" + number;
    log.push_back("open " + number + " " + std::string(settings) +
                  (usual ? "" : " " + device.name));
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
