#pragma once

#include <QString>

class QWidget;

/// Tells assistive technology what the program's windows and own controls are: dialogs and alerts,
/// buttons that stay chosen, a label that can be pressed, the list of ports, pictures. Called once
/// or more often, before a window is made.
void useSpokenRoles();

/// Takes away what the windows announced before, which is no news any more.
void forgetAnnouncements();

/// Lets a screen reader speak `text`, of something in `window` that changed without the focus.
void announce(QWidget &window, const QString &text);
