#include "ProtocolTest.h"

#include "protocol/CommandTexts.h"
#include "protocol/ModelCatalogue.h"
#include "protocol/ReplyClass.h"
#include "protocol/StatusParser.h"
#include "protocol/Text.h"
#include "simulator/Unit.h"
#include "support/DataTable.h"
#include "support/failureOf.h"
#include "support/toString.h"

#include <chrono>

namespace {

const OutputStatusRecord Old{"7", 'a', 'x', "old", 'c', "vol", "aud", 'd', "vid"};

std::string fieldsOf(const OutputStatusRecord &record) {
    const auto character = [](char c) { return std::string{'/', c, '/'}; };
    return record.OutputNumberText + character(record.FieldA) + record.MuteFlag + "/" +
           record.FieldB + character(record.FieldC) + record.VolumeText + "/" +
           record.AudioInputText + character(record.FieldD) + record.VideoInputText;
}

/// "MODEL...: INPUTS/OUTPUTS SIGNAL FIRST/FIRST DESCRIPTION" for models that came after a count of
/// 9/9: + with audio, - without; the slots where the inputs and the outputs begin. Names are
/// without "KVN-".
constexpr auto Models =
    R"(8x4-RGBA: 8/4 RGB+ 5/7 RGB 8 x 4 with Audio; 8x8-RGBA: 8/8 RGB+ 5/5 RGB 8 x 8 with Audio;
12x8-RGBA: 12/8 RGB+ 3/5 RGB 12 x 8 with Audio; 16x8-RGBA: 16/8 RGB+ 1/5 RGB 16 x 8 with Audio;
16x16-RGBA: 16/16 RGB+ 1/1 RGB 16x16 with Audio; 24x24-RGBA: 24/24 RGB+ 1/1 RGB 24x24 with Audio;
32x32-RGBA: 32/32 RGB+ 1/1 RGB 32x32 with Audio; 8x4-RGB: 8/4 RGB- 5/7 RGB 8 x 4 No Audio;
8x8-RGB: 8/8 RGB- 5/5 RGB 8 x 8 No Audio; 12x8-RGB: 12/8 RGB- 3/5 RGB 12 x 8 No Audio;
16x8-RGB 16x8-CA 16x8-C 16x8-SA 16x8-S: 9/9 - 0/0 ; 16x16-RGB: 16/16 RGB- 1/1 RGB 16x16 No Audio;
24x24-RGB: 24/24 RGB- 1/1 RGB 24x24 No Audio; 32x32-RGB: 32/32 RGB- 1/1 RGB 32x32 No Audio;
8x4-HDA: 8/4 HD+ 0/0 HD 8 x 4 with Audio; 8x8-HDA: 8/8 HD+ 0/0 HD 8 x 8 with Audio;
12x8-HDA: 12/8 HD+ 0/0 HD 12 x 8 with Audio; 16x8-HDA: 16/8 HD+ 1/5 HD 16 x 8 with Audio;
16x16-HDA: 16/16 HD+ 1/1 HD 16x16 with Audio; 24x24-HDA: 24/24 HD+ 1/1 HD 24x24 with Audio;
32x32-HDA: 32/32 HD+ 1/1 HD 32x32 with Audio; 8x4-HD: 8/4 HD- 0/0 HD 8 x 4 No Audio;
8x8-HD: 8/8 HD- 0/0 HD 8 x 8 No Audio; 12x8-HD: 12/8 HD- 0/0 HD 12 x 8 No Audio;
16x8-HD: 16/8 HD- 1/5 HD 16 x 8 No Audio; 16x16-HD: 16/16 HD- 1/1 HD 16x16 No Audio;
24x24-HD: 24/24 HD- 1/1 HD 24x24 No Audio; 32x32-HD: 32/32 HD- 1/1 HD 32x32 No Audio;
8x4-CA 8x4-C: 9/9 CV- 5/7 COMPOSITE  8 x 4 No Audio;
8x8-CA 8x8-C: 9/9 CV- 5/5 COMPOSITE 8 x 8 No Audio;
12x8-CA 12x8-C: 9/9 CV- 3/5 COMPOSITE 12 x 8 No Audio;
16x16-CA 16x16-C: 9/9 CV- 1/1 COMPOSITE 16x16 No Audio;
24x24-CA 24x24-C: 9/9 CV- 1/1 COMPOSITE 24x24 No Audio;
32x32-CA: 9/9 CV+ 1/1 COMPOSITE 32x32 with Audio; 32x32-C: 9/9 CV- 1/1 COMPOSITE 32x32 No Audio;
8x4-SA 8x4-S: 9/9 SV- 5/7 SVIDEO  8 x 4 No Audio; 8x8-SA 8x8-S: 9/9 SV- 5/5 SVIDEO 8 x 8 No Audio;
12x8-SA 12x8-S: 9/9 SV- 3/5 SVIDEO 12 x 8 No Audio;
16x16-SA 16x16-S: 9/9 SV- 1/1 SVIDEO 16x16 No Audio;
24x24-SA 24x24-S: 9/9 SV- 1/1 SVIDEO 24x24 No Audio; 32x32-SA: 9/9 SV+ 1/1 SVIDEO 32x32 with Audio;
32x32-S: 9/9 SV- 1/1 SVIDEO 32x32 No Audio;
24x16-RGB 24x16-RGBA: 24/16 RGB- 1/1 RGB 24 x16 no Audio;
32x16-RGB 32x16-RGBA: 32/16 RGB- 1/1 RGB 32 x16 no Audio;
24x16-S 24x16-SA: 24/16 SV- 1/1 SVideo 24 x16 no Audio;
32x16-S 32x16-SA: 32/16 SV- 1/1 SVIDEO 32 x16 no Audio;
24x16-C 24x16-CA: 9/9 CV- 1/1 COMPOSITE 24x16 with Audio;
32x16-C 32x16-CA: 9/9 CV- 1/1 COMPOSITE 32x16 with Audio;
24x16-HD 24x16-HDA: 24/16 HD- 1/1 HD 24x16 with Audio;
32x16-HD 32x16-HDA: 32/16 HD- 1/1 HD 32x16 with Audio)";

using Map = Table<int, 32>;

/// The slot of number 1 in maps of `count` numbers in a row, 0 for empty maps, -1 for any others.
int firstSlot(const Map &slotOf, const Map &numberOf, int count) {
    const int first = slotOf[1];
    Map slots("slots");
    Map numbers("numbers");
    for (int number = 1; first != 0 && number <= count; ++number) {
        slots[number] = first + number - 1;
        numbers[first + number - 1] = number;
    }
    return std::equal(slots.begin(), slots.end(), slotOf.begin()) &&
                   std::equal(numbers.begin(), numbers.end(), numberOf.begin())
               ? first
               : -1;
}

std::string textOf(const ModelFacts &facts) {
    const auto text = [](int number) { return std::to_string(number); };
    const int count = facts.NumInputs; // of inputs and outputs both
    return text(count) + "/" + text(facts.NumOutputs) + " " + facts.SignalType +
           (facts.HasAudio ? "+ " : "- ") +
           text(firstSlot(facts.InputButtonIndex, facts.ButtonInput, count)) + "/" +
           text(firstSlot(facts.OutputButtonIndex, facts.ButtonOutput, count)) + " " +
           facts.ModelDescription;
}

} // namespace

void ProtocolTest::commands() {
    using namespace command;
    QCOMPARE(std::string(Configuration) + std::string(EchoOff) + std::string(StatusOfAllOutputs) +
                 statusOfOutput(12),
             std::string("CFG ?\r\nECHO OFF\rSTA O A\rSTA O 12\r"));
    QCOMPARE(connectVideo(3, "12") + connectAudio(32, "1,2,7") + connectBoth(10, "1,2"),
             std::string("Con 3(12)\rCon 32F (1,2,7)\rCon 10(1,2)10F (1,2)\r"));
    QCOMPARE(disconnectVideo("1,2") + disconnectAudio("1F,2F") + disconnectBoth("4,5", "4F,5F"),
             std::string("DIS 1,2\rDIS 1F,2F\rDIS 4,5,4F,5F\r"));
    QCOMPARE(mute(1) + unmute(32) + setVolume("5", "-20") + queryVolume("12") + executePreset(7),
             std::string("MUT M 1\rMUT U 32\rVOL L 5 -20\rVOL L 12?\rPST X 7\r"));
}

void ProtocolTest::replyClasses() {
    const std::pair<int, std::vector<const char *>> classes[] = {
        {50, {""}},
        {0, {"K", "Ok", "\r\nO", "CFG ?\r\r\nKVN-8x4-S", "\r\nok", "\r\nOK"}},
        {60,
         {"\r\nKVN-8x4-S\r\n", "\r\nZarn", "\r\nZARN", "\r\nOk", "\r\nSTA O A", "\r\nERROR form",
          "\r\nVOL L 5 -20\r\n", "??Ok"}}};
    for (const auto &[status, replies] : classes)
        for (const char *reply : replies)
            QVERIFY2(classifyReply(reply) == status, reply);
}

void ProtocolTest::models_data() {
    const DataTable<std::string, std::string> row("lineEnd", "facts");
    std::size_t models = 0;
    for (const QByteArray &line : QByteArray(Models).replace('\n', ' ').split(';')) {
        const auto colon = line.indexOf(':');
        for (const QByteArray &model : line.first(colon).trimmed().split(' ')) {
            row("KVN-" + model, "\r\n", line.sliced(colon + 2).toStdString());
            ++models;
        }
    }
    QCOMPARE(models, modelCatalogue().size());
    row("KVN-16x8-RGB", "", "16/8 RGB- 1/5 RGB 16 x 8 No Audio");
    row("KVN-16x8-C", "", "9/9 CV+ 1/5 COMPOSITE 16 x 8 with Audio");
    row("KVN-16x8-S", "", "9/9 SV- 1/5 SVIDEO 16 x 8 No Audio");
    row("KVN-8x4-RGBAx", "", "8/4 RGB+ 5/7 RGB 8 x 4 with Audio");
    for (const char *reply : {"KVN-16x8-SA", "KVN-16x8-RGB ", "kvn-8x4-rgb", "KVN-9x9-RGB", ""})
        row(reply, "", "9/9 - 0/0 ");
}

void ProtocolTest::models() {
    QFETCH(std::string, lineEnd);
    ModelFacts facts;
    facts.NumInputs = facts.NumOutputs = 9;
    SelectModelSetup(facts, "\r\n" + std::string(QTest::currentDataTag()) + lineEnd, 3);
    QTEST(textOf(facts), "facts");
}

void ProtocolTest::unwrittenFactsStay() {
    ModelFacts facts;
    SelectModelSetup(facts, "KVN-32x32-RGBA", 1);
    SelectModelSetup(facts, "KVN-8x4-HD", 1);
    facts.NumInputs = 32; // which its maps still show
    QCOMPARE(textOf(facts), std::string("32/4 HD- 1/1 HD 8 x 4 No Audio"));
    SelectModelSetup(facts, "KVN-8x4-RGB", 1);
    const Map &slots = facts.OutputButtonIndex;
    QCOMPARE(std::vector(
                 {slots[8], slots[9], facts.ButtonOutput[15], facts.ButtonIndex, facts.LoopIndex}),
             std::vector({14, 9, 15, 15, 9}));

    // The count of a larger model does not fit the slots of a smaller one.
    facts = {};
    SelectModelSetup(facts, "KVN-32x16-RGB", 1);
    const std::string before = textOf(facts);
    for (const auto &[model, table] :
         {std::pair("KVN-8x4-C", "ButtonInput"), std::pair("KVN-16x8-S", "ButtonOutput")}) {
        const auto fit = [&, name = model] { SelectModelSetup(facts, name, 1); };
        QCOMPARE(failureOf<RangeError>(fit), std::string(table) + " has no index 33 (0 to 32)");
        QCOMPARE(textOf(facts), before);
    }
}

void ProtocolTest::statusRecords_data() {
    const DataTable<int, std::string, std::string> row("start", "report", "records");
    const std::string next = "\r\n  Output 2 (P,M,1,Q,5,32,R,255)\r\n";
    const std::string readNext = " 2/P/M/1/Q/5/32/R/255";
    const std::string good = "1/A/U/0/V/-20/3/D/5";
    const std::string none = " 7/ / /old/ /vol/aud/ /vid";
    row("good", 10, "  Output 1 (A,U,0,V,-20,3,D,5)" + next, good + readNext);
    row("header", 21, "\r\nSTA O A\r\n  Output 1 (A,U,0,V,-20,3,D,5)" + next, good + readNext);
    row("short and long texts", 10, "  Output 32 (A,M,ab,V,0,12,D,255)" + next,
        "32/A/M/ab/V/0/12/D/255" + readNext);
    row("any separators", 10, "  Outpxx 1 -A.U;0,V:-20,3,D 5)zzzzzzzzzzz2 (P,M,1,Q,5,32,R,255)",
        good + readNext);
    // From an overlong text on, everything is read from where it does not belong.
    row("volume -100", 10, "  Output 1 (A,U,0,V,-100,3,D,5)" + next,
        "1/A/U/0/V/vol/aud/-/vid 7/0/,/,D/5/vol/aud/\r/vid");
    row("number 100", 10, "  Output 100 (A,U,0,V,-20,3,D,5)",
        "7/1/0/(A/U/0/V/-/vid 7/0/3/D/5/vol/aud/ /vid");
    row("ends in the first record", 10, "  Output 1 (A,U,0", "1/A/U/old/0/vol/aud/ /vid" + none);
    row("ends after it", 10, "  Output 1 (A,U,0,V,-20,3,D,5)", good + none);
    row("no two blanks", 10, "\r\nSTA O A", none.substr(1) + none);
    row("a blank at the very end", 15, "STA O ", none.substr(1) + none);
}

void ProtocolTest::statusRecords() {
    QFETCH(std::string, report);
    RoutingState routing;
    routing.Outputs.fill(Old);
    const int start = FindStatusStart(report);
    QTEST(start, "start");
    ParseOutputStatus(routing, report, start, 2);
    QTEST(fieldsOf(routing.Outputs[1]) + " " + fieldsOf(routing.Outputs[2]), "records");
}

void ProtocolTest::wholeReportsInTime() {
#if defined(__OPTIMIZE__) && !defined(__SANITIZE_ADDRESS__)
    constexpr std::chrono::microseconds Bound(10);
#else
    constexpr std::chrono::microseconds Bound(500);
#endif
    constexpr int Rounds = 2000;
    // Of the smaller unit's 16 outputs only the first 8.
    for (const auto &[model, outputs] : {std::pair("KVN-32x32-CA", 32), {"KVN-16x16-RGBA", 8}}) {
        Unit unit(UnitOptions{.model = model});
        for (int output = 1; output <= unit.outputs(); ++output) {
            const std::string number = std::to_string(output);
            unit.answer("Con " + std::to_string(output % unit.inputs() + 1) + "(" + number + ")");
            unit.answer("VOL L " + number + " " + std::to_string(5 - output));
            unit.answer((output % 3 == 0 ? "MUT M " : "MUT U ") + number);
            unit.answer(output % 4 == 0 ? "DIS " + number + "F" : "");
        }
        const std::string report = unit.answer("STA O A");
        RoutingState routing;
        routing.Outputs.fill(Old);
        const auto start = std::chrono::steady_clock::now();
        for (int round = 0; round < Rounds; ++round)
            ParseOutputStatus(routing, report, FindStatusStart(report), outputs);
        const auto taken = std::chrono::steady_clock::now() - start;
        QVERIFY2(taken < Bound * Rounds, QByteArray::number((taken / Rounds).count()) + " ns");
        for (int output = 1; output <= 32; ++output) {
            const std::string now = std::to_string(output) + (output % 3 == 0 ? "/A/M" : "/A/U") +
                                    "/0/V/" + std::to_string(5 - output) + "/" +
                                    std::to_string(output % 4 == 0 ? 255 : output) + "/D/" +
                                    std::to_string(output % unit.inputs() + 1);
            QCOMPARE(fieldsOf(routing.Outputs[output]), output > outputs ? fieldsOf(Old) : now);
        }
    }
}

void ProtocolTest::textParts() {
    std::string parts;
    for (const auto &[at, length] : {std::pair(1, 2), {2, 0}, {3, 5}, {4, 1}, {90, 2}})
        parts += std::string(mid("abc", at, length)) + "/" + std::string(mid("abc", at)) + "/" +
                 charAt("abc", at).value_or('-') + " ";
    QCOMPARE(parts, std::string("ab/abc/a /bc/b c/c/c //- //- "));
}

void ProtocolTest::numbers() {
    std::string read;
    for (const char *text : {"", "255", "-20\r\n", "  -20  ", " 12ab", "+3", "1.2.3", "-45.5", ".5",
                             "-", "--5", "- 5", "ab12"})
        read += decimalText(leadingNumber(text)) + (wholeNumberText(text) ? "! " : " ");
    QCOMPARE(read, std::string("0 255! -20 -20! 12 3! 1.2 -45.5! 0.5! 0 0 0 0 "));

    std::string rounded;
    for (const double value : {0.5, 1.5, 2.5, 2.51, -2.5, -3.5, 4e4, -1e9})
        rounded += std::to_string(roundHalfToEven(value)) + " ";
    QCOMPARE(rounded, std::string("0 2 2 3 -2 -4 32767 -32768 "));

    std::string written;
    for (const double value : {0.0, -0.0, 5.0, -20.0, 100.0, 2.5, -45.5, 0.1, 1e18})
        written += decimalText(value) + " ";
    QCOMPARE(written, std::string("0 0 5 -20 100 2.5 -45.5 0.1 1000000000000000000 "));
}

QTEST_GUILESS_MAIN(ProtocolTest)
