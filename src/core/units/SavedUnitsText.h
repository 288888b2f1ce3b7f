#pragma once

#include "units/SavedUnits.h"

#include <array>
#include <string>
#include <string_view>

/// Reads one number of an address from the 1-based `position`: up to four characters, ended by ".",
/// CR or LF. Past the end of the line it reads blanks, so the last number of an address is padded
/// to four characters. Leaves `position` behind the separator.
std::string ReadIPQuadToken(std::string_view line, int &position);

/// Reads the text of a saved-units file into `units`: lines "KVN NAME = ", "KVN TYPE = " and
/// "KVN IP = ", each unit beginning with its name line; all other lines are passed over. Lines end
/// with CR LF, LF or CR; a UTF-8 byte order mark before the first is no part of it. From a 26th
/// unit on the text goes into `units.LeftOut` as it is. `addressQuads` 0 to 3 are left as the last
/// address line read gave them.
void ReadSavedUnitsText(SavedUnits &units, std::string_view text,
                        std::array<std::string, 5> &addressQuads);

/// The text of the file for `units`. Slots without a name are left out, and the address line of all
/// that are not exactly "ETHER". What a read left out follows as it was.
std::string writeSavedUnitsText(const SavedUnits &units);
