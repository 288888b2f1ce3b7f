#pragma once

#include "simulator/FileDescriptor.h"

#include <QByteArray>
#include <QString>

/// A controller's end of a serial line that is a pty.
class Terminal {
public:
    /// Opens the device, or the link to it, as it is, without changing its settings.
    explicit Terminal(const QString &path);

    [[nodiscard]] bool isOpen() const { return file.isOpen(); }
    [[nodiscard]] bool write(const QByteArray &bytes) const;

    /// Reads until `count` bytes came or the far side hung up or patience ended.
    [[nodiscard]] QByteArray read(qsizetype count) const;

private:
    FileDescriptor file;
};
