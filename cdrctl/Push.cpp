#include "cdrctl/Client.hpp"
#include "cdrctl/Commands.hpp"
#include "cdrctl/Device.hpp"
#include "cdrctl/Errors.hpp"
#include "cdrctl/Model.hpp"
#include "cdrctl/PushWhy.hpp"
#include "cdrctl/Text.hpp"

#include <nlohmann/json.hpp>

#include <algorithm>
#include <charconv>
#include <ostream>

namespace cdrctl {

using nlohmann::ordered_json;

namespace {

std::optional<std::time_t> lastTransfer(const Client& client) {
    return timeOf(client.onlyInstance(kPushStatistics).value("LastTransferTime"));
}

/// What the server tells. Throws CimFault.
void readSettings(const Client& client, PushFacts& facts) {
    const Object settings = client.onlyInstance(kPushSetting);
    const std::string type = settings.value("TransferType");
    int number = 0;
    if (std::from_chars(type.data(), type.data() + type.size(), number).ec == std::errc()) {
        facts.schedule.type = number;
    }
    facts.schedule.time = settings.value("TransferTime");
    facts.schedule.dayOfWeek = settings.value("TransferDayOfWeek");
    facts.schedule.dayOfMonth = settings.value("TransferDayOfMonth");
    const Object cimClass = client.getClass(kPushSetting);
    if (const Property* const declared = cimClass.find("TransferType")) {
        facts.typeLabel = labelOf(*declared, type);
    }
    facts.address = settings.value("IPAddress");
    facts.lastTransfer = lastTransfer(client);
}

PushFacts factsOf(const Client& client, const DevicePlaces* places) {
    PushFacts facts;
    try {
        readSettings(client, facts);
    } catch (const CimFault& fault) {
        facts.unreadable = fault.what();
    }
    facts.now = std::time(nullptr);
    if (places != nullptr) {
        facts.device = lookAround(*places);
    }
    return facts;
}

void writeText(std::ostream& out, const std::vector<Finding>& findings, const Finding* reason,
               const std::string& next) {
    if (reason != nullptr) {
        out << "The push does not run as it should: " << printable(reason->text) << ".\n";
        if (!reason->advice.empty()) {
            out << "  -> " << printable(reason->advice) << "\n";
        }
    } else {
        out << "Nothing that can be seen keeps the push from running.\n";
    }
    out << "Next run by the settings: " << next << "\n\n";
    Table table;
    for (const Finding& finding : findings) {
        table.row({finding.weight == Weight::Problem ? "!" : " ", finding.source, printable(finding.text)});
        if (!finding.advice.empty() && &finding != reason) {
            table.row({" ", "", "-> " + printable(finding.advice)});
        }
    }
    out << table.text();
}

void writeJson(std::ostream& out, const std::vector<Finding>& findings, const Finding* reason,
               const std::optional<std::time_t>& next) {
    ordered_json result{{"running", reason == nullptr}};
    result["reason"] = reason == nullptr ? ordered_json() : ordered_json(reason->text);
    result["next"] = next ? ordered_json(*next) : ordered_json();
    for (const Finding& finding : findings) {
        result["findings"].push_back({{"problem", finding.weight == Weight::Problem},
                                      {"source", finding.source},
                                      {"text", finding.text},
                                      {"advice", finding.advice}});
    }
    out << result.dump(2, ' ', false, ordered_json::error_handler_t::replace) << "\n";
}

} // namespace

int pushNow(const Context& context) {
    const auto before = lastTransfer(context.client);
    const std::string count = context.client.invoke(context.client.onlyInstance(kPushSetting), "PushFileNow");
    const auto after = lastTransfer(context.client);
    const bool moved = after && after != before;
    if (context.json) {
        ordered_json result{{"calls", count}, {"transferRecorded", moved}};
        result["lastTransfer"] = after ? ordered_json(*after) : ordered_json();
        context.out << result.dump(2) << "\n";
    } else if (moved) {
        context.out << "The push succeeded: " << timeText(*after) << ".\n";
    } else {
        context.out << "The transfer program was started. No successful transfer is on record yet;\n"
                       "cdrctl push why tells more, cdrctl statistics --watch shows it happen.\n";
    }
    return Done;
}

int pushWhy(const Context& context, const DevicePlaces* places) {
    const PushFacts facts = factsOf(context.client, places);
    const auto findings = explainPush(facts);
    const auto found = std::find_if(findings.begin(), findings.end(),
                                    [](const Finding& finding) { return finding.weight == Weight::Problem; });
    const Finding* const reason = found == findings.end() ? nullptr : &*found;
    const auto next = facts.schedule.next(facts.now);
    if (context.json) {
        writeJson(context.out, findings, reason, next);
    } else {
        const std::string text =
            next ? timeText(*next) + " (" + distanceText(facts.now, *next) + ")" : std::string("none");
        writeText(context.out, findings, reason, text);
    }
    return reason == nullptr ? Done : NotRunning;
}

} // namespace cdrctl
