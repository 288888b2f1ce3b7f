#include "OutputStatusQueryTest.h"

#include "support/LinkFixture.h"
#include "support/toString.h"

#include <QtTest/QtTest>

namespace {

void fillOld(LinkFixture &links) {
    links.model.NumOutputs = 2;
    links.routing.Outputs.fill({"1", 'a', 'U', "b", 'c', "-7", "3", 'd', "4"});
}

} // namespace

void OutputStatusQueryTest::parsesTheSecondReply_data() {
    QTest::addColumn<char>("kind");
    QTest::addColumn<std::string>("firstReply");
    QTest::newRow("serial") << 'S' << std::string("\r\nSTA O A\r\n  Output 1 (A,M,0,V,5,9,D,9)");
    QTest::newRow("serial, first unknown") << 'S' << std::string("\r\n??");
    QTest::newRow("network") << 'E' << std::string("\r\nSTA O A\r\n  Output 1 (A,M,0,V,5,9,D,9)");
    QTest::newRow("network, first missing") << 'E' << std::string();
}

void OutputStatusQueryTest::parsesTheSecondReply() {
    QFETCH(char, kind);
    QFETCH(std::string, firstReply);
    LinkFixture links;
    fillOld(links);
    int queries = 0;
    const auto device = [&](std::string_view) {
        return ++queries == 1 ? firstReply
                              : "\r\nSTA O A\r\n  Output 1 (A,M,0,V,-20,255,D,8)\r\n"
                                "  Output 2 (A,U,0,V,0,1,D,2)\r\n";
    };
    links.serialPort.wire.device = links.socket.wire.device = device;
    if (kind == SerialLinkKind)
        links.connectSerial();
    else
        links.connectNetwork();

    links.outputStatus.RequestOutputStatus();

    QCOMPARE(links.serialPort.wire.written + links.socket.wire.written,
             std::string("STA O A\rSTA O A\r"));
    QCOMPARE(links.routing.Outputs[1].MuteFlag, 'M');
    QCOMPARE(links.routing.Outputs[1].VolumeText, std::string("-20"));
    QCOMPARE(links.routing.Outputs[1].AudioInputText, std::string("255"));
    QCOMPARE(links.routing.Outputs[1].VideoInputText, std::string("8"));
    QCOMPARE(links.routing.Outputs[2].VideoInputText, std::string("2"));
    QCOMPARE(links.routing.Outputs[3].VideoInputText, std::string("4"));
    QVERIFY(links.messages.shown.empty());
}

void OutputStatusQueryTest::serialSilence() {
    LinkFixture links;
    links.connectSerial();
    fillOld(links);
    links.serialPort.wire.device = [](std::string_view) { return std::string(); };
    links.outputStatus.RequestOutputStatus();
    QCOMPARE(links.serialPort.wire.written, std::string("STA O A\r"));
    QCOMPARE(links.messages.shown,
             std::vector<std::string>{"No Response Received from CommPort 7\r\n"
                                      "Please check cabling and Try Again "});
    QCOMPARE(links.routing.Outputs[1].MuteFlag, 'U');
}

void OutputStatusQueryTest::networkSilence() {
    LinkFixture links;
    links.connectNetwork();
    fillOld(links);
    links.socket.wire.device = [](std::string_view) { return std::string(); };
    links.outputStatus.RequestOutputStatus();
    QCOMPARE(links.socket.wire.written, std::string("STA O A\rSTA O A\r"));
    QVERIFY(links.messages.shown.empty());
    QCOMPARE(links.routing.Outputs[2].MuteFlag, ' ');
    QCOMPARE(links.routing.Outputs[2].VolumeText, std::string("-7"));
    QCOMPARE(links.routing.Outputs[3].MuteFlag, 'U');
}
