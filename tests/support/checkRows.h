#pragma once

#include "support/toString.h"

/// A table of texts: what `result` makes of each first one must be the second.
template <class Result>
void checkRows(const std::vector<std::array<std::string, 2>> &rows, const Result &result) {
    for (const auto &[given, expected] : rows)
        QCOMPARE(std::string(given).append(" -> ").append(result(given)),
                 std::string(given).append(" -> ").append(expected));
}
