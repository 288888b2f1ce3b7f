#pragma once

#include <optional>
#include <string>
#include <string_view>

// The text rules that commands, replies and the saved-units file are written in. Positions count
// from 1 everywhere.

inline constexpr std::string_view CrLf = "\r\n";

/// The `length` characters of `text` from the 1-based `position`, fewer where the text ends sooner,
/// none past its end. `position` is at least 1, `length` at least 0.
std::string_view mid(std::string_view text, int position, int length);

/// The rest of `text` from the 1-based `position`, empty past its end.
std::string_view mid(std::string_view text, int position);

/// The character at the 1-based `position`, or nothing past the end.
std::optional<char> charAt(std::string_view text, int position);

/// The number that `text` begins with: blanks are skipped, then an optional sign, digits and a
/// decimal point; it ends at the first other character. No number gives 0.
double leadingNumber(std::string_view text);

/// The number that `text` is, blanks around it aside; nothing if it is anything else.
std::optional<double> wholeNumberText(std::string_view text);

/// `value` rounded to the nearest integer, a half to the even neighbour, within -32768 to 32767.
int roundHalfToEven(double value);

/// `text` of single bytes (Latin-1) as UTF-8.
std::string latin1ToUtf8(std::string_view text);

/// `bytes` for a log: printable ASCII as it is, "\r", "\n", "\\" and "\xNN" for the others.
std::string visible(std::string_view bytes);

/// Shortest decimal text of `value`: no sign unless negative, no trailing zeros, no exponent.
std::string decimalText(double value);
