#pragma once

#include <QWidget>

// What a user's hands and eyes do with the program's windows. Names are object names.

/// The window of that name if it is open, or null.
QWidget *openWindow(const QByteArray &window);

/// Whether a control of a window can be used; "" and "frame" stand for the window itself.
bool isUsable(const QByteArray &window, const QByteArray &control);

/// Uses a control that is usable, as its kind is used: a button or menu item, a list or the ports
/// with the entry to pick, a box with the text to type. A box without a text is pointed at, by
/// keyboard; "frame" closes the window.
void use(const QByteArray &window, const QByteArray &control, const QString &value);

/// What a control shows: its text, the number of its entries, or whether it is lit; "hidden" if it
/// does not show.
QByteArray shownBy(const QByteArray &window, const QByteArray &control);
