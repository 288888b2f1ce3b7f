#include "support/FakeWire.h"

void FakeWire::pass(std::string_view text, const std::function<void(std::string)> &deliver) {
    written += text;
    const std::string answer = device(text);
    const std::size_t pieceLength = split == 0 ? answer.size() : split;
    double due = delay;
    for (std::size_t at = 0; at < answer.size(); at += pieceLength, due += pieceDelay)
        pump.in(due, [deliver, piece = answer.substr(at, pieceLength)] { deliver(piece); });
}
