#include "StartWindow.h"

#include "FaceButton.h"
#include "ProgramLook.h"
#include "start/ProgramTitle.h"

#include <QMenuBar>
#include <QVBoxLayout>

#include <utility>

StartWindow::StartWindow(frmMain &startForm, const MainView &mainView,
                         std::function<void()> openAbout)
    : Window("frmMain", startForm, mainView.form), start(startForm), view(mainView) {
    setWindowTitle(QLatin1String(ProgramTitle));
    buildLayout();
    buildMenu(std::move(openAbout));
    whenKey(QKeySequence::New, [this] { start.addUnit(); });
}

void StartWindow::buildLayout() {
    auto *layout = new QVBoxLayout(this);
    layout->setContentsMargins(grown(QMargins(28, 24, 28, 22)));
    layout->setSpacing(grown(12));
    const auto addButton = [&](const char *name, const Control &control, int index) {
        auto *button = named(new FaceButton(QString(), this), name);
        button->setMinimumSize(grown(QSize(360, 52)));
        bind(button, control);
        whenClicked(button, [this, index] { start.MainControlButton_Click(index); });
        layout->addWidget(button);
    };
    addButton("MainControlButton_0", view.MainControlButton_0, 0);
    addButton("MainControlButton_2", view.MainControlButton_2, 2);
    layout->addSpacing(grown(8));
    auto *hint = named(new QLabel(this), "ToDisconnectPortLabel");
    keepPlaceWhenHidden(hint);
    bind(hint, view.ToDisconnectPortLabel);
    layout->addWidget(hint);
    ZarnConnectedLabel = addLinkRow(layout, view.status, grown(32));
    ZarnConnectedLabel->whenPressed(
        [this] { report([this] { start.ZarnConnectedLabel_Click(); }); });
    layout->setSizeConstraint(QLayout::SetFixedSize);
    leadByArrows();
}

void StartWindow::buildMenu(std::function<void()> openAbout) {
    auto *bar = new QMenuBar(this);
    QMenu *menu = named(bar->addMenu(QStringLiteral("&Corvane")), "CorvaneControllerFunctions");
    const auto addItem = [this, menu](const char *name, const char *caption,
                                      std::function<void()> action) {
        QAction *item = menu->addAction(QLatin1String(caption));
        item->setObjectName(QLatin1String(name));
        connect(item, &QAction::triggered, this,
                [this, action = std::move(action)] { report(action); });
    };
    addItem("Connect2Corvane", "Find/Connect/Control Corvane",
            [this] { start.Connect2Corvane_Click(); });
    addItem("ControlExistingCorvane", "Add/Edit/Control/Delete Existing Corvane",
            [this] { start.ControlExistingCorvane_Click(); });
    addItem("AboutCorvaneController", "About", std::move(openAbout));
    setMenuBar(bar);
}

void StartWindow::refreshRest() { ZarnConnectedLabel->setPressable(view.status.linkUp); }
