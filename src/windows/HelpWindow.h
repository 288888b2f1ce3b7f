#pragma once

#include "Window.h"
#include "start/HelpTexts.h"

/// One of the three help windows.
class HelpWindow : public Window {
public:
    HelpWindow(const HelpText &texts, Form &helpForm, const FormView &helpView);
};
