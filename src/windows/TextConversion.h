#pragma once

#include <QRegularExpression>
#include <QString>
#include <QTextDocument>

#include <string>
#include <string_view>

/// Wire and file texts are single bytes; windows show them as Latin-1.
inline QString shown(std::string_view text) {
    return QString::fromLatin1(text.data(), static_cast<qsizetype>(text.size()));
}

/// Plain text, whatever it looks like, as a tool tip whose lines wrap, even where a long name has
/// no blanks.
inline QString wrappingTip(QString text) {
    static const QRegularExpression longPart(QStringLiteral("(\\S{40})"));
    text.replace(longPart, QStringLiteral("\\1\u200B")); // may be broken there
    return Qt::convertFromPlainText(text, Qt::WhiteSpaceNormal);
}

/// A text of UTF-8 as a tool tip, which is plain text whatever it looks like. Lines of a longer one
/// are wrapped.
inline QString tipOf(const std::string &utf8) {
    const QString text = QString::fromStdString(utf8);
    const bool plain = !Qt::mightBeRichText(text) && !text.contains(QLatin1Char('\n'));
    return plain ? text : wrappingTip(text);
}

inline std::string typed(const QString &text) { return text.toLatin1().toStdString(); }
