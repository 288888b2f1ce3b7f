#include "support/Player.h"

#include "units/SavedUnitsText.h"

// What must hold after whatever happened, and how a player gets there.

namespace {

/// How many units of one file are not in another one, by their names or by all that is kept of
/// them.
std::ptrdiff_t lost(const std::string &before, const std::string &after, bool byName) {
    const auto unitsIn = [byName](const std::string &file) {
        SavedUnits units;
        std::array<std::string, 5> quads;
        ReadSavedUnitsText(units, file, quads);
        std::multiset<std::string> all;
        for (int index = 1; index <= units.ControlBlockCount; ++index) {
            const KVNControlBlock &unit = units.KVNControlBlocks[index];
            all.insert(unit.Name + (byName ? "" : "/" + unit.ConnectType + "/" + unit.IPAddress));
        }
        return all;
    };
    std::vector<std::string> gone;
    std::ranges::set_difference(unitsIn(before), unitsIn(after), std::back_inserter(gone));
    return std::ssize(gone);
}

} // namespace

void Player::calmDown() {
    careful = true;
    onMessage = "-message", onQuestion = "-question", onceSeen.clear();
    play("heal");
    const auto close = [this](std::initializer_list<const char *> names) {
        for (const std::string name : names)
            if (rowNamed(forms, name)->view.loaded)
                act("-" + name);
    };
    // Each message may have hidden another one, and what waited for a window goes on.
    for (int round = 1; round <= 20; ++round)
        pump.in(9.0 * round, [close] { close({"message", "box", "question", "connect"}); });
    pump.in(190.0, [this, close] {
        see(look("passing").empty() ? "" : "!!! stays " + look("passing"));
        close({"presets"});
    });
    for (const double moment : {200.0, 220.0, 240.0})
        pump.in(moment, [this, close] {
            close({"presets"});
            play("exit");
            close({"units", "help", "message"});
        });
}

std::string Player::troublesAnew(bool overTheNetwork) {
    std::string all = log.substr(std::min(log.find("!!! "), log.size()));
    log.clear();
    careful = false;
    overNetwork = overTheNetwork;
    onMessage = "-message", onQuestion = "yes";
    for (FakeWire *wire : {&serialPort.wire, &socket.wire})
        wire->device("\r"); // ends what was sent of a command
    unit = Unit();
    // All is closed and nothing is under way; then it works as if nothing had been.
    const bool isUp = look("link").starts_with('+');
    play(isUp ? "?forms ?flags ?link label" : "?forms ?flags");
    play("?link note open ?link ?left ?flags iB3 oB2 oB1 take ?sent ?left ?take ?outputs exit "
         "units");
    const std::string output = "3|3|MUTE green|Vol -20";
    const std::string well = (isUp ? "main ++++o" : "main") +
                             (" ---- ++++o Con 3(1,2)3F (1,2);Q idle " + output + ", " + output);
    all += log == well ? "" : "\n  " + log + "\n  and not " + well;
    // The units of the file, and another one.
    auto names = views.units.AvailCorvanesList.entries;
    std::erase(names, "");
    play("add name=Last go back");
    if (names.size() < 25)
        names.push_back("Last");
    std::string list;
    for (const std::string &name : names)
        list += "KVN NAME = " + name + "\n";
    if (lost(list, files.contentsOf[FileOfUnits], true) != 0)
        all += "\n  not all in the file: " + list;
    for (std::size_t at = 1; at < files.versions.size(); ++at) {
        const auto &[before, failedBefore] = files.versions[at - 1];
        const auto &[after, failed] = files.versions[at];
        if (lost(before, after, true) > 1 || lost(before, after, false) > 1 + failed)
            all += "\n  a save made " + after + " of " + before;
    }
    pump.show();
    log.clear();
    leave();
    return all + (log.empty() ? "" : "\n  the end says " + log);
}

std::string Player::troubles(bool overTheNetwork) {
    try {
        pump.runFor(10'000.0, [] { return false; });
        const std::string all = pump.ended() ? "" : troublesAnew(overTheNetwork);
        const bool isWell =
            state() == atTheEnd && atTheEnd.find(" a link is open ") == atTheEnd.npos;
        return isWell ? all : all + "\n  the end: " + state() + " and not " + atTheEnd;
    } catch (const std::exception &error) {
        return std::string("\n  thrown: ") + error.what();
    }
}

void Player::leave() {
    takeWritten();
    act("-main");
    pump.show();
    atTheEnd = state();
}

std::string Player::state() {
    const bool isOpen = serialPort.isOpen() || socket.state() != SocketState::Closed;
    return look("time") + " " + serialPort.wire.written + socket.wire.written + look("forms") +
           (isOpen ? " a link is open " : " ") + look("used") + " " +
           std::to_string(views.messages.dlgOK.form.raised) + log;
}
