#include "simulator/Transcript.h"

#include <QString>
#include <QTime>

#include <cstdio>

void Transcript::record(QByteArrayView link, Direction direction, QByteArrayView bytes) {
    const QByteArray time = QTime::currentTime().toString(u"HH:mm:ss.zzz").toLatin1();
    note(time + ' ' + link.toByteArray() + (direction == Direction::ToUnit ? " > " : " < ") +
         visible(bytes));
}

void Transcript::note(const QByteArray &line) {
    const QByteArray whole = line + '\n';
    std::fwrite(whole.constData(), 1, static_cast<std::size_t>(whole.size()), stdout);
    std::fflush(stdout);
}

QByteArray Transcript::visible(QByteArrayView bytes) {
    constexpr char Digits[] = "0123456789abcdef";
    QByteArray text;
    for (const char byte : bytes) {
        const auto code = static_cast<unsigned char>(byte);
        if (byte == '\r')
            text += "\\r";
        else if (byte == '\n')
            text += "\\n";
        else if (byte == '\\')
            text += "\\\\";
        else if (code < 0x20 || code > 0x7e)
            text.append("\\x").append(Digits[code >> 4]).append(Digits[code & 0xf]);
        else
            text += byte;
    }
    return text;
}
