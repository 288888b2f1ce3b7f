#include "simulator/Conversation.h"

#include <string_view>
#include <utility>

Conversation::Conversation(const Bench &bench, QByteArray linkName, Wire &wire, QObject *parent)
    : QObject(parent),
      transcript(bench.transcript),
      link(std::move(linkName)),
      in(bench.unit),
      out(bench.behaviour, wire) {
    connect(&out, &FaultyLine::sending, this, [this](const QByteArray &bytes) {
        transcript.record(link, Direction::FromUnit, bytes);
    });
}

void Conversation::hear(const QByteArray &bytes) {
    const std::string_view text(bytes.constData(), static_cast<std::size_t>(bytes.size()));
    for (const Exchange &exchange : in.receive(text)) {
        transcript.record(link, Direction::ToUnit, QByteArrayView(exchange.command));
        out.answer(QByteArray::fromStdString(exchange.answer));
    }
}

void Conversation::reset() {
    in.reset();
    out.reset();
}
