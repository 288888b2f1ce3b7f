#pragma once

#include "Window.h"

/// The window of `frmAbout`: title and version.
class AboutWindow : public Window {
public:
    AboutWindow(Form &aboutForm, const FormView &aboutView);
};
