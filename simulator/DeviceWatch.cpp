#include "simulator/DeviceWatch.h"

#include <sys/inotify.h>

#include <algorithm>
#include <array>
#include <cstring>

DeviceWatch::DeviceWatch(const std::string &device, QObject *parent)
    : QObject(parent), events(inotify_init1(IN_NONBLOCK | IN_CLOEXEC)) {
    if (!events.isOpen() || inotify_add_watch(events.get(), device.c_str(), IN_OPEN | IN_CLOSE) < 0)
        return;
    notifier = std::make_unique<QSocketNotifier>(events.get(), QSocketNotifier::Read);
    connect(notifier.get(), &QSocketNotifier::activated, this, &DeviceWatch::check);
}

void DeviceWatch::check() {
    bool wasLast = false;
    std::array<char, 4096> buffer{};
    ssize_t got = 0;
    while ((got = ::read(events.get(), buffer.data(), buffer.size())) > 0) {
        for (std::size_t at = 0; at < static_cast<std::size_t>(got);) {
            inotify_event event{};
            std::memcpy(&event, buffer.data() + at, sizeof event);
            at += sizeof event + event.len;
            if (event.mask & IN_OPEN) {
                ++openCount;
            } else if (event.mask & IN_CLOSE) {
                openCount = std::max(0, openCount - 1);
                wasLast = wasLast || openCount == 0;
            }
        }
    }
    if (wasLast)
        Q_EMIT lastClosed();
}
