#pragma once

#include <string>

/// What the message and question dialogs share with their callers. Texts are UTF-8.
struct MessageState {
    std::string MessageText;
    bool MessageShowing = false;
    std::string ConfirmText;
    bool YesNoShowing = false;
    bool YesNoAnswer = false; ///< kept when the question is closed without an answer
};

/// The way to the user. The calls hold their caller, letting events run, until the user closes the
/// dialog or the program ends.
class Messages {
public:
    Messages() = default;
    Messages(const Messages &) = delete;
    Messages &operator=(const Messages &) = delete;
    virtual ~Messages() = default;

    virtual void ShowMessage(const std::string &text) = 0;
    /// The same in a plain box that blocks the other windows meanwhile.
    virtual void ShowPlainBox(const std::string &text) = 0;
    /// The answer is left in `YesNoAnswer`.
    virtual void AskYesNo(const std::string &question) = 0;

    MessageState state;
};
