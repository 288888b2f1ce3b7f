#include "LinkLog.h"

#include "protocol/Text.h"

#include <QTime>

// Quiet below warnings: nothing is a warning here.
Q_LOGGING_CATEGORY(wireLog, "corvane.wire", QtWarningMsg)
Q_LOGGING_CATEGORY(linkLog, "corvane.link", QtWarningMsg)

QString linkLine(const std::string &event) {
    return QTime::currentTime().toString(QStringLiteral("HH:mm:ss.zzz ")) +
           QString::fromStdString(event);
}

QString wireLine(const std::string &link, Way way, std::string_view bytes) {
    return linkLine(link + (way == Way::ToUnit ? " > " : " < ") + visible(bytes));
}
