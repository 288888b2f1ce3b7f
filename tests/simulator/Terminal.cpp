#include "simulator/Terminal.h"

#include "simulator/RunningSimulator.h"

#include <QDeadlineTimer>
#include <QFile>

#include <fcntl.h>
#include <poll.h>

#include <array>

Terminal::Terminal(const QString &path)
    : file(::open(QFile::encodeName(path).constData(), O_RDWR | O_NOCTTY | O_CLOEXEC)) {}

bool Terminal::write(const QByteArray &bytes) const {
    return ::write(file.get(), bytes.constData(), static_cast<std::size_t>(bytes.size())) ==
           bytes.size();
}

QByteArray Terminal::read(qsizetype count) const {
    const QDeadlineTimer deadline(RunningSimulator::PatienceMs);
    QByteArray bytes;
    while (bytes.size() < count) {
        pollfd wait{file.get(), POLLIN, 0};
        std::array<char, 1024> buffer{};
        if (poll(&wait, 1, static_cast<int>(deadline.remainingTime())) <= 0)
            break;
        const ssize_t got = ::read(file.get(), buffer.data(), buffer.size());
        if (got <= 0)
            break;
        bytes.append(buffer.data(), got);
    }
    return bytes;
}
