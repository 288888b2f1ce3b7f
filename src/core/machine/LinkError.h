#pragma once

#include <stdexcept>
#include <string>

/// A transport could not do what was asked. what() is a sentence for the user: what was tried, on
/// which port or address, and the system's reason.
class LinkError : public std::runtime_error {
public:
    LinkError(const std::string &tried, const std::string &place, const std::string &reason)
        : std::runtime_error(tried + " " + place + " failed: " + reason + ".") {}
};
