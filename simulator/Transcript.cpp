#include "simulator/Transcript.h"

#include "protocol/Text.h"

#include <QTime>

#include <fcntl.h>
#include <poll.h>
#include <sys/stat.h>

#include <cerrno>
#include <utility>

namespace {

// Standard output, such that a write never waits for a reader. A pipe or a terminal is opened anew,
// because other programs that have it open would share the setting.
int openOutput() {
    struct stat kind {};
    ::fstat(STDOUT_FILENO, &kind);
    int output = -1;
    if (S_ISFIFO(kind.st_mode) || S_ISCHR(kind.st_mode))
        output = ::open("/proc/self/fd/1", O_WRONLY | O_NOCTTY | O_CLOEXEC);
    if (output < 0)
        output = ::fcntl(STDOUT_FILENO, F_DUPFD_CLOEXEC, 0);
    ::fcntl(output, F_SETFL, ::fcntl(output, F_GETFL) | O_NONBLOCK);
    return output;
}

} // namespace

Transcript::Transcript() : output(openOutput()), room(output.get(), QSocketNotifier::Write) {
    room.setEnabled(false);
    QObject::connect(&room, &QSocketNotifier::activated, &room, [this] { write(); });
}

Transcript::~Transcript() {
    pollfd reader{output.get(), POLLOUT, 0};
    while (!waiting.isEmpty() && ::poll(&reader, 1, LastWaitMs) > 0)
        write();
}

void Transcript::record(const QByteArray &link, char direction, const QByteArray &bytes) {
    const QByteArray time = QTime::currentTime().toString(u"HH:mm:ss.zzz").toLatin1();
    note(time + ' ' + link + ' ' + direction + ' ' +
         QByteArray::fromStdString(visible(bytes.toStdString())));
}

void Transcript::note(const QByteArray &line) {
    if (waiting.size() >= MaxWaiting) {
        ++missing;
        return;
    }
    if (missing > 0)
        waiting += "(" + QByteArray::number(std::exchange(missing, 0)) + " lines are missing)\n";
    waiting += line + '\n';
    write();
}

void Transcript::write() {
    const ssize_t took =
        ::write(output.get(), waiting.constData(), static_cast<std::size_t>(waiting.size()));
    if (took < 0 && errno != EAGAIN)
        waiting.clear(); // nobody will ever read it
    else
        waiting.remove(0, std::max<ssize_t>(took, 0));
    room.setEnabled(!waiting.isEmpty());
}
