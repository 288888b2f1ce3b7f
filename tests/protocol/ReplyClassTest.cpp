#include "ReplyClassTest.h"

#include "protocol/ReplyClass.h"
#include "support/DataTable.h"

void ReplyClassTest::classifies_data() {
    const DataTable<std::string, int> row("reply", "status");
    row("nothing", "", 50);
    row("one character", "K", 0);
    row("two characters", "Ok", 0);
    row("half a code", "\r\nO", 0);
    row("configuration", "\r\nKVN-8x4-S\r\n", 60);
    row("adapter", "\r\nZarn", 60);
    row("adapter in capitals", "\r\nZARN", 60);
    row("acknowledgement", "\r\nOk", 60);
    row("status", "\r\nSTA O A", 60);
    row("error report", "\r\nERROR form\r\n", 60);
    row("volume", "\r\nVOL L 5 -20\r\n", 60);
    row("any first two characters", "??Ok", 60);
    row("echo first", "CFG ?\r\r\nKVN-8x4-S", 0);
    row("lower case", "\r\nok", 0);
    row("upper case", "\r\nOK", 0);
}

void ReplyClassTest::classifies() {
    QFETCH(std::string, reply);
    QTEST(classifyReply(reply), "status");
}
