#pragma once

#include <string>
#include <string_view>

// The texts of the unit's command language, terminator included. Inputs, outputs and presets count
// from 1. An output list is "1,2,7"; an audio output list carries a suffix on each item,
// "1F,2F,7F".

namespace command {

inline constexpr std::string_view Configuration = "CFG ?\r\n"; ///< the only one ending in CR LF
inline constexpr std::string_view EchoOff = "ECHO OFF\r";
inline constexpr std::string_view StatusOfAllOutputs = "STA O A\r";

std::string statusOfOutput(int output);

/// Routes the video, the audio or both of `input` to `outputs`, a plain list in every case.
std::string connectVideo(int input, std::string_view outputs);
std::string connectAudio(int input, std::string_view outputs);
std::string connectBoth(int input, std::string_view outputs);

/// Disconnects the video of `outputs`, the audio of `audioOutputs`, or both.
std::string disconnectVideo(std::string_view outputs);
std::string disconnectAudio(std::string_view audioOutputs);
std::string disconnectBoth(std::string_view outputs, std::string_view audioOutputs);

std::string mute(int output);
std::string unmute(int output);

/// Sets and reads back a level; output number and level are texts as the unit wrote them.
std::string setVolume(std::string_view outputNumber, std::string_view volume);
std::string queryVolume(std::string_view outputNumber);

std::string executePreset(int preset);

} // namespace command
