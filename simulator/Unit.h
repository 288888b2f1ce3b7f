#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

class CommandScanner;

struct UnitOptions {
    std::string model = "KVN-16x16-RGBA";
    std::string trailer = "\r\n"; ///< what follows the model in the configuration reply
    bool echo = false;
};

/// A matrix switcher: its routing, mutes and volumes, and what it answers to commands. The numbers
/// of inputs and outputs come from the model's name, 16 each where it has none; every unit takes
/// the audio commands, with or without connectors for them. Inputs and outputs count from 1.
/// Nothing of it depends on time; equal commands to equal units give equal answers.
class Unit {
public:
    static constexpr std::size_t MaxCommand = 4096; ///< bytes of a command without its terminator
    static constexpr int NotConnected = 255;
    static constexpr int Presets = 32;
    static constexpr int MinVolume = -45;
    static constexpr int MaxVolume = 5;
    static constexpr int MaxSide = 32; ///< most inputs, and most outputs

    /// A fresh unit: output k shows input k where there is one, unmuted, at volume -20.
    /// @throws std::invalid_argument if the first INxOUT part of the model's name is not within
    /// 1..MaxSide
    explicit Unit(UnitOptions unitOptions = {});

    /// Carries out one complete command, given without its terminator, and returns the reply,
    /// empty where the unit says nothing. A command that is not taken, in whole or in part, changes
    /// nothing and is answered with "\r\nERROR ", the word for what is wrong, and "\r\n".
    std::string answer(std::string_view command);

    [[nodiscard]] bool echo() const { return options.echo; }
    [[nodiscard]] int inputs() const { return inputCount; }
    [[nodiscard]] int outputs() const { return static_cast<int>(outputSides.size()); }

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
    struct Command {
        std::string_view start;
        std::string (Unit::*act)(CommandScanner &);
    };
    static const Command Commands[];

    [[nodiscard]] const Output &at(int output) const;
    Output &at(int output);
    [[nodiscard]] std::string statusLine(int output) const;
    [[nodiscard]] std::vector<int> outputList(CommandScanner &command) const;

    std::string configuration(CommandScanner &command);
    std::string status(CommandScanner &command);
    std::string connect(CommandScanner &command);
    std::string disconnect(CommandScanner &command);
    std::string mute(CommandScanner &command);
    std::string volumeLevel(CommandScanner &command);
    std::string preset(CommandScanner &command);
    std::string switchEcho(CommandScanner &command);

    UnitOptions options;
    int inputCount = 0;
    std::vector<Output> outputSides;
};
