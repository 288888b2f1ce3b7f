#pragma once

#include <string>
#include <string_view>

/// The machine's files, as far as the program keeps any. Failures are told as a sentence for the
/// user that names the file and the reason; an empty text means success.
class FileStore {
public:
    FileStore() = default;
    FileStore(const FileStore &) = delete;
    FileStore &operator=(const FileStore &) = delete;
    virtual ~FileStore() = default;

    [[nodiscard]] virtual bool exists(const std::string &path) const = 0;

    /// Reads the whole file into `contents`, byte by byte as it is.
    [[nodiscard]] virtual std::string read(const std::string &path,
                                           std::string &contents) const = 0;

    /// Replaces the file at once: whoever looks, or is cut off, finds the old file or the new one,
    /// whole. The file that is replaced is kept at `backupPath`. After a failure the old file is as
    /// it was.
    [[nodiscard]] virtual std::string replace(const std::string &path, std::string_view contents,
                                              const std::string &backupPath) = 0;

    /// `folder` and `name` joined with the platform's separator.
    [[nodiscard]] virtual std::string join(const std::string &folder,
                                           const std::string &name) const = 0;
};
