#pragma once

#include "forms/Control.h"
#include "forms/Form.h"

#include <string>

/// What callers of messages and questions share with their forms. Texts are UTF-8.
struct MessageState {
    std::string MessageText;
    bool MessageShowing = false;
    bool PlainBoxShowing = false;
    std::string ConfirmText;
    bool YesNoShowing = false;
    bool YesNoAnswer = false; ///< kept when the question is closed without an answer
};

/// `dlgOK`, and the plain box, which looks the same and blocks all other windows.
struct MessageView {
    FormView form;
    Control OKLabel{.text = "Are You Sure You Want to"}; ///< UTF-8; its tool tip is the window's
    Control OKButton{.text = "OK"};
};

/// `dlgYesNo`.
struct QuestionView {
    FormView form;
    Control YesNoText{.text = "Do You Want to Switch to the New Project?\r\n"}; ///< UTF-8
    Control YesButton{.text = "Yes"};
    Control NoButton{.text = "No"};
};

struct MessageViews {
    MessageView dlgOK;
    MessageView plainBox;
    QuestionView dlgYesNo;
};

/// The way to the user. The first three calls hold their caller, letting events run, until the user
/// closes the form or the program ends.
class Messages {
public:
    Messages(MessageState &messageState, MessageViews &messageViews, EventPump &eventPump);

    /// Shows `text` in `dlgOK`. One that is open already changes its text, and both callers wait
    /// for the same close. `detail` is what the pointer and a screen reader tell beside the text.
    void ShowMessage(const std::string &text, const std::string &detail = {});
    void ShowPlainBox(const std::string &text);
    /// The answer is left in `YesNoAnswer`.
    void AskYesNo(const std::string &question);

    /// The user's answer to the question, and what it was last.
    void answer(bool yes);
    [[nodiscard]] bool answered() const { return state.YesNoAnswer; }

    // The forms; closing one in any way is its unload().
    [[nodiscard]] Form &dlgOK() { return message; }
    [[nodiscard]] Form &plainBox() { return box; }
    [[nodiscard]] Form &dlgYesNo() { return question; }

    /// A form that blocks the others opens or closes. A message that came while it was open belongs
    /// to it, so that it can be answered, and closes with it.
    void modalFormOpened() { modalIsOpen = true; }
    void modalFormClosed();

private:
    /// A form whose closing releases its caller.
    class Dialog : public Form {
    public:
        Dialog(FormView &formView, bool &showingFlag, EventPump &eventPump)
            : Form(formView, eventPump), showing(showingFlag) {}
        void unload() override;
        void showAndWait();

    private:
        bool &showing;
    };

    MessageState &state;
    MessageViews &views;
    Dialog message;
    Dialog box;
    Dialog question;
    bool modalIsOpen = false;
    bool messageBelongsToModal = false;
};
