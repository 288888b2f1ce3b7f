#include "TextTest.h"

#include "protocol/Text.h"
#include "support/toString.h"

#include <QtTest/QtTest>

#include <optional>

using Number = std::optional<double>;

void TextTest::takesParts_data() {
    QTest::addColumn<std::string>("text");
    QTest::addColumn<int>("position");
    QTest::addColumn<int>("length");
    QTest::addColumn<std::string>("part");
    QTest::addColumn<std::string>("rest");
    const auto row = [](const char *name, const char *text, int position, int length,
                        const char *part, const char *rest) {
        QTest::newRow(name) << std::string(text) << position << length << std::string(part)
                            << std::string(rest);
    };
    row("from the start", "KVN-8x4", 1, 3, "KVN", "KVN-8x4");
    row("inside", "\r\nOk\r\n", 3, 2, "Ok", "Ok\r\n");
    row("ends sooner", "abc", 3, 5, "c", "c");
    row("one past the end", "abc", 4, 1, "", "");
    row("far past the end", "abc", 90, 2, "", "");
    row("of nothing", "", 1, 1, "", "");
    row("of no length", "abc", 2, 0, "", "bc");
}

void TextTest::takesParts() {
    QFETCH(std::string, text);
    QFETCH(int, position);
    QFETCH(int, length);
    QFETCH(std::string, part);
    QFETCH(std::string, rest);
    QCOMPARE(std::string(mid(text, position, length)), part);
    QCOMPARE(std::string(mid(text, position)), rest);
    QCOMPARE(charAt(text, position), rest.empty() ? std::nullopt : std::optional(rest.front()));
}

void TextTest::readsNumbers_data() {
    QTest::addColumn<std::string>("text");
    QTest::addColumn<double>("leading");
    QTest::addColumn<Number>("whole");
    const auto row = [](const char *text, double leading, Number whole) {
        QTest::newRow(text) << std::string(text) << leading << whole;
    };
    row("", 0, {});
    row("   ", 0, {});
    row("255", 255, 255);
    row("-20\r\n", -20, {});
    row("  -20", -20, -20);
    row("-20  ", -20, -20);
    row(" 12ab", 12, {});
    row("+3", 3, 3);
    row("1.2.3", 1.2, {});
    row("-45.5", -45.5, -45.5);
    row(".5", 0.5, 0.5);
    row("5.", 5, 5);
    row("007", 7, 7);
    row("-", 0, {});
    row(".", 0, {});
    row("--5", 0, {});
    row("- 5", 0, {});
    row("1 2", 1, {});
    row("ab12", 0, {});
    row("\t5", 0, {});
}

void TextTest::readsNumbers() {
    QFETCH(std::string, text);
    QTEST(leadingNumber(text), "leading");
    QTEST(wholeNumberText(text), "whole");
}

void TextTest::roundsHalfToEven_data() {
    QTest::addColumn<double>("value");
    QTest::addColumn<int>("rounded");
    QTest::newRow("0.5") << 0.5 << 0;
    QTest::newRow("1.5") << 1.5 << 2;
    QTest::newRow("2.5") << 2.5 << 2;
    QTest::newRow("2.51") << 2.51 << 3;
    QTest::newRow("-0.5") << -0.5 << 0;
    QTest::newRow("-2.5") << -2.5 << -2;
    QTest::newRow("-3.5") << -3.5 << -4;
    QTest::newRow("too large") << 40000.0 << 32767;
    QTest::newRow("too small") << -1e300 << -32768;
}

void TextTest::roundsHalfToEven() {
    QFETCH(double, value);
    QTEST(roundHalfToEven(value), "rounded");
}

void TextTest::writesDecimals_data() {
    QTest::addColumn<double>("value");
    QTest::addColumn<std::string>("text");
    for (const char *text : {"0", "5", "-20", "100", "2.5", "-45.5", "0.1", "1000000000000000000"})
        QTest::newRow(text) << QByteArray(text).toDouble() << std::string(text);
    QTest::newRow("minus zero") << -0.0 << std::string("0");
}

void TextTest::writesDecimals() {
    QFETCH(double, value);
    QTEST(decimalText(value), "text");
}
