#include "support/Monkey.h"

// clang-format off
/// What is written twice happens more often.
const std::vector<std::string> Mishaps{
    "lose", "network0", "network", "ports=7", "ports=1,7,8", "ports=", "swap", "host=0", "host=0", "host=1",
    "host=2", "host=3", "slow0.05", "slow2.5", "sending0", "sending1.5", "split0", "split3", "split40", "late0.01",
    "late0.5", "late1.5", "raw=", "raw=^Ok^", "raw=\x80(,)^", "CFG=", "silent", "STA=U,0,V,-7,1,D,255", "VOL=5", "VOL=",
    "well", "well", "well", "save=Full.", "save=", "save=", "read=Bad.", "read=", "gone"};
// clang-format on

std::string Monkey::walk(int events) {
    const bool leaves = below(4) == 0;
    user.onMessage.clear(), user.onQuestion.clear();
    user.careful = true;
    user.act("file");
    double at = 0.0;
    for (int event = leaves ? below(events) : 0; event < events; ++event) {
        at += anyOf(std::array{0.0, 0.02, 0.1, 0.1, 0.4, 1.0, 3.0});
        user.pump.in(at, [this] { happen(); });
    }
    user.pump.in(at, [&] { leaves ? user.leave() : end(); });
    const std::string trouble = user.troubles(below(2) == 0);
    return trouble.empty() ? trouble : trouble + "\n " + played;
}

void Monkey::play(const std::vector<std::string> &words) {
    for (int tries = 0; tries < 200; ++tries) {
        std::string word = anyOf(words);
        if (word.ends_with('#'))
            word.replace(word.size() - 1, 1, std::to_string(1 + below(32)));
        if (!user.can(word))
            continue;
        played += " @" + user.look("time") + ":" + word;
        return user.act(word);
    }
}

void Monkey::addSeeds(int eventsOfEach) {
    bool alone = false, asked = false;
    const int seed = qEnvironmentVariableIntValue("KVN_MONKEY_SEED", &alone);
    const int events = qEnvironmentVariableIntValue("KVN_MONKEY_EVENTS", &asked);
    const int end = alone ? seed + 1 : (asked ? events : 25'000) / eventsOfEach;
    const DataTable<unsigned> row("seed");
    for (int one = alone ? seed : 0; one < end; ++one)
        row(std::to_string(one).c_str(), static_cast<unsigned>(one));
}

void Monkey::verify(const std::function<std::string(unsigned seed)> &trouble) {
    QFETCH(unsigned, seed);
    // Before it is played, for what ends in a crash.
    std::printf("KVN_MONKEY_SEED=%u QT_QPA_PLATFORM=offscreen %s\n", seed,
                QCoreApplication::arguments().front().toLocal8Bit().data());
    std::fflush(stdout);
    const std::string found = trouble(seed);
    if (!found.empty())
        std::fprintf(stderr, "%s\n", found.c_str()); // longer than a message of QtTest may be
    QVERIFY(found.empty());
}
