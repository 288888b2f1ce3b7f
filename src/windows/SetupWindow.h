#pragma once

#include "Window.h"

/// The window of `dlgSetup`, the splash while the panel gets ready.
class SetupWindow : public Window {
public:
    SetupWindow(Form &setupForm, const FormView &setupView);
};
