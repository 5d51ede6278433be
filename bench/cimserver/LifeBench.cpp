// A server's life: how soon it answers, and how much memory it holds after many requests.
#include "Client.hpp"
#include "LabServer.hpp"
#include "Load.hpp"
#include "ServerBench.hpp"

#include <string>
#include <vector>

namespace bench {
namespace {

double milliseconds(Clock::duration time) {
    return nanoseconds(time) / 1e6;
}

double firstAnswer(const PortProcess& process, const std::string& request) {
    Connection(process.port()).ask(request);
    return milliseconds(Clock::now() - process.started());
}

void benchStart(Report& report, const Effort& effort) {
    const std::string request = getInstance(serviceName());
    Pairs pairs;
    for (int i = 0; i < effort.rounds * 4; ++i) {
        std::string same = request;
        const double ours = firstAnswer(LabServer(), request);
        pairs.add(ours, firstAnswer(FloorServer(), same.replace(0, 11, "POST /9000")));
    }
    report.add(Row{"start and memory", "exec to the first answer of the module", "ms", pairs.cost(), pairs.floor(),
                   pairs.ratio(), costAtMost(10)});
}

/// Requests of all kinds, many more reads than changes.
std::vector<std::string> mixture() {
    std::vector<std::string> requests;
    for (int i = 0; i < 50; ++i) {
        requests.push_back(getInstance(serviceName()));
        requests.push_back(
            enumerate("QTX_CDRServicePrefixBin", i % 2 == 0 ? "EnumerateInstances" : "EnumerateInstanceNames"));
        requests.push_back(getClass("QTX_CDRPushSetting"));
    }
    requests.push_back(modifyInstance("QTX_CDRService", serviceName(), "DigitsLimit", "uint16", "10"));
    requests.push_back(modifyInstance("QTX_CDRService", serviceName(), "DigitsLimit", "uint16", "11"));
    return requests;
}

void benchMemory(Report& report, const Effort& effort) {
    const unsigned total = effort.quick ? 10'000 : 100'000;
    constexpr int kSteps = 10;
    const LabServer server;
    const int port = server.port();
    Connection(port).ask(getInstance(serviceName()));
    const auto add = [&](unsigned after, Wanted wanted) {
        const double resident = static_cast<double>(server.memory("VmRSS")) / 1024;
        report.add(Point{"memory", "requests", "MiB resident", "with the module", after + 1.0, resident});
        report.add(Row{"start and memory", "resident after " + std::to_string(after) + " requests", "MiB", resident, 0,
                       0, wanted});
        return resident;
    };
    add(0, {});
    const auto requests = mixture();
    const Requests next = [&](unsigned, unsigned number) { return requests[number % requests.size()]; };
    double half = 0;
    for (int step = 1; step <= kSteps; ++step) {
        sendRequests(port, 8, total / kSteps, next);
        if (step == kSteps / 2) {
            half = add(total / 2, {});
        }
    }
    const double end = add(total, costAtMost(10));
    report.add(Row{"start and memory", "the same beside half of the requests", "MiB", end, half, 0, ratioAtMost(1.02)});
    report.add(Row{"start and memory",
                   "of these its own (not of files)",
                   "MiB",
                   static_cast<double>(server.memory("RssAnon")) / 1024,
                   0,
                   0,
                   {}});
}

} // namespace

void benchLife(Report& report, const Effort& effort) {
    benchStart(report, effort);
    benchMemory(report, effort);
}

} // namespace bench
