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
    void ShowPlainBox(const std::string &text) override;
    void AskYesNo(const std::string &question) override;

private:
    void show(dlgOK &dialog, const bool &showing, const std::string &text);

    EventPump &pump;
    bool plainBoxShowing = false;
    dlgOK messageDialog;
    dlgOK plainBox;
    dlgYesNo questionDialog;
};
