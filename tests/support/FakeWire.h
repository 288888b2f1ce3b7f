#pragma once

#include "support/FakePump.h"

#include <functional>
#include <string>
#include <string_view>

/// The way from a fake transport to a device and back: hands on what is written and brings each
/// answer back later, whole or in pieces.
class FakeWire {
public:
    explicit FakeWire(FakePump &fakePump) : pump(fakePump) {}

    /// Bytes in, bytes out; a device that says nothing gives an empty text.
    std::function<std::string(std::string_view)> device = [](std::string_view) {
        return std::string();
    };
    double delay = 0.01;     ///< seconds until the first piece of an answer
    std::size_t split = 0;   ///< bytes in a piece; 0: whole
    double pieceDelay = 0.0; ///< seconds between pieces
    std::string written;     ///< all that was ever written

    /// Passes `text` to the device; `deliver` gets the pieces of its answer.
    void pass(std::string_view text, const std::function<void(std::string)> &deliver);

private:
    FakePump &pump;
};
