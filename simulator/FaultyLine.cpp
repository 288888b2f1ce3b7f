#include "simulator/FaultyLine.h"

#include <algorithm>
#include <utility>

FaultyLine::FaultyLine(const LineBehaviour &lineBehaviour, Wire &lineWire, QObject *parent)
    : QObject(parent), behaviour(lineBehaviour), wire(lineWire) {
    timer.setSingleShot(true);
    timer.setTimerType(Qt::PreciseTimer);
    connect(&timer, &QTimer::timeout, this, &FaultyLine::step);
    clock.start();
}

void FaultyLine::answer(const QByteArray &bytes) {
    // A unit that went mad or down does not answer what follows.
    if (behaviour.fault == Fault::Silence || flooding || closing)
        return;
    QByteArray said = spoilt(bytes);
    if (said.isEmpty() && behaviour.fault == Fault::None)
        return;
    waitingBytes += said.size();
    waiting.push_back({clock.elapsed() + behaviour.latencyMs, std::move(said)});
    // Always by way of the timer: an answer never goes out from within the reading of commands.
    if (!timer.isActive())
        timer.start(0);
}

void FaultyLine::wireTook() {
    if (flooding && !timer.isActive())
        timer.start(FloodGapMs);
    if (hasRoom())
        Q_EMIT roomAgain();
}

bool FaultyLine::hasRoom() const { return waitingBytes + current.size() + wire.unsent() < Room; }

void FaultyLine::reset() {
    timer.stop();
    waiting.clear();
    waitingBytes = 0;
    current.clear();
    closing = false;
    flooding = false;
}

void FaultyLine::step() {
    if (flooding) {
        flood();
        return;
    }
    while (!current.isEmpty() || closing || beginAnswer()) {
        if (flooding) {
            flood();
            return;
        }
        if (current.isEmpty()) {
            wire.hangUp();
            return;
        }
        sendPiece();
        if (timer.isActive())
            break;
    }
    if (hasRoom())
        Q_EMIT roomAgain();
}

bool FaultyLine::beginAnswer() {
    if (waiting.empty())
        return false;
    const qint64 left = waiting.front().dueMs - clock.elapsed();
    if (left > 0) {
        timer.start(static_cast<int>(left));
        return false;
    }
    current = std::move(waiting.front().bytes);
    waiting.pop_front();
    waitingBytes -= current.size();
    flooding = behaviour.fault == Fault::Flood;
    closing = behaviour.fault == Fault::Close;
    if (closing)
        current.truncate(current.size() / 2);
    Q_EMIT sending(current);
    return true;
}

void FaultyLine::sendPiece() {
    const qsizetype size = behaviour.splitBytes > 0
                               ? std::min<qsizetype>(behaviour.splitBytes, current.size())
                               : current.size();
    wire.write(current.first(size));
    current.remove(0, size);
    if (current.isEmpty() && closing)
        timer.start(HangUpDelayMs);
    else if (behaviour.splitBytes > 0)
        timer.start(PieceGapMs);
}

void FaultyLine::flood() {
    // While the peer takes nothing there is nothing to do but to wait for wireTook().
    if (wire.unsent() > 0)
        return;
    const qsizetype size = behaviour.splitBytes > 0 ? behaviour.splitBytes : FloodChunk;
    while (current.size() < size)
        current += current;
    wire.write(current.first(size));
    std::rotate(current.begin(), current.begin() + size, current.end());
    timer.start(FloodGapMs);
}

QByteArray FaultyLine::spoilt(const QByteArray &bytes) {
    if (behaviour.fault == Fault::Flood && bytes.isEmpty())
        return "\r\n";
    if (behaviour.fault != Fault::Garbage)
        return bytes;
    QByteArray garbage(std::max(bytes.size(), LeastGarbage), '\0');
    std::generate(garbage.begin(), garbage.end(),
                  [this] { return static_cast<char>(noise() >> 8 & 0xff); });
    return garbage;
}
