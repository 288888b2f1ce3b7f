#pragma once

#include "protocol/Table.h"

#include <string>

/// Values of `ConnectType`; a file may hold others, which count as serial.
inline constexpr const char *EtherType = "ETHER";
inline constexpr const char *SerialType = "SERIAL";

/// One saved unit.
struct KVNControlBlock {
    std::string Name; ///< as the user typed it; empty: the slot is not written
    std::string ConnectType;
    std::string IPAddress; ///< dotted; its last number may be padded with blanks
};

/// The units that the program remembers, in the order of their file.
struct SavedUnits {
    Table<KVNControlBlock, 25> KVNControlBlocks{"KVNControlBlocks"}; ///< 1 to ControlBlockCount
    int ControlBlockCount = 0;
    std::string LeftOut; ///< the file's text from its 26th unit on; kept at the end of the file
    int SelectedBlockIndex = 0; ///< block of the list entry clicked last
    bool WaitingForConnectionFlag = false;
    bool IniFileExists = false;
    bool UnsavedChanges = false; ///< the last save failed: memory holds more than the file
    bool ExcessReported = false; ///< the user knows that the file holds more than 25 units
};
