#pragma once

#include "platform/SerialPort.h"

#include <QSerialPort>

/// SerialPort over QSerialPort. A device that goes away is closed and reads as not open.
class QtSerialPort : public SerialPort {
public:
    /// @param appPath the program's folder, where `ports/comN` may name devices
    explicit QtSerialPort(std::string appPath);

    using SerialPort::open;
    [[nodiscard]] std::string deviceOf(int port) const override;
    void open(int port, const std::string &portDevice, std::string_view settings) override;
    void close() override;
    [[nodiscard]] bool isOpen() const override;
    void discardBuffers() override;
    void write(std::string_view text) override;
    std::string readAll() override;

private:
    [[nodiscard]] std::string place() const;
    void configure(std::string_view settings);
    void lose(int ofOpening, const std::string &reason);

    std::string programFolder;
    QSerialPort port;
    int portNumber = 0;
    int opening = 0;    ///< counts them, so that a late error does not close a port opened since
    std::string device; ///< of the port opened last
    std::string failure = "the port is not open"; ///< why the port is not open
};
