#include "PanelFixture.h"

#include "Lamp.h"

#include <map>
#include <sstream>

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
                                                 {"down", "VolumeDownButton"},
                                                 {"p", "NewPresetButton"},
                                                 {"go", "ExecutePresetButton"},
                                                 {"close", "ExitPresets"}};
const std::map<std::string, std::string> Lamps{{"1iV", "InputVideoLamp"},
                                               {"2iA", "InputAudioLamp"},
                                               {"3oV", "OutputVideoIndicator"},
                                               {"4oA", "OutputAudioIndicator"}};

/// The controls of an array that are seen, by slot.
std::map<int, QWidget *> seen(const std::string &array) {
    std::map<int, QWidget *> controls;
    for (int slot = 1; slot <= 32; ++slot) {
        if (auto *control = PanelFixture::on(array + "_" + std::to_string(slot));
            control->isVisible())
            controls[slot] = control;
    }
    return controls;
}

} // namespace

PanelFixture::PanelFixture(const std::string &model, bool network)
    : ProgramFixture({.model = model}), overNetwork(network) {
    open();
}

void PanelFixture::open() {
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
        if (word == "open")
            open();
        else if (word == "frame")
            window("dlgPresets")->close();
        else if (word == "Esc")
            QTest::keyClick(window("dlgPresets"), Qt::Key_Escape);
        else
            click(isShown("dlgPresets") ? "dlgPresets" : "KVN32x32Audio",
                  Buttons.at(word.substr(0, digits)) +
                      (digits < word.size() ? "_" + word.substr(digits) : ""));
    }
}

void PanelFixture::answer(const std::string &command, const std::string &reply) {
    wire.device = [=, unitAnswer = wire.device](std::string_view text) {
        return text.starts_with(command) ? reply : unitAnswer(text);
    };
}

std::string PanelFixture::textsOf(const std::string &array) {
    std::string texts;
    for (const auto &[slot, control] : seen(array))
        texts += control->property("text").toString().toStdString() + " ";
    return texts;
}

std::string PanelFixture::face(const QWidget *button) {
    const std::map<QRgb, std::string> names{{qRgb(224, 224, 224), "grey"},
                                            {qRgb(214, 241, 194), "green"},
                                            {qRgb(247, 166, 157), "red"},
                                            {qRgb(255, 128, 128), "busy"}};
    return names.at(button->palette().color(QPalette::Button).rgb());
}

std::string PanelFixture::picked() {
    std::string marks;
    for (const char *const group : {"iB", "iV", "iA", " ", "oB", "oV", "oA"}) {
        std::size_t enabled = 0;
        const auto buttons = seen(*group == ' ' ? "InputVideoLamp" : Buttons.at(group));
        for (const auto &[slot, button] : buttons)
            enabled += button->isEnabled() ? 1 : 0;
        marks += *group == ' ' || enabled == buttons.size() ? std::string(group).back()
                 : enabled == 0                             ? '-'
                                                            : '?';
    }
    for (const auto &[mark, array] : Lamps) {
        for (const auto &[slot, control] : seen(array)) {
            const bool lit = static_cast<Lamp *>(control)->isLit();
            const bool told = control->accessibleDescription() == QLatin1String("lit");
            if (lit || told)
                marks += " " + mark.substr(1) + std::to_string(slot) + (lit == told ? "" : "!");
        }
    }
    return marks + " " + textOf("SelectedOutputsHolder") + "|" +
           textOf("SelectedAudioOutputsHolder") + "|" + textOf("CurrentInputHolder");
}

std::string PanelFixture::pending() const {
    std::string left = picked() == "BVA BVA ||" ? messages : picked() + messages;
    if (face(on("TakeButton")) != "grey")
        left += " TAKE is armed";
    if (program.panel.CurrentInput != 0)
        left += " an input is picked";
    for (const std::string &output : program.panel.SelectedOutputs)
        left += output.empty() ? "" : " output " + output + " is picked";
    return left;
}
