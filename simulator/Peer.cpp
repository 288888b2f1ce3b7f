#include "simulator/Peer.h"

#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <utility>

Peer::Peer(Bench &sharedBench, QByteArray peerName, FileDescriptor peerWire, QObject *parent)
    : QObject(parent),
      bench(sharedBench),
      name(std::move(peerName)),
      wire(std::move(peerWire)),
      in(bench.unit),
      readable(wire.get(), QSocketNotifier::Read),
      writable(wire.get(), QSocketNotifier::Write) {
    timer.setSingleShot(true);
    timer.setTimerType(Qt::PreciseTimer);
    clock.start();
    connect(&readable, &QSocketNotifier::activated, this, &Peer::hear);
    connect(&writable, &QSocketNotifier::activated, this, &Peer::send);
    connect(&timer, &QTimer::timeout, this, &Peer::beginPiece);
    connect(&bench, &Bench::faultSet, this, &Peer::cutOff);
    settle();
}

void Peer::reset() {
    in.reset();
    cutOff();
}

void Peer::hear() {
    Q_EMIT hearing();
    std::array<char, ReadSize> bytes{};
    const ssize_t got = ::read(wire.get(), bytes.data(), bytes.size());
    if (got < 0) {
        if (errno != EAGAIN)
            end();
        return;
    }
    heardAll = got == 0;
    for (const Exchange &exchange :
         in.receive(std::string_view(bytes.data(), static_cast<std::size_t>(got)))) {
        bench.transcript.record(name, '>', QByteArray::fromStdString(exchange.command));
        answer(QByteArray::fromStdString(exchange.answer));
    }
    settle();
}

void Peer::answer(QByteArray bytes) {
    const LineBehaviour &line = bench.line;
    if (mad || line.fault == Fault::Silence)
        return;
    mad = line.fault == Fault::Close || line.fault == Fault::Flood;
    if (line.fault == Fault::Garbage) {
        bytes.resize(std::max(bytes.size(), LeastGarbage));
        std::generate(bytes.begin(), bytes.end(),
                      [this] { return static_cast<char>(noise() >> 8 & 0xff); });
    } else if (line.fault == Fault::Close) {
        bytes.truncate(bytes.size() / 2);
    } else if (line.fault == Fault::Flood && bytes.isEmpty()) {
        bytes = "\r\n";
    }
    QByteArray said = bytes;
    if (line.fault == Fault::Flood)
        bytes = bytes.repeated(FloodSize / bytes.size() + 1);

    const qint64 due = clock.elapsed() + line.latencyMs;
    const qsizetype size = line.splitBytes > 0 ? line.splitBytes : bytes.size();
    for (qsizetype at = 0; at < bytes.size(); at += size)
        queue.push_back({due, bytes.mid(at, size), std::exchange(said, {})});
    if (line.fault == Fault::Close)
        queue.push_back({due, {}, {}});
}

void Peer::beginPiece() {
    Piece piece = std::move(queue.front());
    queue.pop_front();
    if (piece.bytes.isEmpty()) {
        end();
        return;
    }
    if (!piece.answer.isEmpty())
        bench.transcript.record(name, '<', piece.answer);
    outgoing = piece.bytes;
    if (bench.line.fault == Fault::Flood)
        queue.push_back({0, std::move(piece.bytes), {}});
    notBeforeMs = clock.elapsed() + pauseMs();
    send();
}

int Peer::pauseMs() const {
    if (!queue.empty() && queue.front().bytes.isEmpty())
        return HangUpDelayMs;
    if (bench.line.fault == Fault::Flood)
        return FloodGapMs;
    return bench.line.splitBytes > 0 ? PieceGapMs : 0;
}

void Peer::send() {
    const ssize_t took =
        ::write(wire.get(), outgoing.constData(), static_cast<std::size_t>(outgoing.size()));
    if (took < 0 && errno != EAGAIN) {
        end();
        return;
    }
    outgoing.remove(0, std::max<ssize_t>(took, 0));
    settle();
}

void Peer::cutOff() {
    timer.stop();
    queue.clear();
    outgoing.clear();
    mad = false;
    settle();
}

// What comes next, in every state.
void Peer::settle() {
    if (!wire.isOpen())
        return;
    if (heardAll && queue.empty() && outgoing.isEmpty()) {
        end();
        return;
    }
    readable.setEnabled(!heardAll && queue.size() < MaxWaiting);
    writable.setEnabled(!outgoing.isEmpty());
    if (outgoing.isEmpty() && !queue.empty() && !timer.isActive()) {
        const qint64 due = std::max(queue.front().dueMs, notBeforeMs);
        timer.start(static_cast<int>(std::max<qint64>(0, due - clock.elapsed())));
    }
}

void Peer::end() {
    readable.setEnabled(false);
    writable.setEnabled(false);
    timer.stop();
    wire = FileDescriptor();
    Q_EMIT ended();
}
