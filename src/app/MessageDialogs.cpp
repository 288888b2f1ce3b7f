#include "app/MessageDialogs.h"

#include "app/ProgramTitle.h"

#include <QApplication>
#include <QWindow>

namespace {

/// Makes `dialog` belong to the modal dialog that is open, if one is. Otherwise it could not be
/// answered.
void placeOver(Form &dialog, const QWidget *modal) {
    dialog.winId();
    dialog.windowHandle()->setTransientParent(modal ? modal->windowHandle() : nullptr);
}

} // namespace

MessageDialogs::MessageDialogs(EventPump &eventPump)
    : pump(eventPump),
      messageDialog("dlgOK", "Confirm", eventPump, state.MessageShowing),
      plainBox("plainBox", ProgramTitle, eventPump, plainBoxShowing),
      questionDialog(eventPump, state) {
    plainBox.setWindowModality(Qt::ApplicationModal);
}

void MessageDialogs::ShowMessage(const std::string &text) {
    state.MessageText = text;
    show(messageDialog, state.MessageShowing, text);
}

void MessageDialogs::ShowPlainBox(const std::string &text) {
    show(plainBox, plainBoxShowing, text);
}

void MessageDialogs::show(dlgOK &dialog, const bool &showing, const std::string &text) {
    if (pump.ended())
        return;
    const QWidget *owner = QApplication::activeModalWidget();
    // A dialog that is open already may belong to nobody, or to a window below the modal one.
    dialog.hide();
    placeOver(dialog, owner);
    dialog.LoadForm(text);
    pump.runUntil([owner, &dialog, &showing] {
        if (owner && owner->isHidden())
            dialog.unload();
        return !showing;
    });
}

void MessageDialogs::AskYesNo(const std::string &question) {
    if (pump.ended())
        return;
    state.ConfirmText = question;
    state.YesNoShowing = true;
    placeOver(questionDialog, QApplication::activeModalWidget());
    questionDialog.LoadForm();
    pump.runUntil([this] { return !state.YesNoShowing; });
}
