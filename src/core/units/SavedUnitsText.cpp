#include "units/SavedUnitsText.h"

#include "forms/AddressEntry.h"
#include "protocol/Text.h"

namespace {

constexpr std::string_view NameKey = "KVN NAME = ";
constexpr std::string_view TypeKey = "KVN TYPE = ";
constexpr std::string_view IPKey = "KVN IP = ";
constexpr std::string_view ByteOrderMark = "\xEF\xBB\xBF";
constexpr int AddressPosition = 10;
constexpr int QuadCharacters = 4;

/// Takes the next line off `text`.
std::string_view takeLine(std::string_view &text) {
    const std::size_t end = text.find_first_of(CrLf);
    const std::string_view line = text.substr(0, end);
    if (end == std::string_view::npos) {
        text = {};
        return line;
    }
    text.remove_prefix(end);
    text.remove_prefix(text.starts_with(CrLf) ? 2 : 1);
    return line;
}

std::string valueAfter(std::string_view key, std::string_view line) {
    return std::string(line.substr(key.size()));
}

void ParseUnitIP(std::string_view line, std::array<std::string, 5> &quads) {
    int position = AddressPosition;
    for (std::size_t quad = 0; quad < 4; ++quad)
        quads.at(quad) = ReadIPQuadToken(line, position);
}

} // namespace

std::string ReadIPQuadToken(std::string_view line, int &position) {
    std::string token;
    for (int taken = 0; taken < QuadCharacters; ++taken) {
        const char character = charAt(line, position).value_or(' ');
        if (character == '\n' || character == '\r' || character == '.')
            break;
        token += character;
        ++position;
    }
    ++position;
    return token;
}

void ReadSavedUnitsText(SavedUnits &units, std::string_view text,
                        std::array<std::string, 5> &addressQuads) {
    units.ControlBlockCount = 0;
    units.LeftOut.clear();
    if (text.starts_with(ByteOrderMark))
        text.remove_prefix(ByteOrderMark.size());
    while (!text.empty()) {
        const std::string_view fromThisLine = text;
        const std::string_view line = takeLine(text);
        if (line.starts_with(NameKey)) {
            if (units.ControlBlockCount == units.KVNControlBlocks.last()) {
                units.LeftOut = fromThisLine;
                return;
            }
            ++units.ControlBlockCount;
            units.KVNControlBlocks[units.ControlBlockCount].Name = valueAfter(NameKey, line);
        } else if (line.starts_with(IPKey)) {
            ParseUnitIP(line, addressQuads);
            units.KVNControlBlocks[units.ControlBlockCount].IPAddress = joinAddress(addressQuads);
        } else if (line.starts_with(TypeKey)) {
            units.KVNControlBlocks[units.ControlBlockCount].ConnectType = valueAfter(TypeKey, line);
        }
    }
}

std::string writeSavedUnitsText(const SavedUnits &units) {
    std::string text;
    const auto addLine = [&text](std::string_view key, const std::string &value) {
        text += key;
        text += value;
        text += CrLf;
    };
    for (int index = 1; index <= units.ControlBlockCount; ++index) {
        const KVNControlBlock &block = units.KVNControlBlocks[index];
        if (block.Name.empty())
            continue;
        addLine(NameKey, block.Name);
        addLine(TypeKey, block.ConnectType);
        if (block.ConnectType == EtherType)
            addLine(IPKey, block.IPAddress);
    }
    return text + units.LeftOut;
}
