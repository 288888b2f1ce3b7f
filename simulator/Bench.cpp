#include "simulator/Bench.h"

#include <QHash>
#include <QString>

using namespace Qt::StringLiterals;

namespace {

struct Setting {
    int LineBehaviour::*value;
    int last;
};

const QHash<QString, Setting> Settings{{u"latency"_s, {&LineBehaviour::latencyMs, 60'000}},
                                       {u"split"_s, {&LineBehaviour::splitBytes, 4096}}};

const QHash<QString, Fault> Faults{{u"fault none"_s, Fault::None},
                                   {u"fault silence"_s, Fault::Silence},
                                   {u"fault close"_s, Fault::Close}};

} // namespace

bool Bench::obey(const QString &order) {
    bool isNumber = false;
    const int number = order.section(u' ', 1).toInt(&isNumber);
    const Setting setting = Settings.value(order.section(u' ', 0, 0));
    if (setting.value && isNumber && number >= 0 && number <= setting.last)
        line.*setting.value = number;
    else if (Faults.contains(order))
        line.fault = Faults[order];
    else if (order == "unplug"_L1)
        Q_EMIT unplugged();
    else
        return false;
    Q_EMIT changed();
    return true;
}
