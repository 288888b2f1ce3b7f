#include "simulator/UnitPort.h"

#include <utility>

std::vector<Exchange> UnitPort::receive(std::string_view bytes) {
    std::vector<Exchange> exchanges;
    for (const char byte : bytes) {
        if (std::exchange(afterReturn, byte == '\r') && byte == '\n')
            continue;
        if (byte == '\r') {
            // Taken before the answer: a command that switches the echo is echoed as it was.
            const std::string echo = device.echo() ? line + '\r' : std::string();
            exchanges.push_back({line, echo + device.answer(line)});
            line.clear();
        } else if (line.size() <= Unit::MaxCommand) {
            line += byte;
        }
    }
    return exchanges;
}

void UnitPort::reset() {
    line.clear();
    afterReturn = false;
}
