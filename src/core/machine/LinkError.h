#pragma once

#include <stdexcept>
#include <string>

/// What kept a transport from opening, as far as the system tells it apart.
enum class LinkFailure {
    Other,
    NotPermitted, ///< no permission, or another program holds it
    NoDevice
};

/// A transport could not do what was asked. what() is a sentence for the user: what was tried, on
/// which port or address, and the system's reason.
class LinkError : public std::runtime_error {
public:
    LinkError(const std::string &tried, const std::string &place, const std::string &systemReason,
              LinkFailure linkFailure = LinkFailure::Other)
        : std::runtime_error(tried + " " + place + " failed: " + systemReason + "."),
          reasonText(systemReason),
          kind(linkFailure) {}

    /// In the system's words.
    [[nodiscard]] const std::string &reason() const { return reasonText; }
    [[nodiscard]] LinkFailure failure() const { return kind; }

private:
    std::string reasonText;
    LinkFailure kind;
};
