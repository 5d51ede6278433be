// Whatever ends or stops a change: what was acknowledged is there, and nothing is half. CDR_FAULTS says how often each
// change is killed.
#include "Changes.hpp"

#include <cstdio>
#include <fcntl.h>
#include <random>
#include <sched.h>
#include <sys/mount.h>

namespace {

class Fault : public testing::TestWithParam<Change> {
  protected:
    /// Makes the change to `state` undisturbed.
    void settle(int state) {
        change.prepare(state);
        ASSERT_EQ(0, support::inChild([&] { return change.make(state); }));
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
    int effects_ = 0;
};

TEST_P(Fault, AKilledChangeIsDoneOrNot) {
    const char* const wanted = getenv("CDR_FAULTS");
    const int count = wanted == nullptr ? 40 : std::atoi(wanted);
    settle(0);
    std::mt19937 random(1);
    std::uniform_real_distribution<double> spread(0.5, 1.5);
    double wait = 2000; // microseconds; follows the time that the change takes, so that about half are killed
    int killed = 0;
    for (int i = 0; i < count && !HasFailure(); ++i) {
        const int code = disturb([&](int next) {
            const pid_t child = support::startChild([&] { return change.make(next); });
            usleep(static_cast<useconds_t>(wait * spread(random)));
            kill(child, SIGKILL);
            return support::waitForChild(child);
        });
        ASSERT_TRUE(code == 0 || code == -SIGKILL) << code;
        killed += code == 0 ? 0 : 1;
        wait *= code == 0 ? 0.9 : 1.1;
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

INSTANTIATE_TEST_SUITE_P(Changes, Fault, testing::ValuesIn(allChanges()), nameOf);

} // namespace
