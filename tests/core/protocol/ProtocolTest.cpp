#include "protocol/ModelCatalogue.h"
#include "protocol/ReplyClass.h"
#include "protocol/StatusParser.h"
#include "protocol/Text.h"
#include "support/rows.h"

namespace {

using Map = Table<int, 32>;

/// The slot of number 1 in maps of numbers in a row, "*" and how many there are if it is not
/// `count`; 0 for empty maps.
std::string runOf(const Map &slotOf, const Map &numberOf, int count) {
    const auto used = 33 - std::ranges::count(slotOf, 0);
    bool run = used == 33 - std::ranges::count(numberOf, 0);
    for (int number = 1; run && number <= used; ++number)
        run = slotOf[number] == slotOf[1] + number - 1 && numberOf[slotOf[number]] == number;
    const std::string first = run ? std::to_string(slotOf[1]) : "scattered";
    return used == count || used == 0 ? first : first + "*" + std::to_string(used);
}

/// What is known after some models, "," between them. Their replies end in a new line, but for "$".
std::string modelsOf(const std::string &models) {
    ModelFacts facts;
    facts.NumInputs = facts.NumOutputs = 9;
    std::string text;
    std::istringstream stream(models);
    for (std::string model; std::getline(stream, model, ',');) {
        const bool bare = model.ends_with('$');
        const std::string reply =
            "\r\nKVN-" + (bare ? model.substr(0, model.size() - 1) : model + "\r\n");
        text += failureOf<RangeError>([&] { SelectModelSetup(facts, reply, 3); });
    }
    const int count = facts.NumInputs; // of inputs and outputs both
    return text + (text.empty() ? "" : " ") + std::to_string(count) + "/" +
           std::to_string(facts.NumOutputs) + " " + std::string(facts.SignalType) +
           (facts.HasAudio ? "+ " : "- ") +
           runOf(facts.InputButtonIndex, facts.ButtonInput, count) + "/" +
           runOf(facts.OutputButtonIndex, facts.ButtonOutput, count) + " " +
           std::string(facts.ModelDescription);
}

/// Where a report of two outputs begins, and what of it is known then.
std::string recordsOf(const std::string &report) {
    RoutingState routing;
    routing.Outputs.fill({"7", 'a', 'x', "old", 'c', "vol", "aud", 'd', "vid"});
    const int start = FindStatusStart(report);
    ParseOutputStatus(routing, report, start, 2);
    std::ostringstream text;
    text << start << ' ';
    for (const int output : {1, 2}) {
        const OutputStatusRecord &got = routing.Outputs[output];
        text << got.OutputNumberText << '/' << got.FieldA << '/' << got.MuteFlag << '/'
             << got.FieldB << '/' << got.FieldC << '/' << got.VolumeText << '/'
             << got.AudioInputText << '/' << got.FieldD << '/' << got.VideoInputText << ' ';
    }
    return text.str() + (routing.Outputs[3].OutputNumberText == "7" ? "" : "and more");
}

} // namespace

class ProtocolTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void replyClasses() {
        std::string classes;
        for (const char *reply : {"", "K", "Ok", "\r\nO", "CFG ?\r\r\nKVN-8x4-S", "\r\nok",
                                  "\r\nOK", "\r\nKVN-8x4-S\r\n", "\r\nZarn", "\r\nZARN", "\r\nOk",
                                  "\r\nSTA O A", "\r\nERROR form", "\r\nVOL L 5 -20\r\n", "??Ok"})
            classes += std::to_string(classifyReply(reply)) + " ";
        QCOMPARE(classes, std::string("50 0 0 0 0 0 0 60 60 60 60 60 60 60 60 "));
        std::string kept = "x"; // of what a unit sends without end
        appendReceived(kept, std::string(3'000'000, 'x'));
        QCOMPARE(kept.size(), 1048576U);
    }

    // Replies one after the other, from a count of 9 on: what a model does not set stays, and so
    // does all if it does not fit. The counts, the signal, + with audio, - without, the slots where
    // the inputs and the outputs begin, the description.
    void models() {
        // clang-format off
        checkRows({
            {"8x4-RGBA", "8/4 RGB+ 5/7 RGB 8 x 4 with Audio"}, {"12x8-RGB", "12/8 RGB- 3/5 RGB 12 x 8 No Audio"},
            {"8x8-HDA", "8/8 HD+ 0/0 HD 8 x 8 with Audio"}, {"12x8-HD", "12/8 HD- 0/0 HD 12 x 8 No Audio"},
            // The size stays, a name that is longer is never seen but with 32x32, nor its audio.
            {"8x4-C", "9/9 CV- 5/7 COMPOSITE  8 x 4 No Audio"}, {"12x8-SA", "9/9 SV- 3/5 SVIDEO 12 x 8 No Audio"},
            {"32x32-S", "9/9 SV- 1/1 SVIDEO 32x32 No Audio"}, {"32x32-SA", "9/9 SV+ 1/1 SVIDEO 32x32 with Audio"},
            {"32x16-SA", "32/16 SV- 1/1 SVIDEO 32 x16 no Audio"},
            {"24x16-CA", "9/9 CV- 1/1 COMPOSITE 24x16 with Audio"},
            // These are seen at the very end of a reply only.
            {"16x8-RGB", "9/9 - 0/0 "}, {"16x8-RGB$", "16/8 RGB- 1/5 RGB 16 x 8 No Audio"},
            {"16x8-C$", "9/9 CV+ 1/5 COMPOSITE 16 x 8 with Audio"}, {"16x8-S$", "9/9 SV- 1/5 SVIDEO 16 x 8 No Audio"},
            {"16x8-SA$", "9/9 - 0/0 "}, {"9x9-RGB", "9/9 - 0/0 "}, {"$", "9/9 - 0/0 "},
            {"32x32-RGBA,8x4-RGB", "8/4 RGB- scattered*32/scattered*32 RGB 8 x 4 No Audio"},
            {"32x16-RGB,8x4-C", "ButtonInput has no index 33 (0 to 32) 32/16 RGB- 1/1 RGB 32 x16 no Audio"},
            {"32x16-RGB,16x8-S$", "ButtonOutput has no index 33 (0 to 32) 32/16 RGB- 1/1 RGB 32 x16 no Audio"}},
                  modelsOf);
        // clang-format on
        for (const ModelRow &row : modelCatalogue()) {
            const int inputs = std::stoi(std::string(row.Model.substr(4)));
            const int outputs = std::stoi(std::string(row.Model.substr(row.Model.find('x') + 1)));
            const int input = inputs == 8 ? 5 : inputs == 12 ? 3 : 1;
            const int output = outputs == 4 ? 7 : outputs == 8 ? 5 : 1;
            QVERIFY(std::pair(row.Inputs, row.Outputs) == std::pair(inputs, outputs) ||
                    row.Inputs + row.Outputs == Unchanged);
            QVERIFY(std::pair(row.InputFirst, row.OutputFirst) == std::pair(input, output) ||
                    row.InputFirst + row.OutputFirst == Unchanged);
            QVERIFY(row.Chars == 0 || row.Chars - int(row.Model.size()) ==
                                          std::clamp(row.Chars - int(row.Model.size()), 0, 1));
        }
        QCOMPARE(modelCatalogue().size(), 72U);
    }

    void statusRecords() {
        const std::string first = "  Output 1 (A,U,0,V,-20,3,D,5)";
        const std::string next = "\r\n  Output 2 (P,M,1,Q,5,32,R,255)\r\n";
        const std::string good = "1/A/U/0/V/-20/3/D/5 2/P/M/1/Q/5/32/R/255 ";
        const std::string none = "7/ / /old/ /vol/aud/ /vid ";
        // clang-format off
        checkRows({
            {first + next, "10 " + good}, {"\r\nSTA O A\r\n" + first + next, "21 " + good},
            {"  Output 32 (A,M,ab,V,0,12,D,255)" + next, "10 32/A/M/ab/V/0/12/D/255 2/P/M/1/Q/5/32/R/255 "},
            {"  Outpxx 1 -A.U;0,V:-20,3,D 5)zzzzzzzzzzz2 (P,M,1,Q,5,32,R,255)", "10 " + good},
            // From an overlong text on, everything is read from where it does not belong.
            {"  Output 1 (A,U,0,V,-100,3,D,5)" + next, "10 1/A/U/0/V/vol/aud/-/vid 7/0/,/,D/5/vol/aud/\r/vid "},
            {"  Output 100 (A,U,0,V,-20,3,D,5)", "10 7/1/0/(A/U/0/V/-/vid 7/0/3/D/5/vol/aud/ /vid "},
            {"  Output 1 (A,U,0", "10 1/A/U/old/0/vol/aud/ /vid " + none}, {first, "10 1/A/U/0/V/-20/3/D/5 " + none},
            {"\r\nSTA O A", "10 " + none + none}, {"STA O ", "15 " + none + none}}, recordsOf);
        // clang-format on
    }

    void textParts() {
        std::string parts;
        for (const auto &[at, length] : {std::pair(1, 2), {2, 0}, {3, 5}, {4, 1}, {90, 2}})
            parts += std::string(mid("abc", at, length)) + "/" + std::string(mid("abc", at)) + "/" +
                     charAt("abc", at).value_or('-') + " ";
        QCOMPARE(parts, std::string("ab/abc/a /bc/b c/c/c //- //- "));
    }

    void numbers() {
        std::string read;
        for (const char *text : {"", "255", "-20\r\n", "  -20  ", " 12ab", "+3", "1.2.3", "-45.5",
                                 ".5", "-", "--5", "- 5", "ab12"})
            read += decimalText(leadingNumber(text)) + (wholeNumberText(text) ? "! " : " ");
        QCOMPARE(read, std::string("0 255! -20 -20! 12 3! 1.2 -45.5! 0.5! 0 0 0 0 "));

        read.clear();
        for (const double value : {0.5, 1.5, 2.5, 2.51, -2.5, -3.5, 4e4, -1e9})
            read += std::to_string(roundHalfToEven(value)) + " ";
        for (const double value : {0.0, -0.0, 5.0, -20.0, 100.0, 2.5, -45.5, 0.1, 1e18})
            read += decimalText(value) + " ";
        QCOMPARE(read, std::string("0 2 2 3 -2 -4 32767 -32768 "
                                   "0 0 5 -20 100 2.5 -45.5 0.1 1000000000000000000 "));
    }
};

QTEST_GUILESS_MAIN(ProtocolTest)
#include "ProtocolTest.moc"
