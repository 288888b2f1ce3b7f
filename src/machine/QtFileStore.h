#pragma once

#include "machine/FileStore.h"

/// FileStore over QFile and QSaveFile.
class QtFileStore : public FileStore {
public:
    [[nodiscard]] bool exists(const std::string &path) const override;
    [[nodiscard]] std::string read(const std::string &path, std::string &contents) const override;
    [[nodiscard]] std::string replace(const std::string &path, std::string_view contents,
                                      const std::string &backupPath) override;
    [[nodiscard]] std::string join(const std::string &folder,
                                   const std::string &name) const override;
};
