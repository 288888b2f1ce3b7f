#pragma once

#include <QtTest/QtTest>

template <class TestObject> int runTest(int argc, char **argv) {
    TestObject test;
    return QTest::qExec(&test, argc, argv);
}

/// Runs the test objects one after the other; the result is the number of failures.
template <class... TestObjects> int runTests(int argc, char **argv) {
    return (runTest<TestObjects>(argc, argv) + ...);
}
