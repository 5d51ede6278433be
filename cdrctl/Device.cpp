#include "cdrctl/Device.hpp"

#include "Characters.hpp"
#include "Files.hpp"
#include "Settings.hpp"
#include "cimserver/common/Text.hpp"

#include <nlohmann/json.hpp>

#include <pwd.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <cstdio>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <set>
#include <sstream>

namespace cdrctl {

namespace fs = std::filesystem;
using nlohmann::json;

namespace {

constexpr std::size_t kMostOutput = std::size_t{1} << 20U;
constexpr std::streamoff kLogTail = 65536;
constexpr std::size_t kMostLogLines = 5; ///< of each file

struct Run {
    int exitCode = -1;
    std::string output;
};

/// Runs a command of the shell, for ten seconds at most. No text from outside is part of one.
Run run(const std::string& command) {
    Run result;
    FILE* const pipe = ::popen(("timeout --kill-after=1 10 " + command).c_str(), "re");
    if (pipe == nullptr) {
        return result;
    }
    std::array<char, 4096> bytes{};
    while (const std::size_t count = std::fread(bytes.data(), 1, bytes.size(), pipe)) {
        result.output.append(bytes.data(), result.output.size() < kMostOutput ? count : 0);
    }
    const int status = ::pclose(pipe);
    result.exitCode = WIFEXITED(status) ? WEXITSTATUS(status) : -1;
    return result;
}

std::vector<std::string> linesOf(const std::string& text) {
    std::vector<std::string> lines;
    std::istringstream stream(text);
    for (std::string line; std::getline(stream, line);) {
        lines.push_back(line);
    }
    return lines;
}

std::vector<std::string> taskLines(const std::string& table) {
    std::vector<std::string> lines = linesOf(table);
    lines.erase(std::remove_if(lines.begin(), lines.end(),
                               [](const std::string& line) {
                                   return cimserver::trimmed(line).substr(0, 1) == "#" ||
                                          line.find("CDRTransfer") == std::string::npos;
                               }),
                lines.end());
    return lines;
}

std::string userName(uid_t user) {
    const passwd* const entry = ::getpwuid(user);
    return entry == nullptr ? std::to_string(user) : entry->pw_name;
}

bool isPlainInShell(char c) {
    return zpo::isAlphanumeric(c) || c == '.' || c == '_' || c == '-';
}

/// A running program.
struct Process {
    std::string folder;
    std::vector<std::string> arguments;
    uid_t user = 0;

    std::string name(std::size_t argument = 0) const {
        return argument < arguments.size() ? fs::path(arguments[argument]).filename().string() : "";
    }
};

std::vector<Process> processesIn(const std::string& folder) {
    std::vector<Process> processes;
    std::error_code error;
    for (const auto& entry : fs::directory_iterator(folder, error)) {
        Process process{entry.path().string(), {}, 0};
        struct stat status {};
        if (std::isdigit(static_cast<unsigned char>(entry.path().filename().string()[0])) == 0 ||
            ::stat(process.folder.c_str(), &status) != 0) {
            continue;
        }
        std::string words; // none for one that has ended
        zpo::readFile(process.folder + "/cmdline", kMostOutput, words);
        std::istringstream line(words);
        for (std::string argument; std::getline(line, argument, '\0');) {
            process.arguments.push_back(argument);
        }
        process.user = status.st_uid;
        processes.push_back(std::move(process));
    }
    return processes;
}

std::string cronAmong(const std::vector<Process>& processes) {
    static const std::set<std::string> names{"cron", "crond", "fcron", "bcron-sched"};
    for (const Process& process : processes) {
        if (process.name() == "busybox" && process.name(1) == "crond") {
            return "busybox crond";
        }
        if (names.count(process.name()) != 0) {
            std::error_code error; // BusyBox may run under the name of its applet
            const auto program = fs::read_symlink(process.folder + "/exe", error).filename().string();
            return program.find("busybox") == 0 ? "busybox crond" : process.name();
        }
    }
    return "";
}

std::vector<Crontab> crontabsIn(const std::string& folder) {
    std::vector<Crontab> tables;
    std::error_code error;
    for (const auto& entry : fs::directory_iterator(folder, error)) {
        const std::string name = entry.path().filename().string();
        if (entry.is_regular_file(error) && name[0] != '.' && name != "cron.update") {
            std::string table;
            const int status = zpo::readFile(entry.path(), kMostOutput, table);
            tables.push_back({name, taskLines(table), status == 0 ? "" : std::strerror(status), status == EACCES});
        }
    }
    if (tables.empty()) {
        tables.push_back({userName(::geteuid()), {}, error ? folder + ": " + error.message() : "", false});
    }
    return tables;
}

/// The tables of this user and of the server's user, in which the server puts its tasks.
std::vector<Crontab> systemCrontabs(const std::vector<Process>& processes) {
    std::set<uid_t> users;
    for (const Process& process : processes) {
        if (process.name() == "cimserverd") {
            users.insert(process.user);
        }
    }
    if (users.empty()) {
        users.insert(::geteuid());
    }
    std::vector<Crontab> tables;
    for (const uid_t user : users) {
        const std::string name = userName(user);
        const bool own = user == ::geteuid();
        if (!own && ::geteuid() != 0) {
            tables.push_back({name, {}, "only root can read it", true});
            continue;
        }
        if (!own && !std::all_of(name.begin(), name.end(), isPlainInShell)) {
            tables.push_back(
                {name, {}, "its name holds other characters than letters, digits, '.', '_' and '-'", false});
            continue;
        }
        const Run listed = run(own ? "crontab -l 2>&1" : "crontab -u " + name + " -l 2>&1");
        const bool none = listed.exitCode == 0 || listed.output.find("no crontab for") != std::string::npos;
        tables.push_back({name, none ? taskLines(listed.output) : std::vector<std::string>(),
                          none ? "" : "the crontab program failed: " + listed.output.substr(0, 100), false});
    }
    return tables;
}

/// The program may stand only in the file system that the server sees, as in the lab. Other users' file systems are not
/// trusted.
std::string findProgram(const DevicePlaces& places, const std::vector<Process>& processes) {
    std::error_code error; // who may not look finds nothing
    if (fs::exists(places.program, error)) {
        return places.program;
    }
    for (const Process& process : processes) {
        std::string inside = process.folder + "/root" + places.program;
        if (process.name() == "cimserverd" && process.user == ::geteuid() && fs::exists(inside, error)) {
            return inside;
        }
    }
    return "";
}

std::string textIn(const json& object, const char* name) {
    const auto found = object.is_object() ? object.find(name) : object.end();
    return found != object.end() && found->is_string() ? found->get<std::string>() : "";
}

/// What an object tells to be wrong: its problem, or why it failed, or why its first file did.
std::string problemOf(const json& object) {
    std::string problem = textIn(object, "problem");
    if (!problem.empty() || textIn(object, "state") != "failed") {
        return problem;
    }
    const std::string reason = textIn(object, "reason");
    const auto failures = object.find("failures");
    const bool listed = failures != object.end() && failures->is_array() && !failures->empty();
    return "the last run failed: " + (reason.empty() && listed ? textIn(failures->front(), "reason") : reason);
}

/// What is wrong by the first of the objects inside that tells it.
std::string problemIn(const json& status) {
    for (const json& part : status) {
        std::string problem = problemOf(part);
        if (!problem.empty()) {
            return problem;
        }
    }
    return "";
}

/// Lines of text and, where the program offers them, values by name.
std::optional<TransferStatus> askProgram(const std::string& program) {
    const Run told = run(program + " --status 2>&1");
    if (told.exitCode < 0 || told.exitCode == 127 || told.output.empty()) {
        return std::nullopt;
    }
    TransferStatus status{linesOf(told.output), ""};
    const json values = json::parse(run(program + " --status --json 2>/dev/null").output, nullptr, false);
    status.problem = problemIn(values);
    return status;
}

/// Of the platform's own log every line; of the others not the warnings of empty texts, which come with each read.
bool isAboutPushes(const std::string& file, const std::string& line) {
    if (file == "ZpoShared.log" || line.find("ControlCharacters Found") != std::string::npos) {
        return file == "ZpoShared.log";
    }
    return cimserver::containsIgnoringCase(line, "push") || cimserver::containsIgnoringCase(line, "transfer") ||
           cimserver::containsIgnoringCase(line, "parse error");
}

void addLogLines(std::vector<LogLine>& log, const fs::path& file) {
    std::ifstream stream(file, std::ios::binary | std::ios::ate);
    const std::streamoff size = stream.tellg();
    if (!stream || size < 0) {
        return;
    }
    stream.seekg(std::max<std::streamoff>(0, size - kLogTail));
    std::vector<LogLine> found;
    for (std::string line; std::getline(stream, line);) {
        if (isAboutPushes(file.filename(), line)) {
            found.push_back({file.filename(), line});
        }
    }
    const auto most = static_cast<std::ptrdiff_t>(std::min(found.size(), kMostLogLines));
    log.insert(log.end(), found.end() - most, found.end());
}

} // namespace

DevicePlaces DevicePlaces::fromEnvironment() {
    const zpo::Settings settings = zpo::readSettings();
    DevicePlaces places;
    places.crontabs = settings.crontabDirectory.value_or("");
    places.logs = settings.logDirectory.value_or("");
    return places;
}

DeviceFacts lookAround(const DevicePlaces& places) {
    DeviceFacts facts;
    const auto processes = processesIn(places.processes);
    facts.cron = cronAmong(processes);
    facts.crontabs = places.crontabs.empty() ? systemCrontabs(processes) : crontabsIn(places.crontabs);
    facts.program = findProgram(places, processes);
    if (!facts.program.empty() && ::access(facts.program.c_str(), X_OK) != 0) {
        facts.programProblem = "it is not executable";
    }
    if (!facts.program.empty() && facts.programProblem.empty()) {
        facts.transfer = askProgram(facts.program);
    }
    for (const char* name : {"ZpoShared.log", "CdrOAM.log", "crond.log"}) {
        addLogLines(facts.log, fs::path(places.logs) / name);
    }
    return facts;
}

} // namespace cdrctl
