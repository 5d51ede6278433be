#include "cimserver/common/Log.hpp"

#include "cimserver/common/Descriptor.hpp"
#include "cimserver/common/Text.hpp"
#include "cimserver/common/Utf8.hpp"

#include <spdlog/sinks/base_sink.h>
#include <spdlog/sinks/rotating_file_sink.h>
#include <spdlog/sinks/stdout_sinks.h>
#include <spdlog/spdlog.h>

#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <atomic>
#include <cstdio>
#include <cstdlib>
#include <memory>
#include <mutex>
#include <optional>
#include <stdexcept>

namespace cimserver::log {
namespace {

constexpr const char* kPattern = "%Y-%m-%dT%H:%M:%S.%e%z %v";
constexpr const char* kJournalPattern = "%v";

/// systemd tells by the file's device and number whether standard error goes to the journal.
bool findJournal() {
    const char* const stream = std::getenv("JOURNAL_STREAM");
    unsigned long long device = 0;
    unsigned long long inode = 0;
    struct stat state {};
    return stream != nullptr && std::sscanf(stream, "%llu:%llu", &device, &inode) == 2 &&
           ::fstat(STDERR_FILENO, &state) == 0 && state.st_dev == device && state.st_ino == inode;
}

const bool kToJournal = findJournal();

/// A rotating file that can be opened anew. Each file that takes the place of another gets its mode.
class LogFile : public spdlog::sinks::base_sink<std::mutex> {
  public:
    /// Throws spdlog::spdlog_ex.
    explicit LogFile(Settings settings) : settings_(std::move(settings)), file_(open()) {}

    /// Throws spdlog::spdlog_ex and keeps the file then.
    void reopen() {
        const std::lock_guard<std::mutex> lock(mutex_);
        file_ = open();
    }

    bool isCurrent() {
        const std::lock_guard<std::mutex> lock(mutex_);
        return isFileAt(fd_, settings_.file.c_str());
    }

  protected:
    void sink_it_(const spdlog::details::log_msg& message) override { file_->log(message); }
    void flush_() override { file_->flush(); }

  private:
    using File = spdlog::sinks::rotating_file_sink_st;

    std::unique_ptr<File> open() {
        spdlog::file_event_handlers events;
        events.before_open = [this](const std::string& name) {
            rememberMode();
            isNew_ = ::access(name.c_str(), F_OK) != 0;
        };
        events.after_open = [this](const std::string&, std::FILE* file) {
            fd_ = ::fileno(file);
            if (isNew_ && mode_) {
                ::fchmod(fd_, *mode_);
            }
        };
        events.before_close = [this](const std::string&, std::FILE* file) {
            if (::fileno(file) == fd_) {
                rememberMode();
                fd_ = -1;
            }
        };
        auto file = std::make_unique<File>(settings_.file, settings_.maxBytes, settings_.keep, false, events);
        file->set_pattern(kPattern);
        return file;
    }

    void rememberMode() {
        struct stat state {};
        if (fd_ >= 0 && ::fstat(fd_, &state) == 0) {
            mode_ = state.st_mode & 07777U;
        }
    }

    const Settings settings_;
    int fd_ = -1; ///< of the file in use
    bool isNew_ = false;
    std::optional<mode_t> mode_;
    std::unique_ptr<File> file_;
};

std::shared_ptr<spdlog::logger> makeLogger(spdlog::sink_ptr sink) {
    const bool journal = kToJournal && dynamic_cast<LogFile*>(sink.get()) == nullptr;
    auto logger = std::make_shared<spdlog::logger>("cimserverd", std::move(sink));
    logger->set_pattern(journal ? kJournalPattern : kPattern);
    logger->set_level(spdlog::level::info);
    logger->flush_on(spdlog::level::trace);
    // A full disk must not end the server, and there is nowhere else to report it.
    logger->set_error_handler([](const std::string&) {});
    return logger;
}

std::shared_ptr<spdlog::logger>& logger() {
    static auto instance = makeLogger(std::make_shared<spdlog::sinks::stderr_sink_mt>());
    return instance;
}

spdlog::level::level_enum toSpdlog(Level level) {
    constexpr spdlog::level::level_enum kLevels[] = {spdlog::level::debug, spdlog::level::info, spdlog::level::warn,
                                                     spdlog::level::err, spdlog::level::critical};
    return kLevels[static_cast<std::size_t>(level)];
}

std::string_view nameOf(Level level) {
    constexpr std::string_view kNames[] = {"debug", "info", "warning", "error", "fatal"};
    return kNames[static_cast<std::size_t>(level)];
}

/// What the journal takes for the priority of a line; by the level's first letter.
std::string_view priorityOf(std::string_view level) {
    switch (level.front()) {
    case 'd':
        return "<7>";
    case 'i':
        return "<6>";
    case 'w':
        return "<4>";
    case 'e':
        return "<3>";
    case 'f':
        return "<2>";
    default: // audit
        return "<5>";
    }
}

/// Line separators, and marks that change the direction of writing.
bool isFormat(char32_t code) {
    return code == 0x200E || code == 0x200F || (code >= 0x2028 && code <= 0x202E) || (code >= 0x2066 && code <= 0x2069);
}

/// Control characters would let a text from outside forge entries or control a terminal: they become \xNN (a newline
/// \n), as do bytes that are not UTF-8.
void appendEscaped(std::string& to, std::string_view text) {
    constexpr char kHex[] = "0123456789abcdef";
    const auto isPlain = [](char c) { return c >= 0x20 && c < 0x7F; };
    for (;;) {
        const auto plain = std::find_if_not(text.begin(), text.end(), isPlain) - text.begin();
        to.append(text, 0, static_cast<std::size_t>(plain));
        text.remove_prefix(static_cast<std::size_t>(plain));
        if (text.empty()) {
            return;
        }
        const auto [code, length, valid] = decodeUtf8(text);
        if (code == '\n') {
            to += "\\n";
        } else if (valid && code >= 0x20 && (code < 0x7F || code >= 0xA0) && !isFormat(code)) {
            to.append(text, 0, length);
        } else {
            for (const char c : text.substr(0, length)) {
                const auto byte = static_cast<unsigned char>(c);
                to += {'\\', 'x', kHex[byte >> 4U], kHex[byte & 0xFU]};
            }
        }
        text.remove_prefix(length);
    }
}

LogFile* fileInUse() {
    return dynamic_cast<LogFile*>(logger()->sinks().front().get());
}

std::string entry(std::string_view level, std::string_view component, std::string_view text) {
    std::string line;
    line.reserve(level.size() + component.size() + text.size() + 8);
    if (kToJournal && fileInUse() == nullptr) {
        line.append(priorityOf(level));
    } else {
        line.append(level).append(" ");
    }
    line.append(component).append(": ");
    appendEscaped(line, mayHoldUrl(text) ? withoutUserInfo(text) : text);
    return line;
}

} // namespace

bool isJournal() noexcept {
    return kToJournal;
}

void configure(const Settings& settings) {
    if (!settings.file.empty()) {
        try {
            logger() = makeLogger(std::make_shared<LogFile>(settings));
        } catch (const spdlog::spdlog_ex& error) {
            throw std::runtime_error("cannot write the log file " + settings.file + ": " + error.what());
        }
    }
    logger()->set_level(toSpdlog(settings.level));
}

void reopen() noexcept {
    static std::atomic<bool> failing{false};
    try {
        if (auto* const file = fileInUse()) {
            file->reopen();
            failing = false;
        }
    } catch (const std::exception& error) {
        if (!failing.exchange(true)) {
            write(Level::Error, "cimserverd", std::string("kept the old log file: ") + error.what());
        }
    }
}

void follow() noexcept {
    auto* const file = fileInUse();
    if (file != nullptr && !file->isCurrent()) {
        reopen();
        if (file->isCurrent()) {
            write(Level::Info, "cimserverd", "the log file was moved away; this one was begun");
        }
    }
}

void write(Level level, std::string_view component, std::string_view text) noexcept {
    try {
        if (enabled(level)) {
            logger()->log(toSpdlog(level), entry(nameOf(level), component, text));
        }
    } catch (...) { // out of memory: the entry is lost, the request is not
    }
}

std::string escaped(std::string_view text) {
    std::string result;
    appendEscaped(result, text);
    return result;
}

bool enabled(Level level) noexcept {
    return logger()->should_log(toSpdlog(level));
}

void audit(std::string_view text) noexcept {
    try {
        // Above every threshold that can be set.
        logger()->log(spdlog::level::critical, entry("audit", "cimserverd", text));
    } catch (...) {
    }
}

} // namespace cimserver::log
