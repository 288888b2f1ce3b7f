#include "units/SavedUnitsFile.h"

#include "units/SavedUnitsText.h"

namespace {
constexpr const char *IniFileName = "KVNConfigurator.ini";
constexpr const char *BackupFileName = "KVNConfigurator.bak";
} // namespace

SavedUnitsFile::SavedUnitsFile(SavedUnits &savedUnits, LinkState &linkState, FileStore &fileStore,
                               const std::string &appPath)
    : units(savedUnits),
      link(linkState),
      files(fileStore),
      path(fileStore.join(appPath, IniFileName)),
      backupPath(fileStore.join(appPath, BackupFileName)) {}

std::string SavedUnitsFile::CheckGetIniFile() {
    units.IniFileExists = files.exists(path);
    if (!units.IniFileExists || units.UnsavedChanges)
        return {};
    std::string text;
    if (std::string failure = files.read(path, text); !failure.empty())
        return failure;
    const bool allRead = ReadSavedUnitsText(units, text, link.IPAddressQuads);
    if (allRead)
        units.ExcessReported = false;
    else if (!units.ExcessReported) {
        units.ExcessReported = true;
        return path +
               " holds more than 25 units; those after the 25th are left out. The next save keeps "
               "the file as " +
               backupPath + ".";
    }
    return {};
}

std::string SavedUnitsFile::Write2Disk() {
    units.IniFileExists = files.exists(path);
    std::string failure = files.replace(path, writeSavedUnitsText(units), backupPath);
    units.UnsavedChanges = !failure.empty();
    return failure;
}
