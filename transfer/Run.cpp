#include "Run.hpp"

#include "Failure.hpp"
#include "Gzip.hpp"
#include "Log.hpp"
#include "Text.hpp"

#include <algorithm>
#include <cerrno>
#include <cstring>
#include <fmt/format.h>
#include <thread>
#include <unistd.h>

namespace transfer {
namespace {

constexpr std::chrono::seconds kLongestDelay{300};

std::uint64_t hashOf(const std::string& text) {
    std::uint64_t hash = 0xcbf29ce484222325U; // FNV-1a
    for (const char character : text) {
        hash = (hash ^ static_cast<unsigned char>(character)) * 0x100000001b3U;
    }
    return hash;
}

/// What goes up for a file: the file itself or its compressed form.
struct Payload {
    zpo::UniqueFd fd;
    std::uint64_t size = 0;
    std::string partPath;
    std::string finalPath;
};

class Run {
  public:
    Run(const StateFolder& state, const RunOptions& options, Console& console, RunReport& report)
        : state_(state), options_(options), console_(console), report_(report), settings_(readPushSettings()),
          device_(state.deviceId()), farEnd_(settings_, state / "known_hosts", state / "ca.pem"), sent_(state) {
        report_.target = settings_.target();
    }

    /// Throws Failure, scope Run, when the rest is left to the next run.
    void run() {
        emptyFolder(state_ / "spool");
        std::vector<LocalFile> files = finishedFiles(options_.records);
        if (!files.empty()) { // an empty folder may be one whose disk is not mounted
            sent_.keepOnly(files);
        }
        interrupted_ = CurrentUpload::load(state_);
        removeSent(files);
        report_.found = files.size();
        report_.save(state_);
        begin();
        takeUpInterrupted(files);
        for (const LocalFile& file : files) {
            sendWithRetries(file, settings_.deleteSent);
        }
        CurrentUpload::clear(state_);
    }

    /// The outbox, with a metrics file of this run.
    void sendMetrics() {
        if (!settings_.metrics) {
            emptyFolder(state_ / "outbox");
            return;
        }
        if (report_.files > 0) {
            writeMetrics();
        }
        if (report_.reason.empty()) {
            for (const LocalFile& file : finishedFiles(state_ / "outbox", ".txt")) {
                sendMetricsFile(file);
            }
            CurrentUpload::clear(state_);
        }
    }

  private:
    void begin() {
        const std::string text = "push begins: " + counted(report_.found, "file") + " to " + report_.target;
        log::notice(text);
        console_.step(text);
    }

    /// Takes the files out of the list that have arrived before; with DeleteFlag they are deleted now: the run that
    /// sent them did not come to it, or the flag was not set then.
    void removeSent(std::vector<LocalFile>& files) {
        const auto arrived = [this](const LocalFile& file) {
            if (sent_.holds(file) && settings_.deleteSent) {
                deleteLocal(file);
            }
            return sent_.holds(file);
        };
        files.erase(std::remove_if(files.begin(), files.end(), arrived), files.end());
    }

    /// The file that an interrupted run was sending comes first, before "current" tells of another. What such a run
    /// left on the server of a file that is not to be sent any more is removed.
    void takeUpInterrupted(std::vector<LocalFile>& files) {
        if (interrupted_.partPath.empty() || interrupted_.target != report_.target) {
            return;
        }
        const auto record = std::find(files.begin(), files.end(), interrupted_.file);
        LocalFile metrics = interrupted_.file;
        metrics.folder = state_ / "outbox";
        if (record != files.end()) {
            std::rotate(files.begin(), record, record + 1);
        } else if (settings_.metrics && metrics.isUnchanged()) {
            sendMetricsFile(metrics);
        } else {
            removeAbandoned();
        }
    }

    void removeAbandoned() {
        try {
            farEnd_.remove(interrupted_.partPath);
        } catch (const Failure& failure) {
            console_.step("an unfinished upload is left on the server: " + std::string(failure.what()));
        }
        interrupted_ = CurrentUpload();
    }

    void sendMetricsFile(const LocalFile& file) {
        isMetrics_ = true;
        sendWithRetries(file, true);
        isMetrics_ = false;
    }

    void sendWithRetries(const LocalFile& file, bool deleteSent) {
        bool again = interrupted_.file == file && interrupted_.target == report_.target;
        for (unsigned attempt = 0;; ++attempt) {
            try {
                ++report_.tries;
                send(file, again);
                if (deleteSent) {
                    deleteLocal(file);
                }
                return;
            } catch (const Failure& failure) {
                noteFailure(file, failure);
                if (failure.scope() == Scope::File) {
                    report_.addFailure(file.name, failure.what());
                    return;
                }
                if (failure.scope() == Scope::Run) {
                    throw;
                }
                if (attempt >= settings_.retries) {
                    throw Failure(Scope::Run, fmt::format("given up after {}: {}: {}", counted(attempt + 1, "try"),
                                                          file.name, failure.what()));
                }
            }
            again = true;
            waitBefore(attempt + 1);
        }
    }

    void noteFailure(const LocalFile& file, const Failure& failure) {
        const std::string text = file.name + ": " + failure.what();
        log::failure("push failed: " + text);
        console_.problem(text);
    }

    void waitBefore(unsigned attempt) {
        const auto longest = std::max(kLongestDelay, options_.retryDelay);
        auto delay = options_.retryDelay;
        for (unsigned i = 1; i < attempt && delay < longest; ++i) {
            delay *= 2;
        }
        delay = std::min(delay, longest);
        console_.step(fmt::format("try {} of {} in {}", attempt + 1, settings_.retries + 1,
                                  counted(static_cast<std::uint64_t>(delay.count()), "second")));
        report_.save(state_);
        std::this_thread::sleep_for(delay);
    }

    /// `again`: an earlier try may have renamed the file without hearing of it.
    void send(const LocalFile& file, bool again) {
        const Payload payload = prepare(file);
        Upload upload{payload.fd.get(), payload.size,
                      [&](std::uint64_t position) { console_.progress(file.name, position, payload.size); }};
        const bool arrived = again && farEnd_.sizeOf(payload.finalPath) == payload.size;
        if (!arrived) {
            if (!interrupted_.partPath.empty() && interrupted_.partPath != payload.partPath && again) {
                farEnd_.remove(interrupted_.partPath); // made with another CompressFlag
            }
            CurrentUpload{file, payload.partPath, payload.finalPath, report_.target}.save(state_);
            farEnd_.upload(payload.partPath, upload);
            farEnd_.confirm(payload.partPath, payload.finalPath, upload);
        }
        interrupted_ = CurrentUpload();
        noteArrival(file, payload);
    }

    void noteArrival(const LocalFile& file, const Payload& payload) {
        if (!isMetrics_) {
            sent_.add(file, std::time(nullptr));
            ++report_.files;
            report_.bytes += payload.size;
            saveReport();
        }
        console_.clear();
        console_.step(
            fmt::format("{}: arrived as {}, {}", file.name, payload.finalPath, counted(payload.size, "byte")));
    }

    /// For --status while the run is under way; not for each of many small files.
    void saveReport() {
        const auto now = std::chrono::steady_clock::now();
        if (now - saved_ > std::chrono::seconds(1)) {
            report_.save(state_);
            saved_ = now;
        }
    }

    Payload prepare(const LocalFile& file) {
        Payload payload{file.open(), file.size, "", settings_.pathOf(file.name)};
        std::string identity =
            device_ + "\n" + file.name + "\n" + std::to_string(file.size) + "\n" + std::to_string(file.modified);
        if (settings_.compress && !isMetrics_) {
            const LocalFile spooled{state_ / "spool", file.name + ".gz"};
            identity += "\n" + std::to_string(compressFile(payload.fd.get(), spooled.path()));
            openSpooled(spooled, payload);
        }
        payload.partPath = settings_.pathOf(fmt::format("{}.{:016x}.part", file.name, hashOf(identity)));
        return payload;
    }

    void openSpooled(const LocalFile& spooled, Payload& payload) {
        payload.fd = zpo::openFile(spooled.path(), 0);
        unlink(spooled.path().c_str()); // the open file is all that is needed
        const off_t size = payload.fd ? lseek(payload.fd.get(), 0, SEEK_END) : -1;
        if (size < 0) {
            throw Failure(Scope::File, std::string("its compressed form cannot be read: ") + std::strerror(errno));
        }
        payload.size = static_cast<std::uint64_t>(size);
        payload.finalPath += ".gz";
    }

    /// Only what has arrived: a file that has been changed since is another file.
    void deleteLocal(const LocalFile& file) {
        if (file.isUnchanged() && unlink(file.path().c_str()) != 0 && errno != ENOENT) {
            const std::string text =
                file.name + ": it has arrived, but cannot be deleted here: " + std::strerror(errno);
            log::failure("push failed: " + text);
            console_.problem(text);
            report_.addFailure(file.name,
                               std::string("it has arrived, but cannot be deleted here: ") + std::strerror(errno));
        }
    }

    void writeMetrics() {
        const std::time_t now = std::time(nullptr);
        saveFile(state_ / "outbox" + "/CDR-metrics-" + stampTime(report_.began) + ".txt",
                 fmt::format("began={}\nended={}\nfiles={}\nbytes={}\ntries={}\nfailed={}\n", isoTime(report_.began),
                             isoTime(now), report_.files, report_.bytes, report_.tries, report_.found - report_.files));
    }

    const StateFolder& state_;
    const RunOptions& options_;
    Console& console_;
    RunReport& report_;
    const PushSettings settings_;
    const std::string device_;
    FarEnd farEnd_;
    SentFiles sent_;
    CurrentUpload interrupted_;
    std::chrono::steady_clock::time_point saved_;
    bool isMetrics_ = false;
};

void runAll(const StateFolder& state, const RunOptions& options, Console& console, RunReport& report) {
    Run run(state, options, console, report);
    try {
        run.run();
    } catch (const Failure& failure) {
        report.reason = failure.what();
    }
    run.sendMetrics();
    if (report.reason.empty() && report.failures.empty() && report.files > 0) {
        writeLastTransferTime(std::time(nullptr));
    }
}

void noteEnd(const RunReport& report, Console& console) {
    const std::string text = fmt::format(
        "push {}: {} of {} sent, {} in {}{}", stateText(report.state), report.files, counted(report.found, "file"),
        counted(report.bytes, "byte"), counted(report.tries, "try"), report.reason.empty() ? "" : "; " + report.reason);
    if (report.state == RunReport::State::Succeeded) {
        log::notice(text);
        console.step(text);
    } else {
        log::failure(text);
        console.problem(text);
    }
}

} // namespace

RunReport runPush(const StateFolder& state, const RunOptions& options, Console& console) {
    RunReport report;
    report.began = std::time(nullptr);
    report.state = RunReport::State::Running;
    try {
        report.save(state);
        runAll(state, options, console, report);
    } catch (const Failure& failure) {
        report.reason = failure.what();
    }
    report.ended = std::time(nullptr);
    report.state =
        report.reason.empty() && report.failures.empty() ? RunReport::State::Succeeded : RunReport::State::Failed;
    try {
        report.save(state);
    } catch (const Failure& failure) {
        log::failure(failure.what());
    }
    noteEnd(report, console);
    return report;
}

void printPlan(const StateFolder& state, const RunOptions& options) {
    const PushSettings settings = readPushSettings();
    const SentFiles sent(state);
    std::printf("to %s\n", settings.target().c_str());
    std::uint64_t count = 0;
    for (const LocalFile& file : finishedFiles(options.records)) {
        if (!sent.holds(file)) {
            std::printf("would send %s%s, %s%s\n", file.name.c_str(), settings.compress ? " as .gz" : "",
                        counted(file.size, "byte").c_str(), settings.deleteSent ? ", and delete it here" : "");
            ++count;
        }
    }
    std::printf("%s to be sent\n", counted(count, "file").c_str());
}

} // namespace transfer
