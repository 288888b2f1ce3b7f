#pragma once

#include <QtTest/QtTest>

#include <string>

namespace QTest {

/// Lets a failed comparison of texts show both, control characters escaped.
template <> inline char *toString(const std::string &text) {
    return toString(QByteArray::fromStdString(text));
}

} // namespace QTest
