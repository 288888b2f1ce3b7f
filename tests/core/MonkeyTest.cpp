#include "support/Monkey.h"

namespace {

constexpr int EventsOfAWalk = 150;

// clang-format off
/// What the user does, "#" is a number from 1 to 32. What is written twice happens more often.
const std::vector<std::string> Deeds{
    "find", "find", "units", "new", "label", "ethernet", "serial", "serial", "ip=10.11.12.13", "ip=10.0.0.5", "ip=1",
    "dial", "dial", "port7", "port7", "port8", "port1", "done", "done", "iB#", "iV#", "iA#", "oB#", "oV#", "oA#", "m#",
    "v#", "take", "escape", "presets", "exit", "up", "up", "down", "raise#", "lower#", "p#", "execute", "close", "add",
    "edit", "control", "delete", "back", "name=N", "name=", "unit0", "unit1", "unit2", "double0", "double1", "kind0",
    "kind1", "quad0=10.0.0.5", "quad2=", "quad3=25", "go", "go", "go", "esc", "cancel", "ok", "ok", "ok", "-box", "yes",
    "yes", "no", "-message", "-question", "-panel", "-presets", "-units", "-connect", "-splash", "+help", "-help"};
const std::vector<std::string> Models{"16x16-RGBA", "8x4-RGBA", "8x4-RGB", "32x32-RGBA", "12x8-HD", "8x4-C"};
// clang-format on

/// One that plays on the forms.
class FormsMonkey : public Monkey {
public:
    explicit FormsMonkey(unsigned seed)
        : Monkey(player, seed), player(below(2) == 0, {.model = "KVN-" + anyOf(Models)}) {}

private:
    void happen() override { play(below(2) == 0 ? Mishaps : Deeds); }

    Player player;
};

} // namespace

class MonkeyTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    static void anythingAtAnyTime_data() { Monkey::addSeeds(EventsOfAWalk); }
    static void anythingAtAnyTime() {
        Monkey::verify([](unsigned seed) { return FormsMonkey(seed).walk(EventsOfAWalk); });
    }
};

QTEST_GUILESS_MAIN(MonkeyTest)
#include "MonkeyTest.moc"
