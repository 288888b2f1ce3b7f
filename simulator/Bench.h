#pragma once

#include "simulator/Transcript.h"
#include "simulator/Unit.h"

#include <QObject>

#include <utility>

/// What a link does wrong on purpose.
enum class Fault {
    None,
    Silence, ///< no command is answered
    Garbage, ///< random-looking bytes stand in for each answer
    Close,   ///< the link goes down halfway through the first answer
    Flood,   ///< the first answer repeats until the peer goes away
};

/// How answers leave by a link.
struct LineBehaviour {
    int latencyMs = 0;  ///< from a command to its answer
    int splitBytes = 0; ///< size of the pieces that an answer leaves in; 0 keeps it whole
    Fault fault = Fault::None;
};

/// What all peers of a simulator share. Outlives them.
class Bench : public QObject {
    Q_OBJECT
public:
    /// @throws std::invalid_argument if there can be no such unit
    Bench(UnitOptions unitOptions, const LineBehaviour &behaviour)
        : unit(std::move(unitOptions)), line(behaviour) {}

    void setFault(Fault fault) {
        line.fault = fault;
        Q_EMIT faultSet();
    }

    Unit unit;
    LineBehaviour line;
    Transcript transcript;

Q_SIGNALS:
    void faultSet();
};
