#include "QtFileStore.h"
#include "support/rows.h"

#include <csignal>
#include <filesystem>
#include <fstream>
#include <sys/ptrace.h>
#include <sys/resource.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

namespace fs = std::filesystem;

namespace {

void put(const fs::path &file, const std::string &contents) { std::ofstream(file) << contents; }

std::string contentsOf(const fs::path &file) {
    std::ifstream stream(file);
    return {std::istreambuf_iterator<char>(stream), {}};
}

/// A folder with a file and the copy of the one before.
struct Folder {
    QTemporaryDir folder;
    fs::path path = folder.path().toStdString();
    std::string ini = path / "units.ini", bak = path / "units.bak";
    QtFileStore files;

    [[nodiscard]] std::string replace(const std::string &contents) {
        return files.replace(ini, contents, bak);
    }
    [[nodiscard]] std::string both() const { return contentsOf(ini) + "|" + contentsOf(bak); }
};

} // namespace

/// The file store on the real disk.
class FileStoreTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    static void initTestCase() {
        // The administrator may write everywhere.
        QCOMPARE(::geteuid() == 0 ? ::setresuid(65534, 65534, 65534) : 0, 0);
        std::signal(SIGXFSZ, SIG_IGN);
    }

    // How many bytes fit into a file, or -1 where the folder is not to be written to; how long the
    // file is and is to become; why not, and whether it is the copy that cannot be made.
    static void aSaveThatFailsLosesNothing() {
        for (const auto &[room, before, after, reason, copyFails] :
             {std::tuple(8192, 100U, 20000U, "File too large.", false),
              {8192, 12000, 100, "File too large.", true},
              {-1, 100, 120, "Permission denied.", false}}) {
            Folder kvn;
            const std::string old(before, 'o'), wanted(after, 'n');
            put(kvn.ini, old);
            put(kvn.bak, "older");
            rlimit usual{};
            ::getrlimit(RLIMIT_FSIZE, &usual);
            const rlimit tight{room < 0 ? usual.rlim_cur : rlim_t(room), usual.rlim_max};
            ::setrlimit(RLIMIT_FSIZE, &tight);
            fs::permissions(kvn.path, fs::perms(room < 0 ? 0500 : 0700));
            const std::string failure = kvn.replace(wanted);
            ::setrlimit(RLIMIT_FSIZE, &usual);
            fs::permissions(kvn.path, fs::perms(0700));
            const std::string copy = "Replacing " + kvn.ini + " failed, its copy cannot be kept: ";
            QCOMPARE(failure, (copyFails ? copy + "Writing " + kvn.bak : "Writing " + kvn.ini) +
                                  " failed: " + reason);
            QCOMPARE(kvn.both(), old + "|older");
            QCOMPARE(std::distance(fs::directory_iterator(kvn.path), {}), 2);
        }
    }

    // Each save is killed one stop later than the one before, at the beginning or the end of one of
    // its calls of the system, until one is through.
    static void aSaveThatIsKilledLeavesWholeFiles() {
        int stops = 0, through = 0;
        for (int save = 1; save <= 500; ++save) {
            Folder kvn;
            const std::string old(100, 'o'), wanted(9000, 'n');
            put(kvn.ini, old);
            put(kvn.bak, "older");
            const pid_t saver = ::fork();
            if (saver == 0) {
                if (::ptrace(PTRACE_TRACEME, 0, nullptr, nullptr) == 0)
                    ::raise(SIGSTOP);
                ::_exit(kvn.replace(wanted).empty() ? 0 : 1);
            }
            int state = 0, left = stops++;
            while (::waitpid(saver, &state, 0) == saver && WIFSTOPPED(state) && left-- > 0)
                ::ptrace(PTRACE_SYSCALL, saver, nullptr, nullptr);
            const bool stopped = WIFSTOPPED(state);
            if (stopped) {
                ::kill(saver, SIGKILL);
                ::waitpid(saver, &state, 0);
            } else {
                QCOMPARE(WEXITSTATUS(state), 0);
                stops = 0;
                ++through;
            }
            const std::string now = kvn.both(), saved = wanted + "|" + old;
            QVERIFY(now == saved || (stopped && (now == old + "|older" || now == old + "|" + old)));
        }
        QVERIFY(through > 0 && through < 50);
    }

    static void whatIsNoFileIsLeftAlone() {
        const std::string reason = " failed: It is not a regular file.";
        for (const auto make : {::mkfifo, ::mkdir}) {
            Folder kvn;
            std::string contents;
            QCOMPARE(make(kvn.ini.c_str(), 0700), 0);
            QCOMPARE(kvn.files.read(kvn.ini, contents), "Reading " + kvn.ini + reason);
            QCOMPARE(kvn.replace("new"), "Writing " + kvn.ini + reason);
            fs::rename(kvn.ini, kvn.bak);
            put(kvn.ini, "old");
            QVERIFY(kvn.replace("new").ends_with("kept: Writing " + kvn.bak + reason));
            QVERIFY(!fs::is_regular_file(kvn.bak) && contentsOf(kvn.ini) == "old");
        }
    }

    // The copy is as private as the file, and a file that is a link to another one stays that.
    static void keepsWhatTheFileIsLike() {
        for (const unsigned mode : {0600U, 0644U}) {
            Folder kvn;
            const fs::path target = kvn.files.join(kvn.path, "elsewhere");
            const std::string first("\r\n\0\xff\n", 5);
            std::string contents;
            fs::create_symlink(target, kvn.ini);
            QCOMPARE(kvn.replace(first), std::string());
            QVERIFY(!kvn.files.exists(kvn.bak));
            fs::permissions(kvn.ini, fs::perms(mode));
            QCOMPARE(kvn.replace("second"), std::string());
            QVERIFY(fs::is_symlink(kvn.ini) && contentsOf(target) == "second");
            QCOMPARE(kvn.files.read(kvn.bak, contents) + contents, first);
            QCOMPARE(static_cast<unsigned>(fs::status(kvn.bak).permissions()), mode);
            fs::remove(target);
            QVERIFY(
                kvn.files.read(kvn.ini, contents).ends_with("failed: No such file or directory."));
        }
    }
};

QTEST_GUILESS_MAIN(FileStoreTest)
#include "FileStoreTest.moc"
