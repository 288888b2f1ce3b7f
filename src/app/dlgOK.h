#pragma once

#include "widgets/FaceButton.h"
#include "widgets/Form.h"

#include <QLabel>

#include <string>

/// The message dialog. Closing it in any way clears the flag on which its callers wait.
class dlgOK : public Form {
public:
    /// @param messageShowing set and cleared with the dialog
    dlgOK(const char *name, const char *caption, EventPump &eventPump, bool &messageShowing);

    /// Shows `text`; an open dialog changes its text.
    void LoadForm(const std::string &text);
    void unload() override;

protected:
    void keyPressEvent(QKeyEvent *event) override;

private:
    bool &showing;
    QLabel *OKLabel;
    FaceButton *OKButton;
};
