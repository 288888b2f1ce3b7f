#include "Player.h"

#include "Hands.h"

#include <QCoreApplication>
#include <QPixmap>
#include <QTimer>

#include <cstdio>
#include <cstdlib>

namespace {

constexpr int LookMilliseconds = 20;
constexpr int LooksForAStep = 30 * 1000 / LookMilliseconds;

QByteArray before(const QByteArray &text, char mark) { return text.split(mark).first(); }

QByteArray after(const QByteArray &text, char mark) {
    return text.contains(mark) ? text.sliced(text.indexOf(mark) + 1) : QByteArray();
}

} // namespace

void Player::look() {
    // The next look is due whatever this one does: an action may wait for the steps after it.
    QTimer::singleShot(LookMilliseconds, qApp, [this] { look(); });
    ++looks;
    if (next < steps.size() && isReady(steps[next])) {
        check(steps[next]);
        takePicture(steps[next]);
        act(steps[next]);
    } else if (looks > LooksForAStep) {
        fail("not reached within 30 s");
    }
}

bool Player::isReady(const Step &step) {
    if (step.when == When::Usable)
        return isUsable(step.window, before(step.actions.value(0), '='));
    if (step.when == When::Waiting)
        return underway > 0;
    // The transcript may arrive after what the program makes of an answer.
    return underway == (step.when == When::InPanel) && openWindow(step.window) &&
           (unit.heard().size() >= 2 * step.commands.size() || looks > LooksForAStep);
}

void Player::check(const Step &step) {
    if (step.when == When::Idle || step.when == When::InPanel)
        checkWire(step.commands, step.when == When::Idle ? "serial" : "tcp1");
    for (const QByteArray &fact : step.shown)
        compare(before(fact, '='), shownBy(step.window, before(fact, '=')), after(fact, '='));
    if (step.window == "KVN32x32Audio" && !step.commands.isEmpty())
        checkPanel();
}

void Player::checkWire(const QByteArrayList &commands, const QByteArray &link) {
    QByteArrayList due;
    for (const QByteArray &command : commands) {
        const QByteArray answer = QByteArray::fromStdString(expected.answer(command.toStdString()));
        due += {link + " > " + command, link + " < " + answer};
        due.back().replace('\r', "\\r").replace('\n', "\\n"); // as the transcript has it
    }
    const QByteArrayList &heard = unit.heard();
    for (qsizetype line = 0; line < std::max(heard.size(), due.size()); ++line)
        compare("the wire", heard.value(line, "nothing"), due.value(line, "nothing"));
    unit.forget();
}

void Player::checkPanel() const {
    const auto input = [](int number) {
        return number == Unit::NotConnected ? QByteArray("NC") : QByteArray::number(number);
    };
    for (int output = 1; output <= expected.outputs(); ++output) {
        const auto shows = [&](const QByteArray &array, const QByteArray &due) {
            const QByteArray control = array + "_" + QByteArray::number(output);
            compare(control, shownBy("KVN32x32Audio", control), due);
        };
        shows("InputVideoConnected", input(expected.videoInput(output)));
        shows("InputAudioConnected", input(expected.audioInput(output)));
        shows("OutputVolumeValue", ("Vol " + expected.volume(output)).c_str());
        shows("MuteButton", expected.muted(output) ? "MUTED" : "MUTE");
    }
}

void Player::takePicture(const Step &step) const {
    const QString file = QStringLiteral("%1/%2-%3.png")
                             .arg(folder)
                             .arg(next + 1, 2, 10, QLatin1Char('0'))
                             .arg(QLatin1String(step.name));
    QWidget *window = openWindow(step.window);
    if (!window || !window->grab().save(file))
        fail("no picture " + file.toUtf8() + " can be made of " + step.window);
    std::printf("Picture %s\n", qPrintable(file));
    std::fflush(stdout);
}

void Player::act(const Step &step) {
    ++next;
    looks = 0;
    ++underway;
    for (const QByteArray &action : step.actions) {
        const QByteArray place = before(action, '=');
        const QByteArray window = place.contains('/') ? before(place, '/') : step.window;
        const QByteArray control = place.contains('/') ? after(place, '/') : place;
        if (!isUsable(window, control))
            fail(place + " cannot be used", step.name);
        use(window, control, QString::fromLatin1(after(action, '=')));
    }
    --underway;
}

void Player::finish() {
    if (next < steps.size())
        fail("the program ended instead");
    if (!unit.stop())
        fail("the simulated unit did not end in good order");
    checkWire({});
}

void Player::compare(const QByteArray &what, const QByteArray &found, const QByteArray &due) const {
    if (found != due)
        fail(what + " shows \"" + found + "\", expected \"" + due + '"');
}

void Player::fail(const QByteArray &why, const QByteArray &place) const {
    const QByteArray coming = next < steps.size() ? steps[next].name : "the end";
    std::fprintf(stderr, "Session: at \"%s\": %s.\n", (place.isEmpty() ? coming : place).data(),
                 why.data());
    std::exit(1);
}
