#pragma once

#include "simulator/Bench.h"

#include <QHostAddress>
#include <QStringList>

#include <optional>

/// The fault of that name: none, silence, garbage, close or flood; nothing if it is another word.
std::optional<Fault> faultOfName(QByteArrayView name);

/// What the command line asks for. An option that is given twice counts as given last.
struct SimulatorOptions {
    UnitOptions unit;
    LineBehaviour line;
    QHostAddress address = QHostAddress::LocalHost;
    std::optional<quint16> tcpPort; ///< 0 lets the system choose
    QString serial;                 ///< path of the link to the pty; empty: none
    bool listModels = false;

    /// Ends the program, with the help on standard output, where the help is asked for.
    /// @param arguments the command line, from the program's name on
    /// @throws std::invalid_argument, with one line for the user, if it asks for what there is not
    static SimulatorOptions of(const QStringList &arguments);
};
