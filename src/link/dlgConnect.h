#pragma once

#include "link/LinkTools.h"
#include "widgets/AddressBoxes.h"
#include "widgets/FaceButton.h"
#include "widgets/Form.h"
#include "widgets/LinkStatusWidgets.h"

#include <QComboBox>
#include <QGroupBox>
#include <QLabel>
#include <QRadioButton>

/// Chooses and opens the link: a network address, or one of the serial ports that are found. The
/// start window waits for `IPConnectingFlag`, which every way out of this dialog clears.
class dlgConnect : public Form, private ConnectProgressView {
public:
    explicit dlgConnect(const LinkTools &linkTools);

    /// Puts the dialog into its start state and shows it, modal.
    void LoadForm();

    /// Connects the address of `IPAddressQuads` without asking; the dialog shows the progress, goes
    /// away on success and stays with its message on failure.
    void HandleIPOnly();

    /// Chooses the serial option: shows the dialog and searches the ports.
    void handleSerialOnly();

    /// Cancels what is under way.
    void unload() override;

protected:
    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    void Form_Load();
    void makeIPAddressVisible();
    void makeIPAddressInVisible();
    void MakeSerialVisible();
    void MakeSerialInvisible();
    void chooseNetwork();
    void chooseSerial();
    void FindCommPorts(int thisTurn);
    void choosePort(int item);
    void connectNetwork();
    int takeTurn();
    void leaveBox(int number);
    void enterInBox(int number);
    void showConnectProgress(const std::string &text) override;
    void clearOption(QRadioButton *option);
    void buildNetworkFrame();
    void buildSerialFrame();

    LinkTools link;
    QGroupBox *Frame1;
    QRadioButton *ConnectIPOption;
    QRadioButton *ConnectSerialOption;
    QGroupBox *IPAddressFrame;
    AddressBoxes *IPAddressQuadConnect;
    FaceButton *Connect2IPButton;
    QLabel *Label2;
    QGroupBox *SerialConnectionFrame;
    QComboBox *SerialPortsCombo;
    QLabel *Label1;
    FaceButton *Connect2SerialButton;
    LinkStatusWidgets status;
    int turn = 0; ///< counts what is begun or ended; tells a handler that another has taken over
    bool connecting = false; ///< a network connect of this turn is under way
};
