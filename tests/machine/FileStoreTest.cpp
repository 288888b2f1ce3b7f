#include "FileStoreTest.h"

#include "QtFileStore.h"
#include "support/DataTable.h"
#include "support/toString.h"

#include <QTemporaryDir>

#include <csignal>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <sys/mount.h>
#include <sys/resource.h>
#include <sys/stat.h>

namespace fs = std::filesystem;

namespace {

/// A folder with a file and the copy of the one before.
struct Folder {
    QTemporaryDir folder;
    fs::path path = folder.path().toStdString();
    std::string ini = path / "units.ini";
    std::string bak = path / "units.bak";
    QtFileStore files;

    static void write(const fs::path &file, const std::string &contents) {
        std::ofstream(file, std::ios::binary) << contents;
    }
    static std::string contents(const fs::path &file) {
        std::ifstream stream(file, std::ios::binary);
        return {std::istreambuf_iterator<char>(stream), {}};
    }
    [[nodiscard]] auto names() const {
        return std::distance(fs::directory_iterator(path), fs::directory_iterator());
    }
};

/// A file system of 64 KiB of which `room` bytes are free.
class SmallDisk {
public:
    explicit SmallDisk(const fs::path &place)
        : path(place), mounted(::mount("tmpfs", path.c_str(), "tmpfs", 0, "size=64k") == 0) {}
    SmallDisk(const SmallDisk &) = delete;
    SmallDisk &operator=(const SmallDisk &) = delete;
    ~SmallDisk() {
        if (mounted)
            ::umount2(path.c_str(), MNT_DETACH);
    }
    void leave(std::uintmax_t room) const {
        const fs::path filler = path / "filler";
        Folder::write(filler, std::string(fs::space(path).available - room, 'x'));
    }
    [[nodiscard]] bool isMounted() const { return mounted; }

private:
    fs::path path;
    bool mounted;
};

/// No file of this process can grow beyond `bytes` while this lives.
class FileSizeLimit {
public:
    explicit FileSizeLimit(rlim_t bytes) {
        ::getrlimit(RLIMIT_FSIZE, &before);
        const rlimit limit{bytes, before.rlim_max};
        ::setrlimit(RLIMIT_FSIZE, &limit);
    }
    FileSizeLimit(const FileSizeLimit &) = delete;
    FileSizeLimit &operator=(const FileSizeLimit &) = delete;
    ~FileSizeLimit() {
        ::setrlimit(RLIMIT_FSIZE, &before);
        std::signal(SIGXFSZ, handlerBefore);
    }

private:
    rlimit before{};
    void (*handlerBefore)(int) = std::signal(SIGXFSZ, SIG_IGN);
};

} // namespace

void FileStoreTest::aDiskWithoutRoomLosesNothing_data() {
    const DataTable<bool, int, int, int, bool> row("smallDisk", "room", "before", "after",
                                                   "copyFails");
    for (const bool smallDisk : {false, true}) {
        const QByteArray disk = smallDisk ? "small disk, " : "limited size, ";
        row(disk + "a few bytes", smallDisk, 0, 100, 120, false);
        row(disk + "more than there is room for", smallDisk, 8192, 100, 20000, false);
        row(disk + "the copy alone", smallDisk, 8192, 12000, 100, true);
    }
}

void FileStoreTest::aDiskWithoutRoomLosesNothing() {
    QFETCH(bool, smallDisk);
    QFETCH(int, room);
    QFETCH(int, before);
    QFETCH(int, after);
    QFETCH(bool, copyFails);
    Folder kvn;
    const std::string old(static_cast<std::size_t>(before), 'o');
    const std::string wanted(static_cast<std::size_t>(after), 'n');
    std::string failure;
    {
        const auto disk = smallDisk ? std::make_unique<SmallDisk>(kvn.path) : nullptr;
        if (disk && !disk->isMounted())
            QSKIP("A disk of its own needs the right to mount; the rows with a limited size ran.");
        Folder::write(kvn.ini, old);
        Folder::write(kvn.bak, "older");
        const auto namesBefore = kvn.names() + (disk ? 1 : 0);
        if (disk) {
            disk->leave(static_cast<std::uintmax_t>(room));
            failure = kvn.files.replace(kvn.ini, wanted, kvn.bak);
        } else {
            const FileSizeLimit limit(static_cast<rlim_t>(room));
            failure = kvn.files.replace(kvn.ini, wanted, kvn.bak);
        }
        QCOMPARE(Folder::contents(kvn.ini), old);
        QCOMPARE(Folder::contents(kvn.bak), std::string("older"));
        QCOMPARE(kvn.names(), namesBefore);
        if (disk)
            fs::remove(kvn.path / "filler");
        QCOMPARE(kvn.files.replace(kvn.ini, wanted, kvn.bak), std::string());
        QCOMPARE(Folder::contents(kvn.ini), wanted);
        QCOMPARE(Folder::contents(kvn.bak), old);
    }
    const std::string reason = smallDisk ? "No space left on device." : "File too large.";
    QCOMPARE(failure, copyFails
                          ? "Replacing " + kvn.ini + " failed, its copy cannot be kept: Writing " +
                                kvn.bak + " failed: " + reason
                          : "Writing " + kvn.ini + " failed: " + reason);
}

void FileStoreTest::whatIsNoFileIsLeftAlone_data() {
    const DataTable<std::string> row("kind");
    row("folder", "folder");
    row("pipe", "pipe");
    row("device", "device");
}

void FileStoreTest::whatIsNoFileIsLeftAlone() {
    QFETCH(std::string, kind);
    const auto putInPlace = [&](const std::string &path) {
        if (kind == "folder")
            fs::create_directory(path);
        else if (kind == "pipe")
            QCOMPARE(::mkfifo(path.c_str(), 0600), 0);
        else
            fs::create_symlink("/dev/zero", path);
    };
    Folder kvn;
    putInPlace(kvn.ini);
    std::string contents;
    QCOMPARE(kvn.files.read(kvn.ini, contents),
             "Reading " + kvn.ini + " failed: It is not a regular file.");
    if (kind == "device") // a write that did not see it would hit the machine's own device
        return;
    QCOMPARE(kvn.files.replace(kvn.ini, "new", kvn.bak),
             "Writing " + kvn.ini + " failed: It is not a regular file.");
    QVERIFY(!fs::is_regular_file(kvn.ini) && !fs::exists(kvn.bak));
    Folder copy;
    Folder::write(copy.ini, "old");
    putInPlace(copy.bak);
    QCOMPARE(copy.files.replace(copy.ini, "new", copy.bak),
             "Replacing " + copy.ini + " failed, its copy cannot be kept: Writing " + copy.bak +
                 " failed: It is not a regular file.");
    QVERIFY(!fs::is_regular_file(copy.bak));
    QCOMPARE(Folder::contents(copy.ini), std::string("old"));
}

void FileStoreTest::theCopyIsAsPrivateAsTheFile() {
    for (const unsigned mode : {0600U, 0640U, 0644U}) {
        for (const bool copyExists : {false, true}) {
            Folder kvn;
            Folder::write(kvn.ini, "old");
            if (copyExists)
                Folder::write(kvn.bak, "older");
            fs::permissions(kvn.ini, fs::perms(mode));
            QCOMPARE(kvn.files.replace(kvn.ini, "new", kvn.bak), std::string());
            for (const std::string &file : {kvn.ini, kvn.bak})
                QCOMPARE(static_cast<unsigned>(fs::status(file).permissions()), mode);
        }
    }
}

void FileStoreTest::aLinkedFileStaysLinked() {
    Folder kvn;
    const fs::path target = kvn.path / "elsewhere";
    Folder::write(target, "old");
    fs::create_symlink(target, kvn.ini);
    QCOMPARE(kvn.files.replace(kvn.ini, "new", kvn.bak), std::string());
    QVERIFY(fs::is_symlink(kvn.ini));
    QCOMPARE(Folder::contents(target) + Folder::contents(kvn.bak), std::string("newold"));
}
