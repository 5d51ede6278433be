#include "cimserver/common/CrashReport.hpp"

#include <dlfcn.h>
#include <execinfo.h>
#include <fcntl.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <atomic>
#include <climits>
#include <csignal>
#include <cstdint>
#include <ctime>
#include <memory>

// Everything that the signal handler calls is async-signal-safe, but for backtrace() and dladdr(): they take no memory
// once they have run, and should the loader's lock be held for ever, the alarm ends the process.

namespace cimserver::crash {

namespace {

struct Signal {
    int number;
    const char* name;
};

constexpr std::array<Signal, 6> kSignals{{{SIGSEGV, "SIGSEGV"},
                                          {SIGBUS, "SIGBUS"},
                                          {SIGFPE, "SIGFPE"},
                                          {SIGILL, "SIGILL"},
                                          {SIGSYS, "SIGSYS"},
                                          {SIGABRT, "SIGABRT"}}};
constexpr std::size_t kTasks = 128;
constexpr std::size_t kTaskBytes = 240;
constexpr std::size_t kStackBytes = std::size_t{64} * 1024;
constexpr int kFrames = 48;
constexpr int kHandlerFrames = 2;       ///< the handler and the frame that the kernel makes for it
constexpr unsigned kLongestReport = 10; ///< seconds

char logPath[PATH_MAX];
std::atomic<bool> reporting{false};

/// A line under construction; what does not fit is cut.
class Line {
  public:
    Line() { time().text(" fatal crash: "); }

    Line& text(std::string_view text) {
        for (const char c : text.substr(0, sizeof buffer_ - 1 - size_)) {
            buffer_[size_++] = c;
        }
        return *this;
    }
    Line& number(std::uint64_t value, unsigned base, std::size_t digits = 1) {
        char reversed[24];
        std::size_t count = 0;
        for (; value != 0 || count < digits; value /= base) {
            reversed[count++] = "0123456789abcdef"[value % base];
        }
        std::reverse(reversed, reversed + count);
        return text({reversed, count});
    }
    Line& address(const void* address) { return text("0x").number(reinterpret_cast<std::uintptr_t>(address), 16); }
    void write() {
        buffer_[size_++] = '\n';
        put(STDERR_FILENO);
        const int log = logPath[0] == '\0' ? -1 : ::open(logPath, O_WRONLY | O_APPEND | O_CREAT | O_CLOEXEC, 0640);
        put(log);
        ::close(log);
    }

  private:
    void put(int fd) const { [[maybe_unused]] const auto written = ::write(fd, buffer_, size_); }
    Line& time();

    char buffer_[1024];
    std::size_t size_ = 0;
};

/// Like the log's, in UTC; the library's functions take locks.
Line& Line::time() {
    timespec now{};
    ::clock_gettime(CLOCK_REALTIME, &now);
    const auto seconds = static_cast<std::uint64_t>(now.tv_sec);
    // The calendar repeats every 400 years, 146097 days; its years are counted from March, so that leap days come last.
    const std::uint64_t days = seconds / 86400 + 719468;
    const std::uint64_t day = days % 146097;
    const std::uint64_t year = (day - day / 1460 + day / 36524 - day / 146096) / 365;
    const std::uint64_t dayOfYear = day - (365 * year + year / 4 - year / 100);
    const std::uint64_t month = (5 * dayOfYear + 2) / 153;
    number(days / 146097 * 400 + year + (month < 10 ? 0 : 1), 10).text("-");
    number(month < 10 ? month + 3 : month - 9, 10, 2).text("-");
    number(dayOfYear - (153 * month + 2) / 5 + 1, 10, 2).text("T");
    number(seconds / 3600 % 24, 10, 2).text(":").number(seconds / 60 % 60, 10, 2).text(":");
    return number(seconds % 60, 10, 2)
        .text(".")
        .number(static_cast<std::uint64_t>(now.tv_nsec) / 1000000, 10, 3)
        .text("+00:00");
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

/// The frames of the handler.
void writeStack(void* const* frames, int count) {
    for (int i = std::min(kHandlerFrames, count); i < count; ++i) {
        // A caller's frame has the address after the call, which may belong to the next line of the source.
        const auto* const at = static_cast<const char*>(frames[i]) - (i == kHandlerFrames ? 0 : 1);
        Dl_info module{};
        Line line;
        line.text("#").number(static_cast<std::uint64_t>(i - kHandlerFrames), 10).text(" ");
        if (::dladdr(at, &module) != 0 && module.dli_fname != nullptr) {
            const auto offset = at - static_cast<const char*>(module.dli_fbase);
            line.text(module.dli_fname).text("+0x").number(static_cast<std::uint64_t>(offset), 16).write();
        } else {
            line.address(at).write();
        }
    }
}

const char* nameOf(int number) {
    const auto* const found =
        std::find_if(kSignals.begin(), kSignals.end(), [number](const Signal& one) { return one.number == number; });
    return found == kSignals.end() ? "a signal" : found->name;
}

/// Work under way. Static, so that a handler on another thread may read it at any time.
struct Entry {
    std::atomic<bool> used{false};
    std::array<char, kTaskBytes> text{};
};

std::array<Entry, kTasks> tasks;
thread_local std::size_t current = kTasks; ///< the calling thread's entry

std::string_view textOf(const Entry& entry) {
    return {entry.text.data(),
            static_cast<std::size_t>(std::find(entry.text.begin(), entry.text.end(), '\0') - entry.text.begin())};
}

void writeCause(int number, const siginfo_t& info) {
    Line line;
    line.text(nameOf(number));
    if (info.si_code > 0) {
        line.text(" at ").address(info.si_addr);
    } else {
        line.text(" sent by process ").number(static_cast<std::uint64_t>(info.si_pid), 10);
    }
    line.text(" in process ").number(static_cast<std::uint64_t>(::getpid()), 10);
    if (current < kTasks) {
        return line.text(" during ").text(textOf(tasks[current])).write();
    }
    line.text(" outside of the requests").write();
    for (const Entry& entry : tasks) {
        if (entry.used) {
            Line().text("under way: ").text(textOf(entry)).write();
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
    ::signal(number, SIG_DFL);
    // A fault occurs again when this returns, so that a core dump shows its place; what was sent is sent again.
    if (info->si_code <= 0) {
        ::raise(number);
    }
}

} // namespace

void install(const std::string& logFile) {
    logFile.copy(logPath, sizeof logPath - 1);
    void* frames[kFrames];
    ::backtrace(frames, kFrames); // loads the library that it needs
    struct sigaction action {};
    action.sa_sigaction = onCrash;
    action.sa_flags = SA_SIGINFO | SA_ONSTACK;
    for (const auto& one : kSignals) {
        ::sigaddset(&action.sa_mask, one.number); // a fault in the handler ends the process at once
    }
    for (const auto& one : kSignals) {
        ::sigaction(one.number, &action, nullptr);
    }
}

Task::Task(std::initializer_list<std::string_view> words) : entry_(0), outer_(current) {
    thread_local const HandlerStack stack;
    while (entry_ < kTasks && tasks[entry_].used.exchange(true)) {
        ++entry_;
    }
    if (entry_ == kTasks) {
        return;
    }
    auto* to = tasks[entry_].text.begin();
    const auto* const end = tasks[entry_].text.end() - 1;
    for (const auto word : words) {
        for (std::size_t i = 0; i < word.size() && to != end; ++i) {
            const auto byte = static_cast<unsigned char>(word[i]);
            *to++ = byte < 0x20 || byte == 0x7F ? '?' : word[i];
        }
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
