#include "panel/VolumeControl.h"

#include "platform/LinkError.h"
#include "platform/thenAlways.h"
#include "protocol/CommandTexts.h"
#include "protocol/Text.h"
#include "protocol/VolumeReply.h"
#include "widgets/TextConversion.h"

namespace {

constexpr int HighestVolume = 5;
constexpr double LowestVolume = -45.0;
const QString Waiting = QStringLiteral("Wait...");

} // namespace

VolumeControl::VolumeControl(const PanelTools &panelTools) : tools(panelTools) {}

void VolumeControl::makeVolumeButtonsVisible() {
    tools.controls.VolumeUpButton->show();
    tools.controls.VolumeDownButton->show();
    tools.controls.OutputVolumeLabel->show();
    tools.controls.Label1->show();
}

void VolumeControl::makeVolumeButtonsInvisible() {
    tools.controls.VolumeUpButton->hide();
    tools.controls.VolumeDownButton->hide();
    tools.controls.OutputVolumeLabel->hide();
    tools.controls.Label1->setVisible(tools.panel.PanelMode == VideoAndAudio);
}

void VolumeControl::DisplayVolumeValues() {
    for (int output = 1; output <= tools.model.NumOutputs; ++output)
        tools.controls.OutputVolumeValue[output]->setText(
            shown("Vol " + tools.routing.Outputs[output].VolumeText));
}

void VolumeControl::chooseOutput(int slot) {
    if (!tools.model.HasAudio)
        return;
    makeVolumeButtonsVisible();
    tools.panel.VolumeOutput = tools.model.ButtonOutput[slot];
    showCaption(tools.controls.OutputNumberLabel[slot]->text());
}

bool VolumeControl::canStep() const {
    return tools.panel.VolumeOutput != 0 && tools.controls.OutputVolumeLabel->text() != Waiting;
}

void VolumeControl::stepUp() {
    if (!canStep())
        return;
    const std::string &level = tools.routing.Outputs[tools.panel.VolumeOutput].VolumeText;
    const int rounded = roundHalfToEven(leadingNumber(level));
    if (rounded != HighestVolume)
        step(std::to_string(rounded + 1));
}

void VolumeControl::stepDown() {
    if (!canStep())
        return;
    const std::string &level = tools.routing.Outputs[tools.panel.VolumeOutput].VolumeText;
    const double value = leadingNumber(level);
    if (value != LowestVolume)
        step(decimalText(value - 1.0));
}

void VolumeControl::step(const std::string &newVolume) {
    const int output = tools.panel.VolumeOutput;
    std::string &level = tools.routing.Outputs[output].VolumeText;
    const std::string before = level;
    level = newVolume;
    thenAlways(
        [&] {
            try {
                sendVolumeValue();
            } catch (const LinkError &) {
                // The unit may have reported a level meanwhile.
                if (level == newVolume)
                    level = before;
                throw;
            }
        },
        // Another output may have been pointed at meanwhile; it is the one that is stepped next.
        [this] { showCaption(QString::number(tools.panel.VolumeOutput)); });
}

void VolumeControl::showCaption(const QString &output) {
    tools.controls.setLabel(tools.controls.OutputVolumeLabel,
                            QStringLiteral("Output %1 volume").arg(output));
}

void VolumeControl::sendVolumeValue() {
    const int output = tools.panel.VolumeOutput;
    OutputStatusRecord &record = tools.routing.Outputs[output];
    const std::string query = command::queryVolume(record.OutputNumberText);
    tools.controls.setLabel(tools.controls.OutputVolumeLabel, Waiting);
    tools.link.state.SendCompleteFlag = false;
    tools.link.dispatch.exchangeCommand(
        command::setVolume(record.OutputNumberText, record.VolumeText));
    tools.link.state.SendCompleteFlag = false;
    tools.link.dispatch.exchangeCommand(query);
    // After another exchange inside the wait the reply is that one's.
    if (tools.link.exchange.CommandText == query)
        record.VolumeText = volumeFromReply(tools.link.exchange.ResponseText, query);
    tools.controls.OutputVolumeValue[tools.model.OutputButtonIndex[output]]->setText(
        shown("Vol " + record.VolumeText));
}
