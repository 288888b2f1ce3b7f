#include "link/PortReport.h"

#include <utility>

namespace {

using Presence = SerialDeviceFacts::Presence;
using Membership = SerialDeviceFacts::Membership;
using ReasonAndRemedy = std::pair<std::string, std::string>;

ReasonAndRemedy whyNotPermitted(const SerialDeviceFacts &facts) {
    if (facts.owner.empty())
        return {"no permission", {}};
    if (!facts.groupMayOpen || facts.membership == Membership::Now)
        return {"no permission, only its owner " + facts.owner + " may open it", {}};
    const std::string reason = "no permission, it belongs to the group " + facts.group;
    if (facts.membership == Membership::AfterLogin)
        return {reason, "You have joined the group " + facts.group + " already: log in again."};
    // The command has a line of its own, so that it is not broken where the text is wrapped.
    return {reason, "To join the group " + facts.group +
                        ", run this command and log in again:\nsudo usermod -aG " + facts.group +
                        " $USER"};
}

ReasonAndRemedy whyNotOpened(const LinkError &failure, const SerialDeviceFacts &facts,
                             const std::string &holder) {
    if (facts.presence != Presence::There || failure.failure() == LinkFailure::NoDevice)
        return {"the device is gone", "Plug in what is gone, then choose Serial Port again."};
    if (failure.failure() != LinkFailure::NotPermitted)
        return {failure.reason(), {}};
    if (!facts.mayOpen)
        return whyNotPermitted(facts);
    return {"held by " + (holder.empty() ? "another program" : holder),
            "End the program that holds a port, then choose Serial Port again."};
}

} // namespace

bool isHeld(const PortTest &test, const SerialDeviceFacts &facts) {
    return test.failure && test.failure->failure() == LinkFailure::NotPermitted &&
           facts.presence == Presence::There && facts.mayOpen;
}

PortReport reportOn(const PortTest &test, const SerialDeviceFacts &facts,
                    const std::string &holder) {
    ReasonAndRemedy why;
    if (test.failure)
        why = whyNotOpened(*test.failure, facts, holder);
    return {.number = test.device.number,
            .device = test.device.name,
            .adapter = facts.adapter,
            .reason = why.first,
            .remedy = why.second,
            .exists = facts.presence != Presence::Missing,
            .leadsTo = facts.leadsTo};
}

std::string textOf(const std::vector<PortReport> &reports) {
    if (reports.empty())
        return "There is no serial device.";
    std::string lines;
    std::string remedies;
    for (const PortReport &report : reports) {
        lines += (lines.empty() ? "" : "\n") + ("COM" + std::to_string(report.number)) + " (" +
                 report.device + (report.leadsTo.empty() ? "" : ", a link to " + report.leadsTo) +
                 (report.adapter.empty() ? "" : ", " + report.adapter) +
                 "): " + (report.reason.empty() ? "can be opened" : report.reason);
        if (!report.remedy.empty() && remedies.find(report.remedy) == std::string::npos)
            remedies += (remedies.empty() ? "\n\n" : "\n") + report.remedy;
    }
    return lines + remedies;
}
