#pragma once

#include <string>

/// The last exchange with the unit. A nested exchange overwrites all of it.
struct ExchangeState {
    std::string CommandText;     ///< last command built, terminator included
    std::string ResponseText;    ///< last recognised reply, whole and as received; else empty
    std::string SerialRawReply;  ///< received on the serial link in the current read period
    std::string NetworkRawReply; ///< received on the network link since the last send
    std::string StatusText;      ///< the reply being parsed for output status
    int ReplyStatus = 0;         ///< RecognisedReply, NothingReceived or UnknownReply
};
