#include "Program.h"
#include "protocol/ModelCatalogue.h"
#include "protocol/StatusParser.h"
#include "protocol/Text.h"
#include "support/FakeMachine.h"
#include "units/SavedUnitsText.h"

#include <cstdint>
#include <cstdio>
#include <cstdlib>

// What comes from outside, made up by libFuzzer: a function for each program, which is built with
// its name as TARGET.

namespace {

/// Ends the program, which makes the input a finding, where something does not hold.
void must(bool holds, const char *what) {
    if (holds)
        return;
    std::fprintf(stderr, "This does not hold: %s\n", what);
    std::abort();
}

/// `text`, and of one length in 256 so many copies of it that work which grows faster than the text
/// runs into the time limit of an input.
std::string swollen(std::string text) {
    if (text.size() % 256 == 255)
        while (text.size() < 60'000)
            text += text;
    return text;
}

/// The program with its panel open, on a unit that answers `reply` to what begins with `command`.
struct PanelOnUnit : FakeMachine {
    Program program{services()};
    std::string reply;

    explicit PanelOnUnit(const std::string &command) {
        program.link.LinkKind = SerialLinkKind;
        program.serial.OpenSerialPort(7);
        program.talk.GetParseConfiguration();
        program.panelForm.LoadForm();
        serialPort.wire.device = [=, this, unit = serialPort.wire.device](std::string_view text) {
            return text.starts_with(command) ? reply : unit(text);
        };
        pump.eachTurn = [this] { program.messages.dlgOK().unload(); };
    }
};

SavedUnits unitsIn(const std::string &text) {
    SavedUnits units;
    std::array<std::string, 5> quads;
    ReadSavedUnitsText(units, text, quads);
    must(units.ControlBlockCount >= 0 && units.ControlBlockCount <= 25, "there are 25 at most");
    return units;
}

/// Name, kind and address of all units of a file, with as many reads as that takes.
std::string allUnitsIn(std::string text) {
    std::string all;
    while (!text.empty()) {
        const SavedUnits units = unitsIn(text);
        for (const auto &[name, kind, ip] : units.KVNControlBlocks) {
            std::string address = kind == EtherType ? ip : "";
            std::erase(address, ' ');
            // An address that is missing is four empty numbers once it was saved.
            if (!name.empty())
                all += name + "\n" + kind + "\n" + (address == "..." ? "" : address) + "\n";
        }
        text = units.LeftOut;
    }
    return all;
}

/// What the unit reports, which must be what it is like, and within bounds.
std::string reportOf(Unit unit) {
    std::string report = unit.answer("STA O A");
    RoutingState routing;
    ParseOutputStatus(routing, report, FindStatusStart(report), unit.outputs());
    for (int output = 1; output <= unit.outputs(); ++output) {
        const auto &[number, a, mute, b, c, level, audio, d, video] = routing.Outputs[output];
        must(mute == (unit.muted(output) ? 'M' : 'U') && level == unit.volume(output) &&
                 audio == std::to_string(unit.audioInput(output)) &&
                 video == std::to_string(unit.videoInput(output)),
             "the report tells what the unit is like");
        for (const int input : {unit.videoInput(output), unit.audioInput(output)})
            must((input >= 1 && input <= unit.inputs()) || input == 255, "a source is an input");
        must(std::stoi(level) >= -45 && std::stoi(level) <= 5, "a level is within bounds");
    }
    return report;
}

} // namespace

/// An answer to "CFG ?": the model is a row of the catalogue that it names, and fits the panel.
void configuration(const std::string &input) {
    static PanelOnUnit panel("CFG");
    ModelFacts &facts = panel.program.unit.model;
    facts = ModelFacts();
    panel.reply = swollen(input);
    panel.program.talk.GetParseConfiguration();
    bool known = facts.NumInputs + facts.NumOutputs == 0 && facts.ModelDescription.empty();
    for (const ModelRow &row : modelCatalogue()) {
        const auto name = row.Model.substr(0, std::size_t(row.Chars));
        known = known || (panel.reply.find(name) != std::string::npos &&
                          facts.ModelDescription == row.Description &&
                          facts.NumInputs == row.Inputs && facts.NumOutputs == row.Outputs);
    }
    must(known, "the model is one that the answer names");
    for (const auto *table : {&facts.InputButtonIndex, &facts.ButtonInput, &facts.OutputButtonIndex,
                              &facts.ButtonOutput})
        for (const int entry : *table)
            must(entry >= 0 && entry <= 32, "every button is on the panel");
}

/// A report after a take: what is read of it is in it and not too long, and the panel shows it.
void status(const std::string &input) {
    static PanelOnUnit panel("STA");
    const PanelView &view = panel.program.views.panel;
    auto &outputs = panel.program.unit.routing.Outputs;
    panel.reply = swollen(input);
    outputs.fill({"", '?', '?', "", '?', "", "", '?', ""});
    panel.program.panelForm.TakeButton_Click();
    must(view.TakeButton.face == Face::Neutral, "the take is through");
    for (int output = 1; output <= 16; ++output) {
        const auto &[number, a, mute, b, c, volume, audio, d, video] = outputs[output];
        for (const std::string &text : {number, b, volume, audio, video})
            must(text.size() <= 3 && panel.reply.find(text) != std::string::npos, "a text is read");
        for (const char field : {a, mute, c, d})
            must((panel.reply + "? ").find(field) != std::string::npos, "a character is read");
        const int slot = panel.program.unit.model.OutputButtonIndex[output];
        must(view.OutputVolumeValue[slot].text == "Vol " + volume, "the level is shown");
        const std::string &shown = view.InputVideoConnected[slot].text;
        must(shown == video || (shown == "NC" && leadingNumber(video) == 255.0), "so is the input");
    }
    must(outputs[17].FieldA == '?', "no output is made up");
}

/// The level that a unit tells after a step is a number, from which the next step goes on.
void volume(const std::string &input) {
    static PanelOnUnit panel("VOL L 1?");
    KVN32x32Audio &form = panel.program.panelForm;
    std::string &level = panel.program.unit.routing.Outputs[1].VolumeText;
    level = "-20";
    panel.reply = swollen(input);
    form.OutputVolumeValue_StepUp(panel.program.unit.model.OutputButtonIndex[1]);
    const double number = leadingNumber(level);
    const std::string query = "\rVOL L 1?\r", less = decimalText(number - 1.0);
    must(level == decimalText(number), "a level is the shortest text of a number");
    must(panel.program.views.panel.OutputVolumeLabel.text == "Output 1 volume", "it is through");
    panel.takeWritten();
    form.VolumeDownButton_Click();
    must(panel.takeWritten() == (number == -45.0 ? "" : "VOL L 1 " + less + query), "one less");
}

/// A file that is read and saved holds the same units, and from the second time on is the same.
void units(const std::string &input) {
    const std::string text = swollen(input), once = writeSavedUnitsText(unitsIn(text));
    must(allUnitsIn(text) == allUnitsIn(once), "saving keeps every unit");
    const std::string twice = writeSavedUnitsText(unitsIn(once));
    must(!unitsIn(text).LeftOut.empty() || writeSavedUnitsText(unitsIn(twice)) == twice,
         "for good");
}

/// The model of a unit, and behind a line feed what it is sent, whole and byte by byte.
void commands(const std::string &input) try {
    const std::size_t end = std::min(input.find('\n'), input.size());
    const std::string model = input.substr(0, end), sent = input.substr(end);
    Unit unit({.model = model}), same = unit;
    UnitPort port(unit), slowPort(same);
    std::string all, pieces, report = reportOf(same);
    for (const auto &[command, answer] : port.receive(sent))
        all += command + "\r" + answer;
    for (const char byte : sent) {
        const bool echo = same.echo();
        for (const auto &[command, answer] : slowPort.receive({&byte, 1})) {
            pieces += command + "\r" + answer;
            must(command.size() <= Unit::MaxCommand + 1, "no more is kept of a command");
            must(!echo || answer.starts_with(command + "\r"), "the echo comes first");
            const std::string told = answer.substr(echo ? command.size() + 1 : 0);
            must(told.empty() || (told.starts_with("\r\n") && told.ends_with("\r\n")),
                 "an answer has lines of its own");
            const std::string before = std::exchange(report, reportOf(same));
            must(told != "\r\nERROR\r\n" || report == before, "what is refused changes nothing");
        }
    }
    must(all == pieces && reportOf(unit) == report, "pieces are the same commands");
} catch (const std::invalid_argument &) { // there is no such unit
}

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size) {
    TARGET({reinterpret_cast<const char *>(data), size});
    return 0;
}
