#include "support/Player.h"

#include <cstdlib>
#include <random>

namespace {

constexpr std::size_t EventsOfAnEpisode = 150;

/// What happens: "#" is a number from 1 to 32. What is written twice happens more often.
// clang-format off
const std::vector<std::string> Words{
    "find", "find", "units", "new", "label", "ethernet", "serial", "serial", "ip=10.11.12.13", "ip=10.0.0.5", "ip=1",
    "dial", "dial", "port7", "port7", "port8", "port1", "done", "done", "iB#", "iV#", "iA#", "oB#", "oV#", "oA#", "m#",
    "v#", "take", "escape", "presets", "exit", "up", "up", "down", "raise#", "lower#", "p#", "execute", "close", "add",
    "edit", "control", "delete", "back", "name=N", "name=", "unit0", "unit1", "unit2", "double0", "double1", "kind0",
    "kind1", "quad0=10.0.0.5", "quad2=", "quad3=25", "go", "go", "go", "esc", "cancel", "ok", "ok", "ok", "-box", "yes",
    "yes", "no", "-message", "-question", "-panel", "-presets", "-units", "-connect", "-splash", "+help", "-help",
    // The machine and the unit
    "lose", "network0", "network", "ports=7", "ports=1,7,8", "ports=", "swap", "host=0", "host=0", "host=1",
    "host=2", "host=3", "slow0.05", "slow2.5", "sending0", "sending1.5", "split0", "split3", "split40", "late0.01",
    "late0.5", "late1.5", "raw=", "raw=^Ok^", "raw=\x80(,)^", "CFG=", "silent", "STA=U,0,V,-7,1,D,255", "VOL=5", "VOL=",
    "well", "well", "well", "save=Full.", "save=", "save=", "read=Bad.", "read=", "gone"};
const std::vector<std::string> Models{"16x16-RGBA", "8x4-RGBA", "8x4-RGB", "32x32-RGBA", "12x8-HD", "8x4-C"};
// clang-format on

/// One random walk from the start window on. Times are those of the fake machine's clock.
class Monkey {
public:
    explicit Monkey(unsigned seed) : random(seed) {}

    /// What is not as it must be, empty if all is.
    std::string walk() {
        const bool leaves = below(4) == 0;
        user.onMessage.clear(), user.onQuestion.clear();
        user.careful = true;
        user.act("file");
        double at = 0.0;
        for (std::size_t event = leaves ? below(EventsOfAnEpisode) : 0; event < EventsOfAnEpisode;
             ++event) {
            at += std::array{0.0, 0.02, 0.1, 0.1, 0.4, 1.0, 3.0}.at(below(7));
            user.pump.in(at, [this] { happen(); });
        }
        std::string trouble;
        user.pump.in(at, [&] { leaves ? user.leave() : user.calmDown(); });
        try {
            user.pump.runFor(10000.0, [] { return false; });
            trouble = user.troubles(below(2) == 0);
        } catch (const std::exception &error) {
            trouble += std::string("\n  thrown: ") + error.what();
        }
        return trouble.empty() ? trouble : trouble + "\n " + played;
    }

private:
    std::size_t below(std::size_t bound) { return random() % bound; }

    void happen() {
        for (int tries = 0; tries < 200; ++tries) {
            std::string word = Words.at(below(Words.size()));
            if (word.ends_with('#'))
                word.replace(word.size() - 1, 1, std::to_string(1 + below(32)));
            if (!user.can(word))
                continue;
            std::ostringstream note;
            note << " @" << user.pump.now() - 1000.0 << ":" << word;
            played += note.str();
            user.act(word);
            return;
        }
    }

    std::mt19937 random;
    Player user{below(2) == 0, {.model = "KVN-" + Models.at(below(Models.size()))}};
    std::string played;
};

int numberOf(const char *variable, int otherwise) {
    const char *const text = std::getenv(variable);
    return text ? static_cast<int>(std::strtol(text, nullptr, 10)) : otherwise;
}

} // namespace

/// KVN_MONKEY_EVENTS says how many events there are; KVN_MONKEY_SEED plays that episode alone.
class MonkeyTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void walks() {
        const int only = numberOf("KVN_MONKEY_SEED", -1);
        const int episodes =
            numberOf("KVN_MONKEY_EVENTS", 25000) / static_cast<int>(EventsOfAnEpisode);
        int failed = 0;
        for (int seed = only < 0 ? 0 : only; seed < (only < 0 ? episodes : only + 1); ++seed) {
            const std::string trouble = Monkey(static_cast<unsigned>(seed)).walk();
            if (!trouble.empty()) // longer than a message of QtTest may be
                std::fprintf(stderr, "KVN_MONKEY_SEED=%d %s%s\n", seed,
                             QCoreApplication::arguments().front().toLocal8Bit().data(),
                             trouble.c_str());
            failed += trouble.empty() ? 0 : 1;
        }
        QCOMPARE(failed, 0);
    }
};

QTEST_GUILESS_MAIN(MonkeyTest)
#include "MonkeyTest.moc"
