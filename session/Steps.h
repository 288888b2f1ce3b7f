#pragma once

#include <QByteArrayList>

enum class When {
    Usable,  ///< the window is open and the control of the first action can be used
    Idle,    ///< every action has returned
    InPanel, ///< every action but the one that waits for the panel to be left
    Waiting, ///< an action has not returned yet
};

/// A state that a session reaches: what must hold then, and what the user does next.
struct Step {
    QByteArray name;
    When when;
    QByteArray window;         ///< that a picture is taken of
    QByteArrayList actions{};  ///< "control" or "control=value", of other windows "window/control"
    QByteArrayList shown{};    ///< "control=what it shows"
    QByteArrayList commands{}; ///< all that were sent since the Idle or InPanel step before
};

/// Where the unit of networkSteps() is found.
inline const QByteArray UnitAddress = "127.0.0.23";

/// Over COM 7: find the unit, open the panel, route, disconnect, mute, step a volume, recall a
/// preset, look at the other windows, leave the panel.
QList<Step> serialSteps();
/// Save a unit of UnitAddress, control it, route, delete it.
QList<Step> networkSteps();
/// Close the start window.
QList<Step> leavingSteps();
