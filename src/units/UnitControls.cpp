#include "units/UnitControls.h"

#include <QGridLayout>
#include <QRegularExpressionValidator>
#include <QVBoxLayout>

namespace {

template <class Control> Control *named(Control *control, const char *name) {
    control->setObjectName(QLatin1String(name));
    return control;
}

/// Names are kept as single bytes: the printable characters of Latin-1.
QValidator *nameValidator(QObject *parent) {
    static const QRegularExpression printable(QStringLiteral("[\\x20-\\x7E\\xA0-\\xFF]*"));
    return new QRegularExpressionValidator(printable, parent);
}

void keepPlaceWhenHidden(QWidget *widget) {
    QSizePolicy policy = widget->sizePolicy();
    policy.setRetainSizeWhenHidden(true);
    widget->setSizePolicy(policy);
}

} // namespace

UnitControls::UnitControls(QWidget &window, std::array<std::string, 5> &addressQuads)
    : OptionsFrame(named(new QGroupBox(QStringLiteral("Add, Edit, Control Options"), &window),
                         "OptionsFrame")),
      OKButton(named(new FaceButton(QStringLiteral("Return to Main"), OptionsFrame), "OKButton")),
      AddCorvaneFrame(
          named(new QGroupBox(QStringLiteral("Define Corvane"), &window), "AddCorvaneFrame")),
      namePrompt(
          named(new QLabel(QStringLiteral("Enter Corvane Name"), AddCorvaneFrame), "Label2_0")),
      unitPrompt(named(new QLabel(QStringLiteral("Select Corvane"), AddCorvaneFrame), "Label2_1")),
      Text3(named(new QLineEdit(AddCorvaneFrame), "Text3")),
      AvailCorvanesList(named(new QListWidget(AddCorvaneFrame), "AvailCorvanesList")),
      Label3(named(new QLabel(QStringLiteral("Controlled via"), AddCorvaneFrame), "Label3")),
      ConnectChoiceList(named(new QListWidget(AddCorvaneFrame), "ConnectChoiceList")),
      ControlledbyText(named(new QLineEdit(AddCorvaneFrame), "ControlledbyText")),
      IPAddressFrame(
          named(new QGroupBox(QStringLiteral("IP Address"), AddCorvaneFrame), "IPAddressFrame")),
      CntrlIPAddressQuad(
          new AddressBoxes("CntrlIPAddressQuad", "Label1", addressQuads, IPAddressFrame)),
      AddCorvaneCommand(named(new FaceButton(QString(), AddCorvaneFrame), "AddCorvaneCommand")),
      CancelCommand(
          named(new FaceButton(QStringLiteral("Cancel"), AddCorvaneFrame), "CancelCommand")),
      StatusLabel(named(new QLabel(QStringLiteral("Waiting"), &window), "StatusLabel")),
      status(&window) {
    layOutOptions();
    layOutWorkArea();
    layOutWindow(window);
}

void UnitControls::layOutOptions() {
    auto *options = new QVBoxLayout(OptionsFrame);
    options->setSpacing(10);
    for (std::size_t index = 0; index < OptionsCommand.size(); ++index) {
        auto *button = new FaceButton(QLatin1String(OperationCaptions.at(index)), OptionsFrame);
        button->setObjectName(QStringLiteral("OptionsCommand_%1").arg(index));
        button->setMinimumHeight(44);
        options->addWidget(button);
        OptionsCommand.at(index) = button;
    }
    options->addSpacing(8);
    OKButton->setMinimumHeight(36);
    options->addWidget(OKButton);
    QWidget::setTabOrder(OptionsCommand.back(), OKButton);
}

void UnitControls::layOutWorkArea() {
    Text3->setAccessibleName(QStringLiteral("Unit name"));
    Text3->setValidator(nameValidator(Text3));
    AvailCorvanesList->setAccessibleName(QStringLiteral("Saved units"));
    ConnectChoiceList->setAccessibleName(QStringLiteral("Connection kind"));
    ConnectChoiceList->setFixedHeight(56);
    ControlledbyText->setAccessibleName(QStringLiteral("Controlled via"));
    ControlledbyText->setReadOnly(true);
    auto *address = new QHBoxLayout(IPAddressFrame);
    address->addWidget(CntrlIPAddressQuad);
    keepPlaceWhenHidden(IPAddressFrame);

    auto *buttons = new QHBoxLayout;
    buttons->setSpacing(10);
    buttons->addStretch();
    for (FaceButton *button : {AddCorvaneCommand, CancelCommand}) {
        button->setMinimumWidth(120);
        buttons->addWidget(button);
    }
    auto *grid = new QGridLayout(AddCorvaneFrame);
    grid->setHorizontalSpacing(18);
    grid->setVerticalSpacing(8);
    grid->addWidget(namePrompt, 0, 0);
    grid->addWidget(Text3, 1, 0);
    grid->addWidget(unitPrompt, 2, 0);
    grid->addWidget(AvailCorvanesList, 3, 0, 4, 1);
    grid->addWidget(Label3, 0, 1);
    grid->addWidget(ControlledbyText, 1, 1);
    grid->addWidget(ConnectChoiceList, 2, 1, 2, 1);
    grid->addWidget(IPAddressFrame, 4, 1);
    grid->setRowStretch(5, 1);
    grid->addLayout(buttons, 7, 0, 1, 2);
    grid->setColumnStretch(0, 1);
    grid->setColumnStretch(1, 1);
}

void UnitControls::layOutWindow(QWidget &window) {
    auto *linkRow = new QHBoxLayout;
    linkRow->addWidget(status.ZarnConnectedImage);
    linkRow->addWidget(status.ZarnNotConnectedImage);
    linkRow->addWidget(status.ZarnConnectedLabel, 1);
    status.ZarnConnectedLabel->setMinimumHeight(28);
    StatusLabel->setAlignment(Qt::AlignCenter);
    keepPlaceWhenHidden(StatusLabel);
    auto *layout = new QVBoxLayout(&window);
    layout->setContentsMargins(18, 16, 18, 16);
    layout->setSpacing(12);
    layout->addWidget(OptionsFrame);
    layout->addWidget(AddCorvaneFrame, 1);
    layout->addStretch();
    layout->addWidget(StatusLabel);
    layout->addLayout(linkRow);
    window.setFixedSize(560, 480);
}
