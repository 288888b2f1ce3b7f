#include "simulator/Transcript.h"

#include <QString>
#include <QTime>

#include <poll.h>
#include <unistd.h>

#include <cerrno>
#include <chrono>
#include <condition_variable>
#include <mutex>
#include <thread>

namespace {

void writeOut(const QByteArray &bytes) {
    for (qsizetype at = 0; at < bytes.size();) {
        const ssize_t took = ::write(STDOUT_FILENO, bytes.constData() + at,
                                     static_cast<std::size_t>(bytes.size() - at));
        if (took < 0 && errno != EAGAIN)
            return;
        at += std::max<ssize_t>(took, 0);
        pollfd room{STDOUT_FILENO, POLLOUT, 0};
        ::poll(&room, 1, -1);
    }
}

// Printable ASCII, with "\r", "\n", "\\" and "\xNN" for all that is not.
QByteArray visible(const QByteArray &bytes) {
    QByteArray text;
    for (const char byte : bytes) {
        if (byte == '\r')
            text += "\\r";
        else if (byte == '\n')
            text += "\\n";
        else if (byte == '\\')
            text += "\\\\";
        else if (byte < ' ' || byte > '~')
            text += "\\x" + QByteArray(1, byte).toHex();
        else
            text += byte;
    }
    return text;
}

} // namespace

struct Transcript::Output {
    std::mutex mutex;
    std::condition_variable changed;
    QByteArray waiting; // counts until it is written
    int missing = 0;    // lines left out
};

// A thread of its own may stay in a write for ever: no kind of output can be asked beforehand
// whether it takes a whole line. It ends with the process and shares what it needs.
Transcript::Transcript() : output(std::make_shared<Output>()) {
    std::thread([shared = output] {
        std::unique_lock lock(shared->mutex);
        while (true) {
            shared->changed.wait(lock, [&] { return !shared->waiting.isEmpty(); });
            const QByteArray bytes = shared->waiting;
            lock.unlock();
            writeOut(bytes);
            lock.lock();
            shared->waiting.remove(0, bytes.size());
            shared->changed.notify_all();
        }
    }).detach();
}

Transcript::~Transcript() {
    std::unique_lock lock(output->mutex);
    output->changed.wait_for(lock, std::chrono::milliseconds(LastWaitMs),
                             [this] { return output->waiting.isEmpty(); });
}

void Transcript::record(const QByteArray &link, char direction, const QByteArray &bytes) {
    const QByteArray time = QTime::currentTime().toString(u"HH:mm:ss.zzz").toLatin1();
    note(time + ' ' + link + ' ' + direction + ' ' + visible(bytes));
}

void Transcript::note(const QByteArray &line) {
    const std::lock_guard lock(output->mutex);
    if (output->waiting.size() >= MaxWaiting) {
        ++output->missing;
        return;
    }
    if (const int missing = std::exchange(output->missing, 0))
        output->waiting += "(" + QByteArray::number(missing) + " lines are missing)\n";
    output->waiting += line + '\n';
    output->changed.notify_all();
}
