#pragma once

#include "simulator/FaultyLine.h"
#include "simulator/Transcript.h"
#include "simulator/UnitPort.h"

#include <QObject>

/// What all links of a simulator share. Everything in it outlives the links.
struct Bench {
    Unit &unit;
    Transcript &transcript;
    LineBehaviour behaviour;
};

/// The talk of one peer with the unit: turns arriving bytes into answers on the peer's wire and
/// records both.
class Conversation : public QObject {
    Q_OBJECT
public:
    static constexpr qint64 Bite = 1024; ///< bytes to hear at a time, so that room is checked often

    /// @param linkName stands in the record
    Conversation(const Bench &bench, QByteArray linkName, Wire &wire, QObject *parent = nullptr);

    void hear(const QByteArray &bytes);

    /// Forgets unfinished commands and unsent answers, for the next peer.
    void reset();

    [[nodiscard]] FaultyLine &line() { return out; }

private:
    Transcript &transcript;
    QByteArray link;
    UnitPort in;
    FaultyLine out;
};
