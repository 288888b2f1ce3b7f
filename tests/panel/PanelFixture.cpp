#include "PanelFixture.h"

#include "widgets/Lamp.h"

#include <map>
#include <sstream>
#include <utility>

namespace {

const std::map<std::string, std::string> Buttons{{"iB", "InputVideoAudioButtons"},
                                                 {"iV", "InputVideoButtons"},
                                                 {"iA", "InputAudioButtons"},
                                                 {"oB", "OutputVidAudButtons"},
                                                 {"oV", "OutputVideoButtons"},
                                                 {"oA", "OutputAudioButtons"},
                                                 {"m", "MuteButton"},
                                                 {"take", "TakeButton"},
                                                 {"escape", "ClearButton"},
                                                 {"presets", "GoToPresets"},
                                                 {"exit", "ExitButton"},
                                                 {"up", "VolumeUpButton"},
                                                 {"down", "VolumeDownButton"}};

const std::vector<std::pair<std::string, std::string>> Lamps{{"iV", "InputVideoLamp"},
                                                             {"iA", "InputAudioLamp"},
                                                             {"oV", "OutputVideoIndicator"},
                                                             {"oA", "OutputAudioIndicator"}};

std::string slotName(const std::string &array, int slot) {
    return array + "_" + std::to_string(slot);
}

char groupMark(char kind, const std::string &array) {
    int seen = 0;
    int enabled = 0;
    for (int slot = 1; slot <= 32; ++slot) {
        const QWidget *button = PanelFixture::on(slotName(array, slot));
        seen += button->isVisible() ? 1 : 0;
        enabled += button->isVisible() && button->isEnabled() ? 1 : 0;
    }
    if (seen == enabled)
        return kind;
    return enabled == 0 ? '-' : '?';
}

} // namespace

PanelFixture::PanelFixture(const std::string &model, bool overNetwork)
    : ProgramFixture({.model = model}) {
    open(overNetwork);
}

void PanelFixture::open(bool overNetwork) {
    openPanel(overNetwork);
    QVERIFY(isShown("KVN32x32Audio"));
    QCoreApplication::processEvents(); // the window becomes the active one
    takeWritten();
    messages.clear();
}

void PanelFixture::clicks(const std::string &marks) {
    std::istringstream words(marks);
    for (std::string word; words >> word;) {
        const auto digits = std::min(word.find_first_of("0123456789"), word.size());
        std::string name = Buttons.at(word.substr(0, digits));
        if (digits < word.size())
            name += "_" + word.substr(digits);
        click("KVN32x32Audio", QString::fromStdString(name));
    }
}

std::string PanelFixture::textOf(const std::string &name) {
    return text("KVN32x32Audio", name.c_str());
}

QColor PanelFixture::face(const std::string &name) {
    return on(name)->palette().color(QPalette::Button);
}

std::string PanelFixture::litLamps() {
    std::string lit;
    for (const auto &[mark, array] : Lamps) {
        for (int slot = 1; slot <= 32; ++slot) {
            const auto *lamp = on<Lamp>(slotName(array, slot));
            const bool told = lamp->accessibleDescription() == QLatin1String("lit");
            if (lamp->isVisible() && (lamp->isLit() || told))
                lit += (lit.empty() ? "" : " ") + mark + std::to_string(slot) +
                       (lamp->isLit() == told ? "" : "!");
        }
    }
    return lit;
}

std::string PanelFixture::groups() {
    std::string marks;
    for (const char *const side : {"i", "o"}) {
        for (const char kind : {'B', 'V', 'A'})
            marks += groupMark(kind, Buttons.at(std::string(side) + kind));
        marks += marks.size() == 3 ? " " : "";
    }
    return marks;
}

std::string PanelFixture::holders() {
    return textOf("SelectedOutputsHolder") + "|" + textOf("SelectedAudioOutputsHolder") + "|" +
           textOf("CurrentInputHolder");
}

std::string PanelFixture::pending() const {
    std::string left = litLamps();
    if (groups() != "BVA BVA")
        left += " groups " + groups();
    if (holders() != "||")
        left += " holders " + holders();
    if (face("TakeButton") != QColor(224, 224, 224))
        left += " TAKE is armed";
    if (program.panelState.CurrentInput != 0)
        left += " an input is picked";
    for (const std::string &output : program.panelState.SelectedOutputs)
        left += output.empty() ? "" : " output " + output + " is picked";
    return left;
}
