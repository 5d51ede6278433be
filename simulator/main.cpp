// cdrsim: plays the device's CDR service for people without one; see docs/SIMULATOR.md.

#include "Options.hpp"
#include "PullStatistics.hpp"
#include "Simulator.hpp"

#include <atomic>
#include <csignal>
#include <cstdio>
#include <ctime>
#include <exception>
#include <sys/stat.h>

namespace {

std::atomic<bool> stopped{false};

void onSignal(int) {
    stopped = true;
}

void run(const cdrsim::Options& options) {
    if (options.pull) {
        cdrsim::pull(options.records);
    } else if (options.pullFailure) {
        cdrsim::countFailedPull(*options.pullFailure, std::time(nullptr));
    } else if (options.once > 0) {
        cdrsim::Simulator(options).writeRecords(options.once);
    } else {
        std::signal(SIGTERM, onSignal);
        std::signal(SIGINT, onSignal);
        cdrsim::Simulator(options).serve(stopped);
    }
}

} // namespace

int main(int argc, char** argv) {
    cdrsim::Options options;
    if (const auto exitCode = cdrsim::readOptions(argc, argv, options)) {
        return *exitCode;
    }
    umask(027); // records tell who called whom
    try {
        run(options);
    } catch (const std::exception& error) {
        std::fprintf(stderr, "cdrsim: %s\n", error.what());
        return 1;
    }
    return 0;
}
