#pragma once

/// Gives the program its look: one style and one light palette everywhere, so that the fixed
/// colours of buttons and lamps read the same on every desktop. Needs a QApplication.
void applyProgramLook();
