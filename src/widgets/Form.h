#pragma once

#include "link/ActionGuard.h"
#include "platform/EventPump.h"

#include <QAbstractButton>
#include <QWidget>

#include <functional>

/// A window that lives as long as the program: loading shows it, unloading hides it, so no handler
/// ever wakes up in a window that is gone. Enter presses the button that has the focus.
class Form : public QWidget {
public:
    /// @param guard runs the actions of the form's controls; may be null for forms without any
    Form(const char *name, EventPump &eventPump, ActionGuard *guard);

    /// Shows the window in front of the others, unless the program has ended.
    void present();

    /// Hides the window. Forms add what closing means to them; closing the frame comes here too.
    virtual void unload();

    [[nodiscard]] bool isLoaded() const { return loaded; }

protected:
    /// Runs `action` as an action of the user: a failure is shown in a message, unless this window
    /// was closed meanwhile.
    void act(const std::function<void()> &action);
    void whenClicked(QAbstractButton *button, std::function<void()> action);
    void whenKey(const QKeySequence &keys, std::function<void()> action);

    void closeEvent(QCloseEvent *event) override;
    void keyPressEvent(QKeyEvent *event) override;

    EventPump &pump;

private:
    ActionGuard *actionGuard;
    bool loaded = false;
};
