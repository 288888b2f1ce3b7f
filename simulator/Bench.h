#pragma once

#include "simulator/Transcript.h"
#include "simulator/Unit.h"

#include <QObject>

#include <utility>

/// What a link does wrong on purpose.
enum class Fault {
    None,
    Silence, ///< no command is answered
    Close,   ///< the link goes down halfway through the first answer
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
    explicit Bench(UnitOptions unitOptions) : unit(std::move(unitOptions)) {}

    /// Carries out "latency MS", "split BYTES", "fault none", "fault silence", "fault close" or
    /// "unplug".
    /// @return whether it was one of these, with a number within its bounds
    bool obey(const QString &order);

    Unit unit;
    LineBehaviour line;
    Transcript transcript;

Q_SIGNALS:
    /// Answers under way are to be dropped.
    void changed();
    /// Every link is to go down.
    void unplugged();
};
