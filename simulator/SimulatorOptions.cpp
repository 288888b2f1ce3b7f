#include "simulator/SimulatorOptions.h"

#include "protocol/ModelCatalogue.h"

#include <arpa/inet.h>

#include <algorithm>
#include <array>
#include <charconv>

namespace {

constexpr int MaxLatencyMs = 60'000;
constexpr int MaxSplitBytes = 4096;
constexpr int MaxPort = 65'535;
constexpr std::string_view Loopback = "127.0.0.1";

std::string quoted(std::string_view text) { return '"' + std::string(text) + '"'; }

int number(std::string_view option, std::string_view text, int first, int last) {
    int value = 0;
    const char *const end = text.data() + text.size();
    const auto [stop, error] = std::from_chars(text.data(), end, value);
    if (error != std::errc{} || stop != end || value < first || value > last)
        throw OptionError(std::string(option) + ": " + quoted(text) + " is not a number from " +
                          std::to_string(first) + " to " + std::to_string(last));
    return value;
}

bool isAddress(const std::string &text) {
    std::array<unsigned char, sizeof(in6_addr)> binary{};
    return inet_pton(AF_INET, text.c_str(), binary.data()) == 1 ||
           inet_pton(AF_INET6, text.c_str(), binary.data()) == 1;
}

void setModel(SimulatorOptions &options, std::string_view value) {
    const auto rows = modelCatalogue();
    if (std::none_of(rows.begin(), rows.end(),
                     [&](const ModelRow &row) { return row.Model == value; }))
        throw OptionError("--model: there is no model " + quoted(value) +
                          " (--list-models names all)");
    options.unit.model = value;
}

void setTcp(SimulatorOptions &options, std::string_view value) {
    const auto colon = value.rfind(':');
    std::string address(Loopback);
    if (colon != std::string_view::npos) {
        address = value.substr(0, colon);
        if (address.starts_with('[') && address.ends_with(']'))
            address = address.substr(1, address.size() - 2);
        if (!isAddress(address))
            throw OptionError("--tcp: " + quoted(address) + " is not a numeric address");
    }
    const std::string_view port = colon == std::string_view::npos ? value : value.substr(colon + 1);
    options.tcp = {address, static_cast<std::uint16_t>(number("--tcp", port, 0, MaxPort))};
}

void setSerial(SimulatorOptions &options, std::string_view value) {
    if (value.empty())
        throw OptionError("--serial: the link needs a path");
    options.serial = value;
}

void setTrailer(SimulatorOptions &options, std::string_view value) {
    std::string text;
    for (std::size_t at = 0; at < value.size(); ++at) {
        if (value[at] != '\\') {
            text += value[at];
            continue;
        }
        ++at;
        const char escaped = at < value.size() ? value[at] : '\0';
        if (escaped == 'r')
            text += '\r';
        else if (escaped == 'n')
            text += '\n';
        else if (escaped == '\\')
            text += '\\';
        else
            throw OptionError("--trailer: only \\r, \\n and \\\\ can follow a backslash in " +
                              quoted(value));
    }
    options.unit.trailer = text;
}

struct FaultName {
    std::string_view name;
    Fault fault;
};
constexpr std::array<FaultName, 4> FaultNames{{{"silence", Fault::Silence},
                                               {"garbage", Fault::Garbage},
                                               {"close", Fault::Close},
                                               {"flood", Fault::Flood}}};

void setFault(SimulatorOptions &options, std::string_view value) {
    const auto found =
        std::find_if(FaultNames.begin(), FaultNames.end(),
                     [&](const FaultName &candidate) { return candidate.name == value; });
    if (found == FaultNames.end())
        throw OptionError("--fault: " + quoted(value) +
                          " is none of silence, garbage, close and flood");
    options.line.fault = found->fault;
}

struct Option {
    std::string_view name;
    std::string_view valueName; ///< empty: the option takes no value
    std::string_view meaning;
    void (*set)(SimulatorOptions &, std::string_view);
};

constexpr std::array<Option, 11> Options{{
    {"--model", "NAME", "the model to be (KVN-16x16-RGBA unless given)", setModel},
    {"--list-models", "", "write the names of all models and end",
     [](SimulatorOptions &options, std::string_view) { options.listModels = true; }},
    {"--tcp", "[ADDRESS:]PORT", "listen there, on the loopback unless an address is given", setTcp},
    {"--serial", "LINK", "make a pseudo terminal and a symbolic link to it at LINK", setSerial},
    {"--echo", "", "start with the echo of commands on",
     [](SimulatorOptions &options, std::string_view) { options.unit.echo = true; }},
    {"--latency", "MS", "answer that many milliseconds late",
     [](SimulatorOptions &options, std::string_view value) {
         options.line.latencyMs = number("--latency", value, 0, MaxLatencyMs);
     }},
    {"--split", "BYTES", "send answers in pieces of that size",
     [](SimulatorOptions &options, std::string_view value) {
         options.line.splitBytes = number("--split", value, 1, MaxSplitBytes);
     }},
    {"--trailer", "TEXT", "what follows the model in the configuration reply (\\r\\n)", setTrailer},
    {"--fault", "KIND", "silence, garbage, close or flood in place of proper answers", setFault},
    {"--help", "", "write this and end",
     [](SimulatorOptions &options, std::string_view) { options.help = true; }},
    {"-h", "", "the same",
     [](SimulatorOptions &options, std::string_view) { options.help = true; }},
}};

} // namespace

SimulatorOptions SimulatorOptions::of(std::span<const std::string_view> arguments) {
    SimulatorOptions options;
    for (std::size_t at = 0; at < arguments.size(); ++at) {
        const std::string_view name = arguments[at];
        const auto found =
            std::find_if(Options.begin(), Options.end(),
                         [&](const Option &candidate) { return candidate.name == name; });
        if (found == Options.end())
            throw OptionError("there is no option " + quoted(name) + " (--help lists all)");
        std::string_view value;
        if (!found->valueName.empty()) {
            if (++at == arguments.size())
                throw OptionError(std::string(name) + " needs a value");
            value = arguments[at];
        }
        found->set(options, value);
    }
    if (!options.help && !options.listModels && !options.tcp && !options.serial)
        throw OptionError("nothing to listen on: give --tcp, --serial or both");
    return options;
}

std::string SimulatorOptions::usage() {
    constexpr std::size_t MeaningColumn = 24;
    std::string text = "Usage: KVNSimulator --tcp [ADDRESS:]PORT | --serial LINK [option]...\n"
                       "Plays a matrix switcher until it is interrupted.\n\n";
    for (const Option &option : Options) {
        std::string line = "  " + std::string(option.name);
        if (!option.valueName.empty())
            line.append(" ").append(option.valueName);
        line.resize(std::max(line.size() + 1, MeaningColumn), ' ');
        text += line.append(option.meaning) + '\n';
    }
    return text;
}
