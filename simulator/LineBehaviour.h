#pragma once

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
