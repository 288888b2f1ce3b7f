#include "app/frmMain.h"

#include "app/ProgramTitle.h"
#include "protocol/ReplyClass.h"
#include "widgets/Colours.h"

#include <QHBoxLayout>
#include <QKeyEvent>
#include <QMenuBar>
#include <QMouseEvent>
#include <QVBoxLayout>

frmMain::frmMain(const LinkTools &linkTools, dlgConnect &dialog, StartHost &startHost)
    : Form("frmMain", linkTools.pump, &linkTools.guard),
      link(linkTools),
      connectDialog(dialog),
      host(startHost),
      findButton(new FaceButton(QStringLiteral("Find/Connect/Control Corvane"), this)),
      savedUnitsButton(
          new FaceButton(QStringLiteral("Add/Edit/Delete/Control Existing Corvane"), this)),
      ToDisconnectPortLabel(new QLabel(
          QStringLiteral("To disconnect from the matrix, click the label below."), this)),
      status(this) {
    setWindowTitle(QLatin1String(ProgramTitle));
    findButton->setObjectName(QStringLiteral("MainControlButton_0"));
    savedUnitsButton->setObjectName(QStringLiteral("MainControlButton_2"));
    ToDisconnectPortLabel->setObjectName(QStringLiteral("ToDisconnectPortLabel"));
    buildLayout();
    buildMenu();
    status.changed = [this] { ToDisconnectPortLabel->setVisible(status.showsLinkUp()); };
    status.ZarnConnectedLabel->installEventFilter(this);
    link.display.attach(StatusWindow::Start, status);
    whenClicked(findButton, [this] {
        host.forgetUnitName();
        Connect2CorvaneGetConfiguration();
    });
    whenClicked(savedUnitsButton, [this] { host.openSavedUnits("Cntl"); });
    whenKey(QKeySequence::New, [this] { host.openSavedUnits("Add"); });
}

void frmMain::buildLayout() {
    auto *layout = new QVBoxLayout(this);
    layout->setContentsMargins(28, 24, 28, 22);
    layout->setSpacing(12);
    for (FaceButton *button : {findButton, savedUnitsButton}) {
        button->setMinimumSize(360, 52);
        layout->addWidget(button);
    }
    layout->addSpacing(8);
    QSizePolicy keepsItsPlace = ToDisconnectPortLabel->sizePolicy();
    keepsItsPlace.setRetainSizeWhenHidden(true);
    ToDisconnectPortLabel->setSizePolicy(keepsItsPlace);
    ToDisconnectPortLabel->hide();
    layout->addWidget(ToDisconnectPortLabel);
    auto *row = new QHBoxLayout;
    row->setSpacing(12);
    row->addWidget(status.ZarnConnectedImage);
    row->addWidget(status.ZarnNotConnectedImage);
    row->addWidget(status.ZarnConnectedLabel, 1);
    layout->addLayout(row);
    status.ZarnConnectedLabel->setMinimumHeight(32);
    status.ZarnConnectedLabel->setFocusPolicy(Qt::TabFocus);
    status.ZarnConnectedLabel->setCursor(Qt::PointingHandCursor);
    layout->setSizeConstraint(QLayout::SetFixedSize);
}

void frmMain::buildMenu() {
    auto *bar = new QMenuBar(this);
    QMenu *menu = bar->addMenu(QStringLiteral("Corvane"));
    menu->setObjectName(QStringLiteral("CorvaneControllerFunctions"));
    const auto addItem = [this, menu](const char *name, const char *caption,
                                      std::function<void()> action) {
        QAction *item = menu->addAction(QLatin1String(caption));
        item->setObjectName(QLatin1String(name));
        connect(item, &QAction::triggered, this,
                [this, action = std::move(action)] { act(action); });
    };
    addItem("Connect2Corvane", "Find/Connect/Control Corvane",
            [this] { Connect2CorvaneGetConfiguration(); });
    addItem("ControlExistingCorvane", "Add/Edit/Control/Delete Existing Corvane",
            [this] { host.openSavedUnits("Cntl"); });
    addItem("AboutCorvaneController", "About", [this] { host.openAbout(); });
    layout()->setMenuBar(bar);
}

bool frmMain::showsConnected() const {
    return status.ZarnConnectedLabel->text().startsWith(QLatin1String("Connected"));
}

void frmMain::Connect2CorvaneGetConfiguration() {
    const int thisConnect = ++connects;
    if (!showsConnected()) {
        link.state.IPConnectingFlag = true;
        link.state.LinkKind = NoLinkKind;
        connectDialog.LoadForm();
        // A connect that was given up for the other kind of link leaves the dialog open.
        pump.runUntil([this] { return !link.state.IPConnectingFlag && !connectDialog.isLoaded(); });
    }
    if (!showsConnected() || pump.ended() || connects != thisConnect)
        return;
    link.configuration.GetParseConfiguration();
    switch (link.exchange.ReplyStatus) {
    case NothingReceived:
        link.messages.ShowMessage("Unable to get Corvane Configuration");
        break;
    case RecognisedReply:
    case UnknownReply:
        host.openPanel();
        break;
    default:
        break;
    }
}

void frmMain::closeLinkClicked() {
    link.dispatch.CloseLink();
    link.display.refreshAll();
}

bool frmMain::eventFilter(QObject *watched, QEvent *event) {
    bool clicked = false;
    if (event->type() == QEvent::MouseButtonRelease) {
        const auto *mouse = static_cast<QMouseEvent *>(event);
        clicked = mouse->button() == Qt::LeftButton &&
                  status.ZarnConnectedLabel->rect().contains(mouse->position().toPoint());
    } else if (event->type() == QEvent::KeyPress) {
        const auto *key = static_cast<QKeyEvent *>(event);
        clicked =
            !key->isAutoRepeat() && (key->key() == Qt::Key_Space || key->key() == Qt::Key_Return ||
                                     key->key() == Qt::Key_Enter);
    }
    if (clicked) {
        act([this] { closeLinkClicked(); });
        return true;
    }
    return Form::eventFilter(watched, event);
}

void frmMain::unload() {
    if (!isLoaded())
        return;
    link.dispatch.CloseLink();
    Form::unload();
    host.endProgram();
}
