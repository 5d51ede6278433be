#include "cdrctl/PushWhy.hpp"

#include <cstdlib>

namespace cdrctl {
namespace {

/// "Sun 2026-11-22".
std::string dayText(std::time_t time) {
    const std::string text = timeText(time);
    return text.substr(0, text.rfind(' '));
}

constexpr std::time_t kGrace = 600; ///< seconds that a transfer may take before it counts as missing

class Report {
  public:
    explicit Report(const PushFacts& facts) : facts_(facts) {}

    std::vector<Finding> make() {
        settings();
        if (facts_.device) {
            crontabs(*facts_.device);
            cron(*facts_.device);
            program(*facts_.device);
            transfer(*facts_.device);
        }
        statistics();
        if (facts_.device) {
            for (const LogLine& line : facts_.device->log) {
                note("log", line.file + ": " + line.text);
            }
        } else {
            note("device", "crontab, cron and logs were not looked at: cdrctl does not run on the device",
                 "run cdrctl push why there");
        }
        return std::move(findings_);
    }

  private:
    void note(const char* source, std::string text, std::string advice = "") {
        findings_.push_back({Weight::Note, source, std::move(text), std::move(advice)});
    }
    void problem(const char* source, std::string text, std::string advice = "") {
        findings_.push_back({Weight::Problem, source, std::move(text), std::move(advice)});
    }

    void settings() {
        const Schedule& schedule = facts_.schedule;
        if (!facts_.unreadable.empty() || !schedule.type) {
            problem("settings",
                    "the settings cannot be read" + (facts_.unreadable.empty() ? "" : ": " + facts_.unreadable),
                    "the device's registry fails: on the device, ZpoShared.log and CdrOAM.log tell why");
        } else if (!schedule.isPush()) {
            const std::string label = facts_.typeLabel.empty() ? "" : " (" + facts_.typeLabel + ")";
            problem("settings",
                    "the transfer type is " + std::to_string(*schedule.type) + label +
                        ", with which no push is scheduled",
                    "cdrctl set TransferType=daily (or weekly, monthly)");
        } else if (!schedule.problem().empty()) {
            problem("settings", "the push cannot be scheduled: " + schedule.problem(),
                    *schedule.type == 2 ? "cdrctl set TransferDayOfMonth=1" : "cdrctl set TransferTime=02:00");
        } else {
            note("settings", "a push runs " + schedule.inWords());
            scheduledDay();
        }
        if (schedule.isPush() && facts_.address.empty()) {
            problem("settings", "no server is set that the files go to",
                    "cdrctl set IPAddress=HOST UserName=NAME Password=- DestFolder=FOLDER");
        }
    }

    void scheduledDay() {
        const auto next = facts_.schedule.next(facts_.now);
        const auto previous = facts_.schedule.previous(facts_.now);
        if (next && *next - facts_.now > 86400) {
            const bool today = previous && dayText(*previous) == dayText(facts_.now);
            note("settings",
                 (today ? "its time today is over: the last was " : "today is not its day: the last was ") +
                     (previous ? timeText(*previous) : "never") + ", the next is " + timeText(*next),
                 "cdrctl push now runs it at once; cdrctl set changes the day");
        }
        if (facts_.schedule.type == 2 && std::atoi(facts_.schedule.dayOfMonth.c_str()) > 28) {
            note("settings", "months without a day " + facts_.schedule.dayOfMonth + " are left out");
        }
    }

    /// A line of the table that the settings mean; cron knows Sunday as 0 and as 7.
    bool isExpected(const std::string& line) const {
        const std::string fields = facts_.schedule.cronFields() + " ";
        std::string sunday = fields;
        if (facts_.schedule.type == 1 && sunday.size() > 2 && sunday[sunday.size() - 2] == '7') {
            sunday[sunday.size() - 2] = '0';
        }
        return line.rfind(fields, 0) == 0 || line.rfind(sunday, 0) == 0;
    }

    void crontabs(const DeviceFacts& device) {
        bool found = false;
        bool unread = false;
        for (const Crontab& table : device.crontabs) {
            const std::string whose = "the crontab of " + table.user;
            if (!table.problem.empty()) {
                unread = true;
                const std::string text = whose + " could not be read: " + table.problem;
                table.denied ? note("crontab", text, "run cdrctl push why as root") : problem("crontab", text);
            }
            for (const std::string& line : table.lines) {
                found = true;
                task(whose, line, device);
            }
        }
        const bool wanted = facts_.schedule.isPush() && facts_.schedule.problem().empty();
        if (!found && !unread && wanted) {
            const std::string user = device.crontabs.empty() ? "" : " of " + device.crontabs.front().user;
            problem("crontab", "the crontab" + user + " has no line that runs " + kTransferProgram,
                    "cdrctl set TransferTime=" + facts_.schedule.time + " puts it there again");
        } else if (!found && !unread) {
            note("crontab", std::string("no line runs ") + kTransferProgram);
        }
    }

    void task(const std::string& whose, const std::string& line, const DeviceFacts& device) {
        const bool sunday = line.find(" * * 7 ") != std::string::npos;
        if (facts_.schedule.type && !facts_.schedule.isPush()) {
            note("crontab", whose + " runs the program all the same: " + line,
                 "setting a time or day schedules it whatever the type is; set TransferType again to end it");
        } else if (sunday && device.cron == "busybox crond") {
            problem("crontab", whose + " says \"" + line + "\", which BusyBox's crond ignores: it knows Sunday as 0",
                    "start the server with ZPO_CRONTAB_SUNDAY=0 and set the day again");
        } else if (!facts_.schedule.type || !facts_.schedule.problem().empty() || isExpected(line)) {
            note("crontab", whose + ": " + line);
        } else {
            problem("crontab", whose + " says \"" + line + "\", which is not what the settings say",
                    "cdrctl set TransferTime=" + facts_.schedule.time + " puts it right");
        }
    }

    void cron(const DeviceFacts& device) {
        if (device.cron.empty()) {
            problem("cron", "no cron daemon runs, so nothing starts the program",
                    "systemctl start cron (package cron)");
        } else {
            note("cron", device.cron + " runs");
        }
    }

    void program(const DeviceFacts& device) {
        if (device.program.empty()) {
            problem("program", std::string(kTransferProgram) + " is missing", "install the transfer program");
        } else if (!device.programProblem.empty()) {
            problem("program", std::string(kTransferProgram) + " cannot be started: " + device.programProblem,
                    "chmod +x " + device.program);
        } else {
            note("program", std::string(kTransferProgram) + " is there");
        }
    }

    void transfer(const DeviceFacts& device) {
        if (!device.transfer) {
            return;
        }
        if (!device.transfer->problem.empty()) {
            problem("transfer", device.transfer->problem,
                    std::string(kTransferProgram) + " --wait --verbose, as the server's user, shows it at work");
        }
        for (const std::string& line : device.transfer->lines) {
            note("transfer", line);
        }
    }

    void statistics() {
        if (!facts_.schedule.isPush()) {
            return; // the server does not tell the time then
        }
        const auto due = facts_.schedule.previous(facts_.now - kGrace);
        const auto& last = facts_.lastTransfer;
        const std::string succeeded =
            last ? timeText(*last) + ", " + distanceText(facts_.now, *last) : std::string("never");
        if (due && last && *last < *due && scheduledAt() < *due) {
            problem("statistics",
                    "a push was due " + timeText(*due) + ", but the last one that succeeded was " + succeeded,
                    "unless the schedule was changed since: the transfer failed or was not started");
        } else {
            note("statistics", "the last push that succeeded: " + succeeded);
        }
    }

    /// When the schedule was last changed, as far as the log tells; its times are local.
    std::time_t scheduledAt() const {
        std::time_t latest = 0;
        for (const LogLine& line : facts_.device ? facts_.device->log : std::vector<LogLine>()) {
            std::tm parts{};
            if (line.text.find("push task scheduled") != std::string::npos &&
                ::strptime(line.text.c_str(), "%Y-%m-%dT%H:%M:%S", &parts) != nullptr) {
                parts.tm_isdst = -1;
                latest = std::mktime(&parts);
            }
        }
        return latest;
    }

    const PushFacts& facts_;
    std::vector<Finding> findings_;
};

} // namespace

std::vector<Finding> explainPush(const PushFacts& facts) {
    return Report(facts).make();
}

} // namespace cdrctl
