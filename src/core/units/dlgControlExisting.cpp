#include "units/dlgControlExisting.h"

#include "forms/AtExit.h"
#include "protocol/ReplyClass.h"
#include "protocol/Text.h"
#include "units/SavedUnitsText.h"

#include <utility>

namespace {

constexpr int LingerSeconds = 3;

/// A name in a question. A file can hold names that no window has room for.
std::string askedName(const std::string &name) {
    constexpr std::size_t Longest = 60;
    return name.size() <= Longest ? name : name.substr(0, Longest) + "...";
}

} // namespace

dlgControlExisting::dlgControlExisting(UnitsView &unitsView, SavedUnits &savedUnits,
                                       SavedUnitsFile &unitsFile, LinkState &linkState,
                                       UnitState &unitState, UnitTalk &unitTalk,
                                       LinkStatusDisplay &statusDisplay, ActionGuard &actionGuard,
                                       Messages &messages, EventPump &eventPump, Around aroundIt)
    : Form(unitsView.form, eventPump),
      view(unitsView),
      units(savedUnits),
      file(unitsFile),
      link(linkState),
      unit(unitState),
      talk(unitTalk),
      display(statusDisplay),
      guard(actionGuard),
      user(messages),
      around(std::move(aroundIt)),
      address(view.CntrlIPAddressQuad, link.IPAddressQuads) {}

void dlgControlExisting::LoadForm() {
    const bool opens = !isLoaded();
    show();
    if (opens)
        InitializeKVNControlBlocks();
}

void dlgControlExisting::LoadFormToAdd() {
    show();
    chooseOperation(Operation::Add);
}

void dlgControlExisting::show() {
    if (!isLoaded()) {
        view.StatusLabel.visible = false;
        operation.reset();
        showOptions();
        initialzeControlLists();
    }
    present();
}

void dlgControlExisting::unload() {
    // A question that is open belongs to an operation of this dialog.
    if (busy)
        user.dlgYesNo().unload();
    // What is under way goes on without the dialog, which is ready when it opens again.
    setBusy(false);
    Form::unload();
}

void dlgControlExisting::showOptions() {
    const auto left = static_cast<int>(operation.value_or(Operation::Add));
    operation.reset();
    view.AddCorvaneFrame.visible = false;
    view.OptionsFrame.visible = true;
    focusOn("OptionsCommand_" + std::to_string(left));
}

void dlgControlExisting::initialzeControlLists() {
    view.ConnectChoiceList.entries = {SerialType, EtherType};
    view.ConnectChoiceList.chosen = -1;
    kind.clear();
}

void dlgControlExisting::InitializeKVNControlBlocks() {
    const std::string failure = file.CheckGetIniFile();
    view.AvailCorvanesList.entries.clear();
    for (int index = 1; index <= units.ControlBlockCount; ++index)
        view.AvailCorvanesList.entries.push_back(units.KVNControlBlocks[index].Name);
    view.AvailCorvanesList.chosen = -1;
    if (!failure.empty())
        user.ShowMessage(failure);
}

void dlgControlExisting::OptionsCommand_Click(Operation chosen) {
    guard.run(*this, [this, chosen] { chooseOperation(chosen); });
}

void dlgControlExisting::OKButton_Click() {
    guard.run(*this, [this] {
        around.showStartWindow();
        unload();
    });
}

void dlgControlExisting::Text3_Change(const std::string &text) { view.Text3.text = text; }

void dlgControlExisting::AvailCorvanesList_Click(int row) {
    if (busy)
        return;
    guard.run(*this, [this, row] { pickUnit(row); });
}

void dlgControlExisting::AvailCorvanesList_DoubleClick(int row) {
    if (busy)
        return;
    guard.run(*this, [this, row] {
        pickUnit(row);
        if (units.SelectedBlockIndex != 0)
            busyWhile([this] { ConnectControlButton(); });
    });
}

void dlgControlExisting::ConnectChoiceList_Click(int row) {
    const auto &kinds = view.ConnectChoiceList.entries;
    if (busy || row < 0 || row >= static_cast<int>(kinds.size()))
        return;
    view.ConnectChoiceList.chosen = row;
    kind = kinds.at(static_cast<std::size_t>(row));
    view.IPAddressFrame.visible = isEther();
    if (units.SelectedBlockIndex != 0)
        view.ControlledbyText.text = kind;
}

void dlgControlExisting::CntrlIPAddressQuad_Change(const AddressPlace &before,
                                                   const std::string &now) {
    address.change(before, now);
}

void dlgControlExisting::CntrlIPAddressQuad_Backspace(int box) { address.backspace(box); }

void dlgControlExisting::AddCorvaneCommand_Click() {
    if (operation && view.AddCorvaneCommand.enabled && !busy)
        guard.run(*this, [this] { runOperation(); });
}

void dlgControlExisting::CancelCommand_Click() {
    if (busy)
        return;
    guard.run(*this, [this] { showOptions(); });
}

void dlgControlExisting::Escape() {
    if (operation && !busy)
        CancelCommand_Click();
    else
        guard.run(*this, [this] { unload(); });
}

void dlgControlExisting::chooseOperation(Operation chosen) {
    if (busy)
        return;
    const bool adds = chosen == Operation::Add;
    view.StatusLabel.visible = false;
    view.IPAddressFrame.visible = false;
    initialzeControlLists();
    const int mine = beginShowing();
    InitializeKVNControlBlocks();
    // A message may have held this; another choice has taken over, or the dialog is gone.
    if (!isShowing(mine))
        return;
    operation = chosen;
    view.OptionsFrame.visible = false;
    view.AddCorvaneFrame.text = OperationCaptions.at(static_cast<std::size_t>(chosen));
    view.AddCorvaneCommand.text = view.AddCorvaneFrame.text;
    view.Text3.text.clear();
    view.Text3.enabled = adds;
    view.Label2_0.enabled = adds;
    view.AvailCorvanesList.control.enabled = !adds;
    view.Label2_1.enabled = !adds;
    pickNone();
    view.ConnectChoiceList.control.enabled = adds;
    view.AddCorvaneFrame.visible = true;
    focusOn(adds ? "Text3" : "AvailCorvanesList");
}

void dlgControlExisting::updateCommand() {
    // Without a unit picked there is nothing that could be edited, controlled or deleted.
    view.AddCorvaneCommand.enabled = operation == Operation::Add || units.SelectedBlockIndex != 0;
}

void dlgControlExisting::pickNone() {
    units.SelectedBlockIndex = 0;
    view.AvailCorvanesList.chosen = -1;
    view.ControlledbyText.text.clear();
    view.ConnectChoiceList.chosen = -1;
    view.ConnectChoiceList.control.enabled = false;
    view.IPAddressFrame.visible = false;
    kind.clear();
    address.fill({});
    updateCommand();
}

void dlgControlExisting::pickUnit(int row) {
    if (row < 0 || row >= units.ControlBlockCount) {
        pickNone();
        return;
    }
    units.SelectedBlockIndex = row + 1;
    view.AvailCorvanesList.chosen = row;
    const KVNControlBlock &block = units.KVNControlBlocks[units.SelectedBlockIndex];
    kind = block.ConnectType == EtherType ? EtherType : SerialType;
    view.ControlledbyText.text = kind;
    view.IPAddressFrame.visible = isEther();
    std::array<std::string, 5> quads;
    int position = 1;
    for (std::size_t quad = 0; quad < 4 && isEther(); ++quad)
        quads.at(quad) = ReadIPQuadToken(block.IPAddress, position);
    address.fill(quads);
    // Saving takes the kind from its list, so an untouched kind must stay what it was.
    view.ConnectChoiceList.chosen = isEther() ? 1 : 0;
    view.ConnectChoiceList.control.enabled = true;
    updateCommand();
}

void dlgControlExisting::showStatus(const char *text) {
    ++statusCount;
    view.StatusLabel.text = text;
    view.StatusLabel.visible = true;
}

bool dlgControlExisting::save() {
    const std::string failure = file.Write2Disk();
    if (failure.empty())
        return true;
    view.StatusLabel.visible = false;
    user.ShowMessage(failure);
    return false;
}

void dlgControlExisting::busyWhile(const std::function<void()> &work) {
    if (busy)
        return;
    setBusy(true);
    const AtExit ready([this, mine = showing()] {
        if (isShowing(mine))
            setBusy(false);
    });
    work();
}

void dlgControlExisting::setBusy(bool underWay) {
    busy = underWay;
    view.AddCorvaneFrame.enabled = !underWay;
}

void dlgControlExisting::runOperation() {
    const int mine = showing();
    switch (*operation) {
    case Operation::Add:
        busyWhile([this] { AddCorvaneButton(); });
        break;
    case Operation::Edit:
        busyWhile([this] { SaveCorvaneChanges(); });
        Wait3Seconds();
        break;
    case Operation::Control:
        busyWhile([this] { ConnectControlButton(); });
        break;
    case Operation::Delete:
        busyWhile([this] { DeleteCorvane(); });
        if (isShowing(mine))
            InitializeKVNControlBlocks();
        break;
    }
}

void dlgControlExisting::AddCorvaneButton() {
    if (units.ControlBlockCount == units.KVNControlBlocks.last()) {
        user.ShowMessage("Maximum number of corvanes saved!");
        return;
    }
    showStatus("Setting up save");
    ++units.ControlBlockCount;
    KVNControlBlock &block = units.KVNControlBlocks[units.ControlBlockCount];
    block.Name = view.Text3.text;
    block.ConnectType = kindToSave();
    if (isEther()) {
        const std::array<std::string, 5> numbers = address.numbers();
        for (std::size_t quad = 0; quad < 4; ++quad) {
            if (numbers.at(quad).empty()) {
                user.ShowPlainBox("incomplete ip address can't save to block.");
                return;
            }
        }
        block.IPAddress = joinAddress(numbers);
    }
    const int mine = showing();
    if (save())
        showStatus("Added Corvane to Disk");
    if (isShowing(mine))
        showOptions();
}

void dlgControlExisting::SaveCorvaneChanges() {
    KVNControlBlock &block = units.KVNControlBlocks[units.SelectedBlockIndex];
    block.ConnectType = kindToSave();
    block.IPAddress = joinAddress(address.numbers());
    const int mine = showing();
    if (save())
        user.ShowMessage("Saved Changes to Disk");
    if (isShowing(mine))
        showOptions();
}

void dlgControlExisting::DeleteCorvane() {
    const int mine = showing();
    const int index = units.SelectedBlockIndex;
    const KVNControlBlock before = units.KVNControlBlocks[index];
    // A question that is closed unanswered must not count as the yes of an earlier one.
    user.answer(false);
    user.AskYesNo("Are you sure you want to delete " + latin1ToUtf8(askedName(before.Name)) + " ?");
    if (user.answered() && isShowing(mine)) {
        const bool unsavedBefore = units.UnsavedChanges;
        units.KVNControlBlocks[index] = {};
        if (save()) {
            showStatus("Deleted Corvane from Disk");
            Wait3Seconds();
        } else {
            // Still in the file, so still a unit.
            units.KVNControlBlocks[index] = before;
            units.UnsavedChanges = unsavedBefore;
        }
    }
    if (isShowing(mine))
        showOptions();
}

void dlgControlExisting::Wait3Seconds() {
    link.WaitSeconds = LingerSeconds;
    const int mine = statusCount;
    pump.runFor(link.WaitSeconds, [] { return false; });
    if (mine == statusCount)
        view.StatusLabel.visible = false;
}

void dlgControlExisting::ConnectControlButton() {
    const int mine = showing();
    showStatus("Waiting for Connection.");
    units.WaitingForConnectionFlag = true;
    const AtExit idle([this] {
        units.WaitingForConnectionFlag = false;
        view.StatusLabel.visible = false;
    });
    const char unitsKind = isEther() ? NetworkLinkKind : SerialLinkKind;
    connectUnit();
    openUnit(unitsKind, mine);
    if (isShowing(mine))
        unload();
}

void dlgControlExisting::connectUnit() {
    // Whatever is open belongs to the unit controlled before.
    talk.CloseLink();
    display.refreshAll();
    link.IPConnectingFlag = true;
    if (!isEther()) {
        around.connectSerial();
        return;
    }
    for (int box = 0; box < AddressEntry::BoxCount; ++box) {
        const std::string &text = address.text(box);
        link.IPAddressQuads.at(static_cast<std::size_t>(box)) =
            text.empty() ? text : decimalText(leadingNumber(text));
    }
    around.connectNetwork();
}

void dlgControlExisting::openUnit(char unitsKind, int mine) {
    showStatus("Waiting for Configuration.");
    // The dialog may have made a link of the other kind, which leads to another unit.
    if (link.LinkKind != unitsKind || !talk.linkIsUp())
        return;
    const std::string name = units.KVNControlBlocks[units.SelectedBlockIndex].Name;
    talk.GetParseConfiguration();
    if (!isShowing(mine))
        return;
    if (unit.exchange.ReplyStatus == RecognisedReply) {
        showStatus("Loading Controls.");
        around.controlUnit(name);
    } else if (unit.exchange.ReplyStatus == NothingReceived) {
        user.ShowMessage("Unable to get Corvane Configuration");
    }
}
