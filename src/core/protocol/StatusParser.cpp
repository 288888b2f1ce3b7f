#include "protocol/StatusParser.h"

#include "protocol/Text.h"

#include <algorithm>

namespace {

constexpr int BlanksToFirstRecord = 9;
constexpr int CharactersBetweenRecords = 11;

/// Walks over a report field by field.
class StatusCursor {
public:
    StatusCursor(std::string_view report, int start) : text(report), at(start) {}

    /// One character and the separator after it.
    void readCharacter(char &field) {
        field = charAt(text, at).value_or(' ');
        at += 2;
    }

    /// A text of 1 to `longest` characters ended by `terminator`, then `skipped` characters after
    /// the terminator. Without the terminator in its place neither field nor position change.
    void readText(std::string &field, char terminator, int longest, int skipped) {
        for (int length = 1; length <= longest; ++length) {
            if (charAt(text, at + length) == terminator) {
                field = mid(text, at, length);
                at += length + 1 + skipped;
                return;
            }
        }
    }

private:
    std::string_view text;
    int at;
};

} // namespace

int FindStatusStart(std::string_view statusText) {
    const int length = static_cast<int>(statusText.size());
    for (int at = 1; at <= length; ++at) {
        const std::string_view pair = mid(statusText, at, 2);
        if (std::all_of(pair.begin(), pair.end(), [](char c) { return c == ' '; }))
            return at + BlanksToFirstRecord;
    }
    return length + 1;
}

void ParseOutputStatus(RoutingState &routing, std::string_view statusText, int position,
                       int numOutputs) {
    StatusCursor cursor(statusText, position);
    for (int output = 1; output <= numOutputs; ++output) {
        OutputStatusRecord &record = routing.Outputs[output];
        cursor.readText(record.OutputNumberText, ' ', 2, 1);
        cursor.readCharacter(record.FieldA);
        cursor.readCharacter(record.MuteFlag);
        cursor.readText(record.FieldB, ',', 3, 0);
        cursor.readCharacter(record.FieldC);
        cursor.readText(record.VolumeText, ',', 3, 0);
        cursor.readText(record.AudioInputText, ',', 3, 0);
        cursor.readCharacter(record.FieldD);
        cursor.readText(record.VideoInputText, ')', 3, CharactersBetweenRecords);
    }
}
