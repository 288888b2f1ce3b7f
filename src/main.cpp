#include "Application.h"
#include "ProgramLook.h"
#include "QtMachine.h"
#include "Windows.h"
#include "start/ProgramTitle.h"

#include <QFontDatabase>
#include <QTimer>

#include <cstdio>
#include <cstdlib>
#include <span>
#include <string_view>

namespace {

constexpr int NotUnderstood = 2;

constexpr const char *Help = R"(Usage: KVNController [--help | --version]

Controls Corvane audio/video matrix switchers over a serial port or over the network.

  --help     write this help and end
  --version  write the version and end

Saved units are kept in KVNConfigurator.ini in the program's folder.
QT_LOGGING_RULES="corvane.*=true" in the environment logs the links to standard error.
)";

/// Answers the command line and returns the exit status. No display is needed for it.
int answer(std::span<char *const> arguments) {
    for (const std::string_view argument : arguments) {
        if (argument == "--help" || argument == "--version")
            continue;
        std::fprintf(stderr, "KVNController: unknown argument \"%s\"; --help tells more\n",
                     argument.data());
        return NotUnderstood;
    }
    if (arguments.front() == std::string_view("--help"))
        std::fputs(Help, stdout);
    else
        std::printf("KVNController %s\n", ProgramVersion);
    return std::fflush(stdout) == 0 ? EXIT_SUCCESS : EXIT_FAILURE;
}

/// A folder that is carried to another desktop has a font for one without any.
void takeCarriedFont() {
    QFontDatabase::addApplicationFont(QApplication::applicationDirPath() +
                                      QStringLiteral("/fonts/DejaVuSans.ttf"));
}

} // namespace

int main(int argc, char **argv) {
    if (argc > 1)
        return answer({argv + 1, static_cast<std::size_t>(argc - 1)});
    Application application(argc, argv);
    QApplication::setApplicationName(QStringLiteral("KVNController"));
    QApplication::setApplicationVersion(QLatin1String(ProgramVersion));
    QApplication::setDesktopFileName(QLatin1String(ProgramId));
    applyProgramLook();
    if (!canDrawText())
        takeCarriedFont();
    if (!canDrawText()) {
        std::fputs("KVNController: no font is installed, so no text could be read. "
                   "Install one, such as the package fonts-dejavu-core.\n",
                   stderr);
        return EXIT_FAILURE;
    }

    QtMachine machine;
    Program program(machine.services());
    Windows windows(program);
    // Within the event loop: starting may show a message, and the user may leave from there.
    QTimer::singleShot(0, &application, [&] {
        program.start();
        windows.refresh();
    });
    return QApplication::exec();
}
