#pragma once

#include <optional>
#include <string>
#include <vector>

/// The table of what was measured. A line is printed as soon as it is known.
class Figures {
public:
    /// @param bound the most that the value may be; none: it is only told
    void add(const std::string &what, double value, const char *unit,
             std::optional<double> bound = std::nullopt);

    [[nodiscard]] bool boundsKept() const { return missed == 0; }

private:
    int missed = 0;
};

double median(std::vector<double> values);

/// Seconds of processor that this process has used.
double processorTime();

void measureProtocol(Figures &figures);
void measureStart(Figures &figures);
void measureWindows(Figures &figures);
void measureExchanges(Figures &figures);
/// Takes in real time, that many on each link: 1.1 and 2.6 seconds each.
void measureTakes(Figures &figures, int count);
