#include "SerialLinkTest.h"

#include "platform/LinkError.h"
#include "support/FakeStatusViews.h"
#include "support/LinkFixture.h"
#include "support/failureOf.h"
#include "support/toString.h"

namespace {

using Log = std::vector<std::string>;

const std::string Configuration = "\r\nKVN-16x16-RGBA\r\n";

std::string failureOfExchange(LinkFixture &links) {
    return failureOf<LinkError>([&] { links.dispatch.SendCommandGetResponse("CFG ?\r\n"); });
}

} // namespace

void SerialLinkTest::opensPorts() {
    LinkFixture links;
    links.serial.TestCommPort(7);
    QVERIFY(links.state.SerialPortOpen && !links.serialPort.isOpen());
    links.serial.TestCommPort(8);
    QVERIFY(!links.state.SerialPortOpen);
    links.connectSerial();
    links.serialPort.receive("left over");
    links.serial.OpenSerialPort();
    QVERIFY(links.state.SerialPortOpen && links.serialPort.isOpen());
    QCOMPARE(links.serialPort.readAll(), std::string());
    QCOMPARE(links.serialPort.log, Log({"open 7 115200,N,8,1", "close", "open 7 38400,N,8,1",
                                        "close", "open 7 38400,N,8,1"}));
    links.state.SelectedCommPort = 8;
    QVERIFY_THROWS_EXCEPTION(LinkError, links.serial.OpenSerialPort());
    QVERIFY(!links.state.SerialPortOpen);
}

void SerialLinkTest::replyCutByThePeriodPollutesTheNext() {
    LinkFixture links;
    links.connectSerial();
    links.serialPort.wire.delay = 0.25;
    links.serialPort.wire.split = 9;
    links.serialPort.wire.pieceDelay = 0.0625;
    links.dispatch.SendCommandGetResponse("CFG ?\r\n");
    QCOMPARE(links.exchange.ResponseText, std::string("\r\nKVN-16x"));

    links.serialPort.wire.split = 0;
    links.dispatch.SendCommandGetResponse("CFG ?\r\n");
    QCOMPARE(links.exchange.SerialRawReply, "16-RGBA\r\n" + Configuration);
    QCOMPARE(links.exchange.ReplyStatus, 0);
    QCOMPARE(links.exchange.ResponseText, std::string());
}

void SerialLinkTest::healsAfterThePortWasClosed() {
    LinkFixture links;
    FakeStatusViews views(links.display);
    links.connectSerial();
    links.serialPort.close();
    links.dispatch.CloseLink();
    QCOMPARE(links.state.LinkKind, 'S');
    links.dispatch.SendCommandGetResponse("CFG ?\r\n");
    QCOMPARE(links.exchange.ResponseText, Configuration);
    links.serialPort.close();
    links.dispatch.SendCommand("ECHO OFF\r");
    QCOMPARE(links.serialPort.wire.written, std::string("CFG ?\r\nECHO OFF\r"));
    QCOMPARE(links.serialPort.log.back(), std::string("open 7 38400,N,8,1"));

    links.dispatch.CloseLink();
    QCOMPARE(links.state.LinkKind, ' ');
    QVERIFY(!links.state.SerialPortOpen && !links.serialPort.isOpen());
    QCOMPARE(views.captions()[0], std::string("Not Connected"));
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

void SerialLinkTest::exchangeInAReopenIsNotMixedIn() {
    LinkFixture links;
    links.connectSerial();
    links.serialPort.close();
    links.pump.in(0.0, [&] { links.dispatch.SendCommandGetResponse("VOL L 1?\r"); });
    links.dispatch.SendCommandGetResponse("CFG ?\r\n");
    QCOMPARE(links.serialPort.wire.written, std::string("VOL L 1?\rCFG ?\r\n"));
    QCOMPARE(links.exchange.SerialRawReply, Configuration);
}

void SerialLinkTest::tellsWhyItFails() {
    LinkFixture links;
    links.connectSerial();
    links.serialPort.vanish();
    QCOMPARE(failureOfExchange(links),
             std::string("Writing to COM7 failed: the port is not open."));
    QVERIFY(!links.state.SerialPortOpen);
    QCOMPARE(links.state.LinkKind, 'S');

    links.serialPort.present = {7};
    QCOMPARE(failureOfExchange(links), std::string());
    QVERIFY(links.state.SerialPortOpen);
    links.serialPort.writeLimit = 5;
    QCOMPARE(failureOfExchange(links), std::string("Writing to COM7 failed: input/output error."));
}
