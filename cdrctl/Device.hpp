// What the machine that cdrctl runs on tells of a push: crontabs, cron, the transfer program and the logs.
#pragma once

#include <optional>
#include <string>
#include <vector>

namespace cdrctl {

constexpr const char* kTransferProgram = "/qv/bin/CDRTransfer";

/// A user's crontab, as far as it is about the transfer program.
struct Crontab {
    std::string user;
    std::vector<std::string> lines; ///< those that run the program
    std::string problem;            ///< why it could not be read; empty when it could
    bool denied = false;            ///< only because this user may not
};

struct LogLine {
    std::string file;
    std::string text;
};

/// What `CDRTransfer --status` tells.
struct TransferStatus {
    std::vector<std::string> lines;
    std::string problem; ///< what is wrong by it, such as why the last run failed; empty when nothing is
};

struct DeviceFacts {
    std::vector<Crontab> crontabs;
    std::string cron;           ///< the cron daemon that runs, such as "cron" or "busybox crond"; empty for none
    std::string program;        ///< where the transfer program was found; empty when it is missing
    std::string programProblem; ///< why it cannot be started; empty when it can
    std::optional<TransferStatus> transfer;
    std::vector<LogLine> log; ///< the last lines about pushes of each log, oldest first
};

/// Where to look. Tests look elsewhere.
struct DevicePlaces {
    std::string processes = "/proc";
    std::string crontabs; ///< a crontabs directory; empty: the crontab program is asked
    std::string logs;
    std::string program = kTransferProgram;

    /// By the settings of the platform libraries (ZPO_CRONTAB_DIR, ZPO_LOG_DIR).
    static DevicePlaces fromEnvironment();
};

/// Whatever cannot be seen is left out; nothing is changed.
DeviceFacts lookAround(const DevicePlaces& places);

} // namespace cdrctl
