#include "support/Player.h"

#include "units/SavedUnitsText.h"

// What must hold after whatever happened, and how a player gets there.

namespace {

std::vector<std::string> namesIn(const std::string &file,
                                 std::vector<std::string> *blocks = nullptr) {
    SavedUnits units;
    std::array<std::string, 5> quads;
    ReadSavedUnitsText(units, file, quads);
    std::vector<std::string> names;
    for (int index = 1; index <= units.ControlBlockCount; ++index) {
        const KVNControlBlock &block = units.KVNControlBlocks[index];
        names.push_back(block.Name);
        if (blocks)
            blocks->push_back(block.Name + "/" + block.ConnectType + "/" + block.IPAddress);
    }
    return names;
}

/// How many texts of `before` are not in `after`.
std::ptrdiff_t lost(std::vector<std::string> before, std::vector<std::string> after) {
    std::vector<std::string> gone;
    std::ranges::sort(before);
    std::ranges::sort(after);
    std::ranges::set_difference(before, after, std::back_inserter(gone));
    return std::ssize(gone);
}

} // namespace

void Player::calmDown() {
    careful = true;
    onMessage = "-message", onQuestion = "-question", onceSeen.clear();
    play("well host=0 ports=7 slow0.05 sending0 split0 save= read=");
    const auto close = [this](std::initializer_list<const char *> names) {
        for (const std::string name : names)
            if (rowNamed(windows, name)->view.loaded)
                act("-" + name);
    };
    // Each message may have hidden another one, and what waited for a window goes on.
    for (int round = 1; round <= 20; ++round)
        pump.in(9.0 * round, [close] { close({"message", "box", "question", "connect"}); });
    pump.in(199.0, [this] {
        const bool isOpen = panel.form.loaded && !pump.ended();
        const PresetsView &presets = views.presets;
        const bool unitsBusy = views.units.form.loaded && !views.units.AddCorvaneFrame.enabled;
        const std::string stays =
            marks({{'T', isOpen && panel.TakeButton.face == Face::Busy},
                   {'W', isOpen && panel.OutputVolumeLabel.visible &&
                             panel.OutputVolumeLabel.text == "Wait..."},
                   {'P', presets.form.loaded && presets.ExecutePresetButton.face == Face::Busy},
                   {'U', !isOpen && unitsBusy},
                   {'C', !views.connect.Connect2IPButton.enabled},
                   {'S', views.setup.loaded}});
        see(stays == "------" ? "" : "!!! stays red, waiting, busy, disabled or open: " + stays);
    });
    for (const double moment : {200.0, 220.0, 240.0})
        pump.in(moment, [this, close] {
            close({"presets"});
            if (can("exit"))
                act("exit");
            close({"units", "help", "message"});
        });
}

std::string Player::troubles(bool overTheNetwork) {
    if (pump.ended())
        return afterTheEnd();
    std::string all;
    const auto must = [&all](const char *what, const std::string &is, const std::string &expected) {
        all +=
            is == expected ? "" : std::string("\n  ") + what + ": " + is + " and not " + expected;
    };
    const auto now = [&](const char *what, const std::string &expected) {
        must(what, look(what), expected);
    };
    if (const auto at = log.find("!!! "); at != log.npos)
        all += "\n  " + log.substr(at);
    careful = false;
    onMessage = "-message", onQuestion = "yes";
    overNetwork = overTheNetwork;
    // All is closed and nothing is under way.
    now("forms", "main"), now("flags", "");
    const bool isUp = look("link").starts_with('+');
    now("link", isUp ? "++++o" : "----");
    play(isUp ? "label" : "");
    now("link", "----");
    // It works as if nothing had been.
    for (FakeWire *wire : {&serialPort.wire, &socket.wire})
        wire->device("\r"); // ends what was sent of a command
    unit = Unit();
    log.clear();
    play("note open");
    must("connecting says", log, "");
    now("link", "++++o"), now("left", ""), now("flags", "");
    play("iB3 oB2 oB1 take");
    now("sent", "Con 3(1,2)3F (1,2);Q"), now("left", ""), now("take", "idle");
    must("output 2 shows", outputIn(2), "3|3|MUTE green|Vol -20");
    // The units of the file, and another one.
    play("exit units");
    auto names = views.units.AvailCorvanesList.entries;
    std::erase(names, "");
    play("add name=Last go back");
    if (names.size() < 25)
        names.push_back("Last");
    must("lost units", std::to_string(lost(names, namesIn(files.contentsOf[FileOfUnits]))), "0");
    for (std::size_t version = 1; version < files.versions.size(); ++version) {
        std::vector<std::string> before, after;
        const auto namesLost = lost(namesIn(files.versions[version - 1].first, &before),
                                    namesIn(files.versions[version].first, &after));
        must("a save lost units", namesLost > 1 ? "more than one" : "", "");
        must("a save changed units",
             lost(before, after) > 1 + files.versions[version].second ? "many" : "", "");
    }
    log.clear();
    leave();
    must("the end says", log, "");
    return all + afterTheEnd();
}

void Player::leave() {
    takeWritten();
    act("-main");
    atTheEnd = state();
}

std::string Player::afterTheEnd() {
    return state() != atTheEnd || atTheEnd.find(" a link is open ") != atTheEnd.npos
               ? "\n  the end: " + state() + " and not " + atTheEnd
               : "";
}

std::string Player::state() {
    std::ostringstream text;
    text << pump.now() << " " << serialPort.wire.written << socket.wire.written << look("forms")
         << (serialPort.isOpen() || socket.state() != SocketState::Closed ? " a link is open "
                                                                          : " ")
         << look("used") << " " << views.messages.dlgOK.form.raised << log;
    return text.str();
}
