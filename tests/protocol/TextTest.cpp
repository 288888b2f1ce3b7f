#include "TextTest.h"

#include "protocol/Text.h"
#include "support/DataTable.h"
#include "support/toString.h"

using Number = std::optional<double>;

void TextTest::takesParts_data() {
    const DataTable<std::string, int, int, std::string, std::string> row("text", "position",
                                                                         "length", "part", "rest");
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
    QFETCH(std::string, rest);
    QTEST(std::string(mid(text, position, length)), "part");
    QCOMPARE(std::string(mid(text, position)), rest);
    QCOMPARE(charAt(text, position), rest.empty() ? std::nullopt : std::optional(rest.front()));
}

void TextTest::readsNumbers_data() {
    const DataTable<double, Number> row("leading", "whole");
    row("", 0, {});
    row("255", 255, 255);
    row("-20\r\n", -20, {});
    row("  -20  ", -20, -20);
    row(" 12ab", 12, {});
    row("+3", 3, 3);
    row("1.2.3", 1.2, {});
    row("-45.5", -45.5, -45.5);
    row(".5", 0.5, 0.5);
    row("-", 0, {});
    row(".", 0, {});
    row("--5", 0, {});
    row("- 5", 0, {});
    row("ab12", 0, {});
    row("\t5", 0, {});
}

void TextTest::readsNumbers() {
    QTEST(leadingNumber(QTest::currentDataTag()), "leading");
    QTEST(wholeNumberText(QTest::currentDataTag()), "whole");
}

void TextTest::writesNumbers() {
    const std::pair<double, int> rounded[] = {{0.5, 0},   {1.5, 2},   {2.5, 2},     {2.51, 3},
                                              {-2.5, -2}, {-3.5, -4}, {4e4, 32767}, {-1e9, -32768}};
    for (const auto &[value, whole] : rounded)
        QCOMPARE(roundHalfToEven(value), whole);
    for (const char *text : {"0", "5", "-20", "100", "2.5", "-45.5", "0.1", "1000000000000000000"})
        QCOMPARE(decimalText(QByteArray(text).toDouble()), std::string(text));
    QCOMPARE(decimalText(-0.0), std::string("0"));
}
