// zporeg: shows and changes the configuration registry from the command line.

#include "BackupFile.hpp"
#include "CommandLine.hpp"
#include "EntryText.hpp"
#include "EventWatch.hpp"
#include "Files.hpp"
#include "ProcessRegistry.hpp"
#include "Settings.hpp"
#include "StatusText.hpp"
#include "ZpoShared.h"

#include <cstring>
#include <filesystem>
#include <fmt/format.h>
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
    bool keepExisting = false;

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

std::string readInput(const std::string& file) {
    std::string content;
    if (const int error = readFile(file, kMaxBackupBytes, content)) {
        throw std::runtime_error(file + ": " + std::strerror(error));
    }
    return content;
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
    require(registry().write(entryName(request), kind, bytes), request.name());
}

void remove(const Request& request) {
    require(registry().remove(entryName(request)), request.name());
}

void load(const Request& request) {
    std::vector<Entry> entries;
    std::string error;
    if (!parseEntries(readInput(request.file), entries, error)) {
        throw std::runtime_error(request.file + ": " + error + "; nothing was loaded");
    }
    require(registry().writeAll(entries, request.keepExisting), request.file);
    fmt::print("{} entries loaded\n", entries.size());
}

void backup(const Request& request) {
    std::size_t damaged = 0;
    const std::vector<Entry> entries = allEntries(damaged);
    if (damaged != 0) {
        throw std::runtime_error(fmt::format("damaged entries: {}; no backup was written", damaged));
    }
    const auto file = std::filesystem::absolute(request.file).string();
    if (const int error = replaceFile(file, formatBackup(entries), 0600)) {
        throw std::runtime_error(request.file + ": " + std::strerror(error));
    }
    require(registry().countBackup(), "the backup is written, but nobody is told");
    announceEvent(*settings().stateDirectory);
    fmt::print("{} entries saved\n", entries.size());
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

CommandLine::Command addOnEntry(CommandLine& line, Request& request, const char* name, const char* help,
                                void (*work)(const Request&)) {
    return line.add(name, help, [&request, work] { work(request); })
        .argument("COMPONENT", request.component, "for example CDR")
        .argument("SECTION", request.section, "for example CDRService")
        .argument("KEY", request.key, "for example DIGITSLIMIT");
}

void addEntryCommands(CommandLine& line, Request& request) {
    line.add("list", "Print the entries, in the form that load takes", [&request] { list(request); })
        .option("COMPONENT", request.component, "only this component")
        .option("SECTION", request.section, "only this section of it");
    addOnEntry(line, request, "get", "Print an entry's value: a binary one as bytes such as 00 0c", get);
    addOnEntry(line, request, "set", "Write an entry", set)
        .oneOf({{"--binary", request.binary, "hexadecimal bytes such as 000c"},
                {"--text", request.text, "a text of at most 511 bytes"},
                {"--int", request.number, "a number, 0 to 4294967295 or 0x..."}});
    addOnEntry(line, request, "delete", "Delete an entry", remove);
}

void addFileCommands(CommandLine& line, Request& request) {
    line.add("load", "Write the entries of a settings file, all or none", [&request] { load(request); })
        .argument("FILE", request.file, "lines of COMPONENT SECTION KEY binary|text|int VALUE")
        .flag("--keep-existing", request.keepExisting, "leave entries alone that exist already");
    line.add("backup", "Save all entries to a file", [&request] { backup(request); })
        .argument("FILE", request.file, "replaced if it exists");
    line.add("restore", "Replace all entries by those of a backup and tell the programs running",
             [&request] { restore(request); })
        .argument("FILE", request.file, "written by backup");
}

} // namespace

int main(int argc, char** argv) {
    Request request;
    CommandLine line("zporeg", "Shows and changes the configuration registry in ZPO_STATE_DIR (default /var/lib/zpo).");
    addEntryCommands(line, request);
    addFileCommands(line, request);
    return line.run(argc, argv);
}
