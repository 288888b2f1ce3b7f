#include "link/dlgConnect.h"

#include "platform/LinkError.h"
#include "protocol/Text.h"
#include "widgets/Colours.h"
#include "widgets/TextConversion.h"

#include <QAbstractItemView>
#include <QEvent>
#include <QFocusEvent>
#include <QHBoxLayout>
#include <QVBoxLayout>

#include <utility>

namespace {

constexpr const char *ConnectPrompt = "Connect to ...";

template <class Control> Control *named(Control *control, const char *name) {
    control->setObjectName(QLatin1String(name));
    return control;
}

} // namespace

dlgConnect::dlgConnect(const LinkTools &linkTools)
    : Form("dlgConnect", linkTools.pump, &linkTools.guard),
      link(linkTools),
      Frame1(named(new QGroupBox(QStringLiteral("Connect using..."), this), "Frame1")),
      ConnectIPOption(
          named(new QRadioButton(QStringLiteral("Ethernet"), Frame1), "ConnectIPOption")),
      ConnectSerialOption(
          named(new QRadioButton(QStringLiteral("Serial Port"), Frame1), "ConnectSerialOption")),
      IPAddressFrame(
          named(new QGroupBox(QStringLiteral("Enter IP Address Here"), this), "IPAddressFrame")),
      IPAddressQuadConnect(new AddressBoxes("IPAddressQuadConnect", "IPQuadLabel",
                                            link.state.IPAddressQuads, IPAddressFrame)),
      Connect2IPButton(
          named(new FaceButton(QStringLiteral("Connect"), IPAddressFrame), "Connect2IPButton")),
      Label2(named(new QLabel(QLatin1String(ConnectPrompt), IPAddressFrame), "Label2")),
      SerialConnectionFrame(named(new QGroupBox(QStringLiteral("Connect to Serial using..."), this),
                                  "SerialConnectionFrame")),
      SerialPortsCombo(named(new QComboBox(SerialConnectionFrame), "SerialPortsCombo")),
      Label1(
          named(new QLabel(QStringLiteral("Finding Comm Ports"), SerialConnectionFrame), "Label1")),
      Connect2SerialButton(named(new FaceButton(QStringLiteral("Connect"), SerialConnectionFrame),
                                 "Connect2SerialButton")),
      status(this) {
    setWindowTitle(QStringLiteral("Connect to Zarn-Lt"));
    setWindowModality(Qt::ApplicationModal);
    setWindowFlag(Qt::Dialog);
    Label2->setTextFormat(Qt::PlainText);

    auto *options = new QHBoxLayout(Frame1);
    options->addWidget(ConnectIPOption);
    options->addWidget(ConnectSerialOption);
    options->addStretch();
    for (QRadioButton *option : {ConnectIPOption, ConnectSerialOption})
        option->setFocusPolicy(Qt::TabFocus);
    buildNetworkFrame();
    buildSerialFrame();

    auto *linkRow = new QHBoxLayout;
    linkRow->addWidget(status.ZarnConnectedImage);
    linkRow->addWidget(status.ZarnNotConnectedImage);
    linkRow->addWidget(status.ZarnConnectedLabel, 1);
    QSizePolicy keepsItsPlace = status.ZarnConnectedLabel->sizePolicy();
    keepsItsPlace.setRetainSizeWhenHidden(true);
    status.ZarnConnectedLabel->setSizePolicy(keepsItsPlace);
    status.ZarnConnectedLabel->setMinimumHeight(28);
    auto *layout = new QVBoxLayout(this);
    layout->setContentsMargins(18, 16, 18, 16);
    layout->setSpacing(12);
    layout->addWidget(Frame1);
    layout->addWidget(IPAddressFrame);
    layout->addWidget(SerialConnectionFrame);
    layout->addStretch();
    layout->addLayout(linkRow);
    setFixedSize(420, 300);

    link.display.attach(StatusWindow::Connect, status);
    link.display.attachProgress(*this);
    connect(ConnectIPOption, &QRadioButton::clicked, this,
            [this] { act([this] { chooseNetwork(); }); });
    connect(ConnectSerialOption, &QRadioButton::clicked, this,
            [this] { act([this] { chooseSerial(); }); });
    whenKey(Qt::Key_Escape, [this] {
        if (SerialPortsCombo->view()->isVisible())
            SerialPortsCombo->hidePopup();
        else
            unload();
    });
}

void dlgConnect::buildNetworkFrame() {
    auto *network = new QVBoxLayout(IPAddressFrame);
    auto *addressRow = new QHBoxLayout;
    addressRow->addWidget(IPAddressQuadConnect);
    addressRow->addWidget(Connect2IPButton);
    network->addLayout(addressRow);
    network->addWidget(Label2);
    IPAddressQuadConnect->entry.accepts = [this] { return !IPAddressFrame->isHidden(); };
    for (int number = 0; number < 4; ++number) {
        QLineEdit *box = IPAddressQuadConnect->box(number);
        box->installEventFilter(this);
        connect(box, &QLineEdit::returnPressed, this, [this, number] { enterInBox(number); });
    }
    whenClicked(Connect2IPButton, [this] { connectNetwork(); });
}

void dlgConnect::buildSerialFrame() {
    auto *serial = new QVBoxLayout(SerialConnectionFrame);
    auto *portRow = new QHBoxLayout;
    portRow->addWidget(SerialPortsCombo, 1);
    portRow->addWidget(Connect2SerialButton);
    serial->addWidget(Label1);
    serial->addLayout(portRow);
    SerialPortsCombo->setPlaceholderText(QStringLiteral("Select Port"));
    SerialPortsCombo->setAccessibleName(QStringLiteral("Serial ports"));
    SerialPortsCombo->setFocusPolicy(Qt::TabFocus);
    // The handler waits, so it must not run inside the list's own handling of the click.
    connect(
        SerialPortsCombo, &QComboBox::activated, this,
        [this](int item) { act([this, item] { choosePort(item); }); }, Qt::QueuedConnection);
    whenClicked(Connect2SerialButton, [this] { unload(); });
}

int dlgConnect::takeTurn() {
    link.state.FindingPortsFlag = false;
    Connect2IPButton->setEnabled(true);
    if (connecting) {
        connecting = false;
        link.state.IPConnectingFlag = false;
        link.network.IPCheckifPortOpenwithClose();
        Label2->setText(QLatin1String(ConnectPrompt));
    }
    return ++turn;
}

void dlgConnect::LoadForm() {
    takeTurn();
    Form_Load();
    present();
}

void dlgConnect::Form_Load() {
    LinkState &state = link.state;
    clearOption(ConnectIPOption);
    clearOption(ConnectSerialOption);
    MakeSerialInvisible();
    makeIPAddressInVisible();
    SerialPortsCombo->clear();
    Connect2SerialButton->setEnabled(false);
    IPAddressQuadConnect->clear();
    Label2->setText(QLatin1String(ConnectPrompt));
    status.ZarnConnectedLabel->hide();
    status.ZarnConnectedImage->hide();
    link.display.ConnecthandleConnectionStatus();
    if (!state.IPAddressQuads[0].empty()) {
        // The address entered last is offered again, ready to connect.
        IPAddressQuadConnect->fill(state.IPAddressQuads);
        ConnectIPOption->setChecked(true);
        state.LinkKind = NetworkLinkKind;
        makeIPAddressVisible();
    }
}

void dlgConnect::clearOption(QRadioButton *option) {
    option->setAutoExclusive(false);
    option->setChecked(false);
    option->setAutoExclusive(true);
}

void dlgConnect::makeIPAddressVisible() { IPAddressFrame->show(); }
void dlgConnect::makeIPAddressInVisible() { IPAddressFrame->hide(); }
void dlgConnect::MakeSerialVisible() { SerialConnectionFrame->show(); }
void dlgConnect::MakeSerialInvisible() { SerialConnectionFrame->hide(); }

void dlgConnect::showConnectProgress(const std::string &text) { Label2->setText(shown(text)); }

void dlgConnect::chooseNetwork() {
    LinkState &state = link.state;
    // A connect that is under way is of this option, so it goes on.
    if (!connecting)
        takeTurn();
    // A port picked before would stay taken for the rest of the run.
    link.serial.CloseSerialPort();
    Connect2SerialButton->setEnabled(false);
    MakeSerialInvisible();
    makeIPAddressVisible();
    state.LinkKind = NetworkLinkKind;
    IPAddressQuadConnect->box(0)->setFocus();
    if (!state.IPAddressQuads[0].empty()) {
        IPAddressQuadConnect->clear();
        for (std::size_t quad = 0; quad < 4; ++quad)
            state.IPAddressQuads.at(quad).clear();
    }
}

bool dlgConnect::eventFilter(QObject *watched, QEvent *event) {
    if (event->type() == QEvent::FocusOut) {
        const Qt::FocusReason reason = static_cast<QFocusEvent *>(event)->reason();
        const bool left = reason != Qt::ActiveWindowFocusReason && reason != Qt::PopupFocusReason;
        for (int number = 0; left && number < 4; ++number) {
            if (watched == IPAddressQuadConnect->box(number))
                leaveBox(number);
        }
    }
    return Form::eventFilter(watched, event);
}

void dlgConnect::leaveBox(int number) {
    QLineEdit *box = IPAddressQuadConnect->box(number);
    const double value = leadingNumber(typed(box->text()));
    if (value < 1.0 || value > 255.0)
        box->clear();
    else
        link.state.IPAddressQuads.at(static_cast<std::size_t>(number)) = decimalText(value);
}

void dlgConnect::enterInBox(int number) {
    if (number == 3)
        Connect2IPButton->click();
    else
        IPAddressQuadConnect->goTo(number + 1);
}

void dlgConnect::connectNetwork() {
    LinkState &state = link.state;
    const int thisTurn = takeTurn();
    const auto givenUp = [this, thisTurn] { return turn != thisTurn || pump.ended(); };
    const auto &quads = state.IPAddressQuads;
    connecting = true;
    Connect2IPButton->setEnabled(false);
    state.LinkKind = NetworkLinkKind;
    state.RemoteIPAddress = quads[0] + "." + quads[1] + "." + quads[2] + "." + quads[3];
    showConnectProgress("Connecting to " + state.RemoteIPAddress);
    if (!state.IPConnectedFlag) {
        // The outcome is read from flags that only a close clears.
        link.network.IPCheckifPortOpenwithClose();
        link.network.SetupConnectIP();
        if (!state.IPConnectedFlag && !givenUp())
            link.network.SetupConnectIP();
    }
    if (givenUp())
        return;
    connecting = false;
    if (state.IPConnectedFlag) {
        state.LinkMadeCode = 1;
        link.display.ConnecthandleConnectionStatus();
        unload();
        return;
    }
    // The last attempt must not come through behind the user's back.
    link.network.IPCheckifPortOpenwithClose();
    link.messages.ShowMessage(
        "Unable to connect using that IP address, check the address and try again.");
    if (givenUp())
        return;
    Label2->setText(QLatin1String(ConnectPrompt));
    Connect2IPButton->setEnabled(true);
}

void dlgConnect::chooseSerial() {
    const int thisTurn = takeTurn();
    // The search opens and closes ports; one that was picked before would be closed by it
    // unnoticed.
    link.serial.CloseSerialPort();
    Connect2SerialButton->setEnabled(false);
    makeIPAddressInVisible();
    MakeSerialVisible();
    SerialPortsCombo->hide();
    Label1->setText(QStringLiteral("Finding Comm Ports"));
    Label1->show();
    link.state.FindingPortsFlag = true;
    FindCommPorts(thisTurn);
    pump.runUntil([this] { return !link.state.FindingPortsFlag; });
    if (turn != thisTurn)
        return;
    SerialPortsCombo->show();
    link.state.LinkKind = SerialLinkKind;
}

void dlgConnect::FindCommPorts(int thisTurn) {
    LinkState &state = link.state;
    state.PortsFoundCount = 0;
    for (int port = 1; port <= LastCommPort; ++port) {
        link.serial.TestCommPort(port);
        if (turn != thisTurn)
            return;
        // The flag is the answer; the port itself is closed again.
        const bool found = std::exchange(state.SerialPortOpen, false);
        state.PortAvailable[port] = found ? 1 : 0;
        if (!found)
            continue;
        SerialPortsCombo->addItem(QStringLiteral("Comm%1").arg(port));
        ++state.PortsFoundCount;
    }
    if (state.PortsFoundCount != 0) {
        Label1->setText(QStringLiteral("Found Comm Ports"));
        SerialPortsCombo->setCurrentIndex(-1);
        SerialPortsCombo->show();
    } else {
        link.messages.ShowMessage(
            "There are no COM ports available for updating\r\nClose any serial "
            "communications programs in use, or connect a USB to Serial "
            "Adapter Cable.");
        if (turn != thisTurn)
            return;
        clearOption(ConnectSerialOption);
        MakeSerialInvisible();
    }
    state.FindingPortsFlag = false;
}

void dlgConnect::choosePort(int item) {
    LinkState &state = link.state;
    const std::string name = typed(SerialPortsCombo->itemText(item));
    const int port = static_cast<int>(leadingNumber(mid(name, 5, 2)));
    if (!isLoaded() || port == 0)
        return;
    const int thisTurn = takeTurn();
    link.messages.ShowMessage("Please make sure the Zarn is connected to the Comm Port " +
                              std::to_string(port) + " Cable before proceeding!");
    if (turn != thisTurn || pump.ended())
        return;
    // Not before: until now the port in use was another one.
    link.serial.selectPort(port);
    state.PreviousCommPort = port;
    try {
        link.serial.OpenSerialPort();
    } catch (const LinkError &) {
        // Shown by the status below, as every port that does not open.
    }
    if (!state.SerialPortOpen && turn != thisTurn)
        return;
    state.LinkKind = SerialLinkKind;
    link.display.ConnecthandleConnectionStatus();
    if (state.SerialPortOpen) {
        state.LinkMadeCode = 1;
        state.ActiveCommPort = state.SelectedCommPort;
        state.SerialSelectedFlag = true;
    } else {
        status.showLinkStatus({.caption = "Not Connected", .background = Rgb{192, 0, 0}});
        state.LinkMadeCode = 0;
        link.display.handleZarnConnectedFlag();
    }
    status.ZarnConnectedLabel->show();
    Connect2SerialButton->setEnabled(state.SerialPortOpen);
}

void dlgConnect::HandleIPOnly() {
    LoadForm();
    ConnectIPOption->setChecked(true);
    IPAddressQuadConnect->fill(link.state.IPAddressQuads);
    MakeSerialInvisible();
    makeIPAddressVisible();
    link.state.LinkKind = NetworkLinkKind;
    connectNetwork();
}

void dlgConnect::handleSerialOnly() {
    LoadForm();
    makeIPAddressInVisible();
    ConnectSerialOption->setChecked(true);
    chooseSerial();
}

void dlgConnect::unload() {
    if (!isLoaded())
        return;
    takeTurn();
    link.state.IPConnectingFlag = false;
    Form::unload();
}
