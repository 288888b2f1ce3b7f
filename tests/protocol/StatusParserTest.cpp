#include "StatusParserTest.h"

#include "protocol/StatusParser.h"
#include "simulator/Unit.h"
#include "support/DataTable.h"
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

/// The report of a unit whose outputs all differ in something.
std::string reportOf(Unit &unit) {
    for (int output = 1; output <= unit.outputs(); ++output) {
        const std::string number = std::to_string(output);
        unit.answer("Con " + std::to_string(output % unit.inputs() + 1) + "(" + number + ")");
        unit.answer("VOL L " + number + " " + std::to_string(5 - output));
        if (output % 3 == 0)
            unit.answer("MUT M " + number);
        if (output % 4 == 0)
            unit.answer("DIS " + number + "F");
    }
    return unit.answer("STA O A");
}

} // namespace

void StatusParserTest::findsTheStart_data() {
    const DataTable<std::string, int> row("report", "start");
    row("empty", "", 1);
    row("blanks first", "  Output 1", 10);
    row("after a header", "\r\nSTA O A\r\n  Output 1", 21);
    row("the first of two pairs", "a  b  c", 11);
    row("no two blanks", "\r\nSTA O A", 10);
    row("a blank at the very end", "STA O ", 15);
}

void StatusParserTest::findsTheStart() {
    QFETCH(std::string, report);
    QTEST(FindStatusStart(report), "start");
}

void StatusParserTest::readsRecords_data() {
    const DataTable<std::string, std::string, std::string> row("report", "first", "second");
    const std::string next = "\r\n  Output 2 (P,M,1,Q,5,32,R,255)\r\n";
    const std::string readNext = "2/P/M/1/Q/5/32/R/255";
    const std::string good = "1/A/U/0/V/-20/3/D/5";
    const std::string blank = "7/ / /old/ /vol/aud/ /vid";
    row("good", "  Output 1 (A,U,0,V,-20,3,D,5)" + next, good, readNext);
    row("short and long texts", "  Output 32 (A,M,ab,V,0,12,D,255)" + next,
        "32/A/M/ab/V/0/12/D/255", readNext);
    row("volume 100", "  Output 9 (A,U,abc,V,100,1,D,1)" + next, "9/A/U/abc/V/100/1/D/1", readNext);
    row("volume -12", "  Output 10 (A,U,0,V,-12,1,D,1)" + next, "10/A/U/0/V/-12/1/D/1", readNext);
    row("any separators", "  Outpxx 1 -A.U;0,V:-20,3,D 5)zzzzzzzzzzz2 (P,M,1,Q,5,32,R,255)", good,
        readNext);
    // From an overlong text on, everything is read from where it does not belong.
    row("volume -100", "  Output 1 (A,U,0,V,-100,3,D,5)" + next, "1/A/U/0/V/vol/aud/-/vid",
        "7/0/,/,D/5/vol/aud/\r/vid");
    row("number 100", "  Output 100 (A,U,0,V,-20,3,D,5)", "7/1/0/(A/U/0/V/-/vid",
        "7/0/3/D/5/vol/aud/ /vid");
    row("ends in the first record", "  Output 1 (A,U,0", "1/A/U/old/0/vol/aud/ /vid", blank);
    row("ends after it", "  Output 1 (A,U,0,V,-20,3,D,5)", good, blank);
    row("empty", "", blank, blank);
    row("no two blanks", "\r\nOutput 1 (A,U,0,V,-20,3,D,5)", blank, blank);
}

void StatusParserTest::readsRecords() {
    QFETCH(std::string, report);
    RoutingState routing;
    routing.Outputs.fill(Old);
    ParseOutputStatus(routing, report, FindStatusStart(report), 2);
    QTEST(fieldsOf(routing.Outputs[1]), "first");
    QTEST(fieldsOf(routing.Outputs[2]), "second");
}

void StatusParserTest::readsWholeReports_data() {
    const DataTable<std::string, int> row("model", "outputs");
    row("8", "KVN-16x8-HDA", 8);
    row("16", "KVN-24x16-SA", 16);
    row("32", "KVN-32x32-CA", 32);
    row("the first 8 of 16", "KVN-16x16-RGBA", 8);
    row("none before a model is known", "KVN-16x16-RGBA", 0);
}

void StatusParserTest::readsWholeReports() {
    QFETCH(std::string, model);
    QFETCH(int, outputs);
    Unit unit(UnitOptions{.model = model});
    const std::string report = reportOf(unit);
    RoutingState routing;
    routing.Outputs.fill(Old);
    ParseOutputStatus(routing, report, FindStatusStart(report), outputs);
    for (int output = 1; output <= 32; ++output) {
        const std::string now =
            output > outputs
                ? fieldsOf(Old)
                : std::to_string(output) + (unit.muted(output) ? "/A/M" : "/A/U") + "/0/V/" +
                      unit.volume(output) + "/" + std::to_string(unit.audioInput(output)) + "/D/" +
                      std::to_string(unit.videoInput(output));
        QCOMPARE(fieldsOf(routing.Outputs[output]), now);
    }
}

void StatusParserTest::isFast() {
#if defined(__OPTIMIZE__) && !defined(__SANITIZE_ADDRESS__)
    constexpr std::chrono::microseconds Bound(10);
#else
    constexpr std::chrono::microseconds Bound(500);
#endif
    constexpr int Rounds = 2000;
    Unit unit(UnitOptions{.model = "KVN-32x32-RGBA"});
    const std::string report = reportOf(unit);
    RoutingState routing;
    const auto start = std::chrono::steady_clock::now();
    for (int round = 0; round < Rounds; ++round)
        ParseOutputStatus(routing, report, FindStatusStart(report), 32);
    const auto taken = std::chrono::steady_clock::now() - start;
    QCOMPARE(routing.Outputs[32].OutputNumberText, std::string("32"));
    QVERIFY2(taken < Bound * Rounds, QByteArray::number((taken / Rounds).count()) + " ns");
}
