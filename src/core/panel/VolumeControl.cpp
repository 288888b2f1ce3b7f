#include "panel/VolumeControl.h"

#include "forms/AtExit.h"
#include "machine/LinkError.h"
#include "protocol/CommandTexts.h"
#include "protocol/Text.h"

namespace {
constexpr int HighestVolume = 5;
constexpr double LowestVolume = -45.0;

/// The level in the reply to a volume query, as shortest decimal text. It stands behind the place
/// of a leading line break, the query's text without its terminator and a blank: `\r\nVOL L 5 -20`.
/// A reply too short for that gives "0".
std::string volumeFromReply(std::string_view reply, std::string_view query) {
    const int levelAt = static_cast<int>(query.size()) + 2;
    return decimalText(leadingNumber(mid(reply, levelAt)));
}

} // namespace

VolumeControl::VolumeControl(const Form &panelForm, PanelView &panelView, PanelState &panelState,
                             LinkState &linkState, UnitState &unitState, UnitTalk &unitTalk)
    : form(panelForm),
      view(panelView),
      panel(panelState),
      link(linkState),
      unit(unitState),
      talk(unitTalk) {}

void VolumeControl::makeVolumeButtonsVisible() {
    for (Control *control :
         {&view.VolumeUpButton, &view.VolumeDownButton, &view.OutputVolumeLabel, &view.Label1})
        control->visible = true;
}

void VolumeControl::makeVolumeButtonsInvisible() {
    for (Control *control : {&view.VolumeUpButton, &view.VolumeDownButton, &view.OutputVolumeLabel})
        control->visible = false;
    view.Label1.visible = panel.PanelMode == VideoAndAudio;
}

void VolumeControl::DisplayVolumeValues() {
    for (int output = 1; output <= unit.model.NumOutputs; ++output)
        view.OutputVolumeValue[output].text = "Vol " + unit.routing.Outputs[output].VolumeText;
}

void VolumeControl::chooseOutput(int slot) {
    if (!unit.model.HasAudio)
        return;
    makeVolumeButtonsVisible();
    panel.VolumeOutput = unit.model.ButtonOutput[slot];
    showCaption(view.OutputNumberLabel[slot].text);
}

bool VolumeControl::canStep() const { return panel.VolumeOutput != 0 && !panel.VolumeWaiting; }

double VolumeControl::level() const {
    return leadingNumber(unit.routing.Outputs[panel.VolumeOutput].VolumeText);
}

void VolumeControl::stepUp() {
    if (!canStep())
        return;
    const int rounded = roundHalfToEven(level());
    if (rounded != HighestVolume)
        step(std::to_string(rounded + 1));
}

void VolumeControl::stepDown() {
    if (canStep() && level() != LowestVolume)
        step(decimalText(level() - 1.0));
}

// A turned wheel must not pile up steps, as pointing at a box in the middle of one would let it.
bool VolumeControl::chosenForStep(int slot) {
    if (!unit.model.HasAudio || panel.VolumeWaiting)
        return false;
    chooseOutput(slot);
    return true;
}

void VolumeControl::stepUp(int slot) {
    if (chosenForStep(slot))
        stepUp();
}

void VolumeControl::stepDown(int slot) {
    if (chosenForStep(slot))
        stepDown();
}

void VolumeControl::step(const std::string &newLevel) {
    const int showing = form.showing();
    const int output = panel.VolumeOutput;
    const std::string before = unit.routing.Outputs[output].VolumeText;
    unit.routing.Outputs[output].VolumeText = newLevel;
    panel.VolumeWaiting = true;
    view.OutputVolumeLabel.text = "Wait...";
    // Another output may have been pointed at meanwhile; it is the one that is stepped next.
    const AtExit showIdle([this, showing] {
        if (form.isShowing(showing))
            showCaption(std::to_string(panel.VolumeOutput));
    });
    try {
        sendVolumeValue(output, showing);
    } catch (const LinkError &) {
        // Unless the unit has told another level meanwhile.
        if (std::string &now = unit.routing.Outputs[output].VolumeText; now == newLevel)
            now = before;
        throw;
    }
}

void VolumeControl::sendVolumeValue(int output, int showing) {
    const std::string number = unit.routing.Outputs[output].OutputNumberText;
    link.SendCompleteFlag = false;
    talk.SendCommandGetResponse(
        command::setVolume(number, unit.routing.Outputs[output].VolumeText));
    if (!form.isShowing(showing))
        return;
    link.SendCompleteFlag = false;
    const std::string query = command::queryVolume(number);
    talk.SendCommandGetResponse(query);
    if (!form.isShowing(showing))
        return;
    // The reply to an exchange that started inside this one tells no level.
    std::string &level = unit.routing.Outputs[output].VolumeText;
    if (unit.exchange.CommandText == query)
        level = volumeFromReply(unit.exchange.ResponseText, query);
    view.OutputVolumeValue[unit.model.OutputButtonIndex[output]].text = "Vol " + level;
}

void VolumeControl::showCaption(const std::string &output) {
    panel.VolumeWaiting = false;
    view.OutputVolumeLabel.text = "Output " + output + " volume";
}
