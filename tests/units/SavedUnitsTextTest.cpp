#include "SavedUnitsTextTest.h"

#include "support/DataTable.h"
#include "support/toString.h"
#include "units/SavedUnitsText.h"

Q_DECLARE_METATYPE(std::string)

namespace {

std::string unitsOf(const SavedUnits &units) {
    std::string all;
    for (int index = 1; index <= units.ControlBlockCount; ++index) {
        const KVNControlBlock &block = units.KVNControlBlocks[index];
        all += "[" + block.Name + "/" + block.ConnectType + "/" + block.IPAddress + "]";
    }
    return all;
}

} // namespace

void SavedUnitsTextTest::readsAndWritesBack_data() {
    const DataTable<std::string, std::string, std::string> row("text", "units", "written");
    const std::string serial = "KVN NAME = A\r\nKVN TYPE = SERIAL\r\n";
    const std::string network = "KVN NAME = B\r\nKVN TYPE = ETHER\r\nKVN IP = 192.168.1.20\r\n";
    const std::string padded = "KVN NAME = B\r\nKVN TYPE = ETHER\r\nKVN IP = 192.168.1.20  \r\n";
    row("empty", "", "", "");
    row("both kinds", serial + network, "[A/SERIAL/][B/ETHER/192.168.1.20  ]", serial + padded);
    row("padding is stable", padded, "[B/ETHER/192.168.1.20  ]", padded);
    row("one digit", "KVN NAME = B\nKVN TYPE = ETHER\nKVN IP = 10.0.0.5", "[B/ETHER/10.0.0.5   ]",
        "KVN NAME = B\r\nKVN TYPE = ETHER\r\nKVN IP = 10.0.0.5   \r\n");
    row("carriage returns only", "KVN NAME = A\rKVN TYPE = SERIAL\r", "[A/SERIAL/]", serial);
    row("foreign lines",
        "; note\r\n\r\nZARN IP = 1.2.3.4\r\nKVN NAME =A\r\nkvn name = A\r\n" + serial,
        "[A/SERIAL/]", serial);
    row("empty name", "KVN NAME = \r\nKVN TYPE = SERIAL\r\n" + serial, "[/SERIAL/][A/SERIAL/]",
        serial);
    row("type before any name", "KVN TYPE = ETHER\r\nKVN IP = 1.2.3.4\r\n" + serial, "[A/SERIAL/]",
        serial);
    row("last type counts", "KVN NAME = A\r\nKVN TYPE = ETHER\r\nKVN TYPE = SERIAL\r\n",
        "[A/SERIAL/]", serial);
    row("lower case type", "KVN NAME = A\r\nKVN TYPE = ether\r\nKVN IP = 1.2.3.4\r\n",
        "[A/ether/1.2.3.4   ]", "KVN NAME = A\r\nKVN TYPE = ether\r\n");
    row("blanks of a name stay", "KVN NAME =  A \r\n", "[ A //]",
        "KVN NAME =  A \r\nKVN TYPE = \r\n");
    row("four digits", "KVN NAME = A\r\nKVN TYPE = ETHER\r\nKVN IP = 1921.68.1.20\r\n",
        "[A/ETHER/1921.68.1.20  ]",
        "KVN NAME = A\r\nKVN TYPE = ETHER\r\nKVN IP = 1921.68.1.20  \r\n");
    row("binary and endless", std::string("\0\xff\x80", 3) + std::string(1 << 20, 'x'), "", "");
}

void SavedUnitsTextTest::readsAndWritesBack() {
    QFETCH(std::string, text);
    QFETCH(std::string, units);
    QFETCH(std::string, written);
    SavedUnits read;
    std::array<std::string, 5> quads;
    QVERIFY(ReadSavedUnitsText(read, text, quads));
    QCOMPARE(unitsOf(read), units);
    QCOMPARE(writeSavedUnitsText(read), written);
}

void SavedUnitsTextTest::stopsAfterTheLastSlot() {
    std::string text;
    for (int number = 1; number <= 26; ++number)
        text += "KVN NAME = " + std::to_string(number) + "\r\nKVN TYPE = SERIAL\r\n";
    SavedUnits read;
    std::array<std::string, 5> quads;
    QVERIFY(!ReadSavedUnitsText(read, text, quads));
    QCOMPARE(read.ControlBlockCount, 25);
    QCOMPARE(read.KVNControlBlocks[25].Name, std::string("25"));
}

void SavedUnitsTextTest::keepsWhatASlotHeldBefore() {
    SavedUnits read;
    std::array<std::string, 5> quads;
    ReadSavedUnitsText(read, "KVN NAME = A\nKVN TYPE = ETHER\nKVN IP = 1.2.3.4\n", quads);
    ReadSavedUnitsText(read, "KVN NAME = B\nKVN TYPE = ETHER\n", quads);
    QCOMPARE(unitsOf(read), std::string("[B/ETHER/1.2.3.4   ]"));
}
