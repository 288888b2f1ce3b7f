#pragma once

#include <QtTest/QtTest>

#include <array>
#include <string>
#include <vector>

/// Lets a failed comparison of texts show both, control characters escaped.
template <> inline char *QTest::toString(const std::string &text) {
    return toString(QByteArray::fromStdString(text));
}

using Rows = std::vector<std::array<std::string, 2>>;

/// A table of texts: what `result` makes of each first one must be the second.
template <class Result> void checkRows(const Rows &rows, const Result &result) {
    for (const auto &[given, expected] : rows)
        QCOMPARE(given + " -> " + result(given), given + " -> " + expected);
}

/// The data table of one test. Called with a name and a value for each column it adds a row:
///     const DataTable<std::string, int> row("reply", "status");
///     row("nothing", "", 50);
template <class... Columns> struct DataTable {
    template <class... Names> explicit DataTable(Names... names) {
        (QTest::addColumn<Columns>(names), ...);
    }
    void operator()(const char *name, const Columns &...values) const {
        (QTest::newRow(name) << ... << values);
    }
};

/// The text of the Error that `action` throws, empty if it throws none.
template <class Error, class Action> std::string failureOf(Action &&action) {
    try {
        action();
    } catch (const Error &error) {
        return error.what();
    }
    return {};
}
