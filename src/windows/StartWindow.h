#pragma once

#include "Window.h"
#include "start/frmMain.h"

#include <functional>

/// The window of `frmMain`.
class StartWindow : public Window {
public:
    /// @param openAbout what the menu's last item does
    StartWindow(frmMain &startForm, const MainView &mainView, std::function<void()> openAbout);

protected:
    void refreshRest() override;

private:
    void buildLayout();
    void buildMenu(std::function<void()> openAbout);

    frmMain &start;
    const MainView &view;
    PressLabel *ZarnConnectedLabel = nullptr;
};
