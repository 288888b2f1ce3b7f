#pragma once

#include <QtTest/QtTest>

/// The data table of one test. Called with a name and a value for each column it adds a row:
///     const DataTable<std::string, int> row("reply", "status");
///     row("nothing", "", 50);
template <class... Columns> class DataTable {
public:
    template <class... Names> explicit DataTable(Names... names) {
        (QTest::addColumn<Columns>(names), ...);
    }

    void operator()(const char *name, const Columns &...values) const {
        QTestData &row = QTest::newRow(name);
        ((row << values), ...);
    }
};
