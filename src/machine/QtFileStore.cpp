#include "QtFileStore.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QSaveFile>

namespace {

std::string failed(const char *tried, const std::string &path, const std::string &reason) {
    return std::string(tried) + " " + path + " failed: " + reason + ".";
}

std::string failed(const char *tried, const std::string &path, const QFileDevice &file) {
    return failed(tried, path, file.errorString().toStdString());
}

/// Why what stands at `path` can be neither read nor replaced: a pipe would make the program wait
/// for ever, a device would never end or be lost. Empty if a file stands there, or nothing.
std::string whyNoFile(const char *tried, const std::string &path) {
    const QFileInfo info(QString::fromStdString(path));
    if (!info.exists() || info.isFile())
        return {};
    return failed(tried, path, "It is not a regular file");
}

/// The new contents of one file, whole on the disk before the file itself is touched.
class Replacement {
public:
    explicit Replacement(const std::string &filePath)
        : path(filePath), file(QString::fromStdString(filePath)) {}

    std::string open() {
        if (std::string failure = whyNoFile("Writing", path); !failure.empty())
            return failure;
        return file.open(QIODevice::WriteOnly | QIODevice::Unbuffered) ? std::string() : failure();
    }
    /// Not on every file system; what such a one cannot say it cannot keep private either.
    void takePermissionsOf(const std::string &other) {
        file.setPermissions(QFileInfo(QString::fromStdString(other)).permissions());
    }
    std::string write(std::string_view contents) {
        // A disk that fills up takes a part first and says why with the next one.
        while (!contents.empty()) {
            const qint64 taken = file.write(contents.data(), static_cast<qint64>(contents.size()));
            if (taken <= 0)
                return failure();
            contents.remove_prefix(static_cast<std::size_t>(taken));
        }
        return file.flush() ? std::string() : failure();
    }
    std::string commit() { return file.commit() ? std::string() : failure(); }

private:
    [[nodiscard]] std::string failure() const { return failed("Writing", path, file); }

    std::string path;
    QSaveFile file;
};

} // namespace

bool QtFileStore::exists(const std::string &path) const {
    return QFileInfo::exists(QString::fromStdString(path));
}

std::string QtFileStore::read(const std::string &path, std::string &contents) const {
    if (std::string failure = whyNoFile("Reading", path); !failure.empty())
        return failure;
    QFile file(QString::fromStdString(path));
    if (!file.open(QIODevice::ReadOnly))
        return failed("Reading", path, file);
    contents = file.readAll().toStdString();
    if (file.error() != QFileDevice::NoError)
        return failed("Reading", path, file);
    return {};
}

std::string QtFileStore::replace(const std::string &path, std::string_view contents,
                                 const std::string &backupPath) {
    Replacement file(path);
    if (std::string failure = file.open(); !failure.empty())
        return failure;
    if (std::string failure = file.write(contents); !failure.empty())
        return failure;
    if (exists(path)) {
        std::string before;
        if (std::string failure = read(path, before); !failure.empty())
            return failure;
        Replacement copy(backupPath);
        std::string failure = copy.open();
        if (failure.empty()) {
            copy.takePermissionsOf(path);
            failure = copy.write(before);
        }
        if (failure.empty())
            failure = copy.commit();
        if (!failure.empty())
            return "Replacing " + path + " failed, its copy cannot be kept: " + failure;
    }
    return file.commit();
}

std::string QtFileStore::join(const std::string &folder, const std::string &name) const {
    return QDir::toNativeSeparators(
               QDir(QString::fromStdString(folder)).filePath(QString::fromStdString(name)))
        .toStdString();
}
