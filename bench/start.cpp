#include "Figures.h"

#include <QCoreApplication>
#include <QElapsedTimer>
#include <QFile>
#include <QProcess>

#include <array>
#include <stdexcept>

namespace {

constexpr int Starts = 31;

struct Measure {
    const char *what;
    const char *unit;
    std::optional<double> bound; ///< of the ratio
};
constexpr std::array<Measure, 3> Measures{{
    {"processor from start to first paint", "ms", 1.3},
    {"time from start to first paint", "ms", std::nullopt},
    {"peak memory", "MB", 1.25}, // once it waits for the user
}};
using Start = std::array<double, Measures.size()>;

double numberAfter(const QByteArray &label, const QString &path) {
    QFile file(path);
    const QByteArray text = file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
    if (!text.contains(label))
        throw std::runtime_error("cannot read " + path.toStdString());
    return std::strtod(text.constData() + text.indexOf(label) + label.size(), nullptr);
}

/// Starts a program beside this one, waits until Qt tells that it has painted, and ends it.
Start start(const char *name) {
    QProcess process;
    process.setProcessChannelMode(QProcess::MergedChannels);
    QElapsedTimer clock;
    clock.start();
    process.start(QCoreApplication::applicationDirPath() + u'/' + QLatin1String(name), {});
    QByteArray told;
    while (!told.contains("Flushing")) {
        if (!process.waitForReadyRead())
            throw std::runtime_error(name + std::string(" did not paint: ") + told.toStdString());
        told += process.readAll();
    }
    const double time = static_cast<double>(clock.nsecsElapsed());
    const QString facts = QStringLiteral("/proc/%1/").arg(process.processId());
    const double processor = numberAfter("", facts + QStringLiteral("schedstat"));
    process.waitForFinished(100);
    const double kilobytes = numberAfter("VmHWM:", facts + QStringLiteral("status"));
    process.kill();
    process.waitForFinished();
    return {processor * 1e-6, time * 1e-6, kilobytes / 1024.0};
}

} // namespace

void measureStart(Figures &figures) {
    qputenv("QT_LOGGING_RULES", "qt.widgets.painting.info=true");
    std::array<std::vector<double>, Measures.size()> smallest, own, ratios;
    for (int round = 0; round < Starts; ++round) {
        const Start base = start("smallest_program"), ours = start("KVNController");
        for (std::size_t which = 0; which < Measures.size(); ++which) {
            smallest[which].push_back(base[which]);
            own[which].push_back(ours[which]);
            ratios[which].push_back(ours[which] / base[which]);
        }
    }
    for (std::size_t which = 0; which < Measures.size(); ++which) {
        const auto &[what, unit, bound] = Measures[which];
        figures.add(what + std::string(", the smallest program"), median(smallest[which]), unit);
        figures.add(what + std::string(", KVNController"), median(own[which]), unit);
        figures.add(what + std::string(", one to the other"), median(ratios[which]), "", bound);
    }
}
