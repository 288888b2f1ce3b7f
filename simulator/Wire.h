#pragma once

#include <QByteArray>

/// The way out of a link, as the lines above it see it.
class Wire {
public:
    Wire() = default;
    Wire(const Wire &) = delete;
    Wire &operator=(const Wire &) = delete;
    virtual ~Wire() = default;

    /// Takes all bytes, at once; what the peer has not taken counts as unsent.
    virtual void write(const QByteArray &bytes) = 0;

    /// Bytes that were written and wait for the peer.
    [[nodiscard]] virtual qint64 unsent() const = 0;

    /// Takes the link down. The bytes that the system took before may still arrive.
    virtual void hangUp() = 0;
};
