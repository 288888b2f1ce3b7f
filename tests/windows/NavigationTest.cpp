#include "Navigation.h"

#include "PanelLayout.h"
#include "support/rows.h"

#include <QtTest/QtTest>

#include <algorithm>
#include <set>
#include <sstream>

/// The arrow keys on the panel's controls as they stand.
class NavigationTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void goesByTheScreen();
    void reachesEveryControl();
};

namespace {

constexpr std::string_view Arrows = "LRUD"; // as in Direction

struct Panel {
    std::vector<std::string> names;
    std::vector<QRect> places;

    Panel(int inputs, int outputs) {
        const auto add = [this](const std::string &name, const auto &control, const TwipRect &at) {
            if (control.kind != ControlKind::Button && control.kind != ControlKind::Box)
                return;
            names.push_back(name);
            places.emplace_back(at.x, at.y, at.width, at.height);
        };
        for (const SlotArray &array : SlotArrays) {
            for (int slot = 1; slot <= (array.side == Side::Input ? inputs : outputs); ++slot)
                add(array.name + std::to_string(slot), array, slotRect(array, slot));
        }
        for (const SingleControl &single : SingleControls)
            add(single.name, single, single.place);
    }

    /// Where keys lead to: "R5" is five times to the right.
    [[nodiscard]] std::string after(const std::string &startAndKeys) const {
        std::istringstream words(startAndKeys);
        std::string word;
        words >> word;
        auto at =
            static_cast<std::size_t>(std::find(names.begin(), names.end(), word) - names.begin());
        while (words >> word) {
            const auto direction = static_cast<Direction>(Arrows.find(word.front()));
            for (int press = std::stoi(word.substr(1)); press > 0; --press)
                at = nextPlace(places, at, direction).value_or(at);
        }
        return names.at(at);
    }
};

// clang-format off
const std::vector<std::array<std::string, 2>> On32x32{
    {"InputVideoAudioButtons1 R4", "InputVideoAudioButtons5"}, {"InputVideoAudioButtons1 L1", "InputVideoAudioButtons1"},
    {"InputVideoAudioButtons16 R1", "InputVideoAudioButtons16"}, {"InputVideoAudioButtons1 U1", "InputVideoAudioButtons1"},
    {"InputVideoAudioButtons5 D1", "InputVideoButtons5"}, {"InputVideoAudioButtons5 D1 R1 U1", "InputVideoAudioButtons5"},
    {"InputAudioButtons5 R1", "InputVideoButtons6"}, {"InputVideoAudioButtons5 D4", "OutputVidAudButtons5"},
    {"OutputAudioButtons5 D1", "InputAudioConnected5"}, {"OutputVidAudButtons5 D4", "MuteButton5"},
    {"OutputVolumeValue17 D1", "MuteButton25"}, {"MuteButton17 U1", "OutputVolumeValue32"}, {"MuteButton25 R8", "MuteButton24"},
    {"OutputVolumeValue21 D2", "TakeButton"}, {"OutputVolumeValue17 D2", "GoToPresets"}, {"OutputVolumeValue32 D2", "ExitButton"},
    {"TakeButton R1", "ClearButton"}, {"TakeButton D1", "VolumeUpButton"}, {"GoToPresets R3", "ExitButton"}};
const std::vector<std::array<std::string, 2>> On8x4{ // fewer columns below than above
    {"InputVideoButtons8 D1", "OutputVidAudButtons4"}, {"OutputVidAudButtons4 R1", "OutputVidAudButtons4"},
    {"MuteButton1 D1", "GoToPresets"}, {"MuteButton4 D1", "TakeButton"}};
// clang-format on

} // namespace

void NavigationTest::goesByTheScreen() {
    checkRows(On32x32, [&, panel = Panel(32, 32)](auto &keys) { return panel.after(keys); });
    checkRows(On8x4, [&, panel = Panel(8, 4)](auto &keys) { return panel.after(keys); });
}

void NavigationTest::reachesEveryControl() {
    const Panel panel(32, 32);
    std::set<std::string> reached;
    std::vector<std::string> next{panel.names.front()};
    while (!next.empty()) {
        const std::string name = next.back();
        next.pop_back();
        if (!reached.insert(name).second)
            continue;
        for (const char arrow : Arrows)
            next.push_back(panel.after(name + " " + arrow + "1"));
    }
    // The three holders lie below the window.
    QCOMPARE(reached.size(), std::size_t{32 * 3 + 32 * 7 + 6 + 3});
}

QTEST_APPLESS_MAIN(NavigationTest)
#include "NavigationTest.moc"
