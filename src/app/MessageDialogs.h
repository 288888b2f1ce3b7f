#pragma once

#include "app/dlgOK.h"
#include "app/dlgYesNo.h"
#include "link/Messages.h"

/// Messages and questions in their dialogs. Over a modal dialog they belong to that dialog, so that
/// they can be answered; when it closes they close with it.
class MessageDialogs : public Messages {
public:
    explicit MessageDialogs(EventPump &eventPump);

    void ShowMessage(const std::string &text) override;
    void AskYesNo(const std::string &question) override;

    [[nodiscard]] const MessageState &state() const { return messages; }

private:
    void placeOver(Form &dialog);

    EventPump &pump;
    MessageState messages;
    dlgOK messageDialog;
    dlgYesNo questionDialog;
};
