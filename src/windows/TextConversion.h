#pragma once

#include <QString>

#include <string>
#include <string_view>

/// Wire and file texts are single bytes; windows show them as Latin-1.
inline QString shown(std::string_view text) {
    return QString::fromLatin1(text.data(), static_cast<qsizetype>(text.size()));
}

inline std::string typed(const QString &text) { return text.toLatin1().toStdString(); }
