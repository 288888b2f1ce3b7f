#include "protocol/CommandTexts.h"

#include <initializer_list>

namespace {

std::string line(std::initializer_list<std::string_view> pieces) {
    std::size_t length = 1;
    for (const std::string_view piece : pieces)
        length += piece.size();
    std::string text;
    text.reserve(length);
    for (const std::string_view piece : pieces)
        text += piece;
    text += '\r';
    return text;
}

} // namespace

namespace command {

std::string statusOfOutput(int output) { return line({"STA O ", std::to_string(output)}); }

std::string connectVideo(int input, std::string_view outputs) {
    return line({"Con ", std::to_string(input), "(", outputs, ")"});
}

std::string connectAudio(int input, std::string_view outputs) {
    return line({"Con ", std::to_string(input), "F (", outputs, ")"});
}

std::string connectBoth(int input, std::string_view outputs) {
    const std::string in = std::to_string(input);
    return line({"Con ", in, "(", outputs, ")", in, "F (", outputs, ")"});
}

std::string disconnectVideo(std::string_view outputs) { return line({"DIS ", outputs}); }

std::string disconnectAudio(std::string_view audioOutputs) { return line({"DIS ", audioOutputs}); }

std::string disconnectBoth(std::string_view outputs, std::string_view audioOutputs) {
    return line({"DIS ", outputs, ",", audioOutputs});
}

std::string mute(int output) { return line({"MUT M ", std::to_string(output)}); }

std::string unmute(int output) { return line({"MUT U ", std::to_string(output)}); }

std::string setVolume(std::string_view outputNumber, std::string_view volume) {
    return line({"VOL L ", outputNumber, " ", volume});
}

std::string queryVolume(std::string_view outputNumber) {
    return line({"VOL L ", outputNumber, "?"});
}

std::string executePreset(int preset) { return line({"PST X ", std::to_string(preset)}); }

} // namespace command
