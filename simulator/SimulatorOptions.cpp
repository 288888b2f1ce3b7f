#include "simulator/SimulatorOptions.h"

#include <QCommandLineParser>

#include <array>
#include <stdexcept>
#include <utility>

using namespace Qt::StringLiterals;

namespace {

constexpr int MaxLatencyMs = 60'000;
constexpr int MaxSplitBytes = 4096;
constexpr int MaxPort = 65'535;

constexpr std::array<std::pair<const char *, Fault>, 5> FaultNames{{{"none", Fault::None},
                                                                    {"silence", Fault::Silence},
                                                                    {"garbage", Fault::Garbage},
                                                                    {"close", Fault::Close},
                                                                    {"flood", Fault::Flood}}};

[[noreturn]] void refuse(const QString &why) { throw std::invalid_argument(why.toStdString()); }

int number(const char *option, const QString &text, int first, int last) {
    bool isNumber = false;
    const int value = text.toInt(&isNumber);
    if (!isNumber || value < first || value > last)
        refuse(u"--%1: \"%2\" is not a number from %3 to %4"_s.arg(QLatin1StringView(option), text)
                   .arg(first)
                   .arg(last));
    return value;
}

void setTcp(SimulatorOptions &options, const QString &place) {
    const qsizetype colon = place.lastIndexOf(u':');
    if (colon >= 0) {
        QString address = place.first(colon);
        if (address.startsWith(u'[') && address.endsWith(u']'))
            address = address.sliced(1, address.size() - 2);
        if (!options.address.setAddress(address))
            refuse(u"--tcp: \"%1\" is not a numeric address"_s.arg(address));
    }
    options.tcpPort = static_cast<quint16>(number("tcp", place.sliced(colon + 1), 0, MaxPort));
}

std::string unescaped(const QString &text) {
    std::string bytes;
    const std::string escaped = text.toStdString();
    for (std::size_t at = 0; at < escaped.size(); ++at) {
        if (escaped[at] != '\\') {
            bytes += escaped[at];
            continue;
        }
        const auto found = std::string_view("rn\\").find(++at < escaped.size() ? escaped[at] : ' ');
        if (found == std::string_view::npos)
            refuse(
                u"--trailer: only \\r, \\n and \\\\ can follow a backslash in \"%1\""_s.arg(text));
        bytes += "\r\n\\"[found];
    }
    return bytes;
}

} // namespace

std::optional<Fault> faultOfName(QByteArrayView name) {
    for (const auto &[known, fault] : FaultNames) {
        if (name == known)
            return fault;
    }
    return std::nullopt;
}

SimulatorOptions SimulatorOptions::of(const QStringList &arguments) {
    SimulatorOptions options;
    QCommandLineParser parser;
    parser.setApplicationDescription(
        u"Plays a matrix switcher until it is interrupted. Give --tcp, --serial or both.\n"
        "A line \"fault KIND\" on standard input changes the fault meanwhile."_s);
    parser.addOptions({
        {u"model"_s, u"the name of the model to be, whose numbers such as 16x16 are its size"_s,
         u"NAME"_s, QString::fromStdString(options.unit.model)},
        {u"list-models"_s, u"write the names of all models and end"_s},
        {u"tcp"_s, u"listen there, on the loopback unless an address is given"_s,
         u"[ADDRESS:]PORT"_s},
        {u"serial"_s, u"make a pseudo terminal and a symbolic link to it at LINK"_s, u"LINK"_s},
        {u"echo"_s, u"start with the echo of commands on"_s},
        {u"latency"_s, u"answer that many milliseconds late"_s, u"MS"_s, u"0"_s},
        {u"split"_s, u"send answers in pieces of that size"_s, u"BYTES"_s},
        {u"trailer"_s, u"what follows the model in the configuration reply"_s, u"TEXT"_s,
         u"\\r\\n"_s},
        {u"fault"_s, u"silence, garbage, close or flood in place of proper answers, or none"_s,
         u"KIND"_s, u"none"_s},
        {{u"h"_s, u"help"_s}, u"write this and end"_s},
    });
    if (!parser.parse(arguments))
        refuse(parser.errorText());
    if (parser.isSet(u"help"_s))
        parser.showHelp();
    if (!parser.positionalArguments().isEmpty())
        refuse(u"\"%1\" is not an option (--help lists all)"_s.arg(
            parser.positionalArguments().first()));

    options.unit.model = parser.value(u"model"_s).toStdString();
    options.unit.trailer = unescaped(parser.value(u"trailer"_s));
    options.unit.echo = parser.isSet(u"echo"_s);
    options.line.latencyMs = number("latency", parser.value(u"latency"_s), 0, MaxLatencyMs);
    if (parser.isSet(u"split"_s))
        options.line.splitBytes = number("split", parser.value(u"split"_s), 1, MaxSplitBytes);
    const auto fault = faultOfName(parser.value(u"fault"_s).toLatin1());
    if (!fault)
        refuse(u"--fault: there is no fault \"%1\" (--help lists all)"_s.arg(
            parser.value(u"fault"_s)));
    options.line.fault = *fault;
    if (parser.isSet(u"tcp"_s))
        setTcp(options, parser.value(u"tcp"_s));
    options.serial = parser.value(u"serial"_s);
    options.listModels = parser.isSet(u"list-models"_s);
    if (!options.listModels && !options.tcpPort && options.serial.isEmpty())
        refuse(u"nothing to listen on: give --tcp, --serial or both"_s);
    return options;
}
