#pragma once

#include "link/LinkState.h"
#include "widgets/AddressBoxes.h"
#include "widgets/FaceButton.h"
#include "widgets/LinkStatusWidgets.h"

#include <QGroupBox>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>

#include <array>

/// The four operations of the saved-units dialog, in the order of their buttons.
inline constexpr std::array<const char *, 4> OperationCaptions{"Add Corvane", "Edit Corvane",
                                                               "Control Corvane", "Delete Corvane"};

/// All controls of the saved-units dialog, by their designed names, laid out in `window`.
class UnitControls {
public:
    /// @param addressQuads 0 to 3 take the numbers typed into the address boxes
    UnitControls(QWidget &window, std::array<std::string, 5> &addressQuads);

    QGroupBox *OptionsFrame;
    std::array<FaceButton *, 4> OptionsCommand{};
    FaceButton *OKButton;
    QGroupBox *AddCorvaneFrame;
    QLabel *namePrompt; ///< `Label2` 0
    QLabel *unitPrompt; ///< `Label2` 1
    QLineEdit *Text3;
    QListWidget *AvailCorvanesList;
    QLabel *Label3;
    QListWidget *ConnectChoiceList;
    QLineEdit *ControlledbyText;
    QGroupBox *IPAddressFrame;
    AddressBoxes *CntrlIPAddressQuad;
    FaceButton *AddCorvaneCommand;
    FaceButton *CancelCommand;
    QLabel *StatusLabel;
    LinkStatusWidgets status;

private:
    void layOutOptions();
    void layOutWorkArea();
    void layOutWindow(QWidget &window);
};
