#include "SavedUnitsFileTest.h"

#include "platform/QtFileStore.h"
#include "support/DataTable.h"
#include "support/toString.h"
#include "units/SavedUnitsFile.h"

#include <QDir>
#include <QFile>
#include <QTemporaryDir>

namespace {

/// A program's folder on disk with its saved units.
struct Folder {
    QTemporaryDir folder;
    QtFileStore files;
    SavedUnits units;
    LinkState link;
    SavedUnitsFile file{units, link, files, folder.path().toStdString()};

    [[nodiscard]] QString path(const char *name) const {
        return folder.filePath(QLatin1String(name));
    }
    [[nodiscard]] QByteArray contents(const char *name) const {
        QFile read(path(name));
        return read.open(QIODevice::ReadOnly) ? read.readAll() : QByteArray("no file");
    }
    void put(const char *name, const QByteArray &text) const {
        QFile write(path(name));
        QVERIFY(write.open(QIODevice::WriteOnly));
        write.write(text);
    }
    void addUnit(const std::string &name) {
        units.KVNControlBlocks[++units.ControlBlockCount] = {name, SerialType, {}};
    }
};

} // namespace

void SavedUnitsFileTest::readingAloneChangesNothing() {
    Folder kvn;
    QCOMPARE(kvn.file.CheckGetIniFile(), std::string());
    QVERIFY(QDir(kvn.folder.path()).isEmpty());
    kvn.put("KVNConfigurator.ini", "rubbish\rKVN NAME = A");
    QCOMPARE(kvn.file.CheckGetIniFile(), std::string());
    QCOMPARE(kvn.units.ControlBlockCount, 1);
    QCOMPARE(kvn.contents("KVNConfigurator.ini"), QByteArray("rubbish\rKVN NAME = A"));
    QCOMPARE(kvn.contents("KVNConfigurator.bak"), QByteArray("no file"));
}

void SavedUnitsFileTest::keepsTheFileBefore() {
    Folder kvn;
    kvn.put("KVNConfigurator.ini", "; a line of the user\r\n");
    kvn.addUnit("Studio \xC4");
    QCOMPARE(kvn.file.Write2Disk(), std::string());
    QCOMPARE(kvn.contents("KVNConfigurator.ini"),
             QByteArray("KVN NAME = Studio \xC4\r\nKVN TYPE = SERIAL\r\n"));
    QCOMPARE(kvn.contents("KVNConfigurator.bak"), QByteArray("; a line of the user\r\n"));
    QCOMPARE(QDir(kvn.folder.path()).entryList(QDir::Files).size(), 2);
}

void SavedUnitsFileTest::aFailedSaveTellsAndKeepsAll_data() {
    const DataTable<QByteArray> row("inTheWay");
    row("file", "KVNConfigurator.ini");
    row("backup", "KVNConfigurator.bak");
}

// A folder in the place of a file stops everybody, the administrator too.
void SavedUnitsFileTest::aFailedSaveTellsAndKeepsAll() {
    QFETCH(QByteArray, inTheWay);
    Folder kvn;
    const bool backup = inTheWay.endsWith("bak");
    if (backup)
        kvn.put("KVNConfigurator.ini", "KVN NAME = Old\r\n");
    QVERIFY(QDir(kvn.folder.path()).mkdir(QLatin1String(inTheWay)));
    kvn.addUnit("New");

    const std::string failure = kvn.file.Write2Disk();
    QVERIFY(failure.find(kvn.path(inTheWay.constData()).toStdString()) != std::string::npos);
    QVERIFY(kvn.units.UnsavedChanges);
    QCOMPARE(kvn.file.CheckGetIniFile(), std::string());
    QCOMPARE(kvn.units.KVNControlBlocks[1].Name, std::string("New"));
    if (backup)
        QCOMPARE(kvn.contents("KVNConfigurator.ini"), QByteArray("KVN NAME = Old\r\n"));

    QVERIFY(QDir(kvn.folder.path()).rmdir(QLatin1String(inTheWay)));
    QCOMPARE(kvn.file.Write2Disk(), std::string());
    QVERIFY(kvn.contents("KVNConfigurator.ini").startsWith("KVN NAME = New"));
}
