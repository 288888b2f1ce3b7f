#include "Player.h"

#include <QApplication>
#include <QPixmap>
#include <QTimer>

#include <cstdio>
#include <cstdlib>
#include <utility>

namespace {
constexpr int LookMilliseconds = 20;
constexpr int LooksForAStep = 30 * 1000 / LookMilliseconds;
} // namespace

Player::Player(std::vector<Step> sessionSteps, QString pictureFolder)
    : steps(std::move(sessionSteps)), folder(std::move(pictureFolder)) {}

int Player::play() {
    looksLeft = LooksForAStep;
    QTimer::singleShot(LookMilliseconds, qApp, [this] { look(); });
    return QApplication::exec();
}

void Player::look() {
    if (next == steps.size())
        return;
    // The next look is due whatever this step does: its action may wait for the steps after it.
    QTimer::singleShot(LookMilliseconds, qApp, [this] { look(); });
    const Step &step = steps.at(next);
    if (!step.ready()) {
        if (--looksLeft == 0) {
            std::fprintf(stderr, "Session: \"%s\" was not reached.\n", qPrintable(step.name));
            std::exit(1);
        }
        return;
    }
    takePicture(step);
    ++next;
    looksLeft = LooksForAStep;
    ++underway;
    step.act();
    --underway;
}

void Player::takePicture(const Step &step) const {
    if (!step.pictureOf)
        return;
    const QString file = QStringLiteral("%1/%2-%3.png")
                             .arg(folder)
                             .arg(next + 1, 2, 10, QLatin1Char('0'))
                             .arg(step.name);
    if (!sessionWindow(step.pictureOf).grab().save(file)) {
        std::fprintf(stderr, "Session: %s cannot be written.\n", qPrintable(file));
        std::exit(1);
    }
    std::printf("Picture %s\n", qPrintable(file));
    std::fflush(stdout);
}

QWidget *findWindow(const char *name) {
    for (QWidget *window : QApplication::topLevelWidgets()) {
        if (window->objectName() == QLatin1String(name))
            return window;
    }
    return nullptr;
}

QWidget &sessionWindow(const char *name) {
    if (QWidget *window = findWindow(name))
        return *window;
    std::fprintf(stderr, "Session: there is no window %s.\n", name);
    std::exit(1);
}
