#pragma once

#include "simulator/FileDescriptor.h"

#include <QByteArray>
#include <QSocketNotifier>

/// The record of what passes, a line each on standard output. Nobody has to read it: the program
/// goes on meanwhile, and what comes while MaxWaiting bytes are unread is left out.
class Transcript {
public:
    static constexpr qsizetype MaxWaiting = 1'048'576;
    static constexpr int LastWaitMs = 500;

    Transcript();
    Transcript(const Transcript &) = delete;
    Transcript &operator=(const Transcript &) = delete;
    /// Gives a reader who takes something every LastWaitMs what is left.
    ~Transcript();

    /// "HH:MM:SS.mmm LINK > BYTES".
    /// @param direction '>' for what the unit is sent, '<' for what it sends
    void record(const QByteArray &link, char direction, const QByteArray &bytes);

    /// A line as it is.
    void note(const QByteArray &line);

private:
    void write();

    FileDescriptor output;
    QSocketNotifier room;
    QByteArray waiting;
    int missing = 0; // lines left out
};
