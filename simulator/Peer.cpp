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
    writable.setEnabled(false);
    connect(&readable, &QSocketNotifier::activated, this, &Peer::hear);
    connect(&writable, &QSocketNotifier::activated, this, &Peer::send);
    connect(&timer, &QTimer::timeout, this, &Peer::send);
    connect(&bench, &Bench::changed, this, &Peer::drop);
    connect(&bench, &Bench::unplugged, this, &Peer::end);
}

void Peer::reset() {
    in.reset();
    drop();
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

void Peer::answer(const QByteArray &bytes) {
    if (bench.line.fault == Fault::Silence)
        return;
    const bool cut = bench.line.fault == Fault::Close;
    const QByteArray sent = cut ? bytes.first(bytes.size() / 2) : bytes;
    const qint64 due = clock.elapsed() + bench.line.latencyMs;
    if (!sent.isEmpty())
        queue.push_back({due, sent});
    if (cut)
        queue.push_back({due + HangUpDelayMs, {}});
}

void Peer::send() {
    if (rest.isEmpty()) {
        rest = queue.front().bytes;
        queue.pop_front();
        if (rest.isEmpty()) {
            end();
            return;
        }
        bench.transcript.record(name, '<', rest);
    }
    const int split = bench.line.splitBytes;
    const qsizetype size = split > 0 ? std::min<qsizetype>(split, rest.size()) : rest.size();
    const ssize_t took = ::write(wire.get(), rest.constData(), static_cast<std::size_t>(size));
    if (took < 0 && errno != EAGAIN) {
        end();
        return;
    }
    rest.remove(0, std::max<ssize_t>(took, 0));
    writable.setEnabled(took < size);
    notBeforeMs = clock.elapsed() + (split > 0 ? PieceGapMs : 0);
    settle();
}

void Peer::drop() {
    timer.stop();
    writable.setEnabled(false);
    queue.clear();
    rest.clear();
    settle();
}

// What comes next, in every state.
void Peer::settle() {
    if (!wire.isOpen())
        return;
    const bool idle = rest.isEmpty() && queue.empty();
    if (idle && heardAll) {
        end();
        return;
    }
    readable.setEnabled(!heardAll && queue.size() < MaxWaiting);
    if (idle || writable.isEnabled() || timer.isActive())
        return;
    const qint64 due = rest.isEmpty() ? std::max(queue.front().dueMs, notBeforeMs) : notBeforeMs;
    timer.start(static_cast<int>(std::max<qint64>(0, due - clock.elapsed())));
}

void Peer::end() {
    if (!wire.isOpen())
        return;
    readable.setEnabled(false);
    writable.setEnabled(false);
    timer.stop();
    wire = FileDescriptor();
    Q_EMIT ended();
}
