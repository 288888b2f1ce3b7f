#include "simulator/UnitTest.h"

#include "protocol/ModelCatalogue.h"
#include "protocol/Text.h"
#include "simulator/Unit.h"

#include <QRegularExpression>
#include <QtTest/QtTest>

#include <stdexcept>

namespace {

const QByteArray Ok = "\r\nOk\r\n";

QByteArray tell(Unit &unit, const QByteArray &command) {
    return QByteArray::fromStdString(unit.answer(command.toStdString()));
}

Unit unitOf(const QByteArray &model) { return Unit(UnitOptions{.model = model.toStdString()}); }

/// "video/audio mute volume" of every output, one word group for each.
QByteArray stateOf(const Unit &unit) {
    QByteArrayList outputs;
    for (int output = 1; output <= unit.outputs(); ++output) {
        outputs += QByteArray::number(unit.videoInput(output)) + '/' +
                   QByteArray::number(unit.audioInput(output)) +
                   (unit.muted(output) ? " M " : " U ") +
                   QByteArray::fromStdString(unit.volume(output));
    }
    return outputs.join(", ");
}

} // namespace

void UnitTest::answers_data() {
    QTest::addColumn<QByteArray>("model");
    QTest::addColumn<QByteArray>("before");
    QTest::addColumn<QByteArray>("command");
    QTest::addColumn<QByteArray>("answer");
    const auto row = [](const char *name, const QByteArray &model, const QByteArray &before,
                        const QByteArray &command, const QByteArray &answer) {
        QTest::newRow(name) << model << before << command << answer;
    };
    const QByteArray small = "KVN-8x4-RGBA";
    row("configuration", small, "", "CFG ?", "\r\nKVN-8x4-RGBA\r\n");
    row("all outputs", small, "", "STA O A",
        "\r\nSTA O A\r\n  Output 1 (A,U,0,V,-20,1,D,1)\r\n  Output 2 (A,U,0,V,-20,2,D,2)"
        "\r\n  Output 3 (A,U,0,V,-20,3,D,3)\r\n  Output 4 (A,U,0,V,-20,4,D,4)\r\n");
    row("one output", small, "Con 7(2)", "STA O 2",
        "\r\nSTA O 2\r\n  Output 2 (A,U,0,V,-20,2,D,7)\r\n");
    row("muted", small, "MUT M 3", "STA O 3", "\r\nSTA O 3\r\n  Output 3 (A,M,0,V,-20,3,D,3)\r\n");
    row("model without audio", "KVN-8x4-RGB", "Con 2F (4)", "STA O 4",
        "\r\nSTA O 4\r\n  Output 4 (A,U,0,V,-20,2,D,4)\r\n");
    row("more outputs than inputs", "KVN-2x3-SA", "", "STA O 3",
        "\r\nSTA O 3\r\n  Output 3 (A,U,0,V,-20,255,D,255)\r\n");
    row("volume", small, "", "VOL L 4?", "\r\nVOL L 4 -20\r\n");
    row("volume, two digits", "KVN-16x16-HDA", "VOL L 12 5", "VOL L 12?", "\r\nVOL L 12 5\r\n");
    row("shortest volume text", small, "VOL L 1 -12.50", "VOL L 1?", "\r\nVOL L 1 -12.5\r\n");
    row("echo off says nothing", small, "", "ECHO OFF", "");
    row("echo on says nothing", small, "", "ECHO ON", "");
}

void UnitTest::answers() {
    QFETCH(QByteArray, model);
    QFETCH(QByteArray, before);
    QFETCH(QByteArray, command);
    Unit unit = unitOf(model);
    if (!before.isEmpty())
        QCOMPARE(tell(unit, before), Ok);
    QTEST(tell(unit, command), "answer");
}

void UnitTest::changes_data() {
    QTest::addColumn<QByteArray>("command");
    QTest::addColumn<QByteArray>("state");
    const auto row = [](const QByteArray &command, const QByteArray &state) {
        QTest::newRow(command.constData()) << command << state;
    };
    row("Con 5(1,3)", "5/1 U -20, 2/2 U -20, 5/3 U -20, 4/4 U -20");
    row("Con 5F (4)", "1/1 U -20, 2/2 U -20, 3/3 U -20, 4/5 U -20");
    row("Con 8(1,2)8F (1,2)", "8/8 U -20, 8/8 U -20, 3/3 U -20, 4/4 U -20");
    row("Con 8(1)7F (2)", "8/1 U -20, 2/7 U -20, 3/3 U -20, 4/4 U -20");
    row("DIS 1,2", "255/1 U -20, 255/2 U -20, 3/3 U -20, 4/4 U -20");
    row("DIS 3F,4F", "1/1 U -20, 2/2 U -20, 3/255 U -20, 4/255 U -20");
    row("DIS 1F,2,4,4F", "1/255 U -20, 255/2 U -20, 3/3 U -20, 255/255 U -20");
    row("MUT M 2", "1/1 U -20, 2/2 M -20, 3/3 U -20, 4/4 U -20");
    row("VOL L 1 -45", "1/1 U -45, 2/2 U -20, 3/3 U -20, 4/4 U -20");
    row("VOL L 4 5", "1/1 U -20, 2/2 U -20, 3/3 U -20, 4/4 U 5");
    row("PST X 8", "8/8 U -20, 8/8 U -20, 8/8 U -20, 8/8 U -20");
}

void UnitTest::changes() {
    QFETCH(QByteArray, command);
    Unit unit = unitOf("KVN-8x4-RGBA");
    QCOMPARE(tell(unit, command), Ok);
    QTEST(stateOf(unit), "state");
    QCOMPARE(tell(unit, "MUT U 2"), Ok);
    QVERIFY(!unit.muted(2));
}

void UnitTest::refusesWithoutChange_data() {
    QTest::addColumn<QByteArray>("model");
    QTest::addColumn<QByteArray>("command");
    QTest::addColumn<QByteArray>("word");
    const auto rows = [](const char *model, const char *word, const QByteArrayList &commands) {
        for (const QByteArray &command : commands)
            QTest::addRow("%s %s", model, command.toPercentEncoding(" ()?,").constData())
                << QByteArray(model) << command << QByteArray(word);
    };
    rows("KVN-8x4-RGBA", "command",
         {"", " ", "\n", "cfg ?", "CFG?", "STA O", "CON 1(1)", "MUTM 1", "Con", QByteArray(3, '\0'),
          "\xff\xfe"});
    rows("KVN-8x4-RGBA", "form",
         {"CFG ? ", "STA O AA", "STA O 1 ", "Con 1", "Con 1(1", "Con 1(1)2", "Con 1(1)1F(1)",
          "Con 1F(1)", "Con 1F (1) ", "Con 1(1)1F (1)1F (1)", "DIS 1;2", "DIS 1FF", "MUT X 1",
          "MUT M 1 ", "VOL L 1", "VOL L 1?1", "PST X 1,2", "ECHO OFFF", "ECHO ON "});
    rows("KVN-8x4-RGBA", "number",
         {"STA O ",    "STA O a",      "Con (1)",     "Con -1(1)",   "Con 1()",   "Con 1(,)",
          "Con 1(1,)", "Con 1(1, 2)",  "Con 1( 1)",   "Con 1(1) ",   "Con 01(1)", "DIS ",
          "DIS 1,",    "DIS F",        "DIS ,1",      "MUT M ",      "VOL L 1 ",  "VOL L 1  -20",
          "VOL L 1 -", "VOL L 1 -20 ", "VOL L 1 1e1", "VOL L 1 nan", "PST X +1"});
    rows("KVN-8x4-RGBA", "input",
         {"Con 0(1)", "Con 9(1)", "Con 9F (1)", "Con 1(1)9F (1)", "PST X 9",
          "Con 99999999999999999999(1)", "Con 4294967297(1)"});
    rows("KVN-8x4-RGBA", "output",
         {"STA O 0", "STA O 5", "Con 8(1,2,5)", "Con 8(1)8F (1,0)", "DIS 1,2,3,5", "DIS 1,5F",
          "MUT M 5", "VOL L 5 0", "VOL L 0?"});
    rows("KVN-8x4-RGBA", "volume", {"VOL L 1 6", "VOL L 1 5.01", "VOL L 1 -45.5", "VOL L 1 -100"});
    rows("KVN-32x32-RGBA", "preset", {"PST X 0", "PST X 33"});
}

void UnitTest::refusesWithoutChange() {
    QFETCH(QByteArray, model);
    QFETCH(QByteArray, command);
    QFETCH(QByteArray, word);
    Unit unit = unitOf(model);
    const QByteArray before = stateOf(unit);
    QCOMPARE(tell(unit, command), "\r\nERROR " + word + "\r\n");
    QCOMPARE(stateOf(unit), before);
}

void UnitTest::everyModelHasTheSizesOfItsName() {
    static const QRegularExpression name(QStringLiteral("^KVN-(\\d+)x(\\d+)-\\w+$"));
    for (const ModelRow &row : modelCatalogue()) {
        const QString model = QString::fromLatin1(row.Model.data(), qsizetype(row.Model.size()));
        const auto sizes = name.match(model);
        QVERIFY2(sizes.hasMatch(), qPrintable(model));
        Unit unit(UnitOptions{.model = std::string(row.Model), .trailer = "!"});
        QCOMPARE(unit.inputs(), sizes.captured(1).toInt());
        QCOMPARE(unit.outputs(), sizes.captured(2).toInt());
        QCOMPARE(tell(unit, "CFG ?"), "\r\n" + model.toLatin1() + "!");
    }
}

void UnitTest::refusesNamesWithoutSizes() {
    for (const char *model : {"", "KVN", "KVN-", "KVN-8x", "KVN-8x4", "KVN-8-4-S", "KVN-x4-S",
                              "KVN-0x4-S", "KVN-8x33-S", "KVN-33x8-S", "KVN--8x4-S"})
        QVERIFY_THROWS_EXCEPTION(std::invalid_argument, Unit(UnitOptions{.model = model}));
}

void UnitTest::statusRecordsStandWhereReadersLook() {
    Unit unit = unitOf("KVN-24x16-SA");
    for (const char *command : {"Con 24(1,16)24F (9)", "DIS 2,10F", "MUT M 16", "VOL L 9 -7"})
        QCOMPARE(tell(unit, command), Ok);
    const std::string text = unit.answer("STA O A");

    // A reader knows its place by counting only: two blanks, then fixed steps around the values.
    auto at = static_cast<int>(text.find("  ")) + 1 + 9;
    const auto valueUpTo = [&](char mark, int step) {
        const auto end = static_cast<int>(text.find(mark, static_cast<std::size_t>(at - 1)));
        const std::string_view value = mid(text, at, end + 1 - at);
        at += static_cast<int>(value.size()) + step;
        return QByteArray(value.data(), qsizetype(value.size()));
    };
    for (int output = 1; output <= 16; ++output) {
        QCOMPARE(valueUpTo(' ', 2), QByteArray::number(output));
        at += 2;
        QCOMPARE(charAt(text, at), unit.muted(output) ? 'M' : 'U');
        at += 2;
        QVERIFY(valueUpTo(',', 1).size() <= 3);
        at += 2;
        QCOMPARE(valueUpTo(',', 1), QByteArray::fromStdString(unit.volume(output)));
        QCOMPARE(valueUpTo(',', 1), QByteArray::number(unit.audioInput(output)));
        at += 2;
        QCOMPARE(valueUpTo(')', 12), QByteArray::number(unit.videoInput(output)));
    }
}

void UnitTest::longCommandIsRefused() {
    Unit unit = unitOf("KVN-8x4-RGBA");
    std::string command = "DIS 1";
    while (command.size() + 2 <= Unit::MaxCommand)
        command += ",1";
    QCOMPARE(unit.answer(command), Ok.toStdString());
    QCOMPARE(unit.answer(command + ",1"), std::string("\r\nERROR length\r\n"));
}
