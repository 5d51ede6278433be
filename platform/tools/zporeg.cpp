// zporeg: shows and changes the configuration registry from the command line.

#include "BackupFile.hpp"
#include "CommandLine.hpp"
#include "EntryText.hpp"
#include "EventWatch.hpp"
#include "Files.hpp"
#include "Owner.hpp"
#include "ProcessRegistry.hpp"
#include "Settings.hpp"
#include "StatusText.hpp"
#include "ZpoShared.h"

#include <algorithm>
#include <cstring>
#include <filesystem>
#include <fmt/format.h>
#include <functional>
#include <optional>
#include <stdexcept>
#include <string>
#include <vector>

namespace {

using namespace zpo;

// What the command line asks for.
struct Request {
    std::string component, section, key, file;
    std::optional<std::string> binary, text, number;
    bool keepExisting = false, ifEmpty = false, changeKind = false;

    std::string name() const { return component + ' ' + section + ' ' + key; }
};

void require(std::uint32_t status, const std::string& what) {
    if (status != ZPO_OK) {
        throw std::runtime_error(what + ": " + statusText(status));
    }
}

RegistryStore& registry() {
    RegistryStore* store = processRegistry();
    require(store == nullptr ? ZPO_REG_BAD_SETTING : ZPO_OK, "registry");
    return *store;
}

EntryName entryName(const Request& request) {
    EntryName name;
    require(name.assign(request.component.c_str(), request.section.c_str(), request.key.c_str()), request.name());
    return name;
}

bool isStandard(const std::string& file) {
    return file == "-";
}

std::string readStandardInput() {
    std::string content;
    char chunk[16384];
    while (const std::size_t count = std::fread(chunk, 1, sizeof chunk, stdin)) {
        content.append(chunk, count);
        if (content.size() > kMaxBackupBytes) {
            throw std::runtime_error("standard input is too long");
        }
    }
    return content;
}

std::string readInput(const std::string& file) {
    if (isStandard(file)) {
        return readStandardInput();
    }
    const AsCaller caller;
    std::string content;
    if (const int error = readFile(file, kMaxBackupBytes, content)) {
        throw std::runtime_error(file + ": " + std::strerror(error));
    }
    return content;
}

void writeOutput(const std::string& file, const std::string& content) {
    if (isStandard(file)) {
        fmt::print("{}", content);
        return;
    }
    const AsCaller caller;
    const auto present = std::filesystem::symlink_status(file).type();
    if (present != std::filesystem::file_type::not_found && present != std::filesystem::file_type::regular) {
        throw std::runtime_error(file + ": not a regular file (- is standard output)"); // it would be replaced
    }
    if (const int error = replaceFile(std::filesystem::absolute(file).string(), content, 0600)) {
        throw std::runtime_error(file + ": " + std::strerror(error));
    }
}

std::vector<Entry> allEntries(std::size_t& damaged) {
    std::vector<Entry> entries;
    require(registry().list(entries, damaged), "registry");
    return entries;
}

void list(const Request& request) {
    std::size_t damaged = 0;
    for (const Entry& entry : allEntries(damaged)) {
        if ((request.component.empty() || request.component == entry.component) &&
            (request.section.empty() || request.section == entry.section)) {
            fmt::print("{}\n", formatEntryText(entry));
        }
    }
    if (damaged != 0) {
        throw std::runtime_error(fmt::format("damaged entries: {}; they are not shown", damaged));
    }
}

void get(const Request& request) {
    Entry entry;
    require(registry().readEntry(entryName(request), entry), request.name());
    switch (entry.kind) {
    case EntryKind::Binary:
        fmt::print("{}\n", formatBinary(entry.bytes));
        break;
    case EntryKind::Integer:
        fmt::print("{}\n", entry.integer());
        break;
    case EntryKind::Text:
        fmt::print("{}\n", entry.bytes);
        break;
    }
}

// A provider that finds another kind than it expects has no value at all.
void requireKind(const Request& request, EntryKind kind) {
    Entry present;
    if (request.changeKind || registry().readEntry(entryName(request), present) != ZPO_OK || present.kind == kind) {
        return;
    }
    throw std::runtime_error(request.name() + ": the entry is of another kind: " + formatEntryText(present) +
                             " (--change-kind writes it all the same)");
}

void set(const Request& request) {
    std::string bytes = request.text.value_or("");
    EntryKind kind = EntryKind::Text;
    if (request.binary) {
        kind = EntryKind::Binary;
        if (!parseBinary(*request.binary, bytes)) {
            throw std::runtime_error("'" + *request.binary + "' is not pairs of hexadecimal digits");
        }
    } else if (request.number) {
        kind = EntryKind::Integer;
        if (!parseInteger(*request.number, bytes)) {
            throw std::runtime_error("'" + *request.number + "' is not a 32-bit number");
        }
    }
    requireKind(request, kind);
    require(registry().write(entryName(request), kind, bytes), request.name());
}

void remove(const Request& request) {
    require(registry().remove(entryName(request)), request.name());
}

// Leaves those that the registry lacks.
void dropExisting(std::vector<Entry>& entries, const std::vector<Entry>& existing) {
    const auto exists = [&existing](const Entry& entry) {
        return std::any_of(existing.begin(), existing.end(), [&entry](const Entry& one) {
            return one.component == entry.component && one.section == entry.section && one.key == entry.key;
        });
    };
    entries.erase(std::remove_if(entries.begin(), entries.end(), exists), entries.end());
}

void load(const Request& request) {
    std::vector<Entry> entries;
    std::string error;
    if (!parseEntries(readInput(request.file), entries, error)) {
        throw std::runtime_error(request.file + ": " + error + "; nothing was loaded");
    }
    std::size_t damaged = 0;
    const std::vector<Entry> existing =
        request.keepExisting || request.ifEmpty ? allEntries(damaged) : std::vector<Entry>();
    if (request.ifEmpty && (!existing.empty() || damaged != 0)) {
        entries.clear();
    }
    dropExisting(entries, existing);
    if (!entries.empty()) {
        require(registry().writeAll(entries, request.keepExisting), request.file);
    }
    fmt::print("{} entries loaded\n", entries.size());
}

// The backup is there; that a full disk keeps it from being counted does not make it a failure.
void tellOfBackup() {
    const std::uint32_t status = registry().countBackup();
    if (status == ZPO_OK) {
        announceEvent(*settings().stateDirectory);
    } else {
        fmt::print(stderr, "zporeg: warning: the backup is complete, but programs are not told of it: {}\n",
                   statusText(status));
    }
}

void backup(const Request& request) {
    std::size_t damaged = 0;
    const std::vector<Entry> entries = allEntries(damaged);
    if (damaged != 0) {
        throw std::runtime_error(fmt::format("damaged entries: {}; no backup was written", damaged));
    }
    writeOutput(request.file, formatBackup(entries));
    tellOfBackup();
    fmt::print(isStandard(request.file) ? stderr : stdout, "{} entries saved\n", entries.size());
}

void restore(const Request& request) {
    std::vector<Entry> entries;
    std::string error;
    if (!parseBackup(readInput(request.file), entries, error)) {
        throw std::runtime_error(request.file + ": " + error + "; the registry is as it was");
    }
    require(registry().replaceAll(entries), request.file);
    announceEvent(*settings().stateDirectory);
    fmt::print("{} entries restored\n", entries.size());
}

void check() {
    RegistryStore& store = registry(); // fails when ZPO_STATE_DIR is unusable
    const std::string& directory = *settings().stateDirectory;
    const std::string file = directory + "/registry.mdb";
    std::size_t damaged = 0;
    const std::size_t count = registryFileExists() ? allEntries(damaged).size() : 0;
    if (count == 0) {
        throw std::runtime_error(file + ": the registry is empty; to fill it: zporeg restore or zporeg load");
    }
    require(store.checkWritable(), file);
    require(isDiskFull(directory) ? ZPO_REG_STORE_FULL : ZPO_OK, file);
    if (damaged != 0) {
        throw std::runtime_error(fmt::format("{}: damaged entries: {}", file, damaged));
    }
    fmt::print("{} entries; the registry can be read and written\n", count);
}

CommandLine::Command addCommand(CommandLine& line, const char* name, const char* help,
                                const std::function<void()>& work) {
    return line.add(name, help, [work] {
        actAsOwnerOfState();
        work();
    });
}

CommandLine::Command addOnEntry(CommandLine& line, Request& request, const char* name, const char* help,
                                void (*work)(const Request&)) {
    return addCommand(line, name, help, [&request, work] { work(request); })
        .argument("COMPONENT", request.component, "for example CDR")
        .argument("SECTION", request.section, "for example CDRService")
        .argument("KEY", request.key, "for example DIGITSLIMIT");
}

void addEntryCommands(CommandLine& line, Request& request) {
    addCommand(line, "list", "Print the entries, in the form that load takes", [&request] { list(request); })
        .option("COMPONENT", request.component, "only this component")
        .option("SECTION", request.section, "only this section of it");
    addOnEntry(line, request, "get", "Print an entry's value: a binary one as bytes such as 00 0c", get);
    addOnEntry(line, request, "set", "Write an entry", set)
        .flag("--change-kind", request.changeKind, "replace an entry of another kind")
        .oneOf({{"--binary", request.binary, "hexadecimal bytes such as 000c"},
                {"--text", request.text, "a text of at most 511 bytes"},
                {"--int", request.number, "a number, 0 to 4294967295 or 0x..."}});
    addOnEntry(line, request, "delete", "Delete an entry", remove);
}

void addFileCommands(CommandLine& line, Request& request) {
    addCommand(line, "load", "Write the entries of a settings file, all or none", [&request] { load(request); })
        .argument("FILE", request.file, "lines of COMPONENT SECTION KEY binary|text|int VALUE; -: standard input")
        .flag("--keep-existing", request.keepExisting, "leave entries alone that exist already")
        .flag("--if-empty", request.ifEmpty, "do nothing when the registry has entries");
    addCommand(line, "backup", "Save all entries to a file", [&request] {
        backup(request);
    }).argument("FILE", request.file, "replaced if it exists; -: standard output");
    addCommand(line, "restore", "Replace all entries by those of a backup and tell the programs running", [&request] {
        restore(request);
    }).argument("FILE", request.file, "written by backup; -: standard input");
    addCommand(line, "check", "Fail unless the registry can be read and written", check);
}

} // namespace

int main(int argc, char** argv) {
    Request request;
    CommandLine line("zporeg", "Shows and changes the configuration registry in ZPO_STATE_DIR (default /var/lib/zpo).\n"
                               "For root it acts as the owner of that directory.");
    addEntryCommands(line, request);
    addFileCommands(line, request);
    return line.run(argc, argv);
}
