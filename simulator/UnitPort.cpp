#include "simulator/UnitPort.h"

#include <utility>

std::vector<Exchange> UnitPort::receive(std::string_view bytes) {
    std::vector<Exchange> exchanges;
    for (const char byte : bytes) {
        if (std::exchange(afterReturn, byte == '\r') && byte == '\n')
            continue;
        if (byte == '\r') {
            if (!std::exchange(skipping, false)) {
                // Taken before the answer: a command that switches the echo is echoed as it was.
                std::string echo = device.echo() ? line + '\r' : std::string();
                exchanges.push_back({line, std::move(echo) + device.answer(line)});
            }
            line.clear();
        } else if (!skipping) {
            line += byte;
            if (line.size() > Unit::MaxCommand) {
                exchanges.push_back({line, device.answer(line)});
                line.clear();
                skipping = true;
            }
        }
    }
    return exchanges;
}

void UnitPort::reset() {
    line.clear();
    skipping = false;
    afterReturn = false;
}
