#include "app/MessageDialogs.h"

#include <QApplication>
#include <QWindow>

MessageDialogs::MessageDialogs(EventPump &eventPump)
    : pump(eventPump), messageDialog(eventPump, messages), questionDialog(eventPump, messages) {}

void MessageDialogs::placeOver(Form &dialog) {
    QWidget *modal = QApplication::activeModalWidget();
    dialog.winId();
    dialog.windowHandle()->setTransientParent(modal ? modal->windowHandle() : nullptr);
}

void MessageDialogs::ShowMessage(const std::string &text) {
    if (pump.ended())
        return;
    messages.MessageText = text;
    messages.MessageShowing = true;
    if (!messageDialog.isLoaded())
        placeOver(messageDialog);
    messageDialog.LoadForm();
    const QWidget *owner = QApplication::activeModalWidget();
    pump.runUntil([this, owner] {
        if (owner && owner->isHidden())
            messageDialog.unload();
        return !messages.MessageShowing;
    });
}

void MessageDialogs::AskYesNo(const std::string &question) {
    if (pump.ended())
        return;
    messages.ConfirmText = question;
    messages.YesNoShowing = true;
    placeOver(questionDialog);
    questionDialog.LoadForm();
    pump.runUntil([this] { return !messages.YesNoShowing; });
}
