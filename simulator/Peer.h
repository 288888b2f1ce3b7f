#pragma once

#include "simulator/Bench.h"
#include "simulator/FileDescriptor.h"
#include "simulator/UnitPort.h"

#include <QElapsedTimer>
#include <QSocketNotifier>
#include <QTimer>

#include <deque>

/// The talk of one peer with the unit: turns arriving bytes into answers and sends them in the
/// manner of the bench's LineBehaviour: late, in pieces, not at all. Answers keep their order. A
/// peer that does not take its answers is not heard after MaxWaiting of them.
class Peer : public QObject {
    Q_OBJECT
public:
    static constexpr std::size_t MaxWaiting = 1024; ///< answers
    static constexpr std::size_t ReadSize = 4096;   ///< bytes heard at a time
    static constexpr int PieceGapMs = 3;            ///< from one piece to the next
    static constexpr int HangUpDelayMs = 50;        ///< lets the peer see the first half

    /// @param peerName stands in the transcript
    /// @param peerWire to the peer; does not block
    Peer(Bench &sharedBench, QByteArray peerName, FileDescriptor peerWire, QObject *parent);

    /// Forgets unfinished commands and unsent answers, for the next peer on the same wire.
    void reset();

Q_SIGNALS:
    /// Bytes are about to be read.
    void hearing();
    /// The wire is closed: the peer has gone and has all its answers, or it was cut.
    void ended();

private:
    struct Answer {
        qint64 dueMs = 0;
        QByteArray bytes; // none: the link goes down
    };

    void hear();
    void answer(const QByteArray &bytes);
    void send();
    void drop();
    void settle();
    void end();

    Bench &bench;
    QByteArray name;
    FileDescriptor wire;
    UnitPort in;
    QSocketNotifier readable;
    QSocketNotifier writable; // enabled while the wire has no room
    QTimer timer;
    QElapsedTimer clock;
    std::deque<Answer> queue;
    QByteArray rest; // of the answer that is being sent
    qint64 notBeforeMs = 0;
    bool heardAll = false; // the peer has said that it has no more to say
};
