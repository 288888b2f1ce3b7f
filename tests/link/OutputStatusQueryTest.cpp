#include "OutputStatusQueryTest.h"

#include "support/DataTable.h"
#include "support/LinkFixture.h"
#include "support/toString.h"

namespace {

void connect(LinkFixture &links, char kind) {
    if (kind == SerialLinkKind)
        links.connectSerial();
    else
        links.connectNetwork();
    links.model.NumOutputs = 2;
    links.routing.Outputs.fill({"1", 'a', 'U', "b", 'c', "-7", "3", 'd', "4"});
}

} // namespace

void OutputStatusQueryTest::parsesTheSecondReply_data() {
    const DataTable<char, std::string> row("kind", "firstReply");
    row("serial", 'S', "\r\nSTA O A\r\n  Output 1 (A,M,0,V,5,9,D,9)");
    row("serial, first unknown", 'S', "\r\n??");
    row("network", 'E', "\r\nSTA O A\r\n  Output 1 (A,M,0,V,5,9,D,9)");
    row("network, first missing", 'E', "");
}

void OutputStatusQueryTest::parsesTheSecondReply() {
    QFETCH(char, kind);
    QFETCH(std::string, firstReply);
    LinkFixture links;
    ::connect(links, kind);
    int queries = 0;
    links.serialPort.wire.device = links.socket.wire.device = [&](std::string_view) {
        return ++queries == 1 ? firstReply
                              : "\r\nSTA O A\r\n  Output 1 (A,M,0,V,-20,255,D,8)\r\n"
                                "  Output 2 (A,U,0,V,0,1,D,2)\r\n";
    };
    links.outputStatus.RequestOutputStatus();
    QCOMPARE(links.serialPort.wire.written + links.socket.wire.written,
             std::string("STA O A\rSTA O A\r"));
    QCOMPARE(links.routing.Outputs[1].MuteFlag, 'M');
    QCOMPARE(links.routing.Outputs[1].VolumeText, std::string("-20"));
    QCOMPARE(links.routing.Outputs[1].AudioInputText, std::string("255"));
    QCOMPARE(links.routing.Outputs[2].VideoInputText, std::string("2"));
    QCOMPARE(links.routing.Outputs[3].VideoInputText, std::string("4"));
    QVERIFY(links.messages.shown.empty());
}

void OutputStatusQueryTest::silence() {
    for (const char kind : {'S', 'E'}) {
        const bool serial = kind == 'S';
        LinkFixture links;
        ::connect(links, kind);
        links.serialPort.wire.device =
            links.socket.wire.device = [](auto) { return std::string(); };
        links.outputStatus.RequestOutputStatus();
        QCOMPARE(links.serialPort.wire.written, std::string(serial ? "STA O A\r" : ""));
        QCOMPARE(links.socket.wire.written, std::string(serial ? "" : "STA O A\rSTA O A\r"));
        std::vector<std::string> messages;
        if (serial)
            messages.emplace_back("No Response Received from CommPort 7\r\n"
                                  "Please check cabling and Try Again ");
        QCOMPARE(links.messages.shown, messages);
        QCOMPARE(links.routing.Outputs[2].MuteFlag, serial ? 'U' : ' ');
        QCOMPARE(links.routing.Outputs[2].VolumeText, std::string("-7"));
        QCOMPARE(links.routing.Outputs[3].MuteFlag, 'U');
    }
}
