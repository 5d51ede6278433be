#include "cdrctl/Client.hpp"
#include "cdrctl/Commands.hpp"
#include "cdrctl/Errors.hpp"
#include "cdrctl/Model.hpp"
#include "cdrctl/Schedule.hpp"
#include "cdrctl/Text.hpp"

#include <nlohmann/json.hpp>

#include <cstdlib>
#include <ctime>
#include <ostream>
#include <thread>

namespace cdrctl {

using nlohmann::ordered_json;

namespace {

constexpr unsigned kBarWidth = 20;

struct Statistics {
    Object push;
    Object pull;

    double count(std::string_view name) const { return std::strtod(pull.value(name).c_str(), nullptr); }
    bool pullApplies() const {
        const Property* const any = pull.find("NumberOfSuccessfulTransfers");
        return any != nullptr && any->applies();
    }
};

/// "+3" when the count has changed since the last look.
std::string growth(double before, double now) {
    char text[32];
    std::snprintf(text, sizeof text, "%+.0f", now - before);
    return now == before ? "" : text;
}

struct CountRow {
    const char* label;
    const char* property;
    bool bytes;
    bool hasBar; ///< of its share in all transfers
};

constexpr CountRow kCountRows[] = {
    {"  successful transfers", "NumberOfSuccessfulTransfers", false, true},
    {"  failed transfers", "NumberOfFailedTransfers", false, true},
    {"  files", "TotalNumberOfFileTransferred", false, false},
    {"  bytes", "TotalNumberOfBytesTransferred", true, false},
    {"  largest file", "LargestFileTransferred", true, false},
    {"  smallest file", "SmallestFileTransferred", true, false},
};

void addPull(Table& table, const Statistics& now, const Statistics* before) {
    const double all = now.count("NumberOfSuccessfulTransfers") + now.count("NumberOfFailedTransfers");
    for (const CountRow& row : kCountRows) {
        const double value = now.count(row.property);
        table.row({row.label, row.bytes ? bytesText(value) : now.pull.value(row.property),
                   row.hasBar && all > 0 ? bar(value / all, kBarWidth) : "",
                   before == nullptr ? "" : growth(before->count(row.property), value)});
    }
    table.row({"  last success", printable(now.pull.value("MostRecentSuccessfulTransfer"))});
    table.row({"  last failure", printable(now.pull.value("MostRecentFailedTransfer"))});
    table.row({"  reason", printable(now.pull.value("ReasonForFailure"))});
}

std::string tableText(const Statistics& now, const Statistics* before) {
    Table table;
    const auto last = timeOf(now.push.value("LastTransferTime"));
    const std::time_t present = std::time(nullptr);
    table.row({"push"});
    table.row({"  last success", last ? timeText(*last) + ", " + distanceText(present, *last) : "never"});
    table.row({"pull"});
    if (!now.pullApplies()) {
        table.row({"  no statistics", "the transfer type is not pull"});
    } else {
        addPull(table, now, before);
    }
    return table.text();
}

ordered_json jsonOf(const Object& object) {
    ordered_json result;
    for (const Property& property : object.properties) {
        if (!property.is("Key")) {
            result[property.name] = jsonValue(property);
        }
    }
    return result;
}

Statistics read(const Client& client) {
    return {client.onlyInstance(kPushStatistics), client.onlyInstance(kPullStatistics)};
}

void write(const Context& context, const Watch& watch, const Statistics& now, const std::optional<Statistics>& before) {
    if (context.json) { // when watching one line a round, so that a script can read it as it comes
        const ordered_json both{{"push", jsonOf(now.push)}, {"pull", jsonOf(now.pull)}};
        context.out << both.dump(watch.on ? -1 : 2, ' ', false, ordered_json::error_handler_t::replace) << "\n";
        return;
    }
    context.out << (watch.on && watch.terminal ? "\x1b[H\x1b[2J" : "") << tableText(now, before ? &*before : nullptr);
}

} // namespace

int statistics(const Context& context, const Watch& watch) {
    std::optional<Statistics> before;
    for (unsigned round = 1;; ++round) {
        try {
            Statistics now = read(context.client);
            write(context, watch, now, before);
            before = std::move(now);
        } catch (const ConnectError& error) {
            if (!before) {
                throw;
            }
            context.out << printable(error.what()) << "\n"; // the server may come back
        }
        context.out << std::flush;
        if (!watch.on || round == watch.count) {
            return Done;
        }
        std::this_thread::sleep_for(watch.interval);
    }
}

} // namespace cdrctl
