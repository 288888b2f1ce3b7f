#include "panel/PanelControls.h"
#include "support/TestProgram.h"
#include "support/checkRows.h"

#include <map>
#include <sstream>

namespace {

/// A program whose panel is open on a model. It plays words: what is clicked with its slot, "oB7".
struct Panel : TestProgram {
    explicit Panel(const std::string &model) : TestProgram({.model = "KVN-" + model}) {}

    KVN32x32Audio &form = program.panelForm;

    void play(const std::string &script) {
        using Click = void (KVN32x32Audio::*)(int);
        static const std::map<std::string, Click> slots{
            {"iB", &KVN32x32Audio::InputVideoAudioButtons_Click},
            {"iV", &KVN32x32Audio::InputVideoButtons_Click},
            {"iA", &KVN32x32Audio::InputAudioButtons_Click},
            {"oB", &KVN32x32Audio::OutputVidAudButtons_Click},
            {"oV", &KVN32x32Audio::OutputVideoButtons_Click},
            {"oA", &KVN32x32Audio::OutputAudioButtons_Click},
            {"m", &KVN32x32Audio::MuteButton_Click},
            {"v", &KVN32x32Audio::OutputVolumeValue_PointedAt}};
        std::istringstream words(script);
        for (std::string word; words >> word;) {
            const std::string name = word.substr(0, word.find_first_of("0123456789"));
            if (name == "silent")
                serialPort.wire.device = [this, answer = serialPort.wire.device](auto bytes) {
                    return bytes.starts_with("STA") ? "" : answer(bytes);
                };
            else if (name == "open")
                openPanel();
            else if (name == "take")
                form.TakeButton_Click();
            else if (name == "escape")
                form.ClearButton_Click();
            else if (name == "up")
                form.VolumeUpButton_Click();
            else
                (form.*slots.at(name))(std::stoi(word.substr(name.size())));
        }
        takeWritten();
        form.describe();
    }

    const Control &control(const std::string &name) const {
        for (const SlotArray &array : SlotArrays) {
            if (const std::string start = std::string(array.name) + "_"; name.starts_with(start))
                return (views.panel.*array.controls)[std::stoi(name.substr(start.size()))];
        }
        return views.panel.TakeButton;
    }
};

} // namespace

class PanelTextsTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    // What it says it will do is what goes out then.
    void takeSaysWhatItSends() {
        const std::string hint =
            "Pick an input and its outputs to connect them, or outputs alone to disconnect them";
        // clang-format off
        checkRows({
            {"16x16-RGBA", hint + " > DIS ,;"},
            {"16x16-RGBA iB4 oB8 oB7", "Input 4 to outputs 7 and 8, video and audio > Con 4(7,8)4F (7,8);"},
            {"16x16-RGBA iV4 oV9 oV7 oV16", "Input 4 to outputs 7, 9 and 16, video > Con 4(7,9,16);"},
            {"16x16-RGBA iA16 oA2", "Input 16 to output 2, audio > Con 16F (2);"},
            {"16x16-RGBA oA3", "Disconnect output 3, audio > DIS 3F;"},
            {"16x16-RGBA oB2 oB1", "Disconnect outputs 1 and 2, video and audio > DIS 1,2,1F,2F;"},
            {"16x16-RGBA oV1 iV3", "Input 3 to output 1, video > Con 3(1);"},
            {"16x16-RGBA iA3 oA1 oA2 oA2 oV4", "Input 3 to outputs 1 and 4, audio > Con 3F (1,4);"},
            {"16x16-RGBA iV4 oV1 escape", "Input 4, video: pick its outputs > Con 4();"},
            {"16x16-RGBA iB3 oB1 iB3", hint + " > DIS ,;"},
            {"16x16-RGBA iB3 oB1 take", hint + " > DIS ,;"},
            {"8x4-RGB iB6 oB7", "Input 2 to output 1, video > Con 2(1);"},
        }, [](const std::string &row) {
            Panel kvn(row.substr(0, row.find(' ')));
            kvn.play("open" + row.substr(std::min(row.size(), row.find(' '))));
            const Control &take = kvn.control("TakeButton");
            const std::string said =
                take.description == take.toolTip ? take.toolTip : take.toolTip + " otherwise";
            kvn.form.TakeButton_Click();
            const std::string sent = kvn.takeWritten();
            return said + " > " + sent.substr(0, sent.find('\r')) + ";";
        });
        // clang-format on
    }

    // The model, what is played, and the control that is asked.
    void slotsSayTheirState() {
        const std::string two = "video from input 2, audio from input 2, volume -20, not muted";
        const std::string input4 = "video to outputs 4, 7 and 8, audio to output 4";
        // clang-format off
        checkRows({
            {"16x16-RGBA open - OutputNumberLabel_2", "Output 2: " + two + "|" + two},
            {"16x16-RGBA open - OutputAudioButtons_2", "Output 2: " + two + "|" + two},
            {"16x16-RGBA open - OutputVolumeValue_2", "Output 2: " + two + "|" + two},
            {"16x16-RGBA open - OutputVideoIndicator_2", "Output 2: " + two + "|"},
            {"32x32-RGBA open v17 up m17 - MuteButton_17",
             "Output 17: video from input 17, audio from input 17, volume -19, muted"
             "|video from input 17, audio from input 17, volume -19, muted"},
            {"16x16-RGBA open oA2 take - OutputVideoButtons_2",
             "Output 2: video from input 2, no audio, volume -20, not muted"
             "|video from input 2, no audio, volume -20, not muted"},
            {"16x16-RGBA silent open - InputVideoConnected_9",
             "Output 9: video not known, audio not known, volume not known, mute not known"
             "|video not known, audio not known, volume not known, mute not known"},
            {"8x4-RGB open oB8 take - OutputVidAudButtons_8", "Output 2: no video|no video"},
            {"8x4-RGB open - OutputVolumeValue_10", "Output 4: video from input 4|video from input 4"},
            {"8x4-RGB open - OutputVidAudButtons_11", "|"},
            {"16x16-RGBA open iV4 oV7 oV8 take - InputAudioButtons_4", "Input 4: " + input4 + "|" + input4},
            {"16x16-RGBA open oB1 take - InputVideoLamp_1",
             "Input 1: video to no output, audio to no output|"},
            {"8x4-RGB open - InputNumberLabel_7", "Input 3: video to output 3|video to output 3"},
        }, [](const std::string &row) {
            Panel kvn(row.substr(0, row.find(' ')));
            const auto dash = row.find(" - ");
            kvn.play(row.substr(row.find(' '), dash - row.find(' ')));
            const Control &control = kvn.control(row.substr(dash + 3));
            return control.toolTip + "|" + control.description;
        });
        // clang-format on
    }
};

QTEST_GUILESS_MAIN(PanelTextsTest)
#include "PanelTextsTest.moc"
