#pragma once

#include "simulator/Bench.h"
#include "simulator/FileDescriptor.h"
#include "simulator/UnitPort.h"

#include <QElapsedTimer>
#include <QSocketNotifier>
#include <QTimer>

#include <deque>
#include <random>

/// The talk of one peer with the unit: turns arriving bytes into answers and sends them in the
/// manner of the bench's LineBehaviour: late, in pieces, spoilt. Answers keep their order. A peer
/// that does not take its answers is not heard after MaxWaiting of them.
class Peer : public QObject {
    Q_OBJECT
public:
    static constexpr std::size_t MaxWaiting = 1024; ///< pieces of answers
    static constexpr std::size_t ReadSize = 4096;   ///< bytes heard at a time
    static constexpr int PieceGapMs = 3;            ///< from one piece to the next
    static constexpr int FloodGapMs = 10;           ///< from one piece of a flood to the next
    static constexpr int HangUpDelayMs = 50;        ///< lets the peer see the first half
    static constexpr qsizetype FloodSize = 4096;    ///< least bytes of a flood's piece
    static constexpr qsizetype LeastGarbage = 16;   ///< bytes, for short or empty answers

    /// @param peerName stands in the transcript
    /// @param peerWire to the peer; does not block
    Peer(Bench &sharedBench, QByteArray peerName, FileDescriptor peerWire, QObject *parent);

    /// Forgets unfinished commands and unsent answers, for the next peer on the same wire.
    void reset();

Q_SIGNALS:
    /// Bytes are about to be read.
    void hearing();
    /// The wire is closed: the peer has gone and has all its answers, or the fault wants it so.
    void ended();

private:
    struct Piece {
        qint64 dueMs = 0;
        QByteArray bytes;  // none: the link goes down
        QByteArray answer; // that begins with this piece, for the transcript
    };

    void hear();
    void answer(QByteArray bytes);
    void beginPiece();
    void send();
    void cutOff();
    void settle();
    void end();
    [[nodiscard]] int pauseMs() const;

    Bench &bench;
    QByteArray name;
    FileDescriptor wire;
    UnitPort in;
    QSocketNotifier readable;
    QSocketNotifier writable;
    QTimer timer;
    QElapsedTimer clock;
    std::minstd_rand noise;
    std::deque<Piece> queue;
    QByteArray outgoing; // what the wire has not taken of the last piece
    qint64 notBeforeMs = 0;
    bool heardAll = false; // the peer has said that it has no more to say
    bool mad = false;      // an answer that ends all answering is on its way
};
