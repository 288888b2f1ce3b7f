#pragma once

#include <functional>
#include <string>
#include <string_view>
#include <vector>

/// A serial device under the COM port number that it bears, 1 upward.
struct SerialDevice {
    int number = 0;
    std::string name; ///< what the system calls it
};

/// What the system tells of a device that is not opened for it. Texts are UTF-8.
struct SerialDeviceFacts {
    enum class Presence {
        Missing,
        NameOnly, ///< its name is a link that leads to nothing
        There
    };
    /// Whether the user is in the group that owns the device.
    enum class Membership {
        None,
        AfterLogin, ///< joined the group, but logged in before that
        Now
    };

    Presence presence = Presence::Missing;
    std::string adapter{};     ///< maker and product; empty where the system tells none
    bool mayOpen = true;       ///< the user has the permission
    std::string owner{};       ///< of a device that the user may not open
    std::string group{};       ///< the same
    bool groupMayOpen = false; ///< whether being in that group gives the permission
    Membership membership = Membership::None;
    std::string leadsTo{}; ///< the device behind a name that is a link; empty for others
};

/// The machine's serial ports, of which one at a time is open. No handshaking.
class SerialPort {
public:
    SerialPort() = default;
    SerialPort(const SerialPort &) = delete;
    SerialPort &operator=(const SerialPort &) = delete;
    virtual ~SerialPort() = default;

    /// The device that bears the number now, whether it exists or not.
    [[nodiscard]] virtual SerialDevice device(int number) const = 0;

    /// What the system tells of the devices, one for each and in their order; opens none.
    [[nodiscard]] virtual std::vector<SerialDeviceFacts>
    look(const std::vector<SerialDevice> &devices) const = 0;

    /// The program that holds a device, as "name (process number)"; empty where the system does not
    /// tell.
    [[nodiscard]] virtual std::string holder(const SerialDevice &device) const = 0;

    /// Opens a device with settings such as "38400,N,8,1": baud rate, parity (N, E, O), data bits,
    /// stop bits. An open port is closed first.
    /// @throws LinkError if the device is missing, busy or cannot be set so
    virtual void open(const SerialDevice &device, std::string_view settings) = 0;
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

    /// Called, while events run, as soon as the open device is gone; the port is closed by then.
    std::function<void()> lost = [] {};
};
