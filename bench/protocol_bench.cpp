#include "protocol/ModelCatalogue.h"
#include "protocol/StatusParser.h"
#include "simulator/Unit.h"

#include <benchmark/benchmark.h>

namespace {

void parseStatusOf32Outputs(benchmark::State &state) {
    Unit unit(UnitOptions{.model = "KVN-32x32-RGBA"});
    const std::string report = unit.answer("STA O A");
    RoutingState routing;
    for (auto round : state) {
        ParseOutputStatus(routing, report, FindStatusStart(report), 32);
        benchmark::DoNotOptimize(routing);
    }
}
BENCHMARK(parseStatusOf32Outputs);

// The last row that can be selected.
void selectLastModel(benchmark::State &state) {
    ModelFacts facts;
    for (auto round : state) {
        SelectModelSetup(facts, "\r\nKVN-32x16-HD\r\n", 3);
        benchmark::DoNotOptimize(facts);
    }
}
BENCHMARK(selectLastModel);

} // namespace
