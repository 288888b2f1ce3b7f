#pragma once

/// The program's title and version.
inline constexpr const char *ProgramTitle = "Corvane Controller 1.14";
inline constexpr const char *ProgramVersion = "1.14.0";
