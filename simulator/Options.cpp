#include "Options.hpp"

#include <CLI/App.hpp>
#include <CLI/Config.hpp>
#include <CLI/Formatter.hpp>
#include <cstdio>
#include <cstdlib>

namespace cdrsim {
namespace {

constexpr unsigned kMostCalls = 60000;
constexpr std::uint64_t kMostRecords = 10'000'000;

} // namespace

std::optional<int> readOptions(int argc, char** argv, Options& options) {
    CLI::App app("Plays the device's CDR service for people without one: owns the queue CDRService, follows the report "
                 "settings and writes made-up call records. A simulator: its record format is its own.",
                 "cdrsim");
    const char* const folder = std::getenv("CDR_RECORD_DIR");
    options.records = folder != nullptr && *folder != '\0' ? folder : options.records;
    app.add_option("--records", options.records, "folder of the record files (environment: CDR_RECORD_DIR)")
        ->capture_default_str();
    app.add_option("--calls-per-minute", options.callsPerMinute, "calls on average; 0: none")
        ->check(CLI::Range(0U, kMostCalls))
        ->capture_default_str();
    app.add_option("--seed", options.seed, "make the same calls each time");
    CLI::Option* once = app.add_option("--once", options.once, "write so many records at once and end")
                            ->check(CLI::Range(std::uint64_t{1}, kMostRecords));
    CLI::Option* pull = app.add_flag("--pull", options.pull,
                                     "play a client that fetches the finished files: mark them, count them in the pull "
                                     "statistics and end");
    app.add_option("--pull-failure", options.pullFailure, "play a client that fails for the reason given, and end")
        ->excludes(pull)
        ->excludes(once);
    pull->excludes(once);
    try {
        app.parse(argc, argv);
    } catch (const CLI::ParseError& error) {
        if (error.get_exit_code() == 0) {
            return app.exit(error);
        }
        std::fprintf(stderr, "cdrsim: %s (cdrsim --help tells the usage)\n", error.what());
        return 2;
    }
    return std::nullopt;
}

} // namespace cdrsim
