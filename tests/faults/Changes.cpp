#include "Changes.hpp"

#include <fcntl.h>

const Home kHome;

namespace {

constexpr std::uint32_t kLarge = 30000; // several pages
const std::string kForeign = "# administrator's\n0 1 * * * /bin/one\n";
const std::string kKeeper = "keeper:*:read\n";

/// Becomes the program; returns only when that fails.
int exec(const std::vector<std::string>& words, const std::string& input = "") {
    std::vector<char*> arguments;
    for (const std::string& word : words) {
        arguments.push_back(const_cast<char*>(word.c_str()));
    }
    arguments.push_back(nullptr);
    int ends[2];
    const int null = open("/dev/null", O_WRONLY | O_CLOEXEC);
    const bool redirected = pipe(ends) == 0 && write(ends[1], input.data(), input.size()) >= 0 && close(ends[1]) == 0 &&
                            dup2(ends[0], 0) == 0 && dup2(null, 1) == 1 && dup2(null, 2) == 2;
    return redirected ? execv(arguments[0], arguments.data()) : 126;
}

std::string file(const std::string& name, int state) {
    return kHome.dir / (name + std::to_string(state));
}

int writeLarge(int state) {
    const std::string bytes(kLarge, static_cast<char>(state));
    return ZpoSetRegEntryBinary("F", "S", "large", bytes.data(), kLarge) == ZPO_OK ? 0 : 1;
}

int largeValue() {
    std::string bytes(kLarge, '?');
    const bool read = ZpoGetRegEntryBinary("F", "S", "large", bytes.data(), kLarge) == ZPO_OK;
    return read && bytes == std::string(kLarge, bytes[0]) ? bytes[0] : -1;
}

/// All entries have the state as their value.
std::string entriesOf(int state) {
    std::string text;
    for (int entry = 10; entry < 60; ++entry) {
        text += "F All " + std::to_string(entry) + " int " + std::to_string(state) + "\n";
    }
    return text;
}

void load(int state) {
    support::writeFile(file("text", state), entriesOf(state));
    support::run({ZPOREG, "load", file("text", state)});
}

int valueOfAll() {
    const std::string entries = support::run({ZPOREG, "list", "F", "All"}).output;
    return entries == entriesOf(0) ? 0 : (entries == entriesOf(1) ? 1 : -1);
}

/// A registry in the other state that has no room yet for what is restored.
void prepareRestore(int state) {
    if (!std::filesystem::exists(file("saved", state))) {
        load(state);
        support::run({ZPOREG, "backup", file("saved", state)});
    }
    std::filesystem::remove(kHome.dir / "state/registry.mdb");
    load(1 - state);
}

int valueInBackup() {
    return support::run({ZPOREG, "restore", kHome.dir / "backup"}).exitCode == 0 ? valueOfAll() : -1;
}

std::string table() {
    return kHome.dir / ("crontabs/" + support::userName());
}

void prepareTable(int /*state*/) {
    if (std::filesystem::create_directory(kHome.dir / "crontabs")) {
        support::writeFile(table(), kForeign + "30 8 * * * /task\n");
    }
}

/// Arms or disarms the task.
int edit(int state) {
    const ZpoScheduledTask task{"/task", 30, 8, 1024, 1024, 1024};
    const ZpoScheduledTaskRecord record{"/task", 30, 8, "*", "*", 1024};
    return (state == 1 ? ZpoSetScheduledTask(task, 1000, 1000, 1000)
                       : ZpoDeleteScheduledTaskEx(record, 1000, 1000, 1000)) == ZPO_OK
               ? 0
               : 1;
}

int tasksInTable() {
    const std::string text = support::contentOf(table());
    return text == kForeign ? 0 : (text == kForeign + "30 8 * * * /task\n" ? 1 : -1);
}

void prepareUsers(int /*state*/) {
    if (!std::filesystem::exists(kHome.dir / "users")) {
        support::writeFile(kHome.dir / "users", kKeeper);
    }
}

int changePassword(int state) {
    return exec({PASSWD, kHome.dir / "users", "changed", "--role", state == 1 ? "write" : "read", "--stdin"},
                "secret\n");
}

/// The role shows which change it was; a hash has 73 characters.
int roleOfChanged() {
    const std::string text = support::contentOf(kHome.dir / "users");
    const std::string start = kKeeper + "changed:$y$";
    const bool whole = text.compare(0, start.size(), start) == 0;
    const std::string role = text.substr(std::min(text.size(), kKeeper.size() + 8 + 73));
    return whole && role == ":read\n" ? 0 : (whole && role == ":write\n" ? 1 : -1);
}

} // namespace

std::vector<Change> allChanges() {
    return {
        {"RegistryWrite", [](int) {}, writeLarge, largeValue},
        {"Backup", load,
         [](int) {
             return exec({ZPOREG, "backup", kHome.dir / "backup"});
         },
         valueInBackup},
        {"Restore", prepareRestore,
         [](int state) {
             return exec({ZPOREG, "restore", file("saved", state)});
         },
         valueOfAll},
        {"CrontabEdit", prepareTable, edit, tasksInTable},
        {"PasswordChange", prepareUsers, changePassword, roleOfChanged},
    };
}
