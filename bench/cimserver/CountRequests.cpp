// Counts what a request costs the server: instructions in user space and allocations, under callgrind. The counts do
// not depend on the machine's speed or load, so a difference to the committed ones is a difference in the programs.
#include "Client.hpp"
#include "LabServer.hpp"

#include <CLI/CLI.hpp>

#include <cstdint>
#include <cstdio>
#include <fstream>
#include <functional>
#include <map>
#include <sstream>
#include <stdexcept>
#include <string>
#include <utility>
#include <vector>

namespace {

using namespace bench;

struct Counts {
    std::int64_t instructions = 0;
    std::int64_t allocations = 0;
};

using Requests = std::function<std::string(int number)>;

struct Measurement {
    std::string name; ///< one word
    Requests requests;
};

/// The total of a callgrind output file, and its calls of the functions that allocate.
class CallgrindFile {
  public:
    explicit CallgrindFile(const std::string& file) {
        std::ifstream input(file);
        for (std::string line; std::getline(input, line);) {
            if (line.rfind("cfn=", 0) == 0) {
                const std::string& called = nameIn(line.substr(4));
                allocates_ = called == "malloc" || called == "calloc" || called == "realloc" ||
                             called == "posix_memalign" || called == "aligned_alloc";
            } else if (line.rfind("fn=", 0) == 0) {
                nameIn(line.substr(3));
            } else if (line.rfind("calls=", 0) == 0 && allocates_) {
                counts_.allocations += std::stoll(line.substr(6));
            } else if (line.rfind("totals:", 0) == 0) {
                counts_.instructions = std::stoll(line.substr(7));
            }
        }
        if (counts_.instructions == 0) {
            throw std::runtime_error("no callgrind output in " + file);
        }
    }

    Counts counts() const { return counts_; }

  private:
    /// "(12) name" defines a number's name, "(12)" stands for it.
    const std::string& nameIn(const std::string& text) {
        const std::size_t close = text.find(')');
        std::string& name = names_[text.substr(0, close)];
        if (close + 2 < text.size()) {
            name = text.substr(close + 2);
        }
        return name;
    }

    std::map<std::string, std::string> names_;
    bool allocates_ = false;
    Counts counts_;
};

/// What a server costs that answers so many requests and ends.
Counts countRun(const Requests& requests, int number) {
    const LabFolder folder;
    const std::string output = folder.path() + "/callgrind.out";
    LabServer server({"valgrind", "--quiet", "--tool=callgrind", "--callgrind-out-file=" + output}, benchProvider());
    {
        Connection connection(server.port());
        for (int i = 0; i < number; ++i) {
            connection.ask(requests(i));
        }
    }
    server.stop();
    return CallgrindFile(output).counts();
}

/// Between two runs that differ only in the number of requests; the first ones of each fill the caches.
Counts countRequest(const Requests& requests) {
    constexpr int kWarmUp = 20;
    constexpr int kCounted = 100;
    const Counts before = countRun(requests, kWarmUp);
    const Counts after = countRun(requests, kWarmUp + kCounted);
    return {(after.instructions - before.instructions) / kCounted, (after.allocations - before.allocations) / kCounted};
}

std::string instanceName(const std::string& className, const std::string& key, const std::string& value) {
    return "<INSTANCENAME CLASSNAME=\"" + className + "\">" + keyBinding(key, value) + "</INSTANCENAME>";
}

Requests same(const std::string& text) {
    return [text](int) { return text; };
}

Requests alternating(const std::string& one, const std::string& other) {
    return [one, other](int number) { return number % 2 == 0 ? one : other; };
}

std::vector<Measurement> measurements() {
    const std::string bin = instanceName("QTX_CDRServicePrefixBin", "InstanceID", "CDRServicePrefixBin_3");
    const std::string access = instanceName("QTX_CDRServiceAccessBin", "InstanceID", "CDRServiceAccessBin_0");
    const std::string push = instanceName("QTX_CDRPushSetting", "InstanceID", "CDRPushSetting");
    const auto modifyBin = [&](const char* digits) {
        return modifyInstance("QTX_CDRServicePrefixBin", bin, "PrefixBin", "string", digits);
    };
    return {
        {"GetInstance:QTX_CDRService", same(getInstance(serviceName()))},
        {"GetInstance:BENCH_Thing", same(getInstance(instanceName("BENCH_Thing", "Name", "5")))},
        {"EnumerateInstances:BENCH_Thing", same(enumerate("BENCH_Thing"))},
        {"ModifyInstance:QTX_CDRServicePrefixBin", alternating(modifyBin("123"), modifyBin("4567"))},
        {"EnumerateInstances:QTX_CDRServicePrefixBin", same(enumerate("QTX_CDRServicePrefixBin"))},
        {"GetInstance:QTX_CDRServicePrefixBin", same(getInstance(bin))},
        {"GetInstance:QTX_CDRServiceAccessBin", same(getInstance(access))},
        {"GetInstance:QTX_CDRPushSetting", same(getInstance(push))},
        {"GetInstance:QTX_CDRPushStatistics",
         same(getInstance(instanceName("QTX_CDRPushStatistics", "Name", "CDRPushStatistic")))},
        {"GetInstance:QTX_CDRPullStatistics",
         same(getInstance(instanceName("QTX_CDRPullStatistics", "Name", "CDRPullStatistic")))},
        {"GetClass:QTX_CDRService", same(getClass("QTX_CDRService"))},
        {"OpenEnumerateInstances:BENCH_Thing", same(openEnumeration("BENCH_Thing", 20))},
    };
}

using Table = std::map<std::string, Counts>;

Table readTable(const std::string& file) {
    Table table;
    std::ifstream input(file);
    for (std::string line; std::getline(input, line);) {
        std::istringstream words(line);
        std::string name;
        Counts counts;
        if (line[0] != '#' && words >> name >> counts.instructions >> counts.allocations) {
            table[name] = counts;
        }
    }
    return table;
}

void writeTable(const std::string& file, const std::vector<std::pair<std::string, Counts>>& rows) {
    std::ofstream output(file);
    output << "# Request, instructions and allocations; written by \"./cdr bench --count --update\".\n";
    for (const auto& [name, counts] : rows) {
        output << name << ' ' << counts.instructions << ' ' << counts.allocations << '\n';
    }
}

bool grew(std::int64_t now, std::int64_t before) {
    return before > 0 && now * 100 > before * 105;
}

void printRow(const std::string& name, const Counts& now, const Counts* before) {
    std::printf("%-46s %10lld %6lld", name.c_str(), static_cast<long long>(now.instructions),
                static_cast<long long>(now.allocations));
    if (before != nullptr) {
        std::printf("   %10lld %6lld  %6.3f %s", static_cast<long long>(before->instructions),
                    static_cast<long long>(before->allocations),
                    static_cast<double>(now.instructions) / static_cast<double>(before->instructions),
                    grew(now.instructions, before->instructions) || grew(now.allocations, before->allocations) ? "GREW"
                                                                                                               : "");
    }
    std::printf("\n");
    (void)std::fflush(stdout);
}

/// Counts and prints each; true when the file has all of them and none grew, or is written anew.
bool compare(const std::string& file, const std::string& only, bool update) {
    const Table committed = readTable(file);
    std::vector<std::pair<std::string, Counts>> rows;
    bool fine = true;
    std::printf("%-46s %10s %6s   %10s %6s  %6s\n", "a request", "instr.", "alloc.", "committed", "alloc.", "ratio");
    for (const Measurement& one : measurements()) {
        if (one.name.find(only) == std::string::npos) {
            continue;
        }
        const Counts now = countRequest(one.requests);
        const auto before = committed.find(one.name);
        const Counts* const known = before == committed.end() ? nullptr : &before->second;
        printRow(one.name, now, known);
        fine = fine && known != nullptr && !grew(now.instructions, known->instructions) &&
               !grew(now.allocations, known->allocations);
        rows.emplace_back(one.name, now);
    }
    if (update) {
        writeTable(file, rows);
    }
    return fine || update;
}

} // namespace

int main(int argc, char** argv) {
    std::string file = COUNTS_FILE;
    std::string only;
    bool update = false;
    CLI::App app(
        "Counts instructions and allocations a request; ends with 1 when one grew by more than 5 % or is new.");
    app.add_option("--table", file, "the committed counts")->capture_default_str();
    CLI::Option* const filter = app.add_option("--only", only, "only requests whose name contains this");
    app.add_flag("--update", update, "write the table")->excludes(filter);
    CLI11_PARSE(app, argc, argv);
    try {
        return compare(file, only, update) ? 0 : 1;
    } catch (const std::exception& error) {
        std::fprintf(stderr, "count_requests: %s\n", error.what());
        return 1;
    }
}
