#pragma once

#include "machine/LinkError.h"
#include "machine/SerialPort.h"

#include <QSerialPort>

/// SerialPort over QSerialPort. A device that goes away is closed and reads as not open.
class QtSerialPort : public SerialPort {
public:
    /// @param appPath the program's folder, where `ports/comN` may name devices
    explicit QtSerialPort(std::string appPath);

    [[nodiscard]] SerialDevice device(int number) const override;
    [[nodiscard]] std::vector<SerialDeviceFacts>
    look(const std::vector<SerialDevice> &devices) const override;
    [[nodiscard]] std::string holder(const SerialDevice &device) const override;
    void open(const SerialDevice &device, std::string_view settings) override;
    void close() override;
    [[nodiscard]] bool isOpen() const override;
    void discardBuffers() override;
    void write(std::string_view text) override;
    std::string readAll() override;

private:
    [[nodiscard]] std::string place() const;
    [[nodiscard]] std::string number() const { return "COM" + std::to_string(current.number); }
    [[noreturn]] void fail(const char *tried, const std::string &reason,
                           LinkFailure kind = LinkFailure::Other) const;
    void configure(std::string_view settings);
    void noteError(QSerialPort::SerialPortError error);

    std::string programFolder;
    QSerialPort port;
    SerialDevice current;                         ///< opened last
    std::string failure = "the port is not open"; ///< why the port is not open
    int opening = 0;                              ///< counts the openings
};
