// The scheduler's C functions over a crontabs directory.

#include "Files.hpp"
#include "Home.hpp"

#include <atomic>
#include <cstdio>
#include <tuple>

namespace {

constexpr const char* kProgram = "/qv/bin/CDRTransfer";

class Scheduler : public ::testing::Test {
  protected:
    Scheduler() { std::filesystem::create_directories(kHome.dir / "crontabs"); }
    ~Scheduler() override { std::filesystem::remove_all(kHome.dir / "crontabs"); }

    static std::string table() { return kHome.dir / ("crontabs/" + support::userName()); }
};

std::uint32_t add(const char* path, std::uint16_t minute) {
    ZpoScheduledTask task{"", minute, 8, 1024, 7, 1024};
    std::snprintf(task.path, sizeof task.path, "%s", path);
    return ZpoSetScheduledTask(task, 1000, 1000, 1000);
}

std::vector<ZpoScheduledTaskRecord> listed(const char* path) {
    ZpoScheduledTaskEntry* head = nullptr;
    EXPECT_EQ(ZPO_OK, ZpoGetScheduledTaskList(path, &head, 1000));
    std::vector<ZpoScheduledTaskRecord> records;
    for (const ZpoScheduledTaskEntry* entry = head; entry != nullptr; entry = entry->next) {
        records.push_back(entry->record);
    }
    ZpoDeallocateScheduledTaskList(head);
    return records;
}

TEST_F(Scheduler, AddsListsAndDeletesItsOwnTasks) {
    ASSERT_EQ(ZPO_OK, add(kProgram, 30));
    ASSERT_EQ(ZPO_OK, add("/other", 31));
    const auto records = listed(kProgram);
    ASSERT_EQ(1U, records.size());
    const ZpoScheduledTaskRecord& record = records[0];
    EXPECT_EQ(std::make_tuple(30, 8, 1024), std::make_tuple(record.minute, record.hour, record.month));
    EXPECT_EQ("*0/qv/bin/CDRTransfer", std::string(record.dayOfMonth) + record.dayOfWeek + record.path);
    EXPECT_EQ(ZPO_OK, ZpoDeleteScheduledTaskEx(record, 1000, 1000, 1000));
    EXPECT_EQ(ZPO_SCHED_TASK_NOT_FOUND, ZpoDeleteScheduledTaskEx(record, 1000, 1000, 1000));
    EXPECT_FALSE(std::filesystem::exists(kHome.dir / "state/crontab.pending"));
    EXPECT_EQ("31 8 * * 0 /other\n", support::contentOf(table()));
    const std::string day(29, '1'); // as a record can hold
    support::writeFile(table(), "30 8 " + day + " * " + day + " /long\n");
    EXPECT_EQ(day + day, std::string(listed("/long").at(0).dayOfMonth) + listed("/long").at(0).dayOfWeek);
}

TEST_F(Scheduler, FailuresAreStatuses) {
    ZpoScheduledTaskEntry* head = nullptr;
    EXPECT_EQ(ZPO_SCHED_BAD_ARGUMENT, ZpoGetScheduledTaskList(kProgram, nullptr, 1000));
    EXPECT_EQ(ZPO_SCHED_BAD_ARGUMENT, ZpoGetScheduledTaskList(nullptr, &head, 1000));
    EXPECT_EQ(ZPO_SCHED_BAD_FIELD, add(kProgram, 60));
    ZpoScheduledTaskRecord record{};
    std::fill(std::begin(record.dayOfMonth), std::end(record.dayOfMonth), '1');
    EXPECT_EQ(ZPO_SCHED_BAD_PATH, ZpoDeleteScheduledTaskEx(record, 1000, 1000, 1000));
    EXPECT_EQ(ZPO_SCHED_BAD_PATH, ZpoGetScheduledTaskList("relative", &head, 1000));
    record.path[0] = '/';
    EXPECT_EQ(ZPO_SCHED_BAD_FIELD, ZpoDeleteScheduledTaskEx(record, 1000, 1000, 1000));
    record.dayOfMonth[0] = '\0';
    EXPECT_EQ(ZPO_SCHED_BAD_FIELD, ZpoDeleteScheduledTaskEx(record, 1000, 1000, 1000));
    ASSERT_EQ(ZPO_OK, add("/other", 1));
    {
        zpo::FileLock stuck;
        EXPECT_EQ(0, stuck.acquire(kHome.dir / "state/crontab.lock", {}));
        EXPECT_EQ(ZPO_SCHED_BUSY, add(kProgram, 1));
        EXPECT_EQ(1U, listed("/other").size());
    }
    std::filesystem::remove(kHome.dir / "state/crontab.lock");
    std::filesystem::create_directory(kHome.dir / "state/crontab.lock");
    EXPECT_EQ(ZPO_SCHED_LOCK_FAILED, add(kProgram, 1));
    std::filesystem::remove(kHome.dir / "state/crontab.lock");
    std::filesystem::remove_all(kHome.dir / "crontabs");
    EXPECT_EQ(0U, listed(kProgram).size());
    EXPECT_EQ(ZPO_SCHED_NOT_WRITABLE, add(kProgram, 1));
}

std::atomic<int> restoresTold{0};

TEST_F(Scheduler, ATaskThatCouldNotBeSetIsAskedForAtTheNextStart) {
    const auto toldOnceRegistered = [](const char* name, std::chrono::milliseconds patience) {
        restoresTold = 0;
        EXPECT_EQ(ZPO_OK, ZpoNotifyRegBackupAndRestore(
                              name, [](unsigned long) { ++restoresTold; }, 2));
        return support::waitUntil([] { return restoresTold == 1; }, patience);
    };
    constexpr std::chrono::milliseconds kShort{150};
    ASSERT_EQ(ZPO_OK, add(kProgram, 1));
    EXPECT_FALSE(toldOnceRegistered("fine", kShort));
    std::filesystem::remove_all(kHome.dir / "crontabs");
    EXPECT_EQ(ZPO_SCHED_NOT_WRITABLE, add(kProgram, 1));
    EXPECT_EQ(0U,
              static_cast<unsigned>(std::filesystem::status(kHome.dir / "state/crontab.pending").permissions()) & 07);
    EXPECT_TRUE(toldOnceRegistered("started", std::chrono::seconds(5)));
    std::filesystem::create_directories(kHome.dir / "crontabs");
    EXPECT_EQ(ZPO_SCHED_BAD_FIELD, add(kProgram, 60)) << "nothing that a later attempt could mend";
    ASSERT_EQ(ZPO_OK, add(kProgram, 1));
    EXPECT_FALSE(toldOnceRegistered("started again", kShort));
}

TEST_F(Scheduler, EditsOfSeveralProcessesAreAllKept) {
    const std::string foreign = "# administrator's\n0 1 * * * /bin/one\n";
    support::writeFile(table(), foreign);
    pid_t editors[3];
    for (int i = 0; i < 3; ++i) {
        editors[i] = support::startChild([i] {
            const std::string path = "/editor" + std::to_string(i);
            for (std::uint16_t minute = 0; minute < 20; ++minute) {
                if (add(path.c_str(), minute) != ZPO_OK) {
                    return 1;
                }
            }
            return 0;
        });
    }
    for (int i = 0; i < 3; ++i) {
        EXPECT_EQ(0, support::waitForChild(editors[i]));
        const auto records = listed(("/editor" + std::to_string(i)).c_str());
        EXPECT_EQ(20, records.size() == 20 ? records[19].minute + 1 : 0) << "in the table's order";
    }
    EXPECT_EQ(0U, support::contentOf(table()).find(foreign));
}

} // namespace
