#include "start/frmMain.h"

#include "protocol/ReplyClass.h"

#include <utility>

frmMain::frmMain(MainView &mainView, LinkState &linkState, UnitState &unitState, UnitTalk &unitTalk,
                 LinkStatusDisplay &statusDisplay, ActionGuard &actionGuard, Messages &messages,
                 EventPump &eventPump, Opens whatOpens)
    : Form(mainView.form, eventPump),
      view(mainView),
      link(linkState),
      unit(unitState),
      talk(unitTalk),
      display(statusDisplay),
      guard(actionGuard),
      user(messages),
      opens(std::move(whatOpens)) {}

void frmMain::MainControlButton_Click(int index) {
    if (index != 0) {
        ControlExistingCorvane_Click();
        return;
    }
    unit.SelectedUnitName.clear();
    Connect2Corvane_Click();
}

void frmMain::Connect2Corvane_Click() {
    // A connect that is begun inside another one takes over.
    beginShowing();
    guard.run(*this, [this] { Connect2CorvaneGetConfiguration(); });
}

void frmMain::ControlExistingCorvane_Click() {
    guard.run(*this, [this] { opens.savedUnits(); });
}

void frmMain::addUnit() {
    guard.run(*this, [this] { opens.newSavedUnit(); });
}

void frmMain::ZarnConnectedLabel_Click() {
    guard.run(*this, [this] {
        talk.CloseLink();
        display.refreshAll();
    });
}

void frmMain::Connect2CorvaneGetConfiguration() {
    const int mine = showing();
    if (!view.status.showsConnected()) {
        // A panel that opens may be connecting anew: that must not come through later.
        talk.CloseLink();
        link.IPConnectingFlag = true;
        link.LinkKind = NoLinkKind;
        opens.connectDialog();
    }
    if (!isShowing(mine) || !view.status.showsConnected())
        return;
    talk.GetParseConfiguration();
    if (!isShowing(mine))
        return;
    if (unit.exchange.ReplyStatus == NothingReceived)
        user.ShowMessage("Unable to get Corvane Configuration");
    else
        opens.panel();
}

void frmMain::unload() {
    if (!isLoaded())
        return;
    talk.CloseLink();
    Form::unload();
    opens.endProgram();
}
