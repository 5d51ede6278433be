#include "cimserver/common/CrashReport.hpp"

#include "cimserver/common/Log.hpp"

#include <dlfcn.h>
#include <execinfo.h>
#include <fcntl.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <atomic>
#include <climits>
#include <csignal>
#include <cstdarg>
#include <cstdio>
#include <cstring>
#include <ctime>
#include <memory>

// The signal handler keeps to what works in one: no memory is allocated, and should a lock of the C library or the
// loader be held for ever, the alarm ends the process.

namespace cimserver::crash {

namespace {

constexpr std::array<int, 6> kSignals{SIGSEGV, SIGBUS, SIGFPE, SIGILL, SIGSYS, SIGABRT};
constexpr std::size_t kTasks = 128;
constexpr std::size_t kTaskBytes = 240;
constexpr std::size_t kStackBytes = std::size_t{64} * 1024;
constexpr int kFrames = 48;
constexpr int kHandlerFrames = 2;       ///< the handler and the frame that the kernel makes for it
constexpr unsigned kLongestReport = 10; ///< seconds
constexpr std::time_t kPauseAtStart = 1;

/// "2026-11-21T12:13:18.614+00:00 fatal "
constexpr std::size_t kTimeAndLevel = 36;

char logPath[PATH_MAX];
bool journal = false;
std::atomic<bool> reporting{false};
std::atomic<bool> starting{true};

/// Writes a line like the log's; a long one is cut.
[[gnu::format(printf, 1, 2)]] void report(const char* format, ...) {
    timespec now{};
    std::tm utc{};
    ::clock_gettime(CLOCK_REALTIME, &now);
    ::gmtime_r(&now.tv_sec, &utc);
    char line[1024];
    constexpr int kSpace = sizeof line - 1;
    int size =
        std::snprintf(line, kSpace, "%04d-%02d-%02dT%02d:%02d:%02d.%03ld+00:00 fatal crash: ", utc.tm_year + 1900,
                      utc.tm_mon + 1, utc.tm_mday, utc.tm_hour, utc.tm_min, utc.tm_sec, now.tv_nsec / 1'000'000);
    va_list arguments;
    va_start(arguments, format);
    size += std::vsnprintf(line + size, static_cast<std::size_t>(kSpace - size), format, arguments);
    va_end(arguments);
    size = std::min(size, kSpace - 1);
    line[size++] = '\n';
    // The journal has the time, and takes the level as a number.
    static constexpr char kPriority[] = "<2>";
    const int log = logPath[0] == '\0' ? -1 : ::open(logPath, O_WRONLY | O_APPEND | O_CREAT | O_CLOEXEC, 0640);
    [[maybe_unused]] auto written = ::write(log, line, static_cast<std::size_t>(size));
    ::close(log);
    const std::size_t left = journal ? kTimeAndLevel - (sizeof kPriority - 1) : 0;
    if (journal) {
        std::memcpy(line + left, kPriority, sizeof kPriority - 1);
    }
    written = ::write(STDERR_FILENO, line + left, static_cast<std::size_t>(size) - left);
}

/// The stack that the handler runs on: the thread's own may be used up.
class HandlerStack {
  public:
    HandlerStack() : memory_(new char[kStackBytes]) { // not initialised: its pages are touched by a crash only
        stack_t stack{};
        stack.ss_sp = memory_.get();
        stack.ss_size = kStackBytes;
        ::sigaltstack(&stack, &previous_);
    }
    ~HandlerStack() { ::sigaltstack(&previous_, nullptr); }
    HandlerStack(const HandlerStack&) = delete;
    HandlerStack& operator=(const HandlerStack&) = delete;

  private:
    std::unique_ptr<char[]> memory_;
    stack_t previous_{};
};

/// The stack that the crash interrupted, without the frames of the handler.
void writeStack(void* const* frames, int count) {
    for (int i = std::min(kHandlerFrames, count); i < count; ++i) {
        // A caller's frame has the address after the call, which may belong to the next line of the source.
        const auto* const at = static_cast<const char*>(frames[i]) - (i == kHandlerFrames ? 0 : 1);
        Dl_info module{};
        const bool known = ::dladdr(at, &module) != 0 && module.dli_fname != nullptr;
        const auto offset = static_cast<std::size_t>(at - static_cast<const char*>(module.dli_fbase));
        report("#%d %s+0x%zx", i - kHandlerFrames, known ? module.dli_fname : "?", offset);
    }
}

/// Work under way. Static, so that a handler on another thread may read it at any time.
struct Entry {
    std::atomic<bool> used{false};
    std::array<char, kTaskBytes> text{};
};

std::array<Entry, kTasks> tasks;

char printable(char c) {
    const auto byte = static_cast<unsigned char>(c);
    return (byte < 0x20 && byte != '\0') || byte == 0x7F ? '?' : c;
}

thread_local std::size_t current = kTasks; ///< the calling thread's entry

void writeCause(int number, const siginfo_t& info) {
    const bool fault = info.si_code > 0;
    char cause[64];
    fault ? std::snprintf(cause, sizeof cause, "at %p", info.si_addr)
          : std::snprintf(cause, sizeof cause, "sent by process %d", info.si_pid);
    const bool mine = current < kTasks;
    report("SIG%s %s in process %d %s", ::sigabbrev_np(number), cause, ::getpid(),
           mine ? "in a request" : "outside of the requests");
    for (std::size_t i = 0; i < kTasks; ++i) {
        if (mine ? i == current : tasks[i].used.load()) {
            char text[kTaskBytes];
            std::transform(tasks[i].text.begin(), tasks[i].text.end(), text, printable);
            report("under way: %s", text);
        }
    }
}

void onCrash(int number, siginfo_t* info, void*) {
    while (reporting.exchange(true)) {
        ::pause(); // the thread that reports ends the process
    }
    ::signal(SIGALRM, SIG_DFL);
    ::alarm(kLongestReport);
    writeCause(number, *info);
    void* frames[kFrames];
    writeStack(frames, ::backtrace(frames, kFrames)); // called here, so that kHandlerFrames is right
    const timespec pause{starting ? kPauseAtStart : 0, 0};
    ::nanosleep(&pause, nullptr);
    ::signal(number, SIG_DFL);
    // A fault occurs again when this returns, so that a core dump shows its place; what was sent is sent again.
    if (info->si_code <= 0) {
        ::raise(number);
    }
}

} // namespace

void install(const std::string& logFile) {
    logFile.copy(logPath, sizeof logPath - 1);
    journal = log::isJournal();
    void* frames[kFrames];
    ::backtrace(frames, kFrames); // loads the library that it needs
    struct sigaction action {};
    action.sa_sigaction = onCrash;
    action.sa_flags = SA_SIGINFO | SA_ONSTACK;
    for (const int number : kSignals) {
        ::sigaddset(&action.sa_mask, number); // a fault in the handler ends the process at once
    }
    for (const int number : kSignals) {
        ::sigaction(number, &action, nullptr);
    }
}

void startIsOver() {
    starting = false;
}

Task::Task(std::initializer_list<std::string_view> words) : entry_(0), outer_(current) {
    thread_local const HandlerStack stack;
    while (entry_ < kTasks && tasks[entry_].used.exchange(true)) {
        ++entry_;
    }
    if (entry_ == kTasks) {
        return;
    }
    auto* to = tasks[entry_].text.data();
    std::size_t room = kTaskBytes - 1;
    for (const auto word : words) {
        const std::size_t size = word.copy(to, room);
        to += size;
        room -= size;
    }
    *to = '\0';
    current = entry_;
}

Task::~Task() {
    if (entry_ < kTasks) {
        current = outer_;
        tasks[entry_].used = false;
    }
}

} // namespace cimserver::crash
