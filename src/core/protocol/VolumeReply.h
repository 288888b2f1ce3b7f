#pragma once

#include "protocol/Text.h"

/// The level in the reply to a volume query, as shortest decimal text. It stands behind the place
/// of a leading line break, the query's text without its terminator and a blank: `\r\nVOL L 5 -20`.
/// A reply too short for that gives "0".
inline std::string volumeFromReply(std::string_view reply, std::string_view query) {
    const int levelAt = static_cast<int>(query.size()) + 2;
    return decimalText(leadingNumber(mid(reply, levelAt)));
}
