#include "simulator/Unit.h"

#include "protocol/Text.h"
#include "simulator/CommandScanner.h"

#include <algorithm>
#include <charconv>
#include <stdexcept>
#include <utility>

namespace {

constexpr std::string_view Done = "\r\nOk\r\n";

struct Sides {
    int inputs = 16;
    int outputs = 16;
};

// The first part such as 24x16 of names such as KVN-24x16-SA.
Sides sidesOfName(std::string_view name) {
    const char *const end = name.data() + name.size();
    for (const char *at = name.data(); at != end; ++at) {
        Sides sides;
        const auto in = std::from_chars(at, end, sides.inputs);
        if (*at == '-' || in.ec != std::errc{} || in.ptr == end || *in.ptr != 'x')
            continue;
        if (std::from_chars(in.ptr + 1, end, sides.outputs).ec != std::errc{})
            continue;
        const auto [least, most] = std::minmax(sides.inputs, sides.outputs);
        if (least < 1 || most > Unit::MaxSide)
            throw std::invalid_argument("a unit such as \"" + std::string(name) +
                                        "\" has 1 to 32 inputs and outputs");
        return sides;
    }
    return {};
}

} // namespace

const Unit::Command Unit::Commands[] = {
    {"CFG ?", &Unit::configuration}, {"STA O ", &Unit::status},     {"Con ", &Unit::connect},
    {"DIS ", &Unit::disconnect},     {"MUT ", &Unit::mute},         {"VOL L ", &Unit::volumeLevel},
    {"PST X ", &Unit::preset},       {"ECHO O", &Unit::switchEcho},
};

Unit::Unit(UnitOptions unitOptions) : options(std::move(unitOptions)) {
    const Sides sides = sidesOfName(options.model);
    inputCount = sides.inputs;
    outputSides.resize(static_cast<std::size_t>(sides.outputs));
    for (int number = 1; number <= outputs() && number <= inputCount; ++number) {
        at(number).video = number;
        at(number).audio = number;
    }
}

std::string Unit::answer(std::string_view command) {
    try {
        if (command.size() > MaxCommand)
            throw Refusal("length");
        CommandScanner scanner(command);
        for (const auto &[start, act] : Commands) {
            if (scanner.take(start))
                return (this->*act)(scanner);
        }
        throw Refusal("command");
    } catch (const Refusal &refusal) {
        return std::string("\r\nERROR ").append(refusal.what()).append(CrLf);
    }
}

const Unit::Output &Unit::at(int output) const {
    return outputSides.at(static_cast<std::size_t>(output - 1));
}

Unit::Output &Unit::at(int output) { return outputSides.at(static_cast<std::size_t>(output - 1)); }

// Readers find the first record 9 characters after the line's two leading blanks and each further
// one 11 characters after the bracket that closes the one before.
std::string Unit::statusLine(int output) const {
    const Output &side = at(output);
    return "\r\n  Output " + std::to_string(output) + " (A," + (side.muted ? "M" : "U") + ",0,V," +
           side.volume + "," + std::to_string(side.audio) + ",D," + std::to_string(side.video) +
           ")";
}

std::vector<int> Unit::outputList(CommandScanner &command) const {
    std::vector<int> numbers;
    do {
        numbers.push_back(command.number(outputs(), "output"));
    } while (command.take(","));
    command.expect(")");
    return numbers;
}

std::string Unit::configuration(CommandScanner &command) {
    command.end();
    return std::string(CrLf) + options.model + options.trailer;
}

std::string Unit::status(CommandScanner &command) {
    const bool all = command.take("A");
    const int only = all ? 0 : command.number(outputs(), "output");
    command.end();
    std::string reply = "\r\nSTA O ";
    if (all) {
        reply += "A";
        for (int output = 1; output <= outputs(); ++output)
            reply += statusLine(output);
    } else {
        reply += std::to_string(only) + statusLine(only);
    }
    return reply.append(CrLf);
}

std::string Unit::connect(CommandScanner &command) {
    const int videoInput = command.number(inputCount, "input");
    int audioInput = videoInput;
    std::vector<int> videoOutputs;
    std::vector<int> audioOutputs;
    bool audioFollows = true;
    if (command.take("(")) {
        videoOutputs = outputList(command);
        audioFollows = !command.atEnd();
        if (audioFollows)
            audioInput = command.number(inputCount, "input");
    }
    if (audioFollows) {
        command.expect("F (");
        audioOutputs = outputList(command);
        command.end();
    }
    for (const int output : videoOutputs)
        at(output).video = videoInput;
    for (const int output : audioOutputs)
        at(output).audio = audioInput;
    return std::string(Done);
}

std::string Unit::disconnect(CommandScanner &command) {
    std::vector<int> videoOutputs;
    std::vector<int> audioOutputs;
    do {
        const int output = command.number(outputs(), "output");
        (command.take("F") ? audioOutputs : videoOutputs).push_back(output);
    } while (command.take(","));
    command.end();
    for (const int output : videoOutputs)
        at(output).video = NotConnected;
    for (const int output : audioOutputs)
        at(output).audio = NotConnected;
    return std::string(Done);
}

std::string Unit::mute(CommandScanner &command) {
    const bool mutes = command.take("M ");
    if (!mutes)
        command.expect("U ");
    const int output = command.number(outputs(), "output");
    command.end();
    at(output).muted = mutes;
    return std::string(Done);
}

std::string Unit::volumeLevel(CommandScanner &command) {
    const int output = command.number(outputs(), "output");
    if (command.take("?")) {
        command.end();
        return "\r\nVOL L " + std::to_string(output) + " " + at(output).volume + "\r\n";
    }
    command.expect(" ");
    const std::string_view text = command.rest();
    int level = 0;
    std::from_chars(text.data(), text.data() + text.size(), level);
    if (text != std::to_string(level))
        throw Refusal("number");
    if (level < MinVolume || level > MaxVolume)
        throw Refusal("volume");
    at(output).volume = text;
    return std::string(Done);
}

// Preset p of a unit as delivered shows input p everywhere; the wire has no way to store another.
std::string Unit::preset(CommandScanner &command) {
    const int number = command.number(Presets, "preset");
    command.end();
    if (number > inputCount)
        throw Refusal("input");
    for (Output &side : outputSides) {
        side.video = number;
        side.audio = number;
    }
    return std::string(Done);
}

std::string Unit::switchEcho(CommandScanner &command) {
    const bool on = command.take("N");
    if (!on)
        command.expect("FF");
    command.end();
    options.echo = on;
    return {};
}
