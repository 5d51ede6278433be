// Whatever ends or stops a change: what was acknowledged is there, and nothing is half. CDR_FAULTS says how often each
// change is killed.
#include "Home.hpp"

#include <cstdio>
#include <random>
#include <sched.h>
#include <sys/mount.h>

const Home kHome;

namespace {

/// What is done to a device again and again. Each change leads to one of two states, 0 and 1.
struct Change {
    const char* name;
    std::function<void(int state)> prepare; ///< before the change, undisturbed
    std::function<int(int state)> make;     ///< the change, in a child process; returns 0 when it is acknowledged
    std::function<int()> look;              ///< the state found; -1 when anything is missing or half
};

std::ostream& operator<<(std::ostream& out, const Change& change) {
    return out << change.name;
}

constexpr std::uint32_t kLarge = 30000; // several pages
const std::string kForeign = "# administrator's\n0 1 * * * /bin/one\n";
const std::string kKeeper = "keeper:*:read\n";
const support::TempDir kElsewhere; // on no small disk

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
    support::writeFile(kElsewhere / "password", "secret\n");
    if (!std::filesystem::exists(kHome.dir / "users")) {
        support::writeFile(kHome.dir / "users", kKeeper);
    }
}

/// The program, without a word from it.
int become(const std::vector<std::string>& command) {
    return support::become(command, "/dev/null");
}

int changePassword(int state) {
    return std::freopen((kElsewhere / "password").c_str(), "r", stdin) == nullptr
               ? 126
               : become({PASSWD, kHome.dir / "users", "changed", "--role", state == 1 ? "write" : "read", "--stdin"});
}

/// The role shows which change it was; a hash has 73 characters.
int roleOfChanged() {
    const std::string text = support::contentOf(kHome.dir / "users");
    const std::string start = kKeeper + "changed:$y$";
    const bool whole = text.compare(0, start.size(), start) == 0;
    const std::string role = text.substr(std::min(text.size(), kKeeper.size() + 8 + 73));
    return whole && role == ":read\n" ? 0 : (whole && role == ":write\n" ? 1 : -1);
}

std::vector<Change> changes() {
    // clang-format off
    return {
        {"RegistryWrite", [](int) {}, writeLarge, largeValue},
        {"Backup", load, [](int) { return become({ZPOREG, "backup", kHome.dir / "backup"}); }, valueInBackup},
        {"Restore", prepareRestore, [](int state) { return become({ZPOREG, "restore", file("saved", state)}); }, valueOfAll},
        {"CrontabEdit", prepareTable, edit, tasksInTable},
        {"PasswordChange", prepareUsers, changePassword, roleOfChanged},
    };
    // clang-format on
}

class Fault : public testing::TestWithParam<Change> {
  protected:
    /// Makes the change to `state` undisturbed.
    void settle(int state) {
        change.prepare(state);
        const auto start = std::chrono::steady_clock::now();
        ASSERT_EQ(0, support::inChild([&] { return change.make(state); }));
        wait_ = std::chrono::duration<double, std::micro>(std::chrono::steady_clock::now() - start).count();
        ASSERT_EQ(state, change.look());
        state_ = state;
    }
    /// Disturbs the change to the other state. Returns the exit code of the process that makes it.
    int disturb(const std::function<int(int next)>& work) {
        const int next = 1 - state_;
        change.prepare(next);
        const int code = work(next);
        const int found = change.look();
        EXPECT_TRUE(found == next || (found == state_ && code != 0)) << "found " << found << ", exit code " << code;
        effects_ += found == next ? 1 : 0;
        state_ = found == -1 ? state_ : found;
        return code;
    }

    const Change& change = GetParam();
    int state_ = 0;
    double wait_ = 0; ///< microseconds that the change takes; adapted, so that about half are killed
    int effects_ = 0;
};

TEST_P(Fault, AKilledChangeIsDoneOrNot) {
    const char* const wanted = getenv("CDR_FAULTS");
    const int count = wanted == nullptr ? 40 : std::atoi(wanted);
    settle(0);
    std::mt19937 random(1);
    std::uniform_real_distribution<double> spread(0.5, 1.5);
    int killed = 0;
    for (int i = 0; i < count && !HasFailure(); ++i) {
        const int code = disturb([&](int next) {
            const pid_t child = support::startChild([&] { return change.make(next); });
            usleep(static_cast<useconds_t>(wait_ * spread(random)));
            kill(child, SIGKILL);
            return support::waitForChild(child);
        });
        ASSERT_TRUE(code == 0 || code == -SIGKILL) << code;
        killed += code == 0 ? 0 : 1;
        wait_ *= code == 0 ? 0.9 : 1.1;
    }
    std::printf("%s: %d times, %d killed before the end, %d of these after the effect\n", change.name, count, killed,
                effects_ - (count - killed));
    settle(1 - state_);
}

/// A small disk in the place of the test's folder, for as long as this lives.
class SmallDisk {
  public:
    SmallDisk() {
        made = unshare(CLONE_NEWNS) == 0 && mount(nullptr, "/", nullptr, MS_REC | MS_PRIVATE, nullptr) == 0 &&
               mount("none", kHome.dir.path().c_str(), "tmpfs", 0, "size=4m") == 0;
        std::this_thread::sleep_for(std::chrono::milliseconds(150)); // the registry's file is another one
    }
    ~SmallDisk() {
        umount2(kHome.dir.path().c_str(), MNT_DETACH);
        std::this_thread::sleep_for(std::chrono::milliseconds(150));
    }
    SmallDisk(const SmallDisk&) = delete;
    SmallDisk& operator=(const SmallDisk&) = delete;

    /// Leaves so many pages free while `work` runs.
    static int fill(unsigned pages, const std::function<int()>& work) {
        const std::string filler = kHome.dir / "filler";
        support::writeFile(filler, std::string(std::size_t{5} << 20U, 'x'));
        std::filesystem::resize_file(filler, std::filesystem::file_size(filler) / 4096 * 4096 - pages * 4096);
        const int code = support::inChild(work);
        std::filesystem::remove(filler);
        return code;
    }
    static void makeReadOnly() {
        const char* const folder = kHome.dir.path().c_str();
        ASSERT_EQ(0, unshare(CLONE_NEWNS));
        ASSERT_EQ(0, mount(folder, folder, nullptr, MS_BIND, nullptr));
        ASSERT_EQ(0, mount(nullptr, folder, nullptr, MS_REMOUNT | MS_BIND | MS_RDONLY, nullptr));
    }

    bool made;
};

TEST_P(Fault, AFullOrReadOnlyDiskIsAnError) {
    const SmallDisk disk;
    if (!disk.made) {
        GTEST_SKIP() << "needs the right to mount";
    }
    settle(0);
    EXPECT_GE(disturb([&](int next) {
                  std::filesystem::remove(kHome.dir / "state/registry.mdb-lock"); // must not be mapped unallocated
                  const int code = SmallDisk::fill(0, [&] { return change.make(next); });
                  std::this_thread::sleep_for(std::chrono::milliseconds(150)); // until this process notices
                  return code;
              }),
              0);
    int failed = 0;
    for (unsigned pages = 0; pages < 40 && !HasFailure(); ++pages) {
        const int code = disturb([&](int next) { return SmallDisk::fill(pages, [&] { return change.make(next); }); });
        EXPECT_GE(code, 0) << "ended by a signal with " << pages << " pages free";
        failed += code == 0 ? 0 : 1;
    }
    EXPECT_GT(failed, 0);
    EXPECT_LT(failed, 40);
    EXPECT_GT(disturb([&](int next) {
                  return support::inChild([&] { return SmallDisk::makeReadOnly(), change.make(next); });
              }),
              0);
    settle(1 - state_);
    std::printf("%s: of 40 disks with 0 to 39 pages free, %d were too full\n", change.name, failed);
}

std::string nameOf(const testing::TestParamInfo<Change>& info) {
    return info.param.name;
}

INSTANTIATE_TEST_SUITE_P(Changes, Fault, testing::ValuesIn(changes()), nameOf);

} // namespace
