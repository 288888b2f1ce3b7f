#include "panel/PanelControls.h"
#include "support/TestProgram.h"
#include "support/checkRows.h"

#include <algorithm>
#include <map>
#include <sstream>

namespace {

// clang-format off
/// What is clicked under which mark, a slot's number follows.
const std::map<std::string, std::string> Marks{
    {"iB", "InputVideoAudioButtons"}, {"iV", "InputVideoButtons"},  {"iA", "InputAudioButtons"},
    {"oB", "OutputVidAudButtons"},    {"oV", "OutputVideoButtons"}, {"oA", "OutputAudioButtons"},
    {"m", "MuteButton"},              {"v", "OutputVolumeValue"},   {"take", "TakeButton"},
    {"escape", "ClearButton"},        {"presets", "GoToPresets"},   {"exit", "ExitButton"},
    {"up", "VolumeUpButton"},         {"down", "VolumeDownButton"}};

template <class Table> auto rowNamed(const Table &rows, const std::string &name) {
    return std::find_if(rows.begin(), rows.end(), [&](auto &row) { return row.name == name; });
}

std::map<int, Control> seen(const SlotControls &controls) {
    std::map<int, Control> shown;
    for (int slot = 0; slot <= 32; ++slot) {
        if (controls[slot].visible)
            shown[slot] = controls[slot];
    }
    return shown;
}

std::string replaced(std::string text, const std::string &old, const std::string &by) {
    for (auto at = text.find(old); at != text.npos; at = text.find(old, at + by.size()))
        text.replace(at, old.size(), by);
    return text;
}

/// A program whose panel is open. It plays words: what is clicked, what happens, "@1.5:lose/up" for
/// what happens when one and a half waits of an exchange are over, and "?p" for what is looked at.
struct Panel : TestProgram {
    explicit Panel(bool network) : overNetwork(network) { openPanel(overNetwork); }

    bool overNetwork;
    std::string looks; ///< what was seen, blanks between
    FakeWire &wire = overNetwork ? socket.wire : serialPort.wire;
    std::function<std::string(std::string_view)> unitAnswer = wire.device;
    PanelView &view = views.panel;
    dlgPresets &presets = program.panelForm.presetsForm();

    void play(const std::string &script) {
        std::istringstream words(script);
        for (std::string word; words >> word;) {
            if (word[0] == '@')
                pump.in(std::stod(word.substr(1)) * (overNetwork ? 0.8 : 0.3), [word, this] {
                    play(replaced(word.substr(word.find(':') + 1), "/", " "));
                });
            else if (word[0] == '?')
                see(look(word[1]));
            else
                perform(word);
        }
    }

    void see(const std::string &text) {
        looks += (looks.empty() || text.empty() ? "" : " ") + text;
    }

    void click(const std::string &name, const std::string &slot) {
        const auto array = rowNamed(SlotArrays, name);
        const auto one = rowNamed(SingleControls, name);
        const bool single = array == SlotArrays.end();
        const int at = single ? 0 : std::stoi(slot);
        const Control &control = single ? view.*one->control : (view.*array->controls)[at];
        if (!view.form.loaded || !control.visible || !control.enabled)
            see("no " + name + slot);
        single ? (program.panelForm.*one->clicked)() : (program.panelForm.*array->clicked)(at);
    }

    /// From now on the unit answers commands that start so with `reply`.
    void answer(const std::string &command, const std::string &reply) {
        wire.device = [=, this](std::string_view text) {
            return text.starts_with(command) ? reply : unitAnswer(text);
        };
    }

    void perform(const std::string &word) {
        const auto digits = std::min(word.find_first_of("0123456789="), word.size());
        const std::string verb = word.substr(0, digits);
        const std::string rest = word.substr(digits + (word[digits] == '=' ? 1 : 0));
        if (Marks.contains(verb))
            return click(Marks.at(verb), rest);
        const std::map<std::string, std::function<void()>> others{
            // Another unit takes the place of the one that is left.
            {"", [&] { play("exit"), unit = Unit({.model = "KVN-" + word}), play("open"); }},
            {"again", [&] { program.startForm.MainControlButton_Click(0); }}, // while it is open
            {"open", [&] { openPanel(overNetwork); }}, {"unit", [&] { controlSavedUnit(); }},
            {"main", [&] { program.startForm.unload(); }},
            {"frame", [&] { program.panelForm.unload(); }}, {"x", [&] { presets.unload(); }},
            {"splash", [&] { program.setupForm.unload(); }},
            {"min", [&] { program.startForm.minimise(true); }},
            {"step", [&] { program.panelForm.VolumeUpButton_Click(); }}, // though it is hidden
            {"p", [&] { presets.NewPresetButton_Click(std::stoi(rest)); }},
            {"go", [&] { presets.ExecutePresetButton_Click(); }},
            {"close", [&] { presets.ExitPresets_Click(); }},
            {"lose", [&] { overNetwork ? socket.peerCloses() : serialPort.vanish(); }},
            {"back", [&] { serialPort.present = {7}; }}, {"raw", [&] { answer("", rest); }},
            {"host", [&] { socket.host = static_cast<FakeTcpSocket::Host>(std::stoi(rest)); }},
            {"STA", [&] { answer("STA", "\r\nSTA O A\r\n  Output 1 (A," + rest + ")\r\n"); }},
            {"level", [&] { play("STA=U,0,V," + rest + ",1,D,1 take v1 note"); }},
            {"VOL", [&] { answer("VOL L 1?", "\r\nVOL L 1 " + rest + "\r\n"); }},
            {"late", [&] { wire.delay = overNetwork ? 0.9 : 0.35; }}, // in the wait that follows
            {"well", [&] { wire.device = unitAnswer, wire.delay = 0.01; }},
            {"know", [&] { program.unit.routing.Outputs[1].VideoInputText = rest; }},
            {"wait", [&] { pump.runFor(5.0, [] { return false; }); }},
            {"note", [&] { takeWritten(), messages.clear(); }}};
        others.at(verb)();
    }

    /// Controls the saved unit "Hall" until its panel is closed.
    void controlSavedUnit() {
        files.contentsOf["program/KVNConfigurator.ini"] =
            "KVN NAME = Hall\r\nKVN TYPE = SERIAL\r\n";
        program.unitsForm.LoadForm();
        program.unitsForm.OptionsCommand_Click(Operation::Control);
        connectInDialog();
        program.unitsForm.AvailCorvanesList_DoubleClick(0);
    }

    std::string look(char what) {
        std::string text;
        const auto mark = [&](char is, bool shown) { text += shown ? is : '-'; };
        switch (what) {
        case 's': // what was sent; "Q" is the status query
            return replaced(replaced(takeWritten(), "\r", ";"), "STA O A;STA O A;", "Q");
        case 'm': // what was said
            text = std::exchange(messages, {});
            return text.find(overNetwork ? "10.11.12.13" : "COM7") == text.npos ? text : "failed";
        case 'f': // the forms
            text = view.form.minimised ? "min panel" : "panel";
            text = replaced(loaded(), "KVN32x32Audio", text);
            return text + (views.main.form.minimised ? " min" : "");
        case 'e': // the link, as all windows show it and as it is
            for (const auto *shown : {&view.status, &views.main.status, &views.units.status})
                text += shown->linkUp == (shown->caption == "Not Connected") ? "?"
                        : shown->showsConnected() ? "+" : "-";
            mark('+', serialPort.isOpen() || socket.state() != SocketState::Closed);
            return text;
        case 'v': // the volume controls and the hint that are seen
            mark('U', view.VolumeUpButton.visible), mark('D', view.VolumeDownButton.visible);
            mark('O', view.OutputVolumeLabel.visible), mark('L', view.Label1.visible);
            return text + (text[0] == 'U' ? " " + view.OutputVolumeLabel.text : "");
        case 'l': // the levels of two outputs
            text = view.OutputVolumeValue[1].text + "," + view.OutputVolumeValue[2].text;
            return replaced(text, "Vol ", "") + "," + program.unit.routing.Outputs[1].VolumeText;
        case 'r': // the presets that are marked
            for (const Control &button : views.presets.NewPresetButton)
                text += button.face == Face::Neutral ? "" : button.text;
            return text + (views.presets.ExecutePresetButton.face == Face::Busy ? "!" : "");
        case 'c': return program.link.LinkKind == NoLinkKind ? "" : "chosen";
        case 't': return view.TakeButton.face == Face::Busy ? "busy" : "idle";
        case 'k': return view.KVNNameLabel.visible ? view.KVNNameLabel.text : "nameless";
        case 'd': return view.CorvaneTypeLabel.text + " " + view.form.focus;
        case 'o': return slotsOf(Side::Input) + ", " + slotsOf(Side::Output);
        case 'b': return outputIn(1) + ", " + outputIn(2);
        case 'p': return picked();
        default: return left();
        }
    }

    /// What is picked: "BVA BVA" for the groups of inputs and outputs, with "-" for a disabled one
    /// and "?" for one that is neither; then the lamps that are lit; then the three lists.
    std::string picked() const {
        std::string marks;
        for (const char *const mark : {"iB", "iV", "iA", "oB", "oV", "oA"}) {
            const auto buttons = seen(view.*rowNamed(SlotArrays, Marks.at(mark))->controls);
            const auto enabled = std::count_if(buttons.begin(), buttons.end(),
                                               [](auto &entry) { return entry.second.enabled; });
            marks += mark == std::string("oB") ? " " : "";
            marks += enabled == std::ssize(buttons) ? mark[1] : enabled == 0 ? '-' : '?';
        }
        for (const auto &[mark, lamps] :
             {std::pair(" iV", &view.InputVideoLamp), {" iA", &view.InputAudioLamp},
              {" oV", &view.OutputVideoIndicator}, {" oA", &view.OutputAudioIndicator}}) {
            for (const auto &[slot, lamp] : seen(*lamps))
                marks += lamp.lit ? mark + std::to_string(slot) : "";
        }
        return marks + " " + view.SelectedOutputsHolder.text + "|" +
               view.SelectedAudioOutputsHolder.text + "|" + view.CurrentInputHolder.text;
    }

    /// What an output shows: its sources, and with audio its mute and its level.
    std::string outputIn(int slot) const {
        const Control &mute = view.MuteButton[slot];
        const char *const faces[] = {" grey|", "|", "|", " red|", " green|"};
        return view.InputVideoConnected[slot].text +
               (mute.visible ? "|" + view.InputAudioConnected[slot].text + "|" + mute.text +
                faces[static_cast<int>(mute.face)] + view.OutputVolumeValue[slot].text : "");
    }

    /// What is left of a selection, a take or a fault, and the outputs that show what the unit has
    /// not. Empty when all is ready for the next.
    std::string left() const {
        std::string all = picked() == "BVA BVA ||" ? messages : picked() + messages;
        all += view.TakeButton.face == Face::Neutral ? "" : " TAKE is armed";
        all += program.panel.CurrentInput == 0 ? "" : " an input is picked";
        for (const std::string &output : program.panel.SelectedOutputs)
            all += output.empty() ? "" : " output " + output + " is picked";
        const auto source = [](int input) {
            return input == Unit::NotConnected ? "NC" : std::to_string(input);
        };
        for (int output = 1; const auto &[slot, label] : seen(view.OutputNumberLabel)) {
            std::string is = source(unit.videoInput(output));
            if (view.MuteButton[slot].visible)
                is += "|" + source(unit.audioInput(output)) + (unit.muted(output) ? "|MUTED red|"
                      : "|MUTE green|") + "Vol " + unit.volume(output);
            all += outputIn(slot) == is ? "" : " " + label.text + " shows " + outputIn(slot);
            ++output;
        }
        return all;
    }

    /// The slots of a side that are seen; the first and last text of each array, "o" for none.
    std::string slotsOf(Side side) const {
        std::string text;
        for (const SlotArray &array : SlotArrays) {
            const auto shown = seen(view.*array.controls);
            if (array.side != side || shown.empty())
                continue;
            const auto &[first, control] = *shown.begin();
            const auto &[last, lastControl] = *shown.rbegin();
            const std::string range = std::to_string(first) + "-" + std::to_string(last);
            text += (text.starts_with(range) ? " " : range + " ") +
                    (control.text.empty() ? "o" : control.text) +
                    (control.text == lastControl.text ? "" : ".." + lastControl.text);
            const auto &numbers = side == Side::Input ? view.InputShown : view.OutputShown;
            for (int slot = 0; slot <= 32; ++slot)
                text += numbers[slot] == (shown.contains(slot) ? slot - first + 1 : 0) ? "" : "!";
        }
        return text;
    }
};

/// Each row is played and compared on both links; "S:" and "E:" before it are for one of them.
void check(const std::vector<std::array<std::string, 2>> &rows, const std::string &before = "",
           const std::string &after = "") {
    for (const bool overNetwork : {false, true}) {
        for (const auto &[given, expected] : rows) {
            const bool one = given.find(':') == 1;
            if (one && given[0] != (overNetwork ? 'E' : 'S'))
                continue;
            Panel kvn(overNetwork);
            kvn.play(before + " " + given.substr(one ? 2 : 0) + " " + after);
            checkRows({{given, expected}}, [&](auto &) { return kvn.looks; });
        }
    }
}

} // namespace

class PanelTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void showsTheUnitsSlots() {
        const std::string group = " o o Vid/Aud V A";
        const std::string group16 = "1-16 1..16" + group + ", 1-16 1..16" + group + " 1..16 1..16";
        const std::string audio = " Vol -20 MUTE";
        const std::string first = " InputVideoAudioButtons_1 ---";
        const std::string first5 = " InputVideoAudioButtons_5 ---";
        check({{"", group16 + audio + " RGB 16x16 with Audio" + first + "L"},
               {"32x32-RGBA", "1-32 1..32" + group + ", 1-32 1..32" + group + " 1..32 1..32" +
                 audio + " RGB 32x32 with Audio" + first + "L"},
               {"32x32-RGBA iB5 oB7 m17 oB9 8x4-RGBA", "5-12 1..8" + group + ", 7-10 1..4" +
                 group + " 1..4 1..4" + audio + " RGB 8 x 4 with Audio" + first5 + "L"},
               {"iV9 oV7 8x4-RGB", "5-12 1..8 o Video, 7-10 1..4 o Video o RGB 8 x 4 No Audio" +
                 first5 + "-"},
               {"v9 iA3 32x32-RGB", "1-32 1..32 o Video, 1-32 1..32 o Video o RGB 32x32 No Audio"
                 + first + "-"},
               {"escape iA3 16x16-RGBA", group16 + audio + " RGB 16x16 with Audio" + first + "L"}},
              "", "?o ?d ?v ?n");
        check({{"escape ?o", "1-16 In1..In16" + group + ", 1-16 Out1..Out16" + group + " 1..16 "
                 "1..16" + audio},
               {"8x4-RGB iB6 oB7 take ?o", "5-12 In1..In8 o Video, 7-10 Out1..Out4 o Video o"}});
    }

    void picks() {
        check({{"iB3", "B-- B-- iV3 iA3 oV3 oA3 ||3 3F"}, {"iV3", "-V- -V- iV3 oV3 ||3 3F"},
               {"iA3 iA12", "--A --A iA12 oA12 ||12 12F"}, {"iB3 oB1 iB3", "BVA BVA ||"},
               {"iV3 oV1 iV3", "BVA BVA ||"}, {"iA3 oA1 iA3", "BVA BVA ||"},
               {"iV3 iV3 iV4", "-V- -V- iV4 oV4 ||4 4F"},
               {"oB2 oB1", "B-- B-- oV1 oV2 oA1 oA2 1,2|1F,2F|"},
               {"oV2 oV1", "-V- -V- oV1 oV2 1,2||"}, {"oA2", "--A --A oA2 2|2F|"},
               {"oB1 oB2 oB1", "BVA BVA oV2 oA2 2|2F|"}, {"oV1 oV1", "BV- BV- ||"},
               {"oA1 oA1", "BVA BVA ||"}, {"iB3 oB1 oB1", "B-- B-- iV3 iA3 oV3 oA3 ||3 3F"},
               {"iV3 oV1 oV1", "BV- BV- iV3 oV3 ||3 3F"}, {"iA3 oA1 oA1", "BVA BVA iA3 oA3 ||3 3F"},
               {"iA3 oA1 oA1 iV4", "-V- -V- iV4 iA3 oV4 ||4 4F"},
               {"iV3 oV1 oV1 escape", "BVA BVA ||"},
               {"iA3 oA1 oA2 oA2 oV4", "-V- -V- iA3 oV4 oA1 oA3 1,4|1F,4F|3 3F"},
               {"oB1 oB2 iB3", "B-- B-- iV3 iA3 oV3 oA3 1,2|1F,2F|3 3F"},
               {"oV2 escape oB3", "B-- B-- oV3 oA3 3|3F|"},
               {"iV4 oV2 take iA4 oA9 take iB4", "B-- B-- iV4 iA4 oV2 oV4 oA4 oA9 ||4 4F"},
               {"iB1 oB10 take iB10", "B-- B-- iV10 iA10 ||10 10F"},
               {"8x4-RGBA iB6", "B-- B-- iV6 iA6 oV8 oA8 ||2 2F"},
               {"8x4-RGBA iV12 oV10 oV10", "BV- BV- iV12 ||8 8F"},
               {"8x4-RGBA oA7 oA10 oA7", "BVA BVA oA10 4|4F|"}}, "", "?p");
    }

    void takes() {
        // Lists outlive what they were built from.
        check({{"iB3 oB1 oB2", "busy Con 3(1,2)3F (1,2);Q"},
               {"iV3 oV9 oV10 oV2", "busy Con 3(2,9,10);Q"},
               {"iA16 oA2 oA5", "busy Con 16F (2,5);Q"}, {"oB5 oB4", "busy DIS 4,5,4F,5F;Q"},
               {"oV5 oV4", "busy DIS 4,5;Q"}, {"oA5 oA4", "busy DIS 4F,5F;Q"},
               {"iB3 oB1 oB1", "busy Con 3()3F ();Q"}, {"iB3 oB1 iB3", "busy DIS ,;Q"},
               {"oB1 oB2 iB3 oB4", "busy Con 3(4)3F (4);Q"}, {"oB1 iB3", "busy Con 3(1)3F (1);Q"},
               {"iB3 oB1 escape", "busy Con 3()3F ();Q"}, {"iB3 oB1 oB2 exit open", "busy DIS ,;Q"},
               {"iV3 oV1 frame open oB2", "busy DIS 2,2F;Q"},
               {"iA3 oA1 again note", "busy DIS ,;Q"}, {"oA1 take", "busy DIS 1F;QDIS ;Q"},
               {"32x32-RGBA iB32 oB31 oB10", "busy Con 32(10,31)32F (10,31);Q"},
               {"8x4-RGBA iB5 oB7 oB10", "busy Con 1(1,4)1F (1,4);Q"},
               {"8x4-RGB iB12 oB7 oB8", "busy Con 8(1,2);Q"}, {"8x4-RGB oB9", "busy DIS 3;Q"},
               {"8x4-RGBA m8", "busy MUT M 2;QDIS ,;Q"},
               {"m2 m2", "busy MUT M 2;QMUT U 2;QDIS ,;Q"},
               {"32x32-RGBA m17", "busy MUT M 17;QDIS ,;Q"}}, "", "@0.5:?t take ?s ?n");
        // What the unit reports, and what its mute button does then.
        const std::string two = ", 2|2|MUTE green|Vol -20";
        check({{"STA=U,0,V,-20,3,D,7", "7|3|MUTE green|Vol -20" + two + " MUT M 1;Q"},
               {"STA=M,0,V,5,255,D,7", "7|NC|MUTED red|Vol 5" + two + " MUT U 1;Q"},
               {"STA=U,0,V,2.5,3,D,255", "NC|3|MUTE green|Vol 2.5" + two + " MUT M 1;Q"},
               {"STA=M,0,V,0,3,D,xy take STA=U,0,V,0,3,D,xy", "xy|3|MUTE green|Vol 0" + two + " "
                 "MUT M 1;Q"},
               {"STA=M,0,V,-1,4,D,4 take STA=X,0,V,-2,3,D,7", "7|3|MUTED red|Vol -2" + two + " "
                 "MUT U 1;Q"}}, "", "take ?b note m1 ?s");
    }

    void stepsTheVolume() {
        // Another click in a step does nothing. Then the level reported, the one told, the step.
        check({{"@0.5:?v/up @1.5:?v/down up ?s",
                 "UDOL Wait... UDOL Wait... VOL L 1 -19;VOL L 1?; -19,-20,-19"},
               {"level=5 up", "5,-20,5"}, {"level=-45 down", "-45,-20,-45"},
               {"level=5 VOL=-17 down ?s", "VOL L 1 4;VOL L 1?; -17,-20,-17"},
               {"level=-45 VOL=-17 up ?s", "VOL L 1 -44;VOL L 1?; -17,-20,-17"},
               {"level=-46 VOL=-17 down ?s", "VOL L 1 -47;VOL L 1?; -17,-20,-17"},
               {"level=6 VOL=-17 up ?s", "VOL L 1 7;VOL L 1?; -17,-20,-17"},
               {"level=4.5 VOL=5 up ?s", "VOL L 1 5;VOL L 1?; 5,-20,5"},
               {"level=2.5 VOL=-17 up ?s", "VOL L 1 3;VOL L 1?; -17,-20,-17"},
               {"level=2.5 VOL=-09.0 down ?s", "VOL L 1 1.5;VOL L 1?; -9,-20,-9"},
               {"VOL= up ?s", "VOL L 1 -19;VOL L 1?; 0,-20,0"}, {"VOL=loud up", "0,-20,0"}},
              "v1", "?l");
        // Choosing an output, and what takes the controls away.
        check({{"v2", "UDOL Output 2 volume"}, {"v1 v2 iV8", "UDOL Output 2 volume"},
               {"v2 oV2", "---L"}, {"v2 oV8 oV9", "----"}, {"v2 oA8 oA9", "----"},
               {"v2 m8", "---L"}, {"escape v2", "UDOL Output Out2 volume"}, {"v2 escape", "---L"},
               {"v2 presets", "---L"}, {"8x4-RGB v8", "----"}, {"step ?s", "---L"},
               {"8x4-RGBA v8", "UDOL Output 2 volume"},
               {"8x4-RGBA v8 up ?s ?n", "VOL L 2 -19;VOL L 2?; UDOL Output 2 volume"}}, "", "?v");
        // What happens in the wait for the set or for the level of output 1.
        check({{"@1.5:m2 up", "-19,-20,-19 ---L"},
               {"@1.5:v2 up", "-19,-20,-19 UDOL Output 2 volume"},
               {"@1.5:v2/up up", "-19,-19,-19 UDOL Output 2 volume"},
               {"@0.5:v2/up up", "-19,-19,-19 UDOL Output 2 volume"},
               {"@0.5:v2 up", "-19,-20,-19 UDOL Output 2 volume"},
               {"@0.5:v2/lose up", "-20,-20,-20 UDOL Output 2 volume failed"},
               {"@0.5:lose up", "-20,-20,-20 UDOL Output 1 volume failed"},
               {"@1.5:lose up", "-19,-20,-19 UDOL Output 1 volume"},
               {"@2.8:lose @0.5:STA=U,0,V,-7,1,D,1/m2 up", "-7,-20,-7 ---L failed"}},
              "v1", "?l ?v ?m");
    }

    void recallsPresets() {
        check({{"@0.5:?r go", ""}, {"p1 @0.5:?r go", "Preset 1! PST X 1;"},
               {"p3 p32 p32 @0.5:?r go go", "Preset 32! PST X 32;"},
               {"p3 p7 ?r p7", "Preset 7 Preset 7"}, {"p5 presets", "Preset 5"},
               {"p5 close presets", ""}, {"p5 x presets @0.5:?r go", "! PST X 5;"},
               {"p5 x exit open presets go", "PST X 5;"},
               {"p5 close ?f presets p6 @0.5:?f go", "panel frmMain min panel dlgPresets frmMain "
                 "PST X 6;"}, {"p5 @0.5:p6 go", "PST X 5;"}, {"frame ?f open", "frmMain"},
               {"p5 know=9 go ?b", "9|1|MUTE green|Vol -20, 2|2|MUTE green|Vol -20 PST X 5;"}},
              "presets", "?r ?s");
    }

    void opens() {
        check({{"S:exit min @9:?f/?k/?e/exit unit ?f ?e open ?f ?k", "panel dlgControlExisting "
                 "frmMain min Hall ++++ frmMain min ---- panel frmMain min nameless"},
               {"min exit ?f min open frame ?f", "frmMain frmMain"},
               {"exit @0.5:?f @1.5:?f @2.5:?f open ?f ?e", "frmMain dlgSetup frmMain dlgSetup "
                 "frmMain panel frmMain ++++"}, {"@0.5:frame again ?f", "panel frmMain"},
               {"exit ?e ?c", "----"}});
        // The link is lost in the wait for the configuration.
        check({{"S:@0.5:back @1.5:?f again ?f ?e ?m", "panel dlgSetup frmMain panel frmMain ++++"},
               {"E:@1.5:?f again ?f ?e ?m", "panel dlgSetup frmMain panel frmMain ++++"},
               {"E:host=1 @4:?f again wait host=0 wait wait ?f ?e ?m", "panel dlgSetup frmMain "
                 "panel frmMain ---- failed"},
               {"host=2 again wait ?f ?e ?m", "panel frmMain ---- failed"},
               {"E:host=1 @2.5:splash @2.7:?f/?m again host=0 wait ?f ?e", "panel frmMain failed "
                 "panel frmMain ----"},
               {"E:host=1 @2.5:frame/?f again host=0 wait ?f ?e ?m", "dlgSetup frmMain frmMain "
                 "----"}, {"E:host=1 @2.5:main again host=0 wait ?f ?m", ""}}, "@0.5:lose");
    }

    void clicksInAWait() {
        std::string clicks = "iB3 oB1 oB2";
        for (int nested = 0; nested < 100; ++nested)
            clicks += " @" + std::to_string(0.07 * nested) + ":" +
                      std::array{"take", "m2", "escape"}.at(static_cast<std::size_t>(nested) % 3);
        check({{clicks + " take wait note ?n iV4 oV1 take ?s ?n", "Con 4(1);Q"},
               {"S:iB3 oB1 oB2 lose back @0:m3 take ?s ?n", "MUT M 3;QCon 3(1,2)3F (1,2);Q"}});
    }

    void closedInAWait() {
        const std::string next = "?e open ?n ?r iB3 oB1 take v1 up ?s ?n";
        const std::string anew = "exit/open/escape/iV4/oV2/v3";
        for (const auto &[clicks, first, count] :
             {std::tuple("iB3 oB1 take", 0, 3), {"m1", 0, 3}, {"v1 up", 0, 2},
              {"again", 1, 3}, {"presets p4 go", 0, 1}}) {
            for (int wait = first; wait < count; ++wait) {
                const std::string at = "@" + std::to_string(wait) + ".5:";
                const std::string step = clicks == std::string("v1 up") ? "-18" : "-19";
                const std::string works = " Con 3(1)3F (1);QVOL L 1 " + step + ";VOL L 1?;";
                const std::string then = std::string("/note ") + clicks + " wait ?s ?m ?f ";
                const char *const shown = count > 1 ? " UDOL Output Out3 volume" : " ----";
                check({{at + "main" + then, ""},
                       {at + "exit" + then + next, "frmMain ----" + works},
                       {at + "frame" + then + next, "frmMain ----" + works},
                       {at + anew + then + "?v take ?s exit " + next,
                        "panel frmMain" + std::string(shown) + " Con 4(2);Q ----" + works}});
            }
        }
    }

    void linkIsLost() {
        const std::string works = "failed ---- Con 5(2)5F (2);Q";
        check({{"lose ?e take", "---- " + works}, {"lose m1", works}, {"lose v1 up", works},
               {"lose presets p9 go close", works},
               {"@0.5:lose ?e take", "++++ Con 3(1)3F (1); " + works},
               {"@1.5:lose take", "Con 3(1)3F (1);STA O A; " + works},
               {"@0.5:lose m1", "MUT M 1; " + works},
               {"@0.5:lose/presets/p9/go take", "Con 3(1)3F (1); " + works}},
              "iB3 oB1", "?s ?m ?e ?r back exit open presets go close iB4 iB4 iB5 oB2 take ?s ?n");
    }

    void oddReplies() {
        const std::string none =
            "No Response Received from CommPort 7\r\nPlease check cabling and Try Again ";
        const std::string two = ", 2|2|MUTE green|Vol -20";
        const std::string old = "1|1|MUTE green|Vol -20" + two;
        check({{"S:raw=", none + " " + old}, {"E:raw=", old}, {"raw=\xff\x01garbage(((,,,)))", old},
               {"raw=" + std::string(70000, '('), old}, {"STA=", old},
               {"late", "3|3|MUTE green|Vol -20" + two}}, "iB3 oB1",
              "take ?m ?b well iB3 oB2 take ?n");
    }
};
// clang-format on

QTEST_GUILESS_MAIN(PanelTest)
#include "PanelTest.moc"
