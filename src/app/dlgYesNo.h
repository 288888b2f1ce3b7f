#pragma once

#include "link/Messages.h"
#include "widgets/FaceButton.h"
#include "widgets/Form.h"

#include <QLabel>

/// The question dialog. Its buttons set `YesNoAnswer`; closing the window leaves it as it was.
/// Every way out clears `YesNoShowing`.
class dlgYesNo : public Form {
public:
    dlgYesNo(EventPump &eventPump, MessageState &messageState);

    /// Shows `ConfirmText`.
    void LoadForm();
    void unload() override;

private:
    void answer(bool yes);

    MessageState &messages;
    QLabel *YesNoText;
    FaceButton *YesButton;
    FaceButton *NoButton;
};
