#include "DeviceLook.h"

#include <QFileInfo>
#include <QLockFile>
#include <QSerialPortInfo>

#include <algorithm>
#include <cctype>
#include <filesystem>

#ifndef _WIN32
#include <grp.h>
#include <pwd.h>
#include <unistd.h>
#endif

namespace {

namespace fs = std::filesystem;
using Presence = SerialDeviceFacts::Presence;
using Membership = SerialDeviceFacts::Membership;

/// Where programs keep the lock files of serial devices; QSerialPort takes the first that it may
/// write to.
constexpr const char *LockFolders[] = {"/var/lock",       "/etc/locks", "/var/spool/locks",
                                       "/var/spool/uucp", "/tmp",       "/var/tmp",
                                       "/run/lock"};

#ifdef _WIN32

Membership membershipIn(unsigned) { return Membership::None; }

#else

Membership membershipIn(gid_t group) {
    const auto isAmong = [group](const std::vector<gid_t> &groups) {
        return std::find(groups.begin(), groups.end(), group) != groups.end();
    };
    std::vector<gid_t> groups(static_cast<std::size_t>(std::max(0, ::getgroups(0, nullptr))));
    const int count = ::getgroups(static_cast<int>(groups.size()), groups.data());
    groups.resize(static_cast<std::size_t>(std::max(0, count)));
    if (group == ::getegid() || isAmong(groups))
        return Membership::Now;
    const passwd *user = ::getpwuid(::getuid());
    if (!user)
        return Membership::None;
    int atLogin = 256;
    groups.resize(static_cast<std::size_t>(atLogin));
    if (::getgrouplist(user->pw_name, user->pw_gid, groups.data(), &atLogin) < 0)
        return Membership::None;
    groups.resize(static_cast<std::size_t>(atLogin));
    return isAmong(groups) ? Membership::AfterLogin : Membership::None;
}

#endif

std::string nameOr(const QString &name, uint number) {
    return name.isEmpty() ? std::to_string(number) : name.toStdString();
}

std::string adapterOf(const QSerialPortInfo &info) {
    const QString maker = info.manufacturer().trimmed();
    const QString product = info.description().trimmed();
    if (product.startsWith(maker))
        return product.toStdString();
    return (maker + QLatin1Char(' ') + product).trimmed().toStdString();
}

SerialDeviceFacts factsOf(const QString &name, const QList<QSerialPortInfo> &known) {
    const QFileInfo file(name);
    SerialDeviceFacts facts;
    const QString path = file.canonicalFilePath();
    const auto info = std::find_if(known.begin(), known.end(), [&](const QSerialPortInfo &port) {
        return port.systemLocation() == path || port.portName() == name;
    });
    if (info != known.end())
        facts.adapter = adapterOf(*info);
    if (!file.exists()) {
        // Where devices are no files the list is all there is.
        facts.presence = info != known.end() ? Presence::There
                         : file.isSymLink()  ? Presence::NameOnly
                                             : Presence::Missing;
        facts.leadsTo = file.symLinkTarget().toStdString();
        return facts;
    }
    facts.presence = Presence::There;
    if (file.isSymLink())
        facts.leadsTo = path.toStdString();
    facts.mayOpen = file.isReadable() && file.isWritable();
    if (facts.mayOpen)
        return facts;
    facts.owner = nameOr(file.owner(), file.ownerId());
    facts.group = nameOr(file.group(), file.groupId());
    // Nobody is to join the administrator's group for the sake of a port.
    facts.groupMayOpen =
        file.groupId() != 0 && file.permission(QFile::ReadGroup | QFile::WriteGroup);
    facts.membership = membershipIn(file.groupId());
    return facts;
}

std::string programOf(const fs::path &process) {
    QFile file(QString::fromStdString((process / "comm").string()));
    if (!file.open(QIODevice::ReadOnly))
        return {};
    return file.readAll().trimmed().toStdString() + " (process " + process.filename().string() +
           ")";
}

std::string lockedBy(QString name) {
    if (name.startsWith(QLatin1String("/dev/")))
        name.remove(0, 5);
    name.replace(QLatin1Char('/'), QLatin1Char('_'));
    for (const char *folder : LockFolders) {
        const QLockFile lock(QLatin1String(folder) + QLatin1String("/LCK..") + name);
        qint64 process = 0;
        QString host;
        QString program;
        if (!lock.getLockInfo(&process, &host, &program))
            continue;
        // A lock whose process is gone holds nobody off.
        std::string holder = programOf(fs::path("/proc") / std::to_string(process));
        if (!holder.empty())
            return holder;
    }
    return {};
}

bool hasOpen(const fs::path &process, const fs::path &device) {
    // Of another user's process nothing can be read, and any may end meanwhile.
    std::error_code unreadable;
    for (fs::directory_iterator open(process / "fd", unreadable), end; !unreadable && open != end;
         open.increment(unreadable)) {
        std::error_code closed;
        if (fs::read_symlink(open->path(), closed) == device)
            return true;
    }
    return false;
}

std::string openedBy(const fs::path &device) {
    std::error_code unreadable;
    for (fs::directory_iterator process("/proc", unreadable), end; !unreadable && process != end;
         process.increment(unreadable)) {
        if (std::isdigit(process->path().filename().string().front()) &&
            hasOpen(process->path(), device))
            return programOf(process->path());
    }
    return {};
}

} // namespace

std::vector<SerialDeviceFacts> factsOf(const std::vector<SerialDevice> &devices) {
    const QList<QSerialPortInfo> known = QSerialPortInfo::availablePorts();
    std::vector<SerialDeviceFacts> all;
    all.reserve(devices.size());
    for (const SerialDevice &device : devices)
        all.push_back(factsOf(QString::fromStdString(device.name), known));
    return all;
}

std::string holderOf(const std::string &device) {
    const QString name = QString::fromStdString(device);
    const QString path = QFileInfo(name).canonicalFilePath();
    for (const QString &locked : {name, path}) {
        if (std::string holder = lockedBy(locked); !holder.empty())
            return holder;
    }
    return openedBy(path.toStdString());
}
