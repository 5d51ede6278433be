#include "Simulator.hpp"

#include "PullStatistics.hpp"
#include "RecordFormat.hpp"
#include "ServiceQueue.hpp"

#include <algorithm>
#include <cstdio>
#include <ctime>
#include <random>
#include <stdexcept>
#include <thread>

namespace cdrsim {
namespace {

using Clock = std::chrono::steady_clock;
using std::chrono::milliseconds;

constexpr milliseconds kLongestWait(250); // a signal and the schedule are noticed after this time
constexpr std::uint64_t kMostCallsPerRecord = 100'000;

void say(const std::string& line) {
    std::printf("%s cdrsim: %s\n", timeText(std::time(nullptr), "%Y-%m-%dT%H:%M:%S").c_str(), line.c_str());
    std::fflush(stdout);
}

} // namespace

Simulator::Simulator(const Options& options)
    : options_(options), folder_(options.records), file_(folder_),
      calls_(options.seed.value_or(std::random_device()())) {
    folder_.lock();
    say("simulates the CDR service; records go to " + options.records);
    for (const std::string& line : ignoredSettings()) {
        say(line);
    }
    if (const std::string name = folder_.finishStale(); !name.empty()) {
        say("finished " + name + ", left behind by a simulator that was killed");
    }
    folder_.shrinkTo(UINT64_MAX);
    readSettings();
}

void Simulator::readSettings() {
    std::vector<std::string> notes;
    settings_ = readServiceSettings(settings_, notes);
    for (const std::string& note : notes) {
        say(note);
    }
    attempt([this] { file_.keepWithinDiskLimit(settings_); });
}

template <class Work>
void Simulator::attempt(Work work) {
    try {
        work();
    } catch (const std::exception& error) {
        if (failure_ != error.what()) {
            failure_ = error.what();
            say(failure_);
        }
    }
    report();
}

void Simulator::report() {
    for (const std::string& line : file_.takeNews()) {
        say(line);
    }
}

void Simulator::handle(const std::string& message) {
    if (message == kSettingsChanged) {
        readSettings();
    } else if (message == kClipFile) {
        if (file_.isEmpty()) {
            say("there is no record to clip");
        }
        attempt([this] { file_.clip(std::time(nullptr)); });
    } else {
        say("an unknown message of " + std::to_string(message.size()) + " bytes came");
    }
}

bool Simulator::makeCall() {
    const std::time_t now = std::time(nullptr);
    const Call call = calls_.next(now);
    if (!isReported(settings_, call)) {
        return false;
    }
    // Nobody is told of a changed bin, so the bins are read each time.
    file_.add(recordOf(settings_, readDigitBins(), call, number_ + 1), settings_, now);
    ++number_;
    failure_.clear();
    return true;
}

void Simulator::takeMessage(ServiceQueue& queue, milliseconds wait) {
    std::string message;
    attempt([&] { message = queue.receive(std::clamp(wait, milliseconds(0), kLongestWait)); });
    if (!message.empty()) {
        failure_.clear();
        handle(message);
    }
}

void Simulator::serve(const std::atomic<bool>& stopped) {
    ServiceQueue queue;
    auto next = Clock::now();
    while (!stopped) {
        const bool calling = options_.callsPerMinute > 0;
        const auto wait = std::chrono::duration_cast<milliseconds>(next - Clock::now());
        takeMessage(queue, calling ? wait : kLongestWait);
        attempt([this] { file_.clipWhenDue(settings_.clipFileSchedule, std::time(nullptr)); });
        if (calling && Clock::now() >= next) {
            attempt([this] { makeCall(); });
            // After a long pause of the machine the calls of the pause are not made up for.
            next = std::max(next + calls_.gap(options_.callsPerMinute), Clock::now() - std::chrono::seconds(1));
        }
    }
    attempt([this] { file_.clip(std::time(nullptr)); });
    say("ends after " + std::to_string(number_) + " records");
}

void Simulator::writeRecords(std::uint64_t count) {
    std::uint64_t leftOut = 0;
    while (number_ < count) {
        leftOut = makeCall() ? 0 : leftOut + 1;
        if (leftOut == kMostCallsPerRecord) {
            throw std::runtime_error("the filters leave out every call");
        }
        report();
    }
    file_.clip(std::time(nullptr));
    report();
}

void pull(const std::string& records) {
    if (!isPullSet()) {
        throw std::runtime_error("nothing is pulled: TransferType of the push settings is not 3");
    }
    std::vector<FinishedFile> pulled;
    try {
        const RecordFolder folder(records);
        for (const FinishedFile& file : folder.finished()) {
            folder.markPulled(file);
            pulled.push_back(file);
        }
    } catch (const std::exception& error) {
        countFailedPull(error.what(), std::time(nullptr));
        throw;
    }
    if (!pulled.empty()) {
        countPull(pulled, std::time(nullptr));
    }
    std::printf("files pulled: %zu\n", pulled.size());
}

} // namespace cdrsim
