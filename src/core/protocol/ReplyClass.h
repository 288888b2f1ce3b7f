#pragma once

#include <cstddef>
#include <string>
#include <string_view>

/// Values of `ReplyStatus`.
inline constexpr int RecognisedReply = 60;
inline constexpr int NothingReceived = 50;
inline constexpr int UnknownReply = 0;

/// At most this much of one reply is kept.
inline constexpr std::size_t MaximumReplyBytes = std::size_t{1} << 20;

/// Classifies a raw reply by its code, the two characters after the leading carriage return and
/// line feed (positions 3 and 4). An error report ("ER") is a recognised reply like any other.
int classifyReply(std::string_view rawReply);

/// Appends what was received to a raw reply, up to MaximumReplyBytes; the rest is dropped.
void appendReceived(std::string &rawReply, std::string_view received);
