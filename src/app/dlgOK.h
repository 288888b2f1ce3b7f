#pragma once

#include "link/Messages.h"
#include "widgets/FaceButton.h"
#include "widgets/Form.h"

#include <QLabel>

/// The message dialog. Closing it in any way clears `MessageShowing`.
class dlgOK : public Form {
public:
    dlgOK(const char *name, const char *caption, EventPump &eventPump, MessageState &messageState);

    /// Shows `MessageText`; an open dialog changes its text.
    void LoadForm();
    void unload() override;

protected:
    void keyPressEvent(QKeyEvent *event) override;

private:
    MessageState &messages;
    QLabel *OKLabel;
    FaceButton *OKButton;
};
