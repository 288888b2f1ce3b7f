#include "units/SavedUnitsFile.h"

#include "units/SavedUnitsText.h"

#include <utility>

namespace {
constexpr const char *IniFileName = "KVNConfigurator.ini";
constexpr const char *BackupFileName = "KVNConfigurator.bak";
constexpr const char *WhenNotWritable = "\nIf the program's folder cannot be written, copy it to a "
                                        "place of your own, such as your home "
                                        "folder, and start the program there.";
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
    ReadSavedUnitsText(units, text, link.IPAddressQuads);
    const bool toldBefore = std::exchange(units.ExcessReported, !units.LeftOut.empty());
    if (!units.ExcessReported || toldBefore)
        return {};
    return path + " holds more than 25 units; those after the 25th are left out. They stay at the "
                  "end of that file and come in when others are deleted.";
}

std::string SavedUnitsFile::Write2Disk() {
    units.IniFileExists = files.exists(path);
    std::string failure = files.replace(path, writeSavedUnitsText(units), backupPath);
    units.UnsavedChanges = !failure.empty();
    return failure.empty() ? failure : failure + WhenNotWritable;
}
