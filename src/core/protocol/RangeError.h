#pragma once

#include <stdexcept>
#include <string>

/// A table was asked for an index that it does not have.
/// what() names the table, the index and the bounds.
class RangeError : public std::runtime_error {
public:
    explicit RangeError(const std::string &text) : std::runtime_error(text) {}
    RangeError(const std::string &table, long long index, long long last)
        : std::runtime_error(table + " has no index " + std::to_string(index) + " (0 to " +
                             std::to_string(last) + ")") {}
};
