#include "forms/Messages.h"

void Messages::Dialog::unload() {
    showing = false;
    Form::unload();
}

void Messages::Dialog::showAndWait() {
    showing = true;
    present();
    pump.runUntil([this] { return !showing; });
}

Messages::Messages(MessageState &messageState, MessageViews &messageViews, EventPump &eventPump)
    : state(messageState),
      views(messageViews),
      message(views.dlgOK.form, state.MessageShowing, eventPump),
      box(views.plainBox.form, state.PlainBoxShowing, eventPump),
      question(views.dlgYesNo.form, state.YesNoShowing, eventPump) {}

void Messages::ShowMessage(const std::string &text, const std::string &detail) {
    state.MessageText = text;
    Control &label = views.dlgOK.OKLabel;
    label.text = text;
    label.toolTip = label.description = detail;
    messageBelongsToModal = modalIsOpen;
    message.showAndWait();
}

void Messages::ShowPlainBox(const std::string &text) {
    views.plainBox.OKLabel.text = text;
    box.showAndWait();
}

void Messages::AskYesNo(const std::string &text) {
    state.ConfirmText = text;
    views.dlgYesNo.YesNoText.text = text;
    question.showAndWait();
}

void Messages::answer(bool yes) {
    state.YesNoAnswer = yes;
    question.unload();
}

void Messages::modalFormClosed() {
    modalIsOpen = false;
    if (state.MessageShowing && messageBelongsToModal)
        message.unload();
}
