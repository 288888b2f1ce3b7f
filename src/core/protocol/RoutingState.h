#pragma once

#include "protocol/Table.h"

#include <string>

/// One output as the unit last reported it. The one-character fields hold a blank when the report
/// ended before them; the texts keep their value when the report does not hold them.
struct OutputStatusRecord {
    std::string OutputNumberText; ///< 1 or 2 characters, as the volume commands carry it
    char FieldA = ' ';
    char MuteFlag = ' '; ///< 'M' muted, 'U' unmuted
    std::string FieldB;  ///< 1 to 3 characters
    char FieldC = ' ';
    std::string VolumeText;     ///< level, 1 to 3 characters
    std::string AudioInputText; ///< input that feeds the audio; 255: none
    char FieldD = ' ';
    std::string VideoInputText; ///< input that feeds the video; 255: none
};

/// Value of an input field for an output that is not connected.
inline constexpr int NotConnectedInput = 255;

/// The routing of all outputs, 1 to 32. It outlives panel and link.
struct RoutingState {
    Table<OutputStatusRecord, 32> Outputs{"OutputStatusRecord"};
};
