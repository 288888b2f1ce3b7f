#include "simulator/UnitPortTest.h"

#include "simulator/UnitPort.h"

#include <QtTest/QtTest>

namespace {

struct Heard {
    QByteArrayList commands;
    QByteArrayList answers;
};

Heard hear(UnitPort &port, const QByteArrayList &pieces) {
    Heard heard;
    for (const QByteArray &piece : pieces) {
        for (const Exchange &exchange : port.receive(piece.toStdString())) {
            heard.commands += QByteArray::fromStdString(exchange.command);
            heard.answers += QByteArray::fromStdString(exchange.answer);
        }
    }
    return heard;
}

} // namespace

void UnitPortTest::makesCommands_data() {
    QTest::addColumn<QByteArrayList>("pieces");
    QTest::addColumn<QByteArrayList>("commands");
    using List = QByteArrayList;
    QTest::newRow("whole") << List{"CFG ?\r\n"} << List{"CFG ?"};
    QTest::newRow("byte by byte") << List{"E", "C", "H", "O", " OFF", "\r"} << List{"ECHO OFF"};
    QTest::newRow("unfinished") << List{"STA O A"} << List{};
    QTest::newRow("three at once")
        << List{"MUT M 1\rMUT U 1\r\nSTA O 1\r"} << List{"MUT M 1", "MUT U 1", "STA O 1"};
    QTest::newRow("line feed comes late")
        << List{"CFG ?\r", "\nSTA O A\r"} << List{"CFG ?", "STA O A"};
    QTest::newRow("only one line feed ends a line") << List{"A\r\n\nB\r"} << List{"A", "\nB"};
    QTest::newRow("line feed alone ends nothing") << List{"A\nB\r"} << List{"A\nB"};
    QTest::newRow("empty lines") << List{"\r\r\n\r"} << List{"", "", ""};
    QTest::newRow("zero bytes") << List{QByteArray("A\0B\r", 4)} << List{QByteArray("A\0B", 3)};
}

void UnitPortTest::makesCommands() {
    QFETCH(QByteArrayList, pieces);
    Unit unit;
    UnitPort port(unit);
    QTEST(hear(port, pieces).commands, "commands");
}

void UnitPortTest::echoesWhatTheUnitWasTold() {
    Unit unit(UnitOptions{.echo = true});
    UnitPort port(unit);
    const Heard heard = hear(port, {"CFG ?\r\nECHO OFF\r\nVOL L 1?\rECHO ON\r\nVOL L 1?\r\n"});
    const QByteArrayList expected{"CFG ?\r\r\nKVN-16x16-RGBA\r\n", "ECHO OFF\r",
                                  "\r\nVOL L 1 -20\r\n", "", "VOL L 1?\r\r\nVOL L 1 -20\r\n"};
    QCOMPARE(heard.answers, expected);
}

void UnitPortTest::overlongLineIsRefusedOnce_data() {
    QTest::addColumn<qsizetype>("size");
    QTest::addColumn<bool>("refused");
    const auto most = static_cast<qsizetype>(Unit::MaxCommand);
    QTest::newRow("as long as allowed") << most << false;
    QTest::newRow("one more") << most + 1 << true;
    QTest::newRow("twice as long") << 2 * most + 2 << true;
    QTest::newRow("megabytes") << qsizetype{8'000'000} << true;
}

void UnitPortTest::overlongLineIsRefusedOnce() {
    QFETCH(qsizetype, size);
    QFETCH(bool, refused);
    Unit unit;
    UnitPort port(unit);
    const QByteArray line(size, '\xaa');
    const Heard before = hear(port, {line.first(size / 3), line.sliced(size / 3)});
    QCOMPARE(before.answers, refused ? QByteArrayList{"\r\nERROR length\r\n"} : QByteArrayList{});
    QVERIFY(before.commands.join().size() <= qsizetype(Unit::MaxCommand) + 1);

    const Heard after = hear(port, {"\r", "\nVOL L 1?\r"});
    QByteArrayList expected{"\r\nVOL L 1 -20\r\n"};
    if (!refused)
        expected.prepend("\r\nERROR command\r\n");
    QCOMPARE(after.answers, expected);
}

void UnitPortTest::portsShareTheUnit() {
    Unit unit;
    UnitPort one(unit);
    UnitPort other(unit);
    QVERIFY(one.receive("VOL L 2").empty());
    QCOMPARE(hear(other, {"VOL L 2 -3\r"}).answers, QByteArrayList{"\r\nOk\r\n"});
    QCOMPARE(hear(one, {"?\r"}).answers, QByteArrayList{"\r\nVOL L 2 -3\r\n"});
}
