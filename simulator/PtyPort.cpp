#include "simulator/PtyPort.h"

#include <fcntl.h>
#include <pty.h>
#include <termios.h>

#include <array>
#include <cerrno>
#include <system_error>
#include <utility>

namespace {

std::string lastError() { return std::system_category().message(errno); }

void makeRaw(int terminal) {
    termios settings{};
    if (tcgetattr(terminal, &settings) == 0) {
        cfmakeraw(&settings);
        tcsetattr(terminal, TCSANOW, &settings);
    }
}

} // namespace

PtyPort::PtyPort(const Bench &bench, QObject *parent)
    : QObject(parent), transcript(bench.transcript), conversation(bench, "serial", *this) {
    connect(&conversation.line(), &FaultyLine::roomAgain, this, &PtyPort::hear);
}

std::string PtyPort::open(const std::string &path) {
    int masterSide = -1;
    int slaveSide = -1;
    std::array<char, 64> name{};
    if (openpty(&masterSide, &slaveSide, nullptr, nullptr, nullptr) != 0)
        return lastError();
    master = FileDescriptor(masterSide);
    slave = FileDescriptor(slaveSide);
    if (ptsname_r(masterSide, name.data(), name.size()) != 0 ||
        fcntl(masterSide, F_SETFL, O_NONBLOCK) != 0 ||
        fcntl(masterSide, F_SETFD, FD_CLOEXEC) != 0 || fcntl(slaveSide, F_SETFD, FD_CLOEXEC) != 0)
        return lastError();
    makeRaw(slaveSide);
    deviceName = name.data();
    linkPath = path;

    watch = std::make_unique<DeviceWatch>(deviceName);
    connect(watch.get(), &DeviceWatch::lastClosed, this, &PtyPort::forgetPeer);
    readable = std::make_unique<QSocketNotifier>(masterSide, QSocketNotifier::Read);
    connect(readable.get(), &QSocketNotifier::activated, this, &PtyPort::hear);
    writable = std::make_unique<QSocketNotifier>(masterSide, QSocketNotifier::Write);
    writable->setEnabled(false);
    connect(writable.get(), &QSocketNotifier::activated, this, &PtyPort::send);
    return link.make(path, deviceName);
}

void PtyPort::write(const QByteArray &bytes) {
    outgoing += bytes;
    send();
}

void PtyPort::hangUp() {
    // Called by way of the line's timer, never by one of the notifiers that go here.
    readable.reset();
    writable.reset();
    watch.reset();
    outgoing.clear();
    conversation.reset();
    slave = FileDescriptor();
    master = FileDescriptor();
    const std::string error = open(linkPath);
    if (!error.empty())
        transcript.note("serial: the link cannot be made again: " +
                        QByteArray::fromStdString(error));
}

void PtyPort::hear() {
    if (watch)
        watch->check();
    std::array<char, static_cast<std::size_t>(Conversation::Bite)> bytes{};
    bool room = true;
    while ((room = conversation.line().hasRoom())) {
        const ssize_t got = ::read(master.get(), bytes.data(), bytes.size());
        if (got <= 0)
            break;
        conversation.hear(QByteArray(bytes.data(), got));
    }
    // The system holds the peer back meanwhile; roomAgain comes here.
    if (readable)
        readable->setEnabled(room);
}

void PtyPort::send() {
    const ssize_t took = outgoing.isEmpty() ? 0
                                            : ::write(master.get(), outgoing.constData(),
                                                      static_cast<std::size_t>(outgoing.size()));
    if (took > 0)
        outgoing.remove(0, took);
    if (writable)
        writable->setEnabled(!outgoing.isEmpty());
    if (took > 0)
        conversation.line().wireTook();
}

void PtyPort::forgetPeer() {
    outgoing.clear();
    writable->setEnabled(false);
    conversation.reset();
    tcflush(slave.get(), TCIFLUSH);
    makeRaw(slave.get());
    readable->setEnabled(true);
}
