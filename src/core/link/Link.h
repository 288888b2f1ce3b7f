#pragma once

#include <string>

/// One way to the unit. All texts are sent byte by byte as they are.
class Link {
public:
    Link() = default;
    Link(const Link &) = delete;
    Link &operator=(const Link &) = delete;
    virtual ~Link() = default;

    /// @throws LinkError if a serial port does not open; a network link tells by its flags
    virtual void open() = 0;

    virtual void close() = 0;

    /// Closes for good, without a word to anybody.
    virtual void disconnect() = 0;

    /// Sends `text`, reads nothing.
    /// @throws LinkError if it cannot be sent
    virtual void send(std::string text) = 0;

    /// Sends `text`, collects what arrives in the link's read period and classifies it into
    /// `ReplyStatus` and `ResponseText`. Always takes the whole period.
    /// @throws LinkError as send
    virtual void sendGetResponse(std::string text) = 0;

    /// All that arrived in the last read period.
    [[nodiscard]] virtual const std::string &rawReply() const = 0;

    /// Takes note that the transport failed: the link counts as down unless it still stands.
    virtual void markFailed() = 0;

    /// Whether the link counts as up.
    [[nodiscard]] virtual bool isUp() const = 0;
};
