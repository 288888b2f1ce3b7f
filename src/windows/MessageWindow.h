#pragma once

#include "Window.h"

#include <vector>

/// The window of a text and what can be answered: `dlgOK`, the plain box or `dlgYesNo`. The last
/// button has the focus; Esc presses it.
class MessageWindow : public Window {
public:
    struct Button {
        const char *name;
        const Control &control;
        std::function<void()> clicked;
    };

    /// @param text its tool tip and description are the window's; UTF-8
    MessageWindow(const char *name, Form &messageForm, const FormView &messageView,
                  const char *textName, const Control &text, const std::vector<Button> &buttons);

protected:
    void refreshRest() override;

private:
    const FormView &view;
    const Control &text;
    QLabel *label;
    QAbstractButton *last = nullptr;
    Control shownText;
    int shownRaised = 0;
};
