#include "cimserver/Readiness.hpp"

#include "cimserver/common/Log.hpp"
#include "cimserver/common/Program.hpp"

#include <utility>

namespace cimserver {

namespace {

constexpr std::chrono::seconds kGoodFor{1};

} // namespace

void Readiness::ask(Answer answer) {
    std::unique_lock lock(mutex_);
    if (stopped_) {
        lock.unlock();
        return answer("the server is stopping");
    }
    if (!checking_ && checked_ != Clock::time_point() && Clock::now() - checked_ < kGoodFor) {
        const auto result = result_;
        lock.unlock();
        return answer(result);
    }
    waiting_.push_back(std::move(answer));
    if (std::exchange(checking_, true)) {
        return;
    }
    if (thread_.joinable()) {
        thread_.join(); // it has done its work
    }
    thread_ = std::thread([this] { check(); });
}

void Readiness::check() {
    std::string problems = problems_();
    if (!command_.empty()) {
        const auto result = runProgram(command_, kLongestReadyCommand);
        problems += result.succeeded ? "" : (problems.empty() ? "" : "\n") + result.text;
    }
    std::unique_lock lock(mutex_);
    if (checked_ == Clock::time_point() ? !problems.empty() : problems != result_) {
        log::write(problems.empty() ? log::Level::Info : log::Level::Warning, "cimserverd",
                   problems.empty() ? "ready" : "not ready: " + problems);
    }
    result_ = problems;
    checked_ = Clock::now();
    checking_ = false;
    const auto waiting = std::exchange(waiting_, {});
    lock.unlock();
    for (const auto& answer : waiting) {
        answer(problems);
    }
}

void Readiness::stop() {
    std::unique_lock lock(mutex_);
    stopped_ = true;
    lock.unlock();
    if (thread_.joinable()) {
        thread_.join();
    }
}

} // namespace cimserver
