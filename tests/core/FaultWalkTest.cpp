#include "support/Player.h"

namespace {

constexpr std::size_t ToUnit = 0, FromUnit = 1, Turns = 2;

/// What goes wrong from the byte of that number on: cut, silent, garbled, split, flooding; or the
/// window that is closed in the turn of that number of all waits.
struct Fault {
    std::string what{};
    std::size_t in = Turns;
    std::size_t at = 0;
};

/// One session: connect, take, mute, volume, preset, and the same unit as a saved one.
class Walk {
public:
    explicit Walk(bool network, Fault someFault = {})
        : overNetwork(network), fault(std::move(someFault)) {
        for (FakeWire *wire : {&user.serialPort.wire, &user.socket.wire})
            wire->device = [this, wire, unit = wire->device](std::string_view text) {
                const std::string answer = unit(spoilt(ToUnit, std::string(text), *wire));
                return spoilt(FromUnit, answer, *wire);
            };
        user.pump.eachTurn = [this, turn = user.pump.eachTurn] {
            const bool closes = !isOver && fault.in == Turns && open.size() == fault.at;
            if (closes && !fault.what.empty() && user.can("-" + fault.what))
                fault.what == "main" ? user.leave() : user.act("-" + fault.what);
            if (!isOver)
                open.push_back(fault.what.empty() ? user.look("forms") : "");
            turn();
        };
        user.careful = true;
        for (const double moment : {5.0, 8.9, 14.9})
            user.pump.in(moment, [this] { moments.push_back(passed); });
        user.play("file & find @0.5 " +
                      std::string(network ? "ethernet @1 ip=10.11.12.13 @1.2 dial"
                                          : "serial @1 port7 @2 done") +
                      " @6 iB5 oB7 take @9 m7 @12 v8 up @15 presets p2 execute @17 close @18 exit "
                      "@20 units @22 control @25 " +
                      (network ? "unit1 @27 quad0=10.11.12.13 @28 go"
                               : "unit0 @27 go @28 port7 @29 done") +
                      " @35 iV6 oV8 take @39 exit",
                  false);
        user.pump.in(45.0, [this] {
            isOver = true;
            said = user.log;
            user.calmDown();
        });
        trouble = user.troubles(network);
    }

    /// Whether the user must be told of the port or the address, if this session went well: a cut
    /// until the presets, a silent serial unit until the mute.
    [[nodiscard]] bool mustTell(const Fault &of) const {
        const std::size_t end = of.what == "cut" ? 2 : of.what == "silent" && !overNetwork ? 1 : 0;
        return end != 0 && of.at >= moments[0][of.in] && of.at < moments[end][of.in];
    }

    const bool overNetwork;
    std::string trouble;                 ///< what is not as it must be
    std::string said;                    ///< until the fault ended
    std::vector<std::string> open;       ///< the windows, by turn
    std::array<std::size_t, 2> passed{}; ///< bytes to the unit and from it

private:
    /// What of the bytes gets through.
    std::string spoilt(std::size_t way, std::string text, FakeWire &wire) {
        const std::size_t begin = passed[way];
        const std::size_t at = std::max(begin, fault.at) - begin;
        passed[way] += isOver ? 0 : text.size();
        if (isOver || fault.in != way || at >= text.size())
            return text;
        if (fault.what == "split")
            wire.split = at == 0 ? 7 : at;
        else if (fault.what == "flooding")
            text.insert(at, "\r\n  Output 1 (A,M,0,V,5," + std::string(2000, '('));
        else if (fault.what == "garbled")
            for (std::size_t byte = at; byte < text.size(); ++byte)
                text[byte] ^= 0x15;
        else
            text.resize(at);
        if (fault.what == "cut") {
            user.pump.in(0.02, [this] { user.act("lose"); });
            fault.at = text.npos;
        }
        return text;
    }

    /// Of passed: connected, before mute, before presets.
    std::vector<std::array<std::size_t, 2>> moments;
    Fault fault;
    bool isOver = false;
    Player user{overNetwork, {.model = "KVN-8x4-RGBA"}};
};

/// One session for each fault there.
void plays(const Walk &well, const std::string &faults, std::size_t in, std::size_t at) {
    std::istringstream names(faults);
    for (Fault fault{.in = in, .at = at}; names >> fault.what;) {
        const Walk walk(well.overNetwork, fault);
        std::string trouble = walk.trouble;
        if (well.mustTell(fault) &&
            walk.said.find("{failed}") + walk.said.find("{no response}") == 2 * walk.said.npos)
            trouble += "\n  nothing is told of the link: " + walk.said;
        const std::string where = std::to_string(in) + " at " + std::to_string(at);
        QVERIFY2(trouble.empty(), (fault.what + " " + where + trouble).c_str());
    }
}

} // namespace

class FaultWalkTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    static void anywhere_data() {
        const DataTable<bool> row("network");
        row("serial", false);
        row("network", true);
    }
    static void anywhere() {
        QFETCH(bool, network);
        const Walk well(network);
        QCOMPARE(well.trouble, std::string());
        for (const auto &[way, faults] : {std::pair(ToUnit, "cut silent garbled"),
                                          {FromUnit, "cut silent garbled split flooding"}})
            for (std::size_t at = 0; at < well.passed[way]; ++at)
                plays(well, faults, way, at);
        for (std::size_t turn = 0; turn < well.open.size(); ++turn)
            plays(well, replaced(well.open[turn], "min-", ""), Turns, turn);
    }
};

QTEST_GUILESS_MAIN(FaultWalkTest)
#include "FaultWalkTest.moc"
