#include "simulator/CommandScanner.h"

#include <algorithm>
#include <utility>

bool CommandScanner::take(std::string_view literal) {
    if (!left.starts_with(literal))
        return false;
    left.remove_prefix(literal.size());
    return true;
}

void CommandScanner::expect(std::string_view literal) {
    if (!take(literal))
        throw Refusal("form");
}

int CommandScanner::number(int last, std::string_view word) {
    const auto isDigit = [](char c) { return c >= '0' && c <= '9'; };
    const auto end = std::find_if_not(left.begin(), left.end(), isDigit);
    const std::string_view digits(left.begin(), end);
    if (digits.empty() || (digits.size() > 1 && digits.front() == '0'))
        throw Refusal("number");
    int value = 0;
    // Stops growing once it is too large, so that no length of digits can overflow it.
    for (const char digit : digits)
        value = std::min(last + 1, value * 10 + (digit - '0'));
    if (value < 1 || value > last)
        throw Refusal(std::string(word));
    left.remove_prefix(digits.size());
    return value;
}

std::string_view CommandScanner::rest() { return std::exchange(left, {}); }

void CommandScanner::end() const {
    if (!atEnd())
        throw Refusal("form");
}
