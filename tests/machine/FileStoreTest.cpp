#include "QtFileStore.h"
#include "support/rows.h"

#include <QTemporaryDir>

#include <csignal>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <sys/resource.h>
#include <sys/stat.h>

namespace fs = std::filesystem;

namespace {

/// A folder with a file and the copy of the one before.
struct Folder {
    QTemporaryDir folder;
    fs::path path = folder.path().toStdString();
    std::string ini = path / "units.ini", bak = path / "units.bak";
    QtFileStore files;

    [[nodiscard]] std::string replace(const std::string &contents) {
        return files.replace(ini, contents, bak);
    }
};

void put(const fs::path &file, const std::string &contents) { std::ofstream(file) << contents; }

std::string contentsOf(const fs::path &file) {
    std::ifstream stream(file);
    return {std::istreambuf_iterator<char>(stream), {}};
}

} // namespace

/// The file store on the real disk.
class FileStoreTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    // Sizes in bytes: the largest that a file can have, what is in it, what it is to become.
    static void aDiskWithoutRoomLosesNothing() {
        std::signal(SIGXFSZ, SIG_IGN);
        for (const auto &[room, before, after, copyFails] : {std::tuple(0UL, 100UL, 120UL, false),
                                                             {8192, 100, 20000, false},
                                                             {8192, 12000, 100, true}}) {
            Folder kvn;
            const std::string old(before, 'o'), wanted(after, 'n');
            put(kvn.ini, old);
            put(kvn.bak, "older");
            rlimit usual{};
            ::getrlimit(RLIMIT_FSIZE, &usual);
            const rlimit tight{room, usual.rlim_max};
            ::setrlimit(RLIMIT_FSIZE, &tight);
            const std::string failure = kvn.replace(wanted);
            ::setrlimit(RLIMIT_FSIZE, &usual);
            const std::string copy = "Replacing " + kvn.ini + " failed, its copy cannot be kept: ";
            QCOMPARE(failure, (copyFails ? copy + "Writing " + kvn.bak : "Writing " + kvn.ini) +
                                  " failed: File too large.");
            QCOMPARE(contentsOf(kvn.ini) + contentsOf(kvn.bak), old + "older");
            QCOMPARE(std::distance(fs::directory_iterator(kvn.path), {}), 2);
            QCOMPARE(kvn.replace(wanted), std::string());
            QCOMPARE(contentsOf(kvn.ini) + contentsOf(kvn.bak), wanted + old);
        }
    }

    static void whatIsNoFileIsLeftAlone() {
        const std::string reason = " failed: It is not a regular file.";
        for (const auto make : {::mkfifo, ::mkdir}) {
            Folder kvn;
            QCOMPARE(make(kvn.ini.c_str(), 0700), 0);
            std::string contents;
            QCOMPARE(kvn.files.read(kvn.ini, contents), "Reading " + kvn.ini + reason);
            QCOMPARE(kvn.replace("new"), "Writing " + kvn.ini + reason);
            fs::rename(kvn.ini, kvn.bak);
            put(kvn.ini, "old");
            QVERIFY(kvn.replace("new").ends_with("kept: Writing " + kvn.bak + reason));
            QVERIFY(!fs::is_regular_file(kvn.bak) && contentsOf(kvn.ini) == "old");
        }
    }

    static void theCopyIsAsPrivateAsTheFile() {
        for (const unsigned mode : {0600U, 0640U, 0644U}) {
            Folder kvn;
            for (const std::string contents : {"first", "second", "third"}) {
                QCOMPARE(kvn.replace(contents), std::string());
                QCOMPARE(contentsOf(kvn.ini), contents);
                QCOMPARE(kvn.files.exists(kvn.bak), contents != "first");
                fs::permissions(kvn.ini, fs::perms(mode));
            }
            QCOMPARE(static_cast<unsigned>(fs::status(kvn.bak).permissions()), mode);
        }
    }

    static void aLinkedFileStaysLinked() {
        Folder kvn;
        const fs::path target = kvn.files.join(kvn.path, "elsewhere");
        const std::string bytes("\r\n\0\xff\n", 5);
        put(target, bytes);
        fs::create_symlink(target, kvn.ini);
        QCOMPARE(kvn.replace("new"), std::string());
        QVERIFY(fs::is_symlink(kvn.ini) && contentsOf(target) == "new");
        std::string contents;
        QCOMPARE(kvn.files.read(kvn.bak, contents) + contents, bytes);
        fs::remove(target);
        QCOMPARE(kvn.files.read(kvn.ini, contents),
                 "Reading " + kvn.ini + " failed: No such file or directory.");
    }
};

QTEST_GUILESS_MAIN(FileStoreTest)
#include "FileStoreTest.moc"
