#pragma once

#include "protocol/RoutingState.h"

#include <string_view>

/// The 1-based position of the first record in a status report: 9 past the first two blanks in a
/// row (a blank that ends the text counts too), or one past the end when there are none.
int FindStatusStart(std::string_view statusText);

/// Reads the records 1 to `numOutputs` from the 1-based `position`. A record on the wire is
/// `1 (A,U,0,V,-20,3,D,5)`: number, blank, one character, then field A, mute flag, field B, field
/// C, volume, audio input, field D and video input, followed by 11 characters up to the next one.
/// Only positions and the "," and ")" after texts are looked at; a text that is too long is not
/// found, and all that follows is read from shifted positions. The k-th record of the report is the
/// k-th of the table, whatever number it carries.
/// @throws RangeError if numOutputs is over 32
void ParseOutputStatus(RoutingState &routing, std::string_view statusText, int position,
                       int numOutputs);
