#include "platform/QtFileStore.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QSaveFile>

namespace {

std::string failed(const char *tried, const std::string &path, const QFileDevice &file) {
    return std::string(tried) + " " + path + " failed: " + file.errorString().toStdString() + ".";
}

std::string save(const std::string &path, std::string_view contents) {
    QSaveFile file(QString::fromStdString(path));
    const auto length = static_cast<qint64>(contents.size());
    const bool saved = file.open(QIODevice::WriteOnly) &&
                       file.write(contents.data(), length) == length && file.commit();
    return saved ? std::string() : failed("Writing", path, file);
}

} // namespace

bool QtFileStore::exists(const std::string &path) const {
    return QFileInfo::exists(QString::fromStdString(path));
}

std::string QtFileStore::read(const std::string &path, std::string &contents) const {
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
    if (exists(path)) {
        std::string before;
        if (std::string failure = read(path, before); !failure.empty())
            return failure;
        if (const std::string failure = save(backupPath, before); !failure.empty())
            return "Replacing " + path + " failed, its copy cannot be kept: " + failure;
    }
    return save(path, contents);
}

std::string QtFileStore::join(const std::string &folder, const std::string &name) const {
    return QDir::toNativeSeparators(
               QDir(QString::fromStdString(folder)).filePath(QString::fromStdString(name)))
        .toStdString();
}
