#include "ReplyClassTest.h"

#include "protocol/ReplyClass.h"
#include "support/toString.h"

#include <QtTest/QtTest>

void ReplyClassTest::classifies_data() {
    QTest::addColumn<std::string>("reply");
    QTest::addColumn<int>("status");
    const auto row = [](const char *name, const char *reply, int status) {
        QTest::newRow(name) << std::string(reply) << status;
    };
    row("nothing", "", 50);
    row("one character", "K", 0);
    row("two characters", "\r\n", 0);
    row("half a code", "\r\nO", 0);
    row("configuration", "\r\nKVN-8x4-S\r\n", 60);
    row("adapter", "\r\nZarn", 60);
    row("adapter in capitals", "\r\nZARN", 60);
    row("acknowledgement", "\r\nOk", 60);
    row("status", "\r\nSTA O A", 60);
    row("error report", "\r\nERROR form\r\n", 60);
    row("volume", "\r\nVOL L 5 -20\r\n", 60);
    row("any first two characters", "??Ok", 60);
    row("no line end first", "Ok", 0);
    row("echo first", "CFG ?\r\r\nKVN-8x4-S", 0);
    row("lower case", "\r\nok", 0);
    row("upper case", "\r\nOK", 0);
    row("code too late", "\r\n Ok", 0);
}

void ReplyClassTest::classifies() {
    QFETCH(std::string, reply);
    QTEST(classifyReply(reply), "status");
}

void ReplyClassTest::keepsOneMebibyte() {
    std::string reply;
    appendReceived(reply, "\r\n");
    appendReceived(reply, "Ok");
    QCOMPARE(reply, std::string("\r\nOk"));

    appendReceived(reply, std::string(1048570, 'a'));
    appendReceived(reply, "bcde");
    QCOMPARE(reply.size(), std::size_t{1048576});
    QCOMPARE(reply.substr(1048574), std::string("bc"));
    appendReceived(reply, "f");
    QCOMPARE(reply.size(), std::size_t{1048576});
}
