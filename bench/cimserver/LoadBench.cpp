// Requests per second and how long they take, of the server and of the floor, in turns.
#include "Client.hpp"
#include "LabServer.hpp"
#include "Load.hpp"
#include "ServerBench.hpp"

#include <memory>
#include <string>
#include <vector>

namespace bench {
namespace {

struct Work {
    std::string name;
    Requests requests;
};

/// Sets a bin to another value each time, so that each request is a change.
std::string modification(unsigned connection, unsigned number) {
    constexpr unsigned kBins = 8;
    constexpr unsigned kDigits = 10'000;
    const std::string bin = "<INSTANCENAME CLASSNAME=\"QTX_CDRServicePrefixBin\">" +
                            keyBinding("InstanceID", "CDRServicePrefixBin_" + std::to_string(connection % kBins)) +
                            "</INSTANCENAME>";
    return modifyInstance("QTX_CDRServicePrefixBin", bin, "PrefixBin", "string",
                          std::to_string((connection + 1) * kDigits + number % kDigits));
}

std::vector<Work> works() {
    const auto same = [](const std::string& text) -> Requests { return [text](unsigned, unsigned) { return text; }; };
    return {{"GetInstance", same(getInstance(serviceName()))},
            {"EnumerateInstances of 8", same(enumerate("QTX_CDRServicePrefixBin"))},
            {"EnumerateInstances of 10", same(enumerate("BENCH_Thing"))},
            {"ModifyInstance", modification}};
}

/// The same requests for the floor, which answers with as many bytes as the server.
Requests floorOf(const Work& work, int serverPort) {
    Connection connection(serverPort);
    const std::string path = "POST /" + std::to_string(connection.ask(work.requests(0, 0)).size());
    return [&work, path](unsigned client, unsigned number) {
        return work.requests(client, number).replace(0, std::string("POST /cimom").size(), path);
    };
}

struct Rounds {
    Pairs rate;
    Pairs p50;
    Pairs p99;
};

Rounds compareLoads(int port, int floorPort, const Work& work, unsigned connections, const Effort& effort) {
    const Requests floor = floorOf(work, port);
    Rounds rounds;
    for (int i = 0; i < effort.rounds; ++i) {
        const LoadResult cost = measureLoad(port, connections, effort.slice, work.requests);
        const LoadResult least = measureLoad(floorPort, connections, effort.slice, floor);
        rounds.rate.add(cost.perSecond, least.perSecond);
        rounds.p50.add(cost.p50, least.p50);
        rounds.p99.add(cost.p99, least.p99);
    }
    return rounds;
}

Row rowOf(const std::string& work, const char* unit, const Pairs& pairs, Wanted wanted = {}) {
    return {"server, beside the same HTTP library and threads",
            work,
            unit,
            pairs.cost(),
            pairs.floor(),
            pairs.ratio(),
            wanted};
}

void addRows(Report& report, const Work& work, unsigned connections, const Rounds& rounds) {
    const std::string name =
        work.name + ", " + std::to_string(connections) + (connections == 1 ? " connection" : " connections");
    const bool reads = work.name != "ModifyInstance"; // a change waits for the disk, which the floor does not
    const bool single = reads && connections == 1;
    const bool many = reads && (connections == 4 || connections == 1000);
    report.add(rowOf(name + ": p50", "us", rounds.p50, single ? ratioAtMost(1.6) : Wanted()));
    report.add(rowOf(name + ": p99", "us", rounds.p99));
    report.add(rowOf(name + ": a second", "", rounds.rate, many ? ratioAtLeast(0.6) : Wanted()));
    const double x = connections;
    report.add(Point{"requests", "connections", "requests a second", work.name, x, rounds.rate.cost()});
    report.add(Point{"requests", "connections", "requests a second", work.name + " (floor)", x, rounds.rate.floor()});
    report.add(Point{"waiting", "connections", "microseconds (p50)", work.name, x, rounds.p50.cost()});
    report.add(Point{"waiting", "connections", "microseconds (p50)", work.name + " (floor)", x, rounds.p50.floor()});
}

/// How much more a server does on many connections than on few.
void addGain(Report& report, const std::string& name, double many, double few, double wanted) {
    report.add(Row{"server, beside itself with fewer connections", name, "", many, few, 0, ratioAtLeast(wanted)});
}

void benchWork(Report& report, int port, int floorPort, const Work& work, const Effort& effort) {
    double rates[4] = {};
    std::size_t i = 0;
    for (const unsigned connections : {1U, 4U, 64U, 1000U}) {
        const Rounds rounds = compareLoads(port, floorPort, work, connections, effort);
        addRows(report, work, connections, rounds);
        rates[i++] = rounds.rate.cost();
    }
    if (work.name == "ModifyInstance") {
        addGain(report, "changes a second, 64 connections beside 1", rates[2], rates[0], 3);
    } else {
        addGain(report, work.name + " a second, 1,000 connections beside 4", rates[3], rates[1], 1);
    }
}

/// One client beside hundreds that are silent or do not end their request.
void benchSilence(Report& report, int port, const Effort& effort) {
    const Requests requests = [](unsigned, unsigned) { return getInstance(serviceName()); };
    const double alone = measureLoad(port, 1, effort.slice, requests).p50;
    std::vector<std::unique_ptr<Connection>> others;
    for (int i = 0; i < 200; ++i) {
        others.push_back(std::make_unique<Connection>(port));
        others.push_back(std::make_unique<Connection>(port));
        others.back()->send("POST /cimom HTTP/1.1\r\nContent-Le");
    }
    const double beside = measureLoad(port, 1, effort.slice, requests).p50;
    report.add(Row{"server, beside itself with fewer connections",
                   "GetInstance beside 400 silent clients: p50",
                   "us",
                   beside,
                   alone,
                   0,
                   {}});
}

} // namespace

void benchLoad(Report& report, const Effort& effort) {
    std::vector<std::string> options = benchProvider();
    // A thousand clients of one address who all want the same provider are more than it admits by default.
    options.insert(options.end(),
                   {"--max-connections", "1100", "--max-loopback-connections", "1100", "--provider-queue", "1100"});
    const LabServer server({}, options);
    const FloorServer floor;
    const int port = server.port();
    const int floorPort = floor.port();
    for (const Work& work : works()) {
        benchWork(report, port, floorPort, work, effort);
    }
    benchSilence(report, port, effort);
}

} // namespace bench
