// The benchmarks, in one run and one table.
#include "CDR/ModuleBench.hpp"
#include "Measure.hpp"
#include "Report.hpp"
#include "cimserver/ServerBench.hpp"
#include "platform/RegistryBench.hpp"

#include <CLI/CLI.hpp>

#include <cstdio>
#include <cstdlib>
#include <exception>
#include <filesystem>
#include <string>

namespace {

using namespace bench;

struct Section {
    const char* name;
    void (*run)(Report&, const Effort&);
    bool apart; ///< uses the platform libraries in process, which serve one state directory in a process
};

constexpr Section kSections[] = {{"load", benchLoad, false},
                                 {"life", benchLife, false},
                                 {"schema", benchSchema, false},
                                 {"module", benchModule, true},
                                 {"registry", benchRegistry, false}};

void run(Report& report, const Effort& effort, const std::string& only) {
    for (const Section& section : kSections) {
        if (std::string(section.name).find(only) == std::string::npos) {
            continue;
        }
        std::fprintf(stderr, "measuring: %s\n", section.name);
        if (section.apart) {
            report.addFromChild([&](Report& part) { section.run(part, effort); });
        } else {
            section.run(report, effort);
        }
    }
}

/// What else the machine did: figures from a shared machine are judged by it.
std::string machine() {
    double load[3] = {};
    ::getloadavg(load, 3);
    char text[100];
    std::snprintf(text, sizeof text, "load %.2f %.2f %.2f", load[0], load[1], load[2]);
    return text;
}

} // namespace

int main(int argc, char** argv) {
    std::string folder = "build/bench/results";
    std::string only;
    Effort effort;
    CLI::App app("Measures the server, the module and the registry, each beside the least that it could take.");
    app.add_flag("--quick", effort.quick, "a minute or so instead of ten; for a first look");
    app.add_option("--only", only, "only sections whose name contains this: load, life, schema, module, registry");
    app.add_option("--out", folder, "where bench.json and the pictures go")->capture_default_str();
    CLI11_PARSE(app, argc, argv);
    if (effort.quick) {
        effort.slice = std::chrono::milliseconds(200);
        effort.rounds = 3;
    }
    try {
        Report report;
        const std::string before = machine();
        run(report, effort, only);
        std::printf("Machine: %s before, %s after\n", before.c_str(), machine().c_str());
        report.print();
        std::filesystem::create_directories(folder);
        report.writeJson(folder + "/bench.json");
        report.draw(folder);
        std::printf("%s holds bench.json and the curves\n", folder.c_str());
        return 0;
    } catch (const std::exception& error) {
        std::fprintf(stderr, "bench: %s\n", error.what());
        return 1;
    }
}
