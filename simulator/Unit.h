#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

struct UnitOptions {
    std::string model = "KVN-16x16-RGBA";
    bool echo = false;
};

/// A matrix switcher: its routing, mutes and volumes, and what it answers to commands. The numbers
/// of inputs and outputs come from the model's name, 16 each where it has none; every unit takes
/// the audio commands, with or without connectors for them. Inputs and outputs count from 1.
/// Nothing of it depends on time; equal commands to equal units give equal answers.
class Unit {
public:
    static constexpr std::size_t MaxCommand = 512; ///< bytes of a command without its terminator
    static constexpr int NotConnected = 255;
    static constexpr int MaxSide = 32; ///< most inputs, and most outputs

    /// A fresh unit: output k shows input k where there is one, unmuted, at volume -20.
    /// @throws std::invalid_argument if the first INxOUT part of the model's name is not within
    /// 1..MaxSide
    explicit Unit(UnitOptions unitOptions = {});

    /// Carries out one complete command, given without its terminator, and returns the reply,
    /// empty where the unit says nothing. A command that is not taken, in whole or in part, changes
    /// nothing and is answered with "\r\nERROR\r\n".
    std::string answer(std::string_view command);

    [[nodiscard]] bool echo() const { return options.echo; }
    [[nodiscard]] int inputs() const { return inputCount; }
    [[nodiscard]] int outputs() const { return static_cast<int>(sides.size()); }

    // `output` is in 1..outputs(); std::out_of_range otherwise.
    [[nodiscard]] int videoInput(int output) const { return at(output).video; }
    [[nodiscard]] int audioInput(int output) const { return at(output).audio; }
    [[nodiscard]] bool muted(int output) const { return at(output).muted; }
    [[nodiscard]] const std::string &volume(int output) const { return at(output).volume; }

private:
    struct Output {
        int video = NotConnected;
        int audio = NotConnected;
        bool muted = false;
        std::string volume = "-20"; // a whole number: readers take 3 characters at most
    };
    struct Rule;
    static const std::vector<Rule> &rules();

    [[nodiscard]] const Output &at(int output) const {
        return sides.at(static_cast<std::size_t>(output - 1));
    }
    Output &at(int output) { return sides.at(static_cast<std::size_t>(output - 1)); }
    [[nodiscard]] std::string statusLine(int output) const;
    void route(int Output::*signal, int input, const std::string &outputList);

    UnitOptions options;
    int inputCount = 16;
    std::vector<Output> sides;
};
