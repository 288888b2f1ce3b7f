#pragma once

#include "Player.h"

#include <QString>

// What a user's hands do to the program's windows, found by their names. A window or control that
// is not there ends the session with a clear line.

namespace hands {

void click(const char *window, const char *name);
void chooseMenu(const char *window, const char *item);
void chooseInList(const char *window, const char *list, const QString &entry);
void choosePort(const QString &port);
void type(const char *window, const char *box, const QString &text);
/// Moves the pointer onto a control.
void pointAt(const char *window, const char *name);

/// Conditions for a step.
std::function<bool()> shows(const char *window);
std::function<bool()> offers(const char *window, const char *control);

} // namespace hands
