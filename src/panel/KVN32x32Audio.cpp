#include "panel/KVN32x32Audio.h"

#include "panel/PanelSheet.h"
#include "platform/LinkError.h"
#include "platform/thenAlways.h"
#include "protocol/CommandTexts.h"
#include "widgets/Colours.h"
#include "widgets/TextConversion.h"

#include <QMenuBar>
#include <QVBoxLayout>

#include <array>

namespace {
constexpr double SmallestScale = 0.75; // below that the captions cannot be read
}

KVN32x32Audio::KVN32x32Audio(const LinkTools &linkTools, ModelFacts &model, RoutingState &routing,
                             PanelState &panelState, PanelHost &panelHost)
    : Form("KVN32x32Audio", linkTools.pump, &linkTools.guard),
      link(linkTools),
      host(panelHost),
      sheet(new PanelSheet(this)),
      controls(*sheet),
      tools{link, model, routing, panelState, controls},
      volume(tools),
      display(tools, volume),
      slotSetup(tools),
      selection(tools, slotSetup, display, volume),
      presets(tools, display, [this] { setWindowState(windowState() & ~Qt::WindowMinimized); }) {
    setWindowTitle(QStringLiteral("Corvane Control Panel"));
    auto *layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    buildMenu();
    layout->addWidget(sheet);
    const QSize designSize(PanelArea.width / TwipsPerPixel, PanelArea.height / TwipsPerPixel);
    sheet->setMinimumSize(designSize * SmallestScale);
    resize(designSize + QSize(0, layout->menuBar()->sizeHint().height()));
    controls.status.changed = [this] { controls.layOut(); };
    link.display.attach(StatusWindow::Panel, controls.status);
    connectControls();
    connectSlots();
    slotSetup.ClearInputsOutputs();
}

void KVN32x32Audio::buildMenu() {
    struct HelpItem {
        const char *name;
        const char *caption;
        HelpTopic topic;
    };
    static constexpr std::array<HelpItem, 3> Items{
        {{"ConnectionHelp", "How to Connect", HelpTopic::Connecting},
         {"disconnectHelp", "How to Disconnect", HelpTopic::Disconnecting},
         {"AdjustingVolumes", "Adjusting Volumes (if applicable)", HelpTopic::Volume}}};
    auto *bar = new QMenuBar(this);
    QMenu *menu = bar->addMenu(QStringLiteral("Help Files"));
    menu->setObjectName(QStringLiteral("HlpFiles"));
    for (const HelpItem &item : Items) {
        QAction *action = menu->addAction(QLatin1String(item.caption));
        action->setObjectName(QLatin1String(item.name));
        connect(action, &QAction::triggered, this,
                [this, topic = item.topic] { act([this, topic] { host.showHelp(topic); }); });
    }
    layout()->setMenuBar(bar);
    whenKey(Qt::Key_F1, [this] { host.showHelp(HelpTopic::Connecting); });
}

void KVN32x32Audio::connectControls() {
    whenClicked(controls.TakeButton, [this] { selection.clickTake(); });
    whenClicked(controls.ClearButton, [this] { selection.clickClear(); });
    whenClicked(controls.GoToPresets, [this] { goToPresets(); });
    whenClicked(controls.ExitButton, [this] { exitClicked(); });
    whenClicked(controls.VolumeUpButton, [this] { volume.stepUp(); });
    whenClicked(controls.VolumeDownButton, [this] { volume.stepDown(); });
    whenKey(Qt::Key_F9, [this] { controls.TakeButton->click(); });
    whenKey(Qt::Key_Escape, [this] { controls.ClearButton->click(); });
}

void KVN32x32Audio::connectSlots() {
    for (int slot = 1; slot <= 32; ++slot) {
        whenClicked(controls.InputVideoAudioButtons[slot],
                    [this, slot] { selection.clickInputVideoAudio(slot); });
        whenClicked(controls.InputAudioButtons[slot],
                    [this, slot] { selection.clickInputAudio(slot); });
        whenClicked(controls.InputVideoButtons[slot],
                    [this, slot] { selection.clickInputVideo(slot); });
        whenClicked(controls.OutputVidAudButtons[slot],
                    [this, slot] { selection.clickOutputVidAud(slot); });
        whenClicked(controls.OutputAudioButtons[slot],
                    [this, slot] { selection.clickOutputAudio(slot); });
        whenClicked(controls.OutputVideoButtons[slot],
                    [this, slot] { selection.clickOutputVideo(slot); });
        whenClicked(controls.MuteButton[slot], [this, slot] { toggleMute(slot); });
        controls.OutputVolumeValue[slot]->pointedAt = [this, slot] {
            act([this, slot] { volume.chooseOutput(slot); });
        };
    }
}

void KVN32x32Audio::LoadForm() {
    const int thisVisit = tools.panel.visit;
    host.showSetup();
    thenAlways([this] { openSequence(); }, [this] { host.hideSetup(); });
    // An open panel that was loaded again can be closed while it loads.
    if (tools.panel.visit == thisVisit)
        present();
}

void KVN32x32Audio::openSequence() {
    resetControls();
    slotSetup.ClearInputsOutputs();
    slotSetup.InitializeInputOutputNumbers();
    controls.showName(shown(tools.panel.SelectedUnitName));
    link.state.IPConnectedFlag = false;
    link.state.ReplyCompleteFlag = false;
    link.state.SendCompleteFlag = false;
    controls.CorvaneTypeLabel->setText(shown(tools.model.ModelDescription));
    link.display.HandleConnectionsStatus();
    if (!controls.status.showsLinkUp())
        openLinkIfDown();
    link.display.ConnecthandleConnectionStatus();
    readStatus();
    display.DisplayOutputsConnectedtoInputs();
    tools.panel.PanelMode = tools.model.HasAudio ? VideoAndAudio : VideoOnly;
    controls.Label1->setVisible(tools.model.HasAudio);
    if (tools.model.HasAudio)
        volume.DisplayVolumeValues();
    controls.OutputVolumeLabel->hide();
    controls.VolumeUpButton->hide();
    controls.VolumeDownButton->hide();
    controls.layOut();
    controls.InputVideoAudioButtons[tools.model.InputButtonIndex[1]]->setFocus();
}

void KVN32x32Audio::resetControls() {
    tools.panel.CurrentInput = 0;
    tools.panel.CurrentOutput = 0;
    slotSetup.InitSelectedOutputs();
    controls.SelectedOutputsHolder->clear();
    controls.SelectedAudioOutputsHolder->clear();
    controls.CurrentInputHolder->clear();
    controls.TakeButton->setFace(colour::Neutral);
    for (int slot = 1; slot <= 32; ++slot) {
        for (FaceButton *button :
             {controls.InputVideoAudioButtons[slot], controls.InputVideoButtons[slot],
              controls.InputAudioButtons[slot], controls.OutputVidAudButtons[slot],
              controls.OutputVideoButtons[slot], controls.OutputAudioButtons[slot]})
            button->setEnabled(true);
        controls.MuteButton[slot]->setText(QStringLiteral("Mute"));
        controls.MuteButton[slot]->setFace(colour::Neutral);
        controls.InputVideoConnected[slot]->clear();
        controls.InputAudioConnected[slot]->clear();
        controls.OutputVolumeValue[slot]->clear();
    }
}

void KVN32x32Audio::openLinkIfDown() {
    try {
        link.dispatch.OpenLink();
    } catch (const LinkError &) {
        // The status display says so, and the status query that follows reports it.
    }
    link.display.HandleConnectionsStatus();
    link.display.ConnecthandleConnectionStatus();
}

void KVN32x32Audio::readStatus() {
    link.guard.run(
        [this] { link.outputStatus.RequestOutputStatus(); },
        [this, thisVisit = tools.panel.visit] { return tools.panel.visit == thisVisit; });
}

void KVN32x32Audio::toggleMute(int slot) {
    const int output = tools.model.ButtonOutput[slot];
    const bool unmuted = tools.routing.Outputs[output].MuteFlag == 'U';
    const int thisVisit = tools.panel.visit;
    link.dispatch.exchangeCommand(unmuted ? command::mute(output) : command::unmute(output));
    if (tools.panel.visit != thisVisit)
        return;
    link.outputStatus.RequestOutputStatus();
    display.DisplayOutputsConnectedtoInputs();
}

void KVN32x32Audio::goToPresets() {
    volume.makeVolumeButtonsInvisible();
    setWindowState(windowState() | Qt::WindowMinimized);
    presets.LoadForm();
}

void KVN32x32Audio::exitClicked() {
    link.dispatch.DisconnectLink();
    link.display.ConnecthandleConnectionStatus();
    unload();
}

void KVN32x32Audio::unload() {
    if (!isLoaded())
        return;
    ++tools.panel.visit;
    Form::unload();
    presets.unload();
    link.dispatch.CloseLink();
    link.display.refreshAll();
    if (tools.panel.PanelFromSavedUnits) {
        tools.panel.PanelFromSavedUnits = false;
        return;
    }
    link.display.handleZarnConnectedFlag();
    host.restoreStartWindow();
}

void KVN32x32Audio::TurnOffEcho() { link.dispatch.SendCommand(std::string(command::EchoOff)); }

void KVN32x32Audio::resizeEvent(QResizeEvent *event) {
    Form::resizeEvent(event);
    layout()->activate();
    controls.layOut();
}
