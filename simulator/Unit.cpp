#include "simulator/Unit.h"

#include <regex>
#include <sstream>
#include <stdexcept>
#include <utility>

namespace {

using Words = std::match_results<std::string_view::const_iterator>;

constexpr std::string_view Done = "\r\nOk\r\n";
constexpr int Presets = 32; ///< of every model

std::vector<std::string> split(const std::string &list) {
    std::vector<std::string> parts;
    std::istringstream stream(list);
    for (std::string part; std::getline(stream, part, ',');)
        parts.push_back(part);
    return parts;
}

/// @throws std::out_of_range if it is not in first..last
int within(int first, int last, int number) {
    if (number < first || number > last)
        throw std::out_of_range("a number");
    return number;
}

} // namespace

/// A form of command, and what the unit does and answers then.
struct Unit::Rule {
    Rule(const std::string &pattern, std::string (*does)(Unit &, const Words &))
        : form(pattern), act(does) {}
    std::regex form;
    std::string (*act)(Unit &unit, const Words &words);
};

// Whatever a rule throws refuses the command.
const std::vector<Unit::Rule> &Unit::rules() {
    // Of at most two digits: whatever is larger is refused anyhow.
    static const std::string Number = "[1-9][0-9]?";
    static const std::string One = "(" + Number + ")";
    static const std::string List = "(" + Number + "(?:," + Number + ")*)";
    static const std::string Either = "(" + Number + "F?(?:," + Number + "F?)*)";
    static const std::vector<Rule> all{
        {"CFG \\?", [](Unit &unit, const Words &) { return "\r\n" + unit.options.model + "\r\n"; }},
        {"STA O A",
         [](Unit &unit, const Words &) {
             std::string reply = "\r\nSTA O A";
             for (int output = 1; output <= unit.outputs(); ++output)
                 reply += unit.statusLine(output);
             return reply + "\r\n";
         }},
        {"STA O " + One,
         [](Unit &unit, const Words &words) {
             return "\r\n" + words.str() + unit.statusLine(std::stoi(words.str(1))) + "\r\n";
         }},
        {"Con " + One + "\\(" + List + "\\)(?:" + One + "F \\(" + List + "\\))?",
         [](Unit &unit, const Words &words) {
             unit.route(&Output::video, std::stoi(words.str(1)), words.str(2));
             if (words[3].matched)
                 unit.route(&Output::audio, std::stoi(words.str(3)), words.str(4));
             return std::string(Done);
         }},
        {"Con " + One + "F \\(" + List + "\\)",
         [](Unit &unit, const Words &words) {
             unit.route(&Output::audio, std::stoi(words.str(1)), words.str(2));
             return std::string(Done);
         }},
        {"DIS " + Either,
         [](Unit &unit, const Words &words) {
             for (const std::string &output : split(words.str(1)))
                 (output.ends_with('F') ? unit.at(std::stoi(output)).audio
                                        : unit.at(std::stoi(output)).video) = NotConnected;
             return std::string(Done);
         }},
        {"MUT ([MU]) " + One,
         [](Unit &unit, const Words &words) {
             unit.at(std::stoi(words.str(2))).muted = words.str(1) == "M";
             return std::string(Done);
         }},
        {"VOL L " + One + " (0|-?" + Number + ")",
         [](Unit &unit, const Words &words) {
             within(-45, 5, std::stoi(words.str(2)));
             unit.at(std::stoi(words.str(1))).volume = words.str(2);
             return std::string(Done);
         }},
        {"(VOL L " + One + ")\\?",
         [](Unit &unit, const Words &words) {
             return "\r\n" + words.str(1) + " " + unit.volume(std::stoi(words.str(2))) + "\r\n";
         }},
        // As delivered, preset p shows input p everywhere, from the first one again past the last
        // input; the wire cannot store another.
        {"PST X " + One,
         [](Unit &unit, const Words &words) {
             const int preset = within(1, Presets, std::stoi(words.str(1)));
             const int input = (preset - 1) % unit.inputs() + 1;
             for (Output &side : unit.sides)
                 side.video = side.audio = input;
             return std::string(Done);
         }},
        {"ECHO O(N|FF)",
         [](Unit &unit, const Words &words) {
             unit.options.echo = words.str(1) == "N";
             return std::string();
         }},
    };
    return all;
}

Unit::Unit(UnitOptions unitOptions) : options(std::move(unitOptions)) {
    int outputCount = 16;
    static const std::regex Size("([0-9]{1,9})x([0-9]{1,9})");
    std::smatch size;
    if (std::regex_search(options.model, size, Size)) {
        try {
            inputCount = within(1, MaxSide, std::stoi(size.str(1)));
            outputCount = within(1, MaxSide, std::stoi(size.str(2)));
        } catch (const std::out_of_range &) {
            throw std::invalid_argument("a unit such as \"" + options.model +
                                        "\" has 1 to 32 inputs and outputs");
        }
    }
    sides.resize(static_cast<std::size_t>(outputCount));
    for (int number = 1; number <= std::min(outputs(), inputCount); ++number)
        at(number).video = at(number).audio = number;
}

std::string Unit::answer(std::string_view command) {
    const std::vector<Output> before = sides;
    try {
        for (const Rule &rule : rules()) {
            Words words;
            if (command.size() <= MaxCommand &&
                std::regex_match(command.begin(), command.end(), words, rule.form))
                return rule.act(*this, words);
        }
    } catch (const std::out_of_range &) {
        sides = before;
    }
    return "\r\nERROR\r\n";
}

// Readers find the first record 9 characters after the line's two leading blanks and each further
// one 11 characters after the bracket that closes the one before.
std::string Unit::statusLine(int output) const {
    const Output &side = at(output);
    return "\r\n  Output " + std::to_string(output) + " (A," + (side.muted ? "M" : "U") + ",0,V," +
           side.volume + "," + std::to_string(side.audio) + ",D," + std::to_string(side.video) +
           ")";
}

void Unit::route(int Output::*signal, int input, const std::string &outputList) {
    within(1, inputCount, input);
    for (const std::string &output : split(outputList))
        at(std::stoi(output)).*signal = input;
}
