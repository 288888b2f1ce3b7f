#include "ConnectWindow.h"

#include "FaceButton.h"
#include "OptionButton.h"
#include "ProgramLook.h"
#include "TextConversion.h"

#include <QAbstractItemView>
#include <QHBoxLayout>
#include <QVBoxLayout>

#include <utility>

ConnectWindow::ConnectWindow(dlgConnect &connectForm, const ConnectView &connectView)
    : Window("dlgConnect", connectForm, connectView.form), dialog(connectForm), view(connectView) {
    setWindowTitle(QStringLiteral("Connect to Zarn-Lt"));
    setWindowModality(Qt::ApplicationModal);
    setWindowFlag(Qt::Dialog);
    auto *layout = new QVBoxLayout(this);
    layout->setContentsMargins(grown(QMargins(18, 16, 18, 16)));
    layout->setSpacing(grown(12));
    layout->addWidget(buildOptions());
    layout->addWidget(buildNetworkFrame());
    layout->addWidget(buildSerialFrame());
    layout->addStretch();
    keepPlaceWhenHidden(addLinkRow(layout, view.status, grown(28)));
    setFixedSize(grown(QSize(420, 300)));
    // While an assistive technology listens, the window's keys come before those of an open list.
    whenKey(Qt::Key_Escape, [this] {
        if (SerialPortsCombo->view()->isVisible())
            SerialPortsCombo->hidePopup();
        else
            dialog.unload();
    });
    leadByArrows();
}

QGroupBox *ConnectWindow::buildOptions() {
    auto *Frame1 = named(new QGroupBox(this), "Frame1");
    bind(Frame1, view.Frame1);
    auto *options = new QHBoxLayout(Frame1);
    const auto addOption = [this, Frame1, options](const char *name, const Control &control,
                                                   std::function<void()> clicked) {
        auto *option = named(new OptionButton(Frame1), name);
        bind(option, control);
        whenClicked(option, std::move(clicked));
        options->addWidget(option);
    };
    addOption("ConnectIPOption", view.ConnectIPOption, [this] { dialog.ConnectIPOption_Click(); });
    addOption("ConnectSerialOption", view.ConnectSerialOption,
              [this] { dialog.ConnectSerialOption_Click(); });
    options->addStretch();
    return Frame1;
}

QGroupBox *ConnectWindow::buildNetworkFrame() {
    auto *frame = named(new QGroupBox(this), "IPAddressFrame");
    bind(frame, view.IPAddressFrame);
    address =
        new AddressBoxes("IPAddressQuadConnect", "IPQuadLabel", view.IPAddressQuadConnect, frame);
    auto *button = named(new FaceButton(QString(), frame), "Connect2IPButton");
    bind(button, view.Connect2IPButton);
    auto *progress = named(new QLabel(frame), "Label2");
    bind(progress, view.Label2);
    announceChanges(progress, ConnectView().Label2.text);
    auto *row = new QHBoxLayout;
    row->addWidget(address);
    row->addWidget(button);
    auto *layout = new QVBoxLayout(frame);
    layout->addLayout(row);
    layout->addWidget(progress);
    address->changed = [this](const AddressPlace &before, const std::string &now) {
        report([&] { dialog.IPAddressQuadConnect_Change(before, now); });
    };
    address->backspaceInEmpty = [this](int box) {
        report([&] { dialog.IPAddressQuadConnect_Backspace(box); });
    };
    address->entered = [this](int box) { report([&] { dialog.IPAddressQuadConnect_Enter(box); }); };
    address->left = [this](int box) { report([&] { dialog.IPAddressQuadConnect_Left(box); }); };
    whenClicked(button, [this] { dialog.Connect2IPButton_Click(); });
    return frame;
}

QGroupBox *ConnectWindow::buildSerialFrame() {
    auto *frame = named(new QGroupBox(this), "SerialConnectionFrame");
    bind(frame, view.SerialConnectionFrame);
    auto *result = named(new QLabel(frame), "Label1");
    bind(result, view.Label1);
    announceChanges(result);
    SerialPortsCombo = named(new PortList(frame), "SerialPortsCombo");
    SerialPortsCombo->setPlaceholderText(shown(view.SerialPortsCombo.control.text));
    for (QWidget *spoken : {static_cast<QWidget *>(SerialPortsCombo),
                            static_cast<QWidget *>(SerialPortsCombo->view())})
        spoken->setAccessibleName(QStringLiteral("Serial ports"));
    SerialPortsCombo->setFocusPolicy(Qt::TabFocus);
    bindPresence(SerialPortsCombo, view.SerialPortsCombo.control);
    // The handler waits, so it must not run inside the list's own handling of the click.
    connect(
        SerialPortsCombo, &QComboBox::activated, this,
        [this](int item) { report([&] { dialog.SerialPortsCombo_Click(item); }); },
        Qt::QueuedConnection);
    auto *button = named(new FaceButton(QString(), frame), "Connect2SerialButton");
    bind(button, view.Connect2SerialButton);
    whenClicked(button, [this] { dialog.Connect2SerialButton_Click(); });
    auto *row = new QHBoxLayout;
    row->addWidget(SerialPortsCombo, 1);
    row->addWidget(button);
    auto *layout = new QVBoxLayout(frame);
    layout->addWidget(result);
    layout->addLayout(row);
    return frame;
}

void ConnectWindow::refreshRest() {
    address->refresh();
    if (shownPorts == view.SerialPortsCombo)
        return;
    if (shownPorts.entries != view.SerialPortsCombo.entries) {
        SerialPortsCombo->clear();
        for (const std::string &entry : view.SerialPortsCombo.entries)
            SerialPortsCombo->addItem(shown(entry));
    }
    SerialPortsCombo->setCurrentIndex(view.SerialPortsCombo.chosen);
    shownPorts = view.SerialPortsCombo;
}
