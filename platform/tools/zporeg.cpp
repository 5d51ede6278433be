// zporeg: shows and changes the configuration registry from the command line.

#include "BackupFile.hpp"
#include "EntryText.hpp"
#include "EventWatch.hpp"
#include "Files.hpp"
#include "ProcessRegistry.hpp"
#include "Settings.hpp"
#include "StatusText.hpp"
#include "ZpoShared.h"

#include <CLI/CLI.hpp>
#include <cstdio>
#include <cstring>
#include <fmt/format.h>
#include <stdexcept>
#include <string>
#include <vector>

namespace {

using namespace zpo;

constexpr int kFailureCode = 1;
constexpr int kUsageCode = 2;

// What the command line asks for.
struct Request {
    std::string component, section, key, file, binary, text, number;
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
        throw std::runtime_error(fmt::format("{} damaged entries are not shown", damaged));
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

void set(const Request& request, bool isBinary, bool isNumber) {
    std::string bytes = request.text;
    EntryKind kind = EntryKind::Text;
    if (isBinary) {
        kind = EntryKind::Binary;
        if (!parseBinary(request.binary, bytes)) {
            throw std::runtime_error("'" + request.binary + "' is not pairs of hexadecimal digits");
        }
    } else if (isNumber) {
        kind = EntryKind::Integer;
        if (!parseInteger(request.number, bytes)) {
            throw std::runtime_error("'" + request.number + "' is not a 32-bit number");
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
        throw std::runtime_error(fmt::format("{} damaged entries: no backup was written", damaged));
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

void addName(CLI::App* command, Request& request) {
    command->add_option("COMPONENT", request.component, "for example CDR")->required();
    command->add_option("SECTION", request.section, "for example CDRService")->required();
    command->add_option("KEY", request.key, "for example DIGITSLIMIT")->required();
}

void addReading(CLI::App& app, Request& request) {
    CLI::App* command = app.add_subcommand("list", "Print the entries, in the form that load takes");
    command->add_option("COMPONENT", request.component, "only this component");
    command->add_option("SECTION", request.section, "only this section of it");
    command->callback([&request] { list(request); });

    command = app.add_subcommand("get", "Print an entry's value: a binary one as bytes such as 00 0c");
    addName(command, request);
    command->callback([&request] { get(request); });
}

void addWriting(CLI::App& app, Request& request) {
    CLI::App* command = app.add_subcommand("set", "Write an entry");
    addName(command, request);
    CLI::Option_group* value = command->add_option_group("value");
    CLI::Option* binary = value->add_option("--binary", request.binary, "hexadecimal bytes such as 000c");
    value->add_option("--text", request.text, "a text of at most 511 bytes");
    CLI::Option* number = value->add_option("--int", request.number, "a number, 0 to 4294967295 or 0x...");
    value->require_option(1);
    command->callback([&request, binary, number] { set(request, binary->count() > 0, number->count() > 0); });

    command = app.add_subcommand("delete", "Delete an entry");
    addName(command, request);
    command->callback([&request] { remove(request); });
}

void addFiles(CLI::App& app, Request& request) {
    CLI::App* command = app.add_subcommand("load", "Write the entries of a settings file, all or none");
    command->add_option("FILE", request.file, "lines of COMPONENT SECTION KEY binary|text|int VALUE")->required();
    command->add_flag("--keep-existing", request.keepExisting, "leave entries alone that exist already");
    command->callback([&request] { load(request); });

    command = app.add_subcommand("backup", "Save all entries to a file");
    command->add_option("FILE", request.file, "replaced if it exists")->required();
    command->callback([&request] { backup(request); });

    command = app.add_subcommand("restore", "Replace all entries by those of a backup and tell the programs running");
    command->add_option("FILE", request.file, "written by backup")->required();
    command->callback([&request] { restore(request); });
}

} // namespace

int main(int argc, char** argv) {
    CLI::App app("Shows and changes the configuration registry in ZPO_STATE_DIR (default /var/lib/zpo).", "zporeg");
    app.require_subcommand(1);
    Request request;
    addReading(app, request);
    addWriting(app, request);
    addFiles(app, request);
    try {
        app.parse(argc, argv);
    } catch (const CLI::ParseError& error) {
        if (error.get_exit_code() == 0) {
            return app.exit(error); // help was asked for
        }
        fmt::print(stderr, "zporeg: {} (zporeg --help tells the usage)\n", error.what());
        return kUsageCode;
    } catch (const std::exception& error) {
        fmt::print(stderr, "zporeg: {}\n", error.what());
        return kFailureCode;
    }
    if (std::fflush(stdout) != 0) {
        std::perror("zporeg: standard output");
        return kFailureCode;
    }
    return 0;
}
