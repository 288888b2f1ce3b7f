#include "simulator/PtyPort.h"

#include <fcntl.h>
#include <sys/inotify.h>
#include <sys/ioctl.h>
#include <termios.h>

#include <array>
#include <cerrno>
#include <cstdlib>
#include <span>
#include <system_error>
#include <utility>

namespace fs = std::filesystem;

namespace {

int orThrow(int result) {
    if (result < 0)
        throw std::system_error(errno, std::generic_category(), "no pseudo terminal can be made");
    return result;
}

// As a serial port is that nobody has open.
void makeFresh(int terminal) {
    termios settings{};
    tcgetattr(terminal, &settings);
    cfmakeraw(&settings);
    tcsetattr(terminal, TCSANOW, &settings);
    ::ioctl(terminal, TIOCNXCL);
}

// What a simulator that was killed leaves behind. A pty that is there may be anybody's: numbers are
// used again.
bool isStale(const fs::path &link) {
    return fs::is_symlink(fs::symlink_status(link)) && !fs::exists(link) &&
           fs::read_symlink(link).parent_path() == "/dev/pts";
}

} // namespace

PtyPort::PtyPort(Bench &sharedBench, const fs::path &linkPath)
    : bench(sharedBench), link(fs::absolute(linkPath)) {
    open();
}

PtyPort::~PtyPort() { removeLink(); }

void PtyPort::open() {
    // Before there is a pty that a stale link might lead to by chance.
    removeLink();
    if (isStale(link))
        fs::remove(link);
    if (fs::exists(fs::symlink_status(link)))
        throw std::runtime_error("cannot make the serial link " + link.string() +
                                 ": something else is there");

    FileDescriptor master(orThrow(::posix_openpt(O_RDWR | O_NOCTTY | O_NONBLOCK | O_CLOEXEC)));
    orThrow(::unlockpt(master.get()));
    const char *const name = ::ptsname(master.get());
    deviceName = name ? name : "";
    slave = FileDescriptor(orThrow(::open(deviceName.c_str(), O_RDWR | O_NOCTTY | O_CLOEXEC)));
    makeFresh(slave.get());

    // A pty that is kept open here shows in no other way who uses it.
    openCount = 0;
    visited.reset();
    visits = FileDescriptor(orThrow(::inotify_init1(IN_NONBLOCK | IN_CLOEXEC)));
    orThrow(::inotify_add_watch(visits.get(), deviceName.c_str(), IN_OPEN | IN_CLOSE));
    visited = std::make_unique<QSocketNotifier>(visits.get(), QSocketNotifier::Read);
    connect(visited.get(), &QSocketNotifier::activated, this, &PtyPort::followPeers);

    peer = new Peer(bench, "serial", std::move(master), this);
    // A new peer's bytes are never taken for those of the one before.
    connect(peer, &Peer::hearing, this, &PtyPort::followPeers);
    connect(peer, &Peer::ended, this, &PtyPort::openAgain);
    fs::create_directories(link.parent_path());
    fs::create_symlink(deviceName, link);
}

void PtyPort::openAgain() {
    visited.reset();
    peer->deleteLater();
    try {
        open();
    } catch (const std::exception &error) {
        bench.transcript.note("serial: the link cannot be made again: " + QByteArray(error.what()));
    }
}

void PtyPort::removeLink() const {
    std::error_code ignored;
    if (!deviceName.empty() && fs::read_symlink(link, ignored) == deviceName)
        fs::remove(link, ignored);
}

void PtyPort::followPeers() {
    bool closed = false;
    bool between = false;
    std::array<inotify_event, 64> events{};
    ssize_t got = 0;
    while ((got = ::read(visits.get(), events.data(), sizeof events)) > 0) {
        const std::size_t count = static_cast<std::size_t>(got) / sizeof(inotify_event);
        for (const inotify_event &event : std::span(events).first(count)) {
            between = between || openCount == 0;
            openCount = std::max(0, openCount + (event.mask & IN_OPEN ? 1 : -1));
            closed = closed || openCount == 0;
        }
    }
    if (closed)
        makeFresh(slave.get());
    if (closed || between) {
        tcflush(slave.get(), TCIFLUSH);
        peer->reset();
    }
}
