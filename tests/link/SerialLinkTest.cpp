#include "SerialLinkTest.h"

#include "platform/LinkError.h"
#include "support/FakeStatusViews.h"
#include "support/LinkFixture.h"
#include "support/toString.h"

#include <QtTest/QtTest>

namespace {

using Log = std::vector<std::string>;

const std::string Configuration = "\r\nKVN-16x16-RGBA\r\n";

std::string failureOf(LinkFixture &links) {
    try {
        links.dispatch.SendCommandGetResponse("CFG ?\r\n");
    } catch (const LinkError &error) {
        return error.what();
    }
    return {};
}

} // namespace

void SerialLinkTest::testsAPort_data() {
    QTest::addColumn<int>("port");
    QTest::addColumn<bool>("found");
    QTest::newRow("there") << 7 << true;
    QTest::newRow("missing or held by another program") << 8 << false;
}

void SerialLinkTest::testsAPort() {
    QFETCH(int, port);
    QFETCH(bool, found);
    LinkFixture links;
    links.state.SerialPortOpen = !found;
    links.serial.TestCommPort(port);
    QCOMPARE(links.state.SerialPortOpen, found);
    QVERIFY(!links.serialPort.isOpen());
    QCOMPARE(links.serialPort.log, found ? Log({"open 7 115200,N,8,1", "close"}) : Log());
}

void SerialLinkTest::opensForUse() {
    LinkFixture links;
    links.connectSerial();
    links.serialPort.receive("left over");
    links.serial.OpenSerialPort();
    QCOMPARE(links.serialPort.log, Log({"open 7 38400,N,8,1", "close", "open 7 38400,N,8,1"}));
    QVERIFY(links.state.SerialPortOpen);
    QCOMPARE(links.serialPort.readAll(), std::string());

    links.state.SelectedCommPort = 9;
    QVERIFY_EXCEPTION_THROWN(links.serial.OpenSerialPort(), LinkError);
    QVERIFY(!links.state.SerialPortOpen);
}

void SerialLinkTest::replyCutByThePeriodPollutesTheNext() {
    LinkFixture links;
    links.connectSerial();
    links.serialPort.wire.delay = 0.25;
    links.serialPort.wire.split = 9;
    links.serialPort.wire.pieceDelay = 0.0625;
    links.dispatch.SendCommandGetResponse("CFG ?\r\n");
    QCOMPARE(links.exchange.ReplyStatus, 60);
    QCOMPARE(links.exchange.ResponseText, std::string("\r\nKVN-16x"));

    links.serialPort.wire.delay = 0.1;
    links.serialPort.wire.split = 0;
    links.dispatch.SendCommandGetResponse("CFG ?\r\n");
    QCOMPARE(links.exchange.SerialRawReply, "16-RGBA\r\n" + Configuration);
    QCOMPARE(links.exchange.ReplyStatus, 0);
    QCOMPARE(links.exchange.ResponseText, std::string());
}

void SerialLinkTest::healsAfterThePortWasClosed() {
    LinkFixture links;
    links.connectSerial();
    links.serialPort.close();
    links.dispatch.SendCommandGetResponse("CFG ?\r\n");
    QCOMPARE(links.exchange.ResponseText, Configuration);
    links.serialPort.close();
    links.dispatch.SendCommand("ECHO OFF\r");
    QCOMPARE(links.serialPort.wire.written, std::string("CFG ?\r\nECHO OFF\r"));
    QCOMPARE(links.serialPort.log.back(), std::string("open 7 38400,N,8,1"));
}

void SerialLinkTest::nestedExchangeInAReopenIsNotMixedIn() {
    LinkFixture links;
    links.connectSerial();
    links.serialPort.close();
    links.pump.in(0.0, [&] { links.dispatch.SendCommandGetResponse("VOL L 1?\r"); });
    links.dispatch.SendCommandGetResponse("CFG ?\r\n");
    QCOMPARE(links.serialPort.wire.written, std::string("VOL L 1?\rCFG ?\r\n"));
    QCOMPARE(links.exchange.SerialRawReply, Configuration);
}

void SerialLinkTest::exchangeFromAnEventTakesOver() {
    LinkFixture links;
    links.connectSerial();
    const double start = links.pump.now();
    links.pump.in(0.1, [&] { links.dispatch.SendCommandGetResponse("CFG ?\r\n"); });
    links.dispatch.SendCommandGetResponse("VOL L 1?\r");
    QCOMPARE(links.pump.now() - start, 0.4);
    QCOMPARE(links.exchange.SerialRawReply, Configuration);
    QCOMPARE(links.exchange.ResponseText, Configuration);
}

void SerialLinkTest::portThatVanished() {
    LinkFixture links;
    links.connectSerial();
    links.serialPort.vanish();
    QCOMPARE(failureOf(links), std::string("Writing to COM7 failed: the port is not open."));
    QVERIFY(!links.state.SerialPortOpen);
    QCOMPARE(links.state.LinkKind, 'S');

    links.serialPort.present = {7};
    QCOMPARE(failureOf(links), std::string());
    QVERIFY(links.state.SerialPortOpen);
    QCOMPARE(links.exchange.ResponseText, Configuration);
}

void SerialLinkTest::writeThatFails() {
    LinkFixture links;
    links.connectSerial();
    links.serialPort.writeLimit = 8;
    QCOMPARE(failureOf(links), std::string());
    QCOMPARE(failureOf(links), std::string("Writing to COM7 failed: input/output error."));
}

void SerialLinkTest::closesForGoodOnlyWhenOpen() {
    LinkFixture links;
    FakeStatusViews views(links.display);
    links.connectSerial();
    links.serialPort.close();
    links.dispatch.CloseLink();
    QCOMPARE(links.state.LinkKind, 'S');
    links.dispatch.SendCommandGetResponse("CFG ?\r\n");
    QCOMPARE(links.exchange.ResponseText, Configuration);

    links.dispatch.CloseLink();
    QCOMPARE(links.state.LinkKind, ' ');
    QVERIFY(!links.state.SerialPortOpen);
    QVERIFY(!links.serialPort.isOpen());
    QCOMPARE(views[StatusWindow::Start].look.caption, std::string("Not Connected"));
}
