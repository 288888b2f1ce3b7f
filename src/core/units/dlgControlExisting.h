#pragma once

#include "forms/AddressEntry.h"
#include "link/ActionGuard.h"
#include "units/SavedUnitsFile.h"

#include <array>
#include <functional>
#include <optional>

/// The four operations, in the order of their buttons.
enum class Operation { Add, Edit, Control, Delete };
inline constexpr std::array<const char *, 4> OperationCaptions{"Add Corvane", "Edit Corvane",
                                                               "Control Corvane", "Delete Corvane"};

/// The saved-units dialog.
struct UnitsView {
    FormView form;
    LinkStatusView status;
    Control OptionsFrame{.text = "Add, Edit, Control Options"};
    std::array<Control, 4> OptionsCommand{
        Control{.text = OperationCaptions[0]}, Control{.text = OperationCaptions[1]},
        Control{.text = OperationCaptions[2]}, Control{.text = OperationCaptions[3]}};
    Control OKButton{.text = "Return to Main"};
    Control AddCorvaneFrame{.text = "Define Corvane", .visible = false};
    Control Label2_0{.text = "Enter Corvane Name"};
    Control Label2_1{.text = "Select Corvane"};
    Control Text3;
    ListControl AvailCorvanesList;
    Control Label3{.text = "Controlled via"};
    ListControl ConnectChoiceList;
    Control ControlledbyText;
    Control IPAddressFrame{.text = "IP Address", .visible = false};
    AddressView CntrlIPAddressQuad;
    Control AddCorvaneCommand;
    Control CancelCommand{.text = "Cancel"};
    Control StatusLabel{.text = "Waiting", .visible = false};
};

/// The saved units: add, edit, delete one, or control it. The file is read again at every opening
/// and every choice of an operation, and written after every change. One operation runs at a time.
class dlgControlExisting : public Form {
public:
    /// What the dialog needs of the program around it. The first three return when the user is
    /// through with what they open.
    struct Around {
        std::function<void()> connectNetwork; ///< to the address in `IPAddressQuads`
        std::function<void()> connectSerial;
        std::function<void(const std::string &name)> controlUnit;
        std::function<void()> showStartWindow;
    };

    dlgControlExisting(UnitsView &unitsView, SavedUnits &savedUnits, SavedUnitsFile &unitsFile,
                       LinkState &linkState, UnitState &unitState, UnitTalk &unitTalk,
                       LinkStatusDisplay &statusDisplay, ActionGuard &actionGuard,
                       Messages &messages, EventPump &eventPump, Around aroundIt);

    /// Open already, it comes to the front as it is.
    void LoadForm();
    /// The same, with *Add Corvane* chosen.
    void LoadFormToAdd();
    void unload() override;

    // What the user does. Rows count from 0; -1 is no row. Boxes are 0 to 3.
    void OptionsCommand_Click(Operation chosen);
    void OKButton_Click();
    void Text3_Change(const std::string &text);
    void AvailCorvanesList_Click(int row);
    void AvailCorvanesList_DoubleClick(int row);
    void ConnectChoiceList_Click(int row);
    void CntrlIPAddressQuad_Change(const AddressPlace &before, const std::string &now);
    void CntrlIPAddressQuad_Backspace(int box);
    void AddCorvaneCommand_Click();
    void CancelCommand_Click();
    /// Esc: leaves the operation, or the dialog.
    void Escape();

private:
    void show();
    void chooseOperation(Operation chosen);
    void initialzeControlLists();
    void InitializeKVNControlBlocks();
    void showOptions();
    void pickUnit(int row);
    void pickNone();
    void runOperation();
    void AddCorvaneButton();
    void SaveCorvaneChanges();
    void DeleteCorvane();
    void ConnectControlButton();
    void connectUnit();
    void openUnit(char unitsKind, int mine);
    void Wait3Seconds();
    void showStatus(const char *text);
    bool save();
    void setBusy(bool underWay);
    void busyWhile(const std::function<void()> &work);
    void updateCommand();
    [[nodiscard]] bool isEther() const { return kind == EtherType; }
    [[nodiscard]] std::string kindToSave() const { return kind.empty() ? SerialType : kind; }

    UnitsView &view;
    SavedUnits &units;
    SavedUnitsFile &file;
    LinkState &link;
    UnitState &unit;
    UnitTalk &talk;
    LinkStatusDisplay &display;
    ActionGuard &guard;
    Messages &user;
    Around around;
    AddressEntry address;
    std::optional<Operation> operation; ///< none: the options are shown
    std::string kind;                   ///< of the unit that is added or picked; empty: not chosen
    bool busy = false;                  ///< an operation is under way
    int statusCount = 0;                ///< counts the status texts, so that each hides only itself
};
