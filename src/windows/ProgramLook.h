#pragma once

#include <QIcon>
#include <QWidget>

/// Gives the program its look: one style everywhere, light or dark as the desktop is, so that the
/// fixed colours of buttons and lamps read the same on every desktop; the desktop's font, if it is
/// not too small. Needs a QApplication.
void applyProgramLook();

/// Makes the windows light or dark as the desktop is by now; nothing if they are.
void followDesktop();

/// Whether there is a font to draw letters with. Needs a QApplication.
bool canDrawText();

/// A length in pixels that was designed for the program's smallest font, in its present one.
int grown(int pixels);
QSize grown(const QSize &size);
QMargins grown(const QMargins &margins);

/// A width of a line, in pixels, in whole pixels of the widget's screen and one of them at least.
double screenLine(const QWidget &widget, double width);

/// The width of a line of a widget that is as heavy as so many thin ones. It grows with the
/// widget's font, as a screenLine().
double lineWidth(const QWidget &widget, double lines = 1.0);

/// The program's picture: a matrix with some of its points connected.
QIcon programIcon();
