#include "protocol/Text.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>

std::string_view mid(std::string_view text, int position, int length) {
    const auto start = static_cast<std::size_t>(position - 1);
    if (start >= text.size())
        return {};
    return text.substr(start, static_cast<std::size_t>(length));
}

std::string_view mid(std::string_view text, int position) {
    return mid(text, position, static_cast<int>(text.size()));
}

std::optional<char> charAt(std::string_view text, int position) {
    const std::string_view one = mid(text, position, 1);
    if (one.empty())
        return std::nullopt;
    return one.front();
}

namespace {

constexpr bool isDigit(char c) { return c >= '0' && c <= '9'; }

struct NumberRead {
    double value = 0.0;
    std::size_t length = 0; // characters of the text that belong to the number, blanks included
    bool hasDigits = false;
};

NumberRead readNumber(std::string_view text) {
    NumberRead read;
    std::size_t at = 0;
    while (at < text.size() && text[at] == ' ')
        ++at;
    std::string number;
    if (at < text.size() && (text[at] == '-' || text[at] == '+')) {
        if (text[at] == '-')
            number += '-';
        ++at;
    }
    bool pointSeen = false;
    for (; at < text.size() && (isDigit(text[at]) || (text[at] == '.' && !pointSeen)); ++at) {
        pointSeen = pointSeen || text[at] == '.';
        read.hasDigits = read.hasDigits || isDigit(text[at]);
        number += text[at];
    }
    read.length = at;
    if (read.hasDigits)
        std::from_chars(number.data(), number.data() + number.size(), read.value);
    return read;
}

} // namespace

double leadingNumber(std::string_view text) { return readNumber(text).value; }

std::optional<double> wholeNumberText(std::string_view text) {
    const NumberRead read = readNumber(text);
    const std::string_view rest = text.substr(read.length);
    const bool onlyBlanks = std::all_of(rest.begin(), rest.end(), [](char c) { return c == ' '; });
    if (!read.hasDigits || !onlyBlanks)
        return std::nullopt;
    return read.value;
}

int roundHalfToEven(double value) {
    return static_cast<int>(std::clamp(std::nearbyint(value), -32768.0, 32767.0));
}

std::string visible(std::string_view bytes) {
    constexpr std::string_view Digits = "0123456789abcdef";
    std::string text;
    for (const char byte : bytes) {
        const auto code = static_cast<unsigned char>(byte);
        if (byte == '\r')
            text += "\\r";
        else if (byte == '\n')
            text += "\\n";
        else if (byte == '\\')
            text += "\\\\";
        else if (byte < ' ' || byte > '~')
            text.append("\\x").append({Digits[code / 16U], Digits[code % 16U]});
        else
            text += byte;
    }
    return text;
}

std::string decimalText(double value) {
    if (value == 0.0)
        return "0";
    std::array<char, 512> text{};
    const auto [end, error] =
        std::to_chars(text.data(), text.data() + text.size(), value, std::chars_format::fixed);
    return std::string(text.data(), end);
}

std::string latin1ToUtf8(std::string_view text) {
    std::string utf8;
    for (const char character : text) {
        const auto code = static_cast<unsigned char>(character);
        if (code < 0x80) {
            utf8 += character;
        } else {
            utf8 += static_cast<char>(0xC0 | code >> 6);
            utf8 += static_cast<char>(0x80 | (code & 0x3F));
        }
    }
    return utf8;
}
