#pragma once

#include "simulator/LineBehaviour.h"
#include "simulator/Wire.h"

#include <QElapsedTimer>
#include <QObject>
#include <QTimer>

#include <deque>
#include <random>

/// Sends a unit's answers by a wire in the manner of a LineBehaviour: late, in pieces, spoilt.
/// Answers keep their order. Runs on timers only while something is to be sent.
class FaultyLine : public QObject {
    Q_OBJECT
public:
    static constexpr qint64 Room = 262'144;       ///< bytes under way that call for a pause
    static constexpr int PieceGapMs = 3;          ///< from one piece to the next
    static constexpr int HangUpDelayMs = 20;      ///< lets the peer see the first half
    static constexpr int FloodGapMs = 10;         ///< from one chunk of a flood to the next
    static constexpr qsizetype FloodChunk = 4096; ///< bytes of a flood at a time
    static constexpr qsizetype LeastGarbage = 16; ///< bytes, for short or empty answers

    /// The wire must outlive the line.
    FaultyLine(const LineBehaviour &lineBehaviour, Wire &lineWire, QObject *parent = nullptr);

    void answer(const QByteArray &bytes);

    /// Tells that the peer took bytes.
    void wireTook();

    /// Whether more answers are welcome. Who goes on regardless makes the line's memory grow.
    [[nodiscard]] bool hasRoom() const;

    /// Forgets all that has not been written, for the next peer.
    void reset();

Q_SIGNALS:
    /// An answer, as it goes out, starts on its way; of a flood, only the first.
    void sending(const QByteArray &bytes);
    void roomAgain();

private:
    struct Waiting {
        qint64 dueMs = 0;
        QByteArray bytes;
    };

    void step();
    bool beginAnswer();
    void sendPiece();
    void flood();
    [[nodiscard]] QByteArray spoilt(const QByteArray &bytes);

    LineBehaviour behaviour;
    Wire &wire;
    QTimer timer;
    QElapsedTimer clock;
    std::minstd_rand noise;
    std::deque<Waiting> waiting;
    qint64 waitingBytes = 0;
    QByteArray current; // what is left of the answer on its way, or the text of the flood
    bool closing = false;
    bool flooding = false;
};
