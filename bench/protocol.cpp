#include "Figures.h"
#include "protocol/CommandTexts.h"
#include "protocol/ModelCatalogue.h"
#include "protocol/StatusParser.h"
#include "simulator/Unit.h"

#include <cstdlib>
#include <functional>
#include <new>

namespace {
std::size_t allocations = 0;
}

void *operator new(std::size_t size) {
    ++allocations;
    if (void *memory = std::malloc(size))
        return memory;
    throw std::bad_alloc();
}
void operator delete(void *memory) noexcept { std::free(memory); }
void operator delete(void *memory, std::size_t) noexcept { std::free(memory); }

namespace {

void measure(Figures &figures, const std::string &what, std::optional<double> mostAllocations,
             const std::function<void()> &action) {
    constexpr int Calls = 10000;
    std::vector<double> seconds(25);
    action(); // the first time may make room for all others
    const std::size_t before = allocations;
    for (double &spent : seconds) {
        const double start = processorTime();
        for (int call = 0; call < Calls; ++call)
            action();
        spent = processorTime() - start;
    }
    const std::size_t calls = seconds.size() * Calls;
    const double allocated = static_cast<double>(allocations - before) / static_cast<double>(calls);
    figures.add(what, median(seconds) * 1e9 / Calls, "ns");
    figures.add(what + ", allocations", allocated, "", mostAllocations);
}

} // namespace

void measureProtocol(Figures &figures) {
    ModelFacts facts;
    const std::string_view last = modelCatalogue().back().Model;
    measure(figures, "look-up of the last model", 0, [&] { SelectModelSetup(facts, last, 1); });
    Unit unit(UnitOptions{.model = "KVN-32x32-RGBA"});
    const std::string report = unit.answer("STA O A");
    RoutingState routing;
    measure(figures, "parsing a status report of 32 outputs", 0,
            [&] { ParseOutputStatus(routing, report, FindStatusStart(report), 32); });
    measure(figures, "building a command", 0, [] { command::mute(32); });
    measure(figures, "building a command of three outputs", 1,
            [] { command::connectBoth(12, "14,15,16"); });
}
