#include "ConfigurationQueryTest.h"

#include "support/DataTable.h"
#include "support/LinkFixture.h"
#include "support/failureOf.h"
#include "support/toString.h"

namespace {

void answer(LinkFixture &links, const std::string &reply) {
    links.serialPort.wire.device = [reply](std::string_view) { return reply; };
    links.socket.wire.device = links.serialPort.wire.device;
}

} // namespace

void ConfigurationQueryTest::findsTheModel_data() {
    const DataTable<std::string, int, std::string> row("reply", "status", "description");
    row("plain", "\r\nKVN-8x4-RGBA\r\n", 60, "RGB 8 x 4 with Audio");
    row("after other text", "\r\nOk, I am a KVN-8x4-HD v2", 60, "HD 8 x 4 No Audio");
    row("after an echo", "CFG ?\r\r\nKVN-8x4-RGB\r\n", 0, "RGB 8 x 4 No Audio");
    row("at the very start", "KVN-8x4-RGB", 0, "RGB 8 x 4 No Audio");
    row("only the first one counts", "\r\nKVN KVN-8x4-RGB", 60, "before");
    row("behind the other family's name", "\r\nRTQ-KVN-8x4-RGB", 0, "before");
    row("that name without its hyphen", "\r\nRTQ KVN-8x4-RGB", 0, "RGB 8 x 4 No Audio");
    row("unknown size", "\r\nKVN-9x9-RGB\r\n", 60, "before");
    row("not recognised at all", "\r\nwhat?\r\n", 0, "before");
}

void ConfigurationQueryTest::findsTheModel() {
    QFETCH(std::string, reply);
    for (const bool serial : {true, false}) {
        LinkFixture links;
        serial ? links.connectSerial() : links.connectNetwork();
        answer(links, reply);
        links.model.ModelDescription = "before";
        links.configuration.GetParseConfiguration();
        QCOMPARE(links.serialPort.wire.written + links.socket.wire.written,
                 std::string("CFG ?\r\n"));
        QTEST(links.exchange.ReplyStatus, "status");
        QTEST(links.model.ModelDescription, "description");
        QCOMPARE(links.exchange.ResponseText, reply);
    }
}

void ConfigurationQueryTest::silenceStops() {
    LinkFixture links;
    links.connectNetwork();
    links.configuration.GetParseConfiguration();
    answer(links, "");
    links.configuration.GetParseConfiguration();
    QCOMPARE(links.exchange.ReplyStatus, 50);
    QCOMPARE(links.model.ModelDescription, std::string("RGB 16x16 with Audio"));
}

void ConfigurationQueryTest::buttonsThatDoNotFit() {
    LinkFixture links;
    links.connectSerial();
    answer(links, "\r\nKVN-8x4-C\r\n");
    links.model.NumInputs = 32;
    const auto ask = [&] { links.configuration.GetParseConfiguration(); };
    QCOMPARE(failureOf<RangeError>(ask),
             std::string("The buttons of KVN-8x4-C do not fit the panel: "
                         "ButtonInput has no index 33 (0 to 32)."));
    QVERIFY(links.serialPort.isOpen());
}
