#include "StatusParserTest.h"

#include "protocol/StatusParser.h"
#include "simulator/Unit.h"
#include "support/toString.h"

#include <QtTest/QtTest>

#include <chrono>

namespace {

const OutputStatusRecord Old{"7", 'a', 'x', "old", 'c', "vol", "aud", 'd', "vid"};

std::string fieldsOf(const OutputStatusRecord &record) {
    const auto character = [](char c) { return std::string{'/', c, '/'}; };
    return record.OutputNumberText + character(record.FieldA) + record.MuteFlag + "/" +
           record.FieldB + character(record.FieldC) + record.VolumeText + "/" +
           record.AudioInputText + character(record.FieldD) + record.VideoInputText;
}

/// A unit of the given model whose outputs all differ in something.
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
    QTest::addColumn<std::string>("report");
    QTest::addColumn<int>("start");
    const auto row = [](const char *name, const char *report, int start) {
        QTest::newRow(name) << std::string(report) << start;
    };
    row("empty", "", 1);
    row("blanks first", "  Output 1", 10);
    row("after a header", "\r\nSTA O A\r\n  Output 1", 21);
    row("the first of two pairs", "a  b  c", 11);
    row("no two blanks", "\r\nSTA O A", 10);
    row("a blank at the very end", "STA O ", 15);
    row("nothing but a blank", " ", 10);
    row("tabs are no blanks", "a\t\tb", 5);
}

void StatusParserTest::findsTheStart() {
    QFETCH(std::string, report);
    QTEST(FindStatusStart(report), "start");
}

void StatusParserTest::readsRecords_data() {
    QTest::addColumn<std::string>("report");
    QTest::addColumn<std::string>("first");
    QTest::addColumn<std::string>("second");
    const std::string next = "\r\n  Output 2 (P,M,1,Q,5,32,R,255)\r\n";
    const std::string readNext = "2/P/M/1/Q/5/32/R/255";
    const std::string blank = "7/ / /old/ /vol/aud/ /vid";
    const auto row = [](const char *name, const std::string &report, const std::string &first,
                        const std::string &second) {
        QTest::newRow(name) << report << first << second;
    };
    row("good", "  Output 1 (A,U,0,V,-20,3,D,5)" + next, "1/A/U/0/V/-20/3/D/5", readNext);
    row("two-digit number", "  Output 10 (A,M,0,V,-5,3,D,5)" + next, "10/A/M/0/V/-5/3/D/5",
        readNext);
    row("three-character texts", "  Output 32 (A,U,abc,V,100,255,D,255)" + next,
        "32/A/U/abc/V/100/255/D/255", readNext);
    row("two-character texts", "  Output 1 (A,U,ab,V,-5,12,D,32)" + next, "1/A/U/ab/V/-5/12/D/32",
        readNext);
    row("negative of three characters", "  Output 1 (A,U,0,V,-12,3,D,5)" + next,
        "1/A/U/0/V/-12/3/D/5", readNext);
    row("numbers out of order", "  Output 5 (A,U,0,V,0,3,D,5)" + next, "5/A/U/0/V/0/3/D/5",
        readNext);
    row("any separators", "  Outpxx 1 -A.U;0,V:0,3,D 5)zzzzzzzzzzz2 (P,M,1,Q,5,32,R,255)",
        "1/A/U/0/V/0/3/D/5", readNext);
    // From an overlong text on everything is read from where it does not belong.
    row("overlong volume", "  Output 1 (A,U,0,V,-100,3,D,5)" + next, "1/A/U/0/V/vol/aud/-/vid",
        "7/0/,/,D/5/vol/aud/\r/vid");
    row("overlong number", "  Output 100 (A,U,0,V,-20,3,D,5)", "7/1/0/(A/U/0/V/-/vid",
        "7/0/3/D/5/vol/aud/ /vid");
    row("ends in the first record", "  Output 1 (A,U,0", "1/A/U/old/0/vol/aud/ /vid", blank);
    row("ends after the first record", "  Output 1 (A,U,0,V,-20,3,D,5)", "1/A/U/0/V/-20/3/D/5",
        blank);
    row("empty", "", blank, blank);
    row("no two blanks", "\r\nOutput 1 (A,U,0,V,-20,3,D,5)", blank, blank);
    row("ends in a blank", "1 (A,U,0,V,-20,3,D,5) ", blank, blank);
}

void StatusParserTest::readsRecords() {
    QFETCH(std::string, report);
    RoutingState routing;
    routing.Outputs.fill(Old);
    ParseOutputStatus(routing, report, FindStatusStart(report), 2);
    QTEST(fieldsOf(routing.Outputs[1]), "first");
    QTEST(fieldsOf(routing.Outputs[2]), "second");
    QCOMPARE(fieldsOf(routing.Outputs[0]), fieldsOf(Old));
    QCOMPARE(fieldsOf(routing.Outputs[3]), fieldsOf(Old));
}

void StatusParserTest::readsWholeReports_data() {
    QTest::addColumn<std::string>("model");
    QTest::addColumn<int>("outputs");
    QTest::newRow("4") << std::string("KVN-8x4-RGBA") << 4;
    QTest::newRow("8") << std::string("KVN-16x8-HDA") << 8;
    QTest::newRow("16") << std::string("KVN-24x16-SA") << 16;
    QTest::newRow("32") << std::string("KVN-32x32-CA") << 32;
    QTest::newRow("the first 8 of 16") << std::string("KVN-16x16-RGBA") << 8;
    QTest::newRow("none before a model is known") << std::string("KVN-16x16-RGBA") << 0;
}

void StatusParserTest::readsWholeReports() {
    QFETCH(std::string, model);
    QFETCH(int, outputs);
    Unit unit(UnitOptions{.model = model});
    const std::string report = reportOf(unit);
    RoutingState routing;
    routing.Outputs.fill(Old);
    ParseOutputStatus(routing, report, FindStatusStart(report), outputs);
    for (int output = 1; output <= outputs; ++output) {
        const OutputStatusRecord &record = routing.Outputs[output];
        QCOMPARE(record.OutputNumberText, std::to_string(output));
        QCOMPARE(record.MuteFlag, unit.muted(output) ? 'M' : 'U');
        QCOMPARE(record.VolumeText, unit.volume(output));
        QCOMPARE(record.AudioInputText, std::to_string(unit.audioInput(output)));
        QCOMPARE(record.VideoInputText, std::to_string(unit.videoInput(output)));
    }
    for (int output = outputs + 1; output <= 32; ++output)
        QCOMPARE(fieldsOf(routing.Outputs[output]), fieldsOf(Old));
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
    QVERIFY2(taken < Bound * Rounds,
             QByteArray::number(std::chrono::nanoseconds(taken).count() / Rounds) + " ns");
}
