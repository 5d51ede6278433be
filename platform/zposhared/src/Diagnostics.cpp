#include "Diagnostics.hpp"

#include "Characters.hpp"
#include "LogSink.hpp"
#include "PerProcess.hpp"
#include "Settings.hpp"
#include "StatusText.hpp"
#include "ZpoShared.h"

#include <algorithm>
#include <charconv>
#include <cstring>
#include <fmt/format.h>
#include <map>
#include <memory>
#include <mutex>

namespace zpo {
namespace {

constexpr std::size_t kMaxModules = 256;
constexpr std::size_t kMaxName = 64;
constexpr std::size_t kMaxText = 2000;
constexpr const char* kOwnLog = "ZpoShared.log";

struct Module {
    std::string name;
    std::shared_ptr<LogSink> sink;
};

// All modules of the process; modules that name the same file share its sink.
struct Modules {
    std::mutex mutex;
    std::uint32_t lastHandle = 0;
    std::map<std::uint32_t, Module> byHandle;
    std::map<std::string, std::weak_ptr<LogSink>> sinks;
};

bool isModuleName(std::string_view name) {
    return !name.empty() && name.size() <= kMaxName &&
           std::all_of(name.begin(), name.end(), [](unsigned char c) { return c > 0x20 && c < 0x7f; });
}

std::string_view bounded(const char* text, std::size_t limit) {
    return {text, strnlen(text, limit + 1)};
}

std::shared_ptr<LogSink> sinkFor(Modules& all, const std::string& file) {
    std::weak_ptr<LogSink>& known = all.sinks[file];
    std::shared_ptr<LogSink> sink = known.lock();
    if (sink == nullptr) {
        sink = std::make_shared<LogSink>(*settings().logDirectory + "/" + file, *settings().logBytes);
        known = sink;
    }
    return sink;
}

std::uint32_t nextHandle(Modules& all) {
    do {
        ++all.lastHandle;
    } while (all.lastHandle == 0 || all.byHandle.count(all.lastHandle) != 0);
    return all.lastHandle;
}

// What the number at the end of the text means, when it is one of the platform's statuses, as in "error = 2097165".
std::string meaningOfStatus(std::string_view text) {
    constexpr std::size_t kDigits = 7; // of all statuses
    const std::size_t before = text.find_last_not_of("0123456789") + 1;
    std::uint32_t status = 0;
    std::from_chars(text.data() + before, text.data() + text.size(), status);
    const bool whole = before != 0 && text.size() - before == kDigits;
    return whole && findStatus(status) != nullptr ? ": " + statusText(status) : std::string();
}

std::string formatEntry(std::int32_t category, std::int32_t level, std::int32_t identifier, const char* text) {
    const std::string_view whole = bounded(text, kMaxText);
    const bool cut = whole.size() > kMaxText;
    return fmt::format("category={} level={} id={}: {}{}", category, level, identifier,
                       escapeLogText(whole.substr(0, kMaxText)), cut ? " [cut]" : meaningOfStatus(whole));
}

void writeLine(const Module& module, const std::string& line) {
    module.sink->log(spdlog::details::log_msg(module.name, spdlog::level::info, line));
}

} // namespace

std::string escapeLogText(std::string_view text) {
    std::string result;
    result.reserve(text.size());
    for (const char c : text) {
        if (c == '\\') {
            result += "\\\\";
        } else if (c == '\n') {
            result += "\\n";
        } else if (isControl(c)) {
            result += fmt::format("\\x{:02x}", static_cast<unsigned char>(c));
        } else {
            result += c;
        }
    }
    return result;
}

std::uint32_t registerModule(const char* moduleFile, const char* component, const char* moduleName, const char* logFile,
                             std::uint32_t* handle) {
    if (moduleFile == nullptr || component == nullptr || moduleName == nullptr || logFile == nullptr ||
        handle == nullptr || !isModuleName(bounded(moduleName, kMaxName)) ||
        !isPlainName(bounded(logFile, kMaxPlainName))) {
        return ZPO_DIAG_BAD_ARGUMENT;
    }
    if (!settings().logDirectory || !settings().logBytes) {
        return ZPO_DIAG_BAD_SETTING;
    }
    Modules& all = sharedState<Modules>();
    const std::lock_guard<std::mutex> lock(all.mutex);
    if (all.byHandle.size() >= kMaxModules) {
        return ZPO_DIAG_TOO_MANY;
    }
    const std::uint32_t fresh = nextHandle(all);
    all.byHandle[fresh] = Module{moduleName, sinkFor(all, logFile)};
    *handle = fresh;
    return ZPO_OK;
}

std::uint32_t addLogEntry(std::uint32_t handle, std::int32_t category, std::int32_t level, std::int32_t identifier,
                          const char* text) {
    if (text == nullptr) {
        return ZPO_DIAG_BAD_ARGUMENT;
    }
    const std::string line = formatEntry(category, level, identifier, text);
    Modules& all = sharedState<Modules>();
    const std::lock_guard<std::mutex> lock(all.mutex);
    const auto module = all.byHandle.find(handle);
    if (module == all.byHandle.end()) {
        return ZPO_DIAG_UNKNOWN_HANDLE;
    }
    try {
        writeLine(module->second, line);
    } catch (const spdlog::spdlog_ex&) {
        return ZPO_DIAG_WRITE_FAILED;
    }
    return ZPO_OK;
}

std::uint32_t deregisterModule(std::uint32_t handle) {
    Modules& all = sharedState<Modules>();
    const std::lock_guard<std::mutex> lock(all.mutex);
    return all.byHandle.erase(handle) == 1 ? ZPO_OK : ZPO_DIAG_UNKNOWN_HANDLE;
}

void logInternal(std::int32_t level, const std::string& text) noexcept {
    try {
        if (!settings().logDirectory || !settings().logBytes) {
            return;
        }
        Modules& all = sharedState<Modules>();
        const std::lock_guard<std::mutex> lock(all.mutex);
        const Module self{"ZpoShared", sinkFor(all, kOwnLog)};
        writeLine(self, formatEntry(0, level, 0, text.c_str()));
    } catch (const std::exception&) {
        return; // nowhere left to report it
    }
}

} // namespace zpo
