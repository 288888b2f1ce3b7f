#pragma once

#include "protocol/RangeError.h"

#include <array>
#include <cstddef>
#include <string_view>

/// A fixed table with the indices 0 to Last. Index 0 exists so that numbers can be used as indices
/// as they are; most tables leave it empty.
template <class T, std::size_t Last> class Table {
public:
    /// @param name a literal; it stands in the error of a wrong index
    explicit Table(std::string_view name) : tableName(name) {}

    /// @throws RangeError if index is not in 0..Last
    T &operator[](long long index) { return entries[checked(index)]; }
    const T &operator[](long long index) const { return entries[checked(index)]; }

    void fill(const T &value) { entries.fill(value); }
    static constexpr int last() { return static_cast<int>(Last); }

    auto begin() { return entries.begin(); }
    auto end() { return entries.end(); }
    auto begin() const { return entries.begin(); }
    auto end() const { return entries.end(); }

private:
    [[nodiscard]] std::size_t checked(long long index) const {
        if (index < 0 || index > last())
            throw RangeError(std::string(tableName), index, last());
        return static_cast<std::size_t>(index);
    }

    std::string_view tableName;
    std::array<T, Last + 1> entries{};
};
