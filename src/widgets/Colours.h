#pragma once

#include "link/LinkStatusView.h"

#include <QColor>

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

// Faces of buttons, as the unit's operators know them.
inline const QColor Neutral(224, 224, 224);
inline const QColor Busy(255, 128, 128);
inline const QColor Chosen(214, 241, 194);
inline const QColor Unmuted(214, 241, 194);
inline const QColor Muted(247, 166, 157);

inline QColor of(const Rgb &rgb) { return {rgb.red, rgb.green, rgb.blue}; }

/// Black or white, whichever reads better on `background`.
inline QColor textOn(const QColor &background) {
    const int light = background.red() * 299 + background.green() * 587 + background.blue() * 114;
    return light >= 125000 ? Text : QColor(Qt::white);
}

} // namespace colour
