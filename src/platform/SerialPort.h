#pragma once

#include <functional>
#include <string>
#include <string_view>

/// The machine's serial ports, of which one at a time is open. No handshaking.
class SerialPort {
public:
    SerialPort() = default;
    SerialPort(const SerialPort &) = delete;
    SerialPort &operator=(const SerialPort &) = delete;
    virtual ~SerialPort() = default;

    /// The system's name of the device that has the COM number `port` (1 upward) now.
    [[nodiscard]] virtual std::string deviceOf(int port) const = 0;

    /// Opens `device`, which the user knows as COM port `port`, with settings such as
    /// "38400,N,8,1": baud rate, parity (N, E, O), data bits, stop bits. An open port is closed
    /// first.
    /// @throws LinkError if the device is missing, busy or cannot be set so
    virtual void open(int port, const std::string &device, std::string_view settings) = 0;
    /// The same with the device that has the number now.
    void open(int port, std::string_view settings) { open(port, deviceOf(port), settings); }
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

    /// Called while events run, once, when the open device goes; the port is closed by then.
    /// close() does not come here.
    std::function<void()> lost = [] {};
};
