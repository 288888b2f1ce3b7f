#pragma once

#include "forms/Control.h"
#include "link/LinkStatusDisplay.h"

#include <QColor>
#include <QPalette>

/// The colours of the program's windows.
namespace colour {

inline const QColor Window(238, 240, 243);
inline const QColor Card(250, 251, 252);
inline const QColor CardEdge(206, 211, 217);
inline const QColor Text(28, 33, 40);
inline const QColor FaintText(96, 104, 114);
inline const QColor DisabledText(150, 155, 161);
inline const QColor Field(255, 255, 255);
inline const QColor Focus(0, 95, 184);
inline const QColor LampLit(20, 150, 60);
inline const QColor LampEdge(92, 99, 107);
inline const QColor LinkUp(20, 140, 60);
inline const QColor LinkDown(176, 40, 40);
inline const QColor Neutral(224, 224, 224);

/// The face of a button, as the unit's operators know it.
QColor of(Face face);

/// The background of a status label; `platform` has the one of buttons.
QColor of(LinkColour link, const QPalette &platform);

/// Black or white, whichever reads better on `background`.
QColor textOn(const QColor &background);

} // namespace colour
