#pragma once

#include "link/LinkTools.h"
#include "link/dlgConnect.h"
#include "units/SavedUnits.h"
#include "units/SavedUnitsFile.h"
#include "units/UnitControls.h"
#include "widgets/Form.h"

/// What the saved-units dialog needs of the program around it.
class UnitsHost {
public:
    UnitsHost() = default;
    UnitsHost(const UnitsHost &) = delete;
    UnitsHost &operator=(const UnitsHost &) = delete;
    virtual ~UnitsHost() = default;

    /// Opens the panel with the unit's name and returns once it is closed again.
    /// @throws RangeError if the model does not fit the panel
    virtual void controlUnit(const std::string &unitName) = 0;
    virtual void showStartWindow() = 0;
};

/// The saved units: add, edit, delete one, or control it. The file is read again at every opening
/// and every choice of an operation, and written after every change.
class dlgControlExisting : public Form {
public:
    enum class Operation { Add, Edit, Control, Delete };

    dlgControlExisting(const LinkTools &linkTools, SavedUnits &savedUnits,
                       SavedUnitsFile &unitsFile, dlgConnect &dialog, UnitsHost &unitsHost);

    void LoadForm();

    /// Chooses an operation, as its button does.
    void chooseOperation(Operation operation);

protected:
    bool eventFilter(QObject *watched, QEvent *event) override;
    void keyPressEvent(QKeyEvent *event) override;

private:
    void initialzeControlLists();
    void InitializeKVNControlBlocks();
    void showOptions();
    void pickUnit();
    void pickNoUnit();
    void pickKind();
    void carryOut();
    void runOperation();
    void AddCorvaneButton();
    void SaveCorvaneChanges();
    void DeleteCorvane();
    void ConnectControlButton();
    void connectUnit(bool ether);
    void openUnit(bool ether);
    void Wait3Seconds();
    void showStatus(const char *text);
    bool save();
    void busyWhile(const std::function<void()> &operation);
    [[nodiscard]] std::string kindText() const;
    void updateCommand();
    void connectControls();

    LinkTools link;
    SavedUnits &units;
    SavedUnitsFile &file;
    dlgConnect &connectDialog;
    UnitsHost &host;

    UnitControls controls;
    bool busy = false; ///< an operation is under way; no other one can be chosen
};
