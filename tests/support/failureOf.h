#pragma once

#include <stdexcept>
#include <string>

/// The text of the Error that `action` throws, empty if it throws none.
template <class Error, class Action> std::string failureOf(Action &&action) {
    try {
        action();
    } catch (const Error &error) {
        return error.what();
    }
    return {};
}
