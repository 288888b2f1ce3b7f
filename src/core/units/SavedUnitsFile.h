#pragma once

#include "link/LinkState.h"
#include "machine/FileStore.h"
#include "units/SavedUnits.h"

#include <string>

/// The file of saved units, "KVNConfigurator.ini" in the program's folder: single-byte text, lines
/// ended by CR LF. Failures are told as a sentence for the user; an empty text means success.
class SavedUnitsFile {
public:
    SavedUnitsFile(SavedUnits &savedUnits, LinkState &linkState, FileStore &fileStore,
                   const std::string &appPath);

    /// Reads the file if there is one; a missing file leaves the units as they are. So do changes
    /// that could not be saved. A file of more than 25 units is told once.
    [[nodiscard]] std::string CheckGetIniFile();

    /// Replaces the file by the units in memory and what the last read left out; the file before
    /// stays as "KVNConfigurator.bak".
    [[nodiscard]] std::string Write2Disk();

private:
    SavedUnits &units;
    LinkState &link;
    FileStore &files;
    std::string path;
    std::string backupPath;
};
