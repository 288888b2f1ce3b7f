#pragma once

#include "Window.h"
#include "forms/Messages.h"

/// The window of a message: `dlgOK` or the plain box.
class MessageWindow : public Window {
public:
    MessageWindow(const char *name, const char *caption, Form &messageForm,
                  const MessageView &messageView);

protected:
    void refreshRest() override;

private:
    const MessageView &view;
    QLabel *OKLabel;
    QAbstractButton *OKButton;
    Control shownLabel;
    int shownRaised = 0;
};
