#pragma once

#include "machine/Machine.h"
#include "simulator/UnitPort.h"
#include "support/FakeFileStore.h"
#include "support/FakeSerialPort.h"
#include "support/FakeTcpSocket.h"

#include <utility>

/// A machine in memory, joined to one simulated unit: on COM7, and at any address that is
/// connected.
class FakeMachine {
public:
    explicit FakeMachine(UnitOptions options = {}) : unit(std::move(options)) {
        serialPort.present = {7};
        serialPort.wire.device = answerOf(serialUnitPort);
        socket.wire.device = answerOf(networkUnitPort);
    }

    FakePump pump;
    FakeSerialPort serialPort{pump};
    FakeTcpSocket socket{pump};
    FakeFileStore files;
    Unit unit;

    [[nodiscard]] Machine services() { return {pump, serialPort, socket, files, "program"}; }

    /// What went to the unit since the last call, both links.
    std::string takeWritten() {
        return std::exchange(serialPort.wire.written, {}) + std::exchange(socket.wire.written, {});
    }

private:
    static std::function<std::string(std::string_view)> answerOf(UnitPort &port) {
        return [&port](std::string_view bytes) {
            std::string answer;
            for (const auto &exchanged : port.receive(bytes))
                answer += exchanged.answer;
            return answer;
        };
    }

    UnitPort serialUnitPort{unit};
    UnitPort networkUnitPort{unit};
};
