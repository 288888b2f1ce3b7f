#pragma once

#include <QString>
#include <QTextDocument>

#include <string>
#include <string_view>

/// Wire and file texts are single bytes; windows show them as Latin-1.
inline QString shown(std::string_view text) {
    return QString::fromLatin1(text.data(), static_cast<qsizetype>(text.size()));
}

/// A text of UTF-8 as a tool tip, which is plain text whatever it looks like. Lines of a longer one
/// are wrapped.
inline QString tipOf(const std::string &utf8) {
    const QString text = QString::fromStdString(utf8);
    const bool plain = !Qt::mightBeRichText(text) && !text.contains(QLatin1Char('\n'));
    return plain ? text : Qt::convertFromPlainText(text, Qt::WhiteSpaceNormal);
}

inline std::string typed(const QString &text) { return text.toLatin1().toStdString(); }
