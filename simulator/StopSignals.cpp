#include "simulator/StopSignals.h"

#include <sys/signalfd.h>

#include <csignal>

StopSignals::StopSignals(QObject *parent) : QObject(parent) {
    sigset_t signals;
    sigemptyset(&signals);
    for (const int number : {SIGINT, SIGTERM, SIGHUP})
        sigaddset(&signals, number);
    sigprocmask(SIG_BLOCK, &signals, nullptr);
    arrivals = FileDescriptor(signalfd(-1, &signals, SFD_NONBLOCK | SFD_CLOEXEC));
    notifier = std::make_unique<QSocketNotifier>(arrivals.get(), QSocketNotifier::Read);
    connect(notifier.get(), &QSocketNotifier::activated, this, [this] {
        signalfd_siginfo arrival{};
        if (::read(arrivals.get(), &arrival, sizeof arrival) == sizeof arrival)
            Q_EMIT stop();
    });
}
