#pragma once

#include <string>
#include <string_view>

/// The machine's serial ports, of which one at a time is open. No handshaking.
class SerialPort {
public:
    SerialPort() = default;
    SerialPort(const SerialPort &) = delete;
    SerialPort &operator=(const SerialPort &) = delete;
    virtual ~SerialPort() = default;

    /// Opens COM port `port` (1 upward) with settings such as "38400,N,8,1": baud rate, parity
    /// (N, E, O), data bits, stop bits. An open port is closed first.
    /// @throws LinkError if the port is missing, busy or cannot be set so
    virtual void open(int port, std::string_view settings) = 0;
    virtual void close() = 0;
    /// False as well once the device is gone.
    [[nodiscard]] virtual bool isOpen() const = 0;

    /// Drops what was received and not read, and what was not sent yet.
    virtual void discardBuffers() = 0;

    /// Queues `text` for sending, byte by byte as it is.
    /// @throws LinkError if the port is not open or does not take it
    virtual void write(std::string_view text) = 0;

    /// Takes out all that was received so far; may be empty.
    virtual std::string readAll() = 0;
};
