#include "LinkLog.h"

#include <QTime>

// Quiet below warnings: nothing is a warning here.
Q_LOGGING_CATEGORY(wireLog, "corvane.wire", QtWarningMsg)
Q_LOGGING_CATEGORY(linkLog, "corvane.link", QtWarningMsg)

namespace {

QString visible(char byte) {
    switch (byte) {
    case '\r':
        return QStringLiteral("\\r");
    case '\n':
        return QStringLiteral("\\n");
    case '\\':
        return QStringLiteral("\\\\");
    default:
        if (byte >= ' ' && byte <= '~')
            return QString(QLatin1Char(byte));
        return QStringLiteral("\\x%1").arg(static_cast<unsigned char>(byte), 2, 16,
                                           QLatin1Char('0'));
    }
}

} // namespace

QString linkLine(const std::string &event) {
    return QTime::currentTime().toString(QStringLiteral("HH:mm:ss.zzz ")) +
           QString::fromStdString(event);
}

QString wireLine(const std::string &link, Way way, std::string_view bytes) {
    QString line = linkLine(link + (way == Way::ToUnit ? " > " : " < "));
    for (const char byte : bytes)
        line += visible(byte);
    return line;
}
