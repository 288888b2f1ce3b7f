#include "SavedUnitsFileTest.h"

#include "QtFileStore.h"
#include "support/DataTable.h"
#include "support/toString.h"
#include "units/SavedUnitsFile.h"
#include "units/SavedUnitsText.h"

#include <QDir>
#include <QFile>
#include <QTemporaryDir>

#include <fstream>

namespace {

const std::string Serial = "KVN NAME = A\r\nKVN TYPE = SERIAL\r\n";

/// Reads a text into the units and tells them.
std::string read(SavedUnits &units, const std::string &text) {
    std::array<std::string, 5> quads;
    ReadSavedUnitsText(units, text, quads);
    std::string all;
    for (int index = 1; index <= units.ControlBlockCount; ++index) {
        const KVNControlBlock &block = units.KVNControlBlocks[index];
        all += "[" + block.Name + "/" + block.ConnectType + "/" + block.IPAddress + "]";
    }
    return all;
}

/// A program's folder on disk with its saved units.
struct Folder {
    QTemporaryDir folder;
    QtFileStore files;
    SavedUnits units;
    LinkState link;
    SavedUnitsFile file{units, link, files, folder.path().toStdString()};

    [[nodiscard]] std::string path(const char *ending) const {
        return folder.path().toStdString() + "/KVNConfigurator." + ending;
    }
    [[nodiscard]] std::string read(const char *ending) const {
        QFile saved(QString::fromStdString(path(ending)));
        return saved.open(QIODevice::ReadOnly) ? saved.readAll().toStdString() : "";
    }
    [[nodiscard]] std::string ini() const { return read("ini"); }
    /// What the saved units and their backup hold, "|" between them.
    [[nodiscard]] std::string contents() const { return ini() + "|" + read("bak"); }
};

} // namespace

void SavedUnitsFileTest::readsAndWritesBack_data() {
    const DataTable<std::string, std::string, std::string> row("text", "units", "written");
    const std::string b = "KVN NAME = B\r\nKVN TYPE = ETHER\r\n";
    const std::string padded = b + "KVN IP = 192.168.1.20  \r\n";
    row("empty", "", "", "");
    row("both kinds", Serial + b + "KVN IP = 192.168.1.20\r\n",
        "[A/SERIAL/][B/ETHER/192.168.1.20  ]", Serial + padded);
    row("padding is stable", padded, "[B/ETHER/192.168.1.20  ]", padded);
    row("one digit", b + "KVN IP = 10.0.0.5", "[B/ETHER/10.0.0.5   ]",
        b + "KVN IP = 10.0.0.5   \r\n");
    row("carriage returns only", "KVN NAME = A\rKVN TYPE = SERIAL\r", "[A/SERIAL/]", Serial);
    row("foreign lines", "; note\n\nZARN IP = 1.2.3.4\nKVN NAME =A\nkvn name = A\n" + Serial,
        "[A/SERIAL/]", Serial);
    row("empty name", "KVN NAME = \nKVN TYPE = SERIAL\n" + Serial, "[/SERIAL/][A/SERIAL/]", Serial);
    row("type before any name", "KVN TYPE = ETHER\nKVN IP = 1.2.3.4\n" + Serial, "[A/SERIAL/]",
        Serial);
    row("last type counts", "KVN NAME = A\nKVN TYPE = ETHER\nKVN TYPE = SERIAL\n", "[A/SERIAL/]",
        Serial);
    row("blanks of a name stay", "KVN NAME =  A \n", "[ A //]",
        "KVN NAME =  A \r\nKVN TYPE = \r\n");
    row("byte order mark", "\xEF\xBB\xBF" + Serial, "[A/SERIAL/]", Serial);
    row("binary and endless", std::string("\0\xff\x80", 3) + std::string(1 << 20, 'x'), "", "");
}

void SavedUnitsFileTest::readsAndWritesBack() {
    QFETCH(std::string, text);
    SavedUnits units;
    QTEST(read(units, text), "units");
    QTEST(writeSavedUnitsText(units), "written");
}

void SavedUnitsFileTest::aSlotKeepsWhatItHeld() {
    SavedUnits units;
    read(units, "KVN NAME = A\nKVN TYPE = ETHER\nKVN IP = 1.2.3.4\n");
    QCOMPARE(read(units, "KVN NAME = B\nKVN TYPE = ETHER\n"), std::string("[B/ETHER/1.2.3.4   ]"));
}

void SavedUnitsFileTest::whatIsLeftOutStaysInTheFile() {
    const auto unitsOf = [](int count) {
        std::string text;
        for (int number = 0; number < count; ++number)
            text += Serial;
        return text;
    };
    const std::string z = "KVN NAME = Z\nKVN TYPE = ETHER\r\n; mine\rKVN IP = 10.0.0.5\n";
    const std::string tail = "KVN NAME = Y\r" + z;
    Folder kvn;
    const std::string message =
        kvn.path("ini") + " holds more than 25 units; those after the 25th are left out. They "
                          "stay at the end of that file and come in when others are deleted.";
    const auto growTo = [&](const std::string &text) {
        std::ofstream(kvn.path("ini"), std::ios::binary) << text;
    };
    growTo(unitsOf(25) + tail);
    QCOMPARE(kvn.file.CheckGetIniFile(), message);
    for (const std::string name : {"B", "C", "D"}) {
        QCOMPARE(kvn.units.ControlBlockCount, 25);
        kvn.units.KVNControlBlocks[25].Name = name;
        QCOMPARE(kvn.file.Write2Disk(), std::string());
        QCOMPARE(kvn.ini(),
                 unitsOf(24) + "KVN NAME = " + name + "\r\nKVN TYPE = SERIAL\r\n" + tail);
        QCOMPARE(kvn.file.CheckGetIniFile(), std::string()); // told once
    }
    const auto deleteLast = [&] {
        kvn.units.KVNControlBlocks[25] = {};
        std::string told = kvn.file.Write2Disk();
        told += kvn.file.CheckGetIniFile();
        return told + kvn.ini() + "|" + kvn.units.KVNControlBlocks[25].Name;
    };
    QCOMPARE(deleteLast(), unitsOf(24) + tail + "|Y");
    QCOMPARE(deleteLast(), unitsOf(24) + z + "|Z");
    QCOMPARE(kvn.file.Write2Disk(), std::string());
    QCOMPARE(kvn.ini(),
             unitsOf(24) + "KVN NAME = Z\r\nKVN TYPE = ETHER\r\nKVN IP = 10.0.0.5   \r\n");
    growTo(unitsOf(25) + z);
    QCOMPARE(kvn.file.CheckGetIniFile(), message); // it was whole meanwhile
    growTo("");
    QCOMPARE(kvn.file.CheckGetIniFile(), std::string());
    QCOMPARE(kvn.file.Write2Disk(), std::string());
    QCOMPARE(kvn.ini(), std::string());
}

void SavedUnitsFileTest::savesWithABackup() {
    Folder kvn;
    QCOMPARE(kvn.file.CheckGetIniFile() + kvn.contents(), std::string("|"));
    std::ofstream(kvn.path("ini"), std::ios::binary) << "rubbish\rKVN NAME = \xC4";
    QCOMPARE(kvn.file.CheckGetIniFile() + kvn.contents(), std::string("rubbish\rKVN NAME = \xC4|"));
    QCOMPARE(kvn.file.Write2Disk(), std::string());
    QCOMPARE(kvn.contents(),
             std::string("KVN NAME = \xC4\r\nKVN TYPE = \r\n|rubbish\rKVN NAME = \xC4"));
    QCOMPARE(QDir(kvn.folder.path()).entryList(QDir::Files).size(), 2);
}

// A folder in the place of a file stops everybody, the administrator too.
void SavedUnitsFileTest::aFailedSaveTellsAndKeepsAll() {
    for (const char *const inTheWay : {"ini", "bak"}) {
        Folder kvn;
        const std::string before = *inTheWay == 'b' ? "KVN NAME = Old\r\n" : "";
        if (!before.empty())
            std::ofstream(kvn.path("ini"), std::ios::binary) << before;
        const QString path = QString::fromStdString(kvn.path(inTheWay));
        QVERIFY(QDir().mkdir(path));
        kvn.units.KVNControlBlocks[++kvn.units.ControlBlockCount] = {"New", SerialType, {}};
        QVERIFY(kvn.file.Write2Disk().find(path.toStdString()) != std::string::npos);
        QVERIFY(kvn.units.UnsavedChanges);
        QCOMPARE(kvn.file.CheckGetIniFile() + kvn.units.KVNControlBlocks[1].Name,
                 std::string("New"));
        QCOMPARE(kvn.contents(), before + "|");
        QVERIFY(QDir().rmdir(path));
        QCOMPARE(kvn.file.Write2Disk(), std::string());
        QCOMPARE(kvn.contents(), "KVN NAME = New\r\nKVN TYPE = SERIAL\r\n|" + before);
    }
}
