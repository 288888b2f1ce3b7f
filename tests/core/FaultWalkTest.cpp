#include "support/Player.h"

namespace {

enum class Kind { None, Cut, Silent, Garbled, Split, Flooding };

/// What goes wrong from the byte of that number on, of those that the unit sends or is sent; or a
/// window that is closed in the turn of that number of all waits.
struct Fault {
    Kind kind = Kind::None;
    bool toUnit = false;
    std::size_t at = 0;
    std::string window{};
};

/// One session: connect, take, mute, volume, preset, and the same unit as a saved one.
class Walk {
public:
    explicit Walk(bool network, Fault someFault = {})
        : overNetwork(network), fault(std::move(someFault)) {
        for (FakeWire *wire : {&user.serialPort.wire, &user.socket.wire})
            wire->device = [this, wire, unit = wire->device](std::string_view text) {
                const std::string answer = unit(spoilt(true, std::string(text), *wire));
                return spoilt(false, answer, *wire);
            };
        user.pump.eachTurn = [this, turn = user.pump.eachTurn] {
            if (!isOver && open.size() == fault.at && !fault.window.empty() &&
                user.can("-" + fault.window))
                fault.window == "main" ? user.leave() : user.act("-" + fault.window);
            if (!isOver)
                open.push_back(fault.at == 0 ? user.look("forms") : "");
            turn();
        };
        user.careful = true;
        for (const double moment : {5.0, 8.9, 14.9})
            user.pump.in(moment, [this] { moments.push_back(passed); });
        const std::string connects =
            network ? "ethernet @1 ip=10.11.12.13 @1.2 dial" : "serial @1 port7 @2 done";
        const std::string controls =
            network ? "unit1 @27 quad0=10.11.12.13 @28 go" : "unit0 @27 go @28 port7 @29 done";
        user.play("file & find @0.5 " + connects +
                      " @6 iB5 oB7 take @9 m7 @12 v8 up @15 presets p2 execute @17 close "
                      "@18 exit @20 units @22 control @25 " +
                      controls + " @35 iV6 oV8 take @39 exit",
                  false);
        user.pump.in(45.0, [this] {
            isOver = true;
            said = user.log;
            user.calmDown();
        });
        trouble = user.troubles(network);
    }

    /// Whether the user must have been told of the port or the address, if the session is well.
    [[nodiscard]] bool mustTell(const Fault &of) const {
        const auto within = [&](std::size_t end) {
            return of.at >= moments[0][of.toUnit] && of.at < moments[end][of.toUnit];
        };
        return of.kind == Kind::Cut ? within(2)
                                    : of.kind == Kind::Silent && !overNetwork && within(1);
    }
    [[nodiscard]] bool tells() const {
        return said.find("{failed}") != said.npos || said.find("{no response}") != said.npos;
    }

    const bool overNetwork;
    std::string trouble;                 ///< what is not as it must be
    std::string said;                    ///< until the fault ended
    std::vector<std::string> open;       ///< the windows, by turn
    std::array<std::size_t, 2> passed{}; ///< bytes from the unit and to it

private:
    /// What of the bytes gets through.
    std::string spoilt(bool toUnit, std::string text, FakeWire &wire) {
        if (isOver)
            return text;
        const std::size_t begin = std::exchange(passed[toUnit], passed[toUnit] + text.size());
        const std::size_t at = std::max(begin, fault.at) - begin;
        if (fault.toUnit != toUnit || at >= text.size())
            return text;
        switch (fault.kind) {
        case Kind::Cut:
            user.pump.in(0.02, [this] { user.act("lose"); });
            fault.kind = Kind::None;
            [[fallthrough]];
        case Kind::Silent:
            text.resize(at);
            break;
        case Kind::Garbled:
            for (std::size_t byte = at; byte < text.size(); ++byte)
                text[byte] ^= 0x15;
            break;
        case Kind::Split:
            wire.split = at == 0 ? 7 : at;
            break;
        case Kind::Flooding:
            text.insert(at, "\r\n  Output 1 (A,M,0,V,5," + std::string(2000, '('));
            break;
        case Kind::None:
            break;
        }
        return text;
    }

    /// Of passed: connected, before mute, before presets.
    std::vector<std::array<std::size_t, 2>> moments;
    Fault fault;
    bool isOver = false;
    Player user{overNetwork, {.model = "KVN-8x4-RGBA"}};
};

} // namespace

class FaultWalkTest : public QObject {
    Q_OBJECT

    static void plays(const Walk &well, const Fault &fault) {
        const Walk walk(well.overNetwork, fault);
        std::string trouble = walk.trouble;
        if (well.mustTell(fault) && !walk.tells())
            trouble += "\n  nothing is told of the link: " + walk.said;
        const std::string name = std::string(well.overNetwork ? "network" : "serial") + ", kind " +
                                 std::to_string(static_cast<int>(fault.kind)) +
                                 (fault.toUnit ? ", to" : ", from") + " the unit at " +
                                 std::to_string(fault.at) + " " + fault.window;
        QVERIFY2(trouble.empty(), (name + trouble).c_str());
    }

private Q_SLOTS:
    void everyByte() {
        for (const bool network : {false, true}) {
            const Walk well(network);
            QCOMPARE(well.trouble, std::string());
            for (const bool toUnit : {false, true})
                for (std::size_t at = 0; at < well.passed[toUnit]; ++at)
                    for (const Kind kind :
                         {Kind::Cut, Kind::Silent, Kind::Garbled, Kind::Split, Kind::Flooding})
                        if (!toUnit || kind < Kind::Split)
                            plays(well, {kind, toUnit, at});
        }
    }

    void everyWait() {
        for (const bool network : {false, true}) {
            const Walk well(network);
            for (std::size_t turn = 0; turn < well.open.size(); ++turn) {
                std::istringstream names(replaced(well.open[turn], "min-", ""));
                for (std::string name; names >> name;)
                    plays(well, {Kind::None, false, turn, name});
            }
        }
    }
};

QTEST_GUILESS_MAIN(FaultWalkTest)
#include "FaultWalkTest.moc"
