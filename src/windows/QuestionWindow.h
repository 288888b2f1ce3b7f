#pragma once

#include "Window.h"
#include "forms/Messages.h"

/// The window of `dlgYesNo`.
class QuestionWindow : public Window {
public:
    QuestionWindow(Messages &questions, const QuestionView &questionView);

protected:
    void refreshRest() override;

private:
    const QuestionView &view;
    QLabel *YesNoText;
    QAbstractButton *NoButton;
    int shownRaised = 0;
};
