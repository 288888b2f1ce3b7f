#pragma once

#include <QByteArray>
#include <QByteArrayView>

enum class Direction { ToUnit, FromUnit };

/// The record of what passes, a line each on standard output, written out at once.
class Transcript {
public:
    /// "HH:MM:SS.mmm LINK > BYTES", with "<" for what the unit sends.
    void record(QByteArrayView link, Direction direction, QByteArrayView bytes);

    /// A line as it is.
    void note(const QByteArray &line);

    /// `bytes` in printable ASCII: "\r", "\n", "\\" and "\xNN" stand for all that is not.
    static QByteArray visible(QByteArrayView bytes);
};
