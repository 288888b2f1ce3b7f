#pragma once

#include "simulator/LineBehaviour.h"
#include "simulator/Unit.h"

#include <cstdint>
#include <optional>
#include <span>
#include <stdexcept>
#include <string>
#include <string_view>

/// The command line asks for something that there is not; what() is one line for the user.
class OptionError : public std::runtime_error {
public:
    explicit OptionError(const std::string &text) : std::runtime_error(text) {}
};

struct TcpPlace {
    std::string address;    ///< a numeric IPv4 or IPv6 address, without brackets
    std::uint16_t port = 0; ///< 0 lets the system choose
};

/// What the command line asks for. An option that is given twice counts as given last.
struct SimulatorOptions {
    UnitOptions unit;
    LineBehaviour line;
    std::optional<TcpPlace> tcp;
    std::optional<std::string> serial; ///< path of the link to the pty
    bool listModels = false;
    bool help = false;

    /// @param arguments the command line without the program's name
    /// @throws OptionError
    static SimulatorOptions of(std::span<const std::string_view> arguments);

    /// The text that explains all options.
    static std::string usage();
};
