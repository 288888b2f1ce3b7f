#pragma once

#include "machine/SerialPort.h"

#include <QSerialPort>

/// SerialPort over QSerialPort. A device that goes away is closed and reads as not open.
class QtSerialPort : public SerialPort {
public:
    /// @param appPath the program's folder, where `ports/comN` may name devices
    explicit QtSerialPort(std::string appPath);

    [[nodiscard]] SerialDevice device(int number) const override;
    void open(const SerialDevice &device, std::string_view settings) override;
    void close() override;
    [[nodiscard]] bool isOpen() const override;
    void discardBuffers() override;
    void write(std::string_view text) override;
    std::string readAll() override;

private:
    [[nodiscard]] std::string place() const;
    void configure(std::string_view settings);
    void noteError(QSerialPort::SerialPortError error);

    std::string programFolder;
    QSerialPort port;
    SerialDevice current;                         ///< opened last
    std::string failure = "the port is not open"; ///< why the port is not open
    int opening = 0;                              ///< counts the openings
};
