#pragma once

#include "link/ActionGuard.h"

#include <functional>

/// The start window.
struct MainView {
    FormView form;
    LinkStatusView status;
    Control MainControlButton_0{.text = "Find/Connect/Control Corvane"};
    Control MainControlButton_2{.text = "Add/Edit/Delete/Control Existing Corvane"};
    Control ToDisconnectPortLabel{.text = "To disconnect from the matrix, click the label below.",
                                  .visible = false};
};

/// The start window. Closing it closes the link and ends the program, from any depth.
class frmMain : public Form {
public:
    /// What lies behind the buttons and the menu.
    struct Opens {
        std::function<void()> connectDialog;
        std::function<void()> panel;
        std::function<void()> savedUnits;
        std::function<void()> newSavedUnit;
        std::function<void()> endProgram;
    };

    frmMain(MainView &mainView, LinkState &linkState, UnitState &unitState, UnitTalk &unitTalk,
            LinkStatusDisplay &statusDisplay, ActionGuard &actionGuard, Messages &messages,
            EventPump &eventPump, Opens whatOpens);

    // What the user does.
    void MainControlButton_Click(int index);
    void Connect2Corvane_Click();
    void ControlExistingCorvane_Click();
    void addUnit();
    void ZarnConnectedLabel_Click();

    void unload() override;

private:
    void Connect2CorvaneGetConfiguration();

    MainView &view;
    LinkState &link;
    UnitState &unit;
    UnitTalk &talk;
    LinkStatusDisplay &display;
    ActionGuard &guard;
    Messages &user;
    Opens opens;
};
