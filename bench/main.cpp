// Measures what the program costs. Prints a table and fails when a bound is missed. With a number
// it measures that many takes in real time on each link instead.

#include "Application.h"
#include "Figures.h"
#include "ProgramLook.h"

#include <QLoggingCategory>

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <ctime>
#include <exception>

void Figures::add(const std::string &what, double value, const char *unit,
                  std::optional<double> bound) {
    std::printf("%-58s %9.3f %-4s", what.c_str(), value, unit);
    if (bound) {
        const bool kept = value <= *bound;
        missed += kept ? 0 : 1;
        std::printf(" at most %5g  %s", *bound, kept ? "kept" : "MISSED");
    }
    std::printf("\n");
    std::fflush(stdout);
}

double median(std::vector<double> values) {
    const auto middle = values.begin() + static_cast<std::ptrdiff_t>(values.size() / 2);
    std::nth_element(values.begin(), middle, values.end());
    return *middle;
}

double processorTime() {
    timespec time{};
    clock_gettime(CLOCK_PROCESS_CPUTIME_ID, &time);
    return static_cast<double>(time.tv_sec) + static_cast<double>(time.tv_nsec) * 1e-9;
}

int main(int argc, char **argv) {
    const Application application(argc, argv);
    // The offscreen platform warns about every window that it cannot raise.
    QLoggingCategory::setFilterRules(QStringLiteral("default.warning=false"));
    applyProgramLook();
    Figures figures;
    try {
        if (const int takes = argc > 1 ? std::atoi(argv[1]) : 0; takes > 0) {
            measureTakes(figures, takes);
        } else {
            measureStart(figures);
            measureExchanges(figures);
            measureWindows(figures);
            measureProtocol(figures);
        }
    } catch (const std::exception &error) {
        std::fprintf(stderr, "KVNBench: %s\n", error.what());
        return EXIT_FAILURE;
    }
    return figures.boundsKept() ? EXIT_SUCCESS : EXIT_FAILURE;
}
