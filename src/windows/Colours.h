#pragma once

#include "forms/Control.h"
#include "link/LinkStatusDisplay.h"

#include <QColor>
#include <QPalette>

/// The colours of the program's windows. Faces, lamps and link labels are the same on every
/// desktop; what they stand on is light or dark as the desktop is.
namespace colour {

inline const QColor LampLit(20, 150, 60);
inline const QColor Neutral(224, 224, 224);

/// What faces, lamps and link labels stand on.
struct Ground {
    QColor window;
    QColor card;
    QColor edge; ///< of cards
    QColor field;
    QColor button; ///< of what is no FaceButton
    QColor text;
    QColor disabledText;
    QColor focus;
    QColor pointed;   ///< around what the pointer is on
    QColor selection; ///< under white text
    QColor lampEdge;
    QColor linkUp;
    QColor linkDown;
};

/// Whether windows of that palette are dark.
bool isDark(const QPalette &palette);

/// The ground that goes with a palette.
const Ground &ground(const QPalette &palette);

/// The palette of the program's windows on a desktop with that palette.
QPalette windowPalette(const QPalette &desktop);

/// The palette of fields, lists and options in windows of that palette: their edges are seen.
QPalette fieldPalette(const QPalette &windows);

/// `over` laid on `under`, 0 (not seen) to 1 (hiding it).
QColor mixed(const QColor &over, const QColor &under, double opacity);

/// The face of a button, as the unit's operators know it.
QColor of(Face face);

/// The background of a status label; `platform` has the one of buttons.
QColor of(LinkColour link, const QPalette &platform);

/// Dark or white, whichever reads better on `background`.
QColor textOn(const QColor &background);

} // namespace colour
