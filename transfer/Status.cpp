#include "Status.hpp"

#include "Failure.hpp"
#include "PushSettings.hpp"
#include "Records.hpp"
#include "RunReport.hpp"
#include "Schedule.hpp"
#include "Text.hpp"

#include <algorithm>
#include <fmt/format.h>
#include <functional>

namespace transfer {
namespace {

/// Everything that is told; a problem stands in the place of what could not be found out.
struct Status {
    std::string type, target, settingsProblem;
    std::vector<ScheduledPush> schedule;
    std::string scheduleProblem;
    std::size_t finished = 0, waiting = 0;
    std::string recordsProblem;
    std::string lastTransferTime;
    bool underWay = false;
    RunReport run;

    /// The process that wrote the report is gone without having ended it.
    bool wasKilled() const { return run.state == RunReport::State::Running && !underWay; }
};

std::string problemOf(const std::function<void()>& work) {
    try {
        work();
        return "";
    } catch (const Failure& failure) {
        return printable(failure.what());
    }
}

Status collect(const StateFolder& state, const std::string& records) {
    Status status;
    status.settingsProblem = problemOf([&] {
        status.type = transferTypeText(readTransferType());
        status.target = readPushSettings().target();
    });
    status.scheduleProblem = problemOf([&] { status.schedule = scheduledPushes(std::time(nullptr)); });
    status.recordsProblem = problemOf([&] {
        const SentFiles sent(state);
        const std::vector<LocalFile> files = finishedFiles(records);
        status.finished = files.size();
        status.waiting = static_cast<std::size_t>(
            std::count_if(files.begin(), files.end(), [&](const LocalFile& file) { return !sent.holds(file); }));
    });
    (void)problemOf([&] { status.lastTransferTime = readLastTransferTime(); });
    status.underWay = state.isLocked();
    status.run = RunReport::load(state);
    return status;
}

std::string line(const char* label, const std::string& text) {
    return fmt::format("{:<16}{}\n", label, text);
}

std::string scheduleLines(const Status& status) {
    if (!status.scheduleProblem.empty()) {
        return line("Schedule:", status.scheduleProblem);
    }
    if (status.schedule.empty()) {
        return line("Schedule:", "nothing is scheduled; setting TransferType to 0, 1 or 2 schedules the push");
    }
    std::string text;
    for (const ScheduledPush& push : status.schedule) {
        text += line("Schedule:", push.fields + "; fires next " +
                                      (push.next == 0 ? "never" : timeText(push.next) + ", if cron is running"));
    }
    return text;
}

std::string runLines(const Status& status) {
    const RunReport& run = status.run;
    if (run.state == RunReport::State::None) {
        return line("Last run:", "none yet");
    }
    const std::string end = status.wasKilled() ? "did not end: it was killed; the next run goes on where it was"
                            : run.state == RunReport::State::Running ? "is under way"
                                                                     : stateText(run.state);
    std::string text =
        line("Last run:", timeText(run.began) + (run.ended == 0 ? "" : " to " + timeText(run.ended)) + ": " + end);
    if (!run.target.empty()) {
        text += line("", "to " + run.target);
    }
    text += line("", fmt::format("{} of {} sent, {} in {}", run.files, counted(run.found, "file"),
                                 counted(run.bytes, "byte"), counted(run.tries, "try")));
    if (!run.reason.empty()) {
        text += line("  ended early:", run.reason);
    }
    for (const FileFailure& failure : run.failures) {
        text += line("  failed:", failure.file + ": " + failure.reason);
    }
    return text + (run.moreFailures == 0 ? "" : line("", fmt::format("and {} more", run.moreFailures)));
}

std::string textOrNull(const std::string& text) {
    return text.empty() ? "null" : jsonText(text);
}

std::string timeOrNull(std::time_t time) {
    return time == 0 ? "null" : jsonText(isoTime(time));
}

template <class Items, class Format>
std::string jsonList(const Items& items, Format format) {
    std::string text;
    for (const auto& item : items) {
        text += (text.empty() ? "" : ", ") + format(item);
    }
    return "[" + text + "]";
}

std::string runJson(const Status& status) {
    const RunReport& run = status.run;
    if (run.state == RunReport::State::None) {
        return "null";
    }
    const std::string failures = jsonList(run.failures, [](const FileFailure& failure) {
        return fmt::format(R"({{"file": {}, "reason": {}}})", jsonText(failure.file), jsonText(failure.reason));
    });
    return fmt::format(
        R"({{"state": {}, "began": {}, "ended": {}, "target": {}, "found": {}, "files": {}, "bytes": {}, )"
        R"("tries": {}, "reason": {}, "failures": {}, "more_failures": {}}})",
        jsonText(status.wasKilled() ? "killed" : stateText(run.state)), timeOrNull(run.began), timeOrNull(run.ended),
        textOrNull(run.target), run.found, run.files, run.bytes, run.tries, textOrNull(run.reason), failures,
        run.moreFailures);
}

} // namespace

std::string statusText(const StateFolder& state, const std::string& records) {
    const Status status = collect(state, records);
    std::string text = line("Settings:", status.settingsProblem.empty() ? status.type + " to " + status.target
                                                                        : status.settingsProblem);
    text += scheduleLines(status);
    text += line("Record folder:", status.recordsProblem.empty()
                                       ? fmt::format("{}: {} finished, {} to be sent", records,
                                                     counted(status.finished, "file"), status.waiting)
                                       : status.recordsProblem);
    text += runLines(status);
    text += line("Last transfer:", status.lastTransferTime.empty() ? "none yet" : status.lastTransferTime);
    return text + (status.underWay ? line("Now:", "a run is under way") : "");
}

std::string statusJson(const StateFolder& state, const std::string& records) {
    const Status status = collect(state, records);
    const std::string schedule = jsonList(status.schedule, [](const ScheduledPush& push) {
        return fmt::format(R"({{"fields": {}, "next": {}}})", jsonText(push.fields), timeOrNull(push.next));
    });
    return fmt::format(R"({{"settings": {{"type": {}, "target": {}, "problem": {}}}, "schedule": {}, )"
                       R"("schedule_problem": {}, "records": {{"folder": {}, "finished": {}, "waiting": {}, )"
                       R"("problem": {}}}, "under_way": {}, "last_run": {}, "last_transfer_time": {}}})"
                       "\n",
                       textOrNull(status.type), textOrNull(status.target), textOrNull(status.settingsProblem), schedule,
                       textOrNull(status.scheduleProblem), jsonText(records), status.finished, status.waiting,
                       textOrNull(status.recordsProblem), status.underWay, runJson(status),
                       textOrNull(status.lastTransferTime));
}

} // namespace transfer
