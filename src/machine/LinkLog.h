#pragma once

#include <QLoggingCategory>

#include <string>
#include <string_view>

// What the links do, for whoever looks for a fault; both categories are off unless a logging rule
// switches them on, and a line is built only then:
//     qCDebug(wireLog).noquote() << wireLine("COM7", Way::ToUnit, text);

Q_DECLARE_LOGGING_CATEGORY(wireLog) ///< `corvane.wire`: every text that is written and read
Q_DECLARE_LOGGING_CATEGORY(linkLog) ///< `corvane.link`: opens, closes and failures

enum class Way { ToUnit, FromUnit };

/// The time and what happened. UTF-8.
QString linkLine(const std::string &event);

/// The time, the link, ">" for what was written or "<" for what was read, and the bytes: carriage
/// return, line feed and backslash as \r, \n and \\, all others that are not printable ASCII as
/// \xNN.
QString wireLine(const std::string &link, Way way, std::string_view bytes);
