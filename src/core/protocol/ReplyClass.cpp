#include "protocol/ReplyClass.h"

#include "protocol/Text.h"

#include <algorithm>
#include <array>

namespace {
constexpr std::array<std::string_view, 7> KnownCodes{"KV", "Za", "ZA", "Ok", "ST", "ER", "VO"};
}

int classifyReply(std::string_view rawReply) {
    if (rawReply.empty())
        return NothingReceived;
    const std::string_view code = mid(rawReply, 3, 2);
    const bool known = std::find(KnownCodes.begin(), KnownCodes.end(), code) != KnownCodes.end();
    return known ? RecognisedReply : UnknownReply;
}

void appendReceived(std::string &rawReply, std::string_view received) {
    rawReply += received.substr(0, MaximumReplyBytes - rawReply.size());
}
