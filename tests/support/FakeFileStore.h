#pragma once

#include "machine/FileStore.h"

#include <map>

/// Files in memory.
class FakeFileStore : public FileStore {
public:
    std::map<std::string, std::string> contentsOf; ///< by path
    std::string failure;                           ///< what every replace fails with; empty: none
    std::string readFailure;                       ///< what every read fails with; empty: none

    bool exists(const std::string &path) const override { return contentsOf.contains(path); }
    std::string read(const std::string &path, std::string &contents) const override {
        if (readFailure.empty())
            contents = contentsOf.at(path);
        return readFailure;
    }
    std::string replace(const std::string &path, std::string_view contents,
                        const std::string &backupPath) override {
        if (!failure.empty())
            return failure;
        if (exists(path))
            contentsOf[backupPath] = contentsOf[path];
        contentsOf[path] = contents;
        return {};
    }
    std::string join(const std::string &folder, const std::string &name) const override {
        return folder + "/" + name;
    }
};
