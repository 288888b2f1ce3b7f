#pragma once

#include "Window.h"
#include "panel/dlgPresets.h"

/// The window of `dlgPresets`.
class PresetsWindow : public Window {
public:
    PresetsWindow(dlgPresets &presetsForm, const PresetsView &presetsView);
};
