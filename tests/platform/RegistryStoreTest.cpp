// The store in its file: damage, lack of room, interruption, replacement.

#include "RegistryStore.hpp"
#include "EventWatch.hpp"
#include "Files.hpp"
#include "Home.hpp"
#include "StoreHead.hpp"

#include <atomic>
#include <cstring>
#include <random>
#include <sched.h>
#include <sys/mount.h>
#include <sys/stat.h>

const Home kHome; // for the library's own log

namespace {

using namespace zpo;
using support::TempDir;

constexpr std::size_t kMapBytes = std::size_t{16} << 20U;
constexpr std::chrono::milliseconds kTimeout{5000};

EntryName nameOf(const std::string& key) {
    EntryName name;
    EXPECT_EQ(ZPO_OK, name.assign("C", "S", key.c_str()));
    return name;
}

std::vector<Entry> numbered(int count, std::size_t size) {
    std::vector<Entry> entries;
    for (int i = 0; i < count; ++i) {
        entries.push_back({"C", "S", "key" + std::to_string(i), EntryKind::Binary, std::string(size, 'v')});
    }
    return entries;
}

// A transaction of LMDB itself, which does not know the store.
MDB_txn* beginBeside(const std::string& directory, unsigned flags) {
    MDB_env* env = nullptr;
    MDB_txn* transaction = nullptr;
    mdb_env_create(&env);
    mdb_env_open(env, (directory + "/registry.mdb").c_str(), MDB_NOSUBDIR | MDB_NOTLS, 0);
    EXPECT_EQ(0, mdb_txn_begin(env, nullptr, flags, &transaction));
    return transaction;
}

// A store that has seen small and large entries come and go, so that it holds pages of every kind.
std::string fillStore(const std::string& directory) {
    RegistryStore store(directory, kMapBytes, kTimeout);
    EXPECT_EQ(ZPO_OK, store.writeAll(numbered(300, 60), false));
    EXPECT_EQ(ZPO_OK, store.writeAll(numbered(20, 9000), false));
    for (int i = 0; i < 20; i += 2) {
        EXPECT_EQ(ZPO_OK, store.remove(nameOf("key" + std::to_string(i))));
    }
    return support::contentOf(directory + "/registry.mdb");
}

TEST(RegistryStore, StaysReadableThroughChurn) {
    const TempDir dir;
    std::mt19937 random(7);
    for (int round = 0; round < 15; ++round) {
        RegistryStore store(dir.path(), kMapBytes, kTimeout);
        const std::vector<Entry> some = numbered(60 - 2 * round, 1 + random() % 20000);
        ASSERT_EQ(ZPO_OK, round % 5 == 4 ? store.replaceAll(some) : store.writeAll(some, false)) << round;
        for (int i = 0; i < 10; ++i) {
            store.remove(nameOf("key" + std::to_string(random() % 40)));
        }
        std::vector<Entry> entries;
        std::size_t damaged = 0;
        ASSERT_EQ(ZPO_OK, RegistryStore(dir.path(), kMapBytes, kTimeout).list(entries, damaged)) << round;
        EXPECT_EQ(0U, damaged);
    }
    struct stat lock {};
    EXPECT_EQ(0, stat((dir / "registry.mdb-lock").c_str(), &lock));
    EXPECT_GE(lock.st_blocks * 512, lock.st_size) << "a hole in it would be a bus error on a full disk";
}

TEST(RegistryStore, MayHaveAPageThatIsExactlyFull) {
    const TempDir dir;
    ASSERT_EQ(ZPO_OK, RegistryStore(dir.path(), kMapBytes, kTimeout).writeAll(numbered(8, 440), false));
    for (std::size_t size = 2; size < 600; size += 2) { // at one of them, before the page is split
        ASSERT_EQ(ZPO_OK, RegistryStore(dir.path(), kMapBytes, kTimeout)
                              .write(nameOf("last"), EntryKind::Binary, std::string(size, 'v')))
            << size;
    }
}

// Random damage is either found or harmless: the process never crashes.
int damageAtRandom(const std::string& directory, const std::string& good, unsigned seed, int rounds) {
    std::mt19937 random(seed);
    for (int round = 0; round < rounds; ++round) {
        std::string bad = good;
        for (unsigned i = 0, count = 1 + random() % 8; i < count; ++i) {
            // Half of the damage goes where structure is dense: the starts of pages.
            const std::size_t at =
                i % 2 == 0 ? random() % bad.size() : random() % (bad.size() / 4096) * 4096 + random() % 160;
            bad[at] = static_cast<char>(random());
        }
        support::writeFile(directory + "/registry.mdb", bad);
        RegistryStore store(directory, kMapBytes, kTimeout);
        std::vector<Entry> entries;
        std::size_t damaged = 0;
        if (store.list(entries, damaged) == ZPO_OK) {
            store.writeAll(numbered(30, 500), false);
            store.remove(nameOf("key7"));
        }
    }
    return 0;
}

TEST(RegistryStore, SurvivesRandomDamage) {
    const TempDir dir;
    const std::string good = fillStore(dir.path());
    for (unsigned seed = 0; seed < 4; ++seed) {
        EXPECT_EQ(0, support::inChild([&] { return damageAtRandom(dir.path(), good, seed, 40); })) << "seed " << seed;
    }
}

TEST(RegistryStore, FullIsAStatusAndChangesNothing) {
    const TempDir dir;
    RegistryStore store(dir.path(), std::size_t{1} << 20U, kTimeout);
    EXPECT_EQ(ZPO_OK, store.write(nameOf("kept"), EntryKind::Text, "old"));
    std::vector<Entry> many = numbered(100, 60000);
    many.push_back({"C", "S", "kept", EntryKind::Text, "new"});
    EXPECT_EQ(ZPO_REG_STORE_FULL, store.writeAll(many, false));
    EXPECT_EQ(ZPO_REG_STORE_FULL, store.replaceAll(many));
    EXPECT_EQ(ZPO_REG_BAD_ARGUMENT, store.writeAll(numbered(1, ZPO_REG_MAX_BINARY + 1), false));
    Entry entry;
    EXPECT_EQ(ZPO_OK, store.readEntry(nameOf("kept"), entry));
    EXPECT_EQ("old", entry.bytes);
}

// Fills a small disk of its own.
int fillDisk() {
    const TempDir dir;
    if (unshare(CLONE_NEWNS) != 0 || mount(nullptr, "/", nullptr, MS_REC | MS_PRIVATE, nullptr) != 0 ||
        mount("none", dir.path().c_str(), "tmpfs", 0, "size=1m") != 0) {
        return support::kNoRight;
    }
    RegistryStore store(dir.path(), kMapBytes, kTimeout);
    std::uint32_t status = isDiskFull(dir.path()) ? ZPO_REG_STORE_FULL : store.checkWritable();
    int written = 0;
    for (; status == ZPO_OK; ++written) { // LMDB is told of the last pages as of an input error: they fit in part
        status = store.write(nameOf("key" + std::to_string(written)), EntryKind::Binary, std::string(60000, 'v'));
    }
    return written > 2 && status == ZPO_REG_STORE_FULL && isDiskFull(dir.path()) &&
                   store.remove(nameOf("key0")) == ZPO_OK
               ? 0
               : 1;
}

TEST(RegistryStore, AFullDiskIsTheStatusOfAFullStore) {
    support::expectInChild(fillDisk, "mount");
}

// Whether all places of the table of readers are those of processes that ended without a word.
TEST(RegistryStore, OpensWhenAllReadersAreDead) {
    const TempDir dir;
    RegistryStore store(dir.path(), kMapBytes, kTimeout);
    ASSERT_EQ(ZPO_OK, store.writeAll(numbered(1, 10), false));
    const auto takeAllPlaces = [&] {
        MDB_txn* transaction = beginBeside(dir.path(), MDB_RDONLY);
        MDB_env* const env = mdb_txn_env(transaction);
        while (mdb_txn_begin(env, nullptr, MDB_RDONLY, &transaction) == 0) {
        }
        return 0;
    };
    ASSERT_EQ(0, support::inChild(takeAllPlaces));
    EXPECT_EQ(0, support::inChild([&] {
                  Entry entry;
                  RegistryStore opened(dir.path(), kMapBytes, kTimeout);
                  return opened.readEntry(nameOf("key0"), entry) == ZPO_OK ? 0 : 1;
              }));
}

// What another program has put into the store.
TEST(RegistryStore, RefusesRecordsThatItDoesNotWrite) {
    const TempDir dir;
    ASSERT_EQ(ZPO_OK, RegistryStore(dir.path(), kMapBytes, kTimeout).writeAll(numbered(1, 10), false));
    const auto put = [&](const std::string& key, const std::string& value) {
        MDB_txn* const transaction = beginBeside(dir.path(), 0);
        MDB_env* const env = mdb_txn_env(transaction);
        MDB_dbi entries = 0;
        MDB_val name = valueOf(key);
        MDB_val record = valueOf(value);
        EXPECT_EQ(0, mdb_dbi_open(transaction, nullptr, 0, &entries) +
                         mdb_put(transaction, entries, &name, &record, 0) + mdb_txn_commit(transaction));
        mdb_env_close(env);
    };
    const std::string name("C\0S\0k", 5);
    const std::pair<std::string, std::string> records[] = {
        {"C", "tx"},
        {std::string("C\0k", 3), "tx"},
        {name + std::string("\0x", 2), "tx"},
        {std::string("C\0S\0", 4), "tx"},
        {std::string("C\0\n\0k", 5), "tx"},
        {std::string(128, 'C') + name, "tx"},
        {name + "0", ""},
        {name + "1", "?x"},
        {name + "2", "b"},
        {name + "3", "i123"},
        {name + "4", std::string("t\0x", 3)},
        {name + "5", 't' + std::string(512, 'x')},
    };
    for (const auto& [key, record] : records) {
        put(key, record);
    }
    RegistryStore store(dir.path(), kMapBytes, kTimeout);
    std::vector<Entry> entries;
    std::size_t damaged = 0;
    EXPECT_EQ(ZPO_OK, store.list(entries, damaged));
    EXPECT_EQ(std::make_pair(std::size_t{1}, std::size(records)), std::make_pair(entries.size(), damaged));
    StoreCounters counters;
    put("\1store", "short");
    EXPECT_EQ(ZPO_REG_STORE_CORRUPT, store.counters(counters));
}

TEST(RegistryStore, RefusesADamagedFileUntilItIsReplacedAndLogsBothOnce) {
    const TempDir dir;
    const std::string good = fillStore(dir.path());
    const std::string log = kHome.dir / "log/ZpoShared.log";
    RegistryStore store(dir.path(), kMapBytes, kTimeout);
    StoreCounters counters;
    const auto replaceBy = [&](const std::string& content, std::uint32_t status) {
        support::writeFile(dir / "new", content);
        std::filesystem::rename(dir / "new", dir / "registry.mdb");
        for (int i = 0; i < 3; ++i) {
            EXPECT_EQ(status, store.counters(counters));
            EXPECT_EQ(status, store.write(nameOf("new"), EntryKind::Text, "x"));
        }
    };
    for (const std::string& damaged :
         {std::string(9000, 'a'), std::string(good).replace(3 * 4096, 4096, 4096, '\0'), good.substr(0, 4096)}) {
        std::filesystem::remove(log);
        replaceBy(damaged, ZPO_REG_STORE_CORRUPT);
        replaceBy(good, ZPO_OK);
        replaceBy(good, ZPO_OK);
        const std::string told = support::contentOf(log);
        for (const char* once :
             {": the registry's file is damaged", "in use again", "was replaced; the new file is in use"}) {
            EXPECT_EQ(1U, support::countOf(once, told)) << once << '\n' << told;
        }
    }
    EXPECT_EQ(ZPO_REG_STORE_MISSING, RegistryStore("/sys/none", kMapBytes, kTimeout).counters(counters));
}

TEST(RegistryStore, AFullStoreIsTriedAgainWithoutItsDeadReaders) {
    const TempDir dir;
    RegistryStore store(dir.path(), std::size_t{1} << 20U, kTimeout);
    ASSERT_EQ(ZPO_OK, store.writeAll(numbered(8, 30000), false));
    // Keeps all pages of this moment, and ends without a word.
    ASSERT_EQ(0, support::inChild([&] { return beginBeside(dir.path(), MDB_RDONLY) == nullptr ? 1 : 0; }));
    for (int round = 0; round < 10; ++round) {
        EXPECT_EQ(ZPO_OK, store.writeAll(numbered(8, 30000), false)) << round;
    }
}

TEST(RegistryStore, FollowsAFileThatAnotherProcessEnlarges) {
    for (const bool toWrite : {true, false}) {
        const TempDir dir;
        RegistryStore store(dir.path(), std::size_t{1} << 20U, kTimeout);
        ASSERT_EQ(ZPO_OK, store.writeAll(numbered(2, 10), false));
        const auto enlarge = [&] {
            RegistryStore larger(dir.path(), kMapBytes, kTimeout);
            return larger.writeAll(numbered(40, 60000), false) == ZPO_OK ? 0 : 1;
        };
        EXPECT_EQ(0, support::inChild(enlarge));
        Entry entry;
        EXPECT_EQ(ZPO_OK, toWrite ? store.remove(nameOf("key9")) : store.readEntry(nameOf("key9"), entry)) << toWrite;
    }
}

TEST(RegistryStore, FollowsAFileThatIsReplacedOrCut) {
    const TempDir other;
    RegistryStore(other.path(), kMapBytes, kTimeout).replaceAll(numbered(2, 10));
    const std::string restored = support::contentOf(other / "registry.mdb");
    std::string later = restored;
    const std::string head("\1store"); // before the format's number
    const std::uint64_t numbers[] = {1, 2};
    for (auto at = later.find(head); at != std::string::npos; at = later.find(head, at + 1)) {
        if (std::memcmp(&later[at + head.size()], &numbers[0], sizeof numbers[0]) == 0) {
            std::memcpy(&later[at + head.size()], &numbers[1], sizeof numbers[1]);
        }
    }
    const std::tuple<std::string, std::uint32_t, std::uint64_t> cases[] = {
        {later, ZPO_REG_STORE_VERSION, 0}, {restored, ZPO_OK, 1}, {"", ZPO_REG_STORE_CORRUPT, 0}};
    for (const auto& [content, status, restores] : cases) {
        for (const bool toWrite : {true, false}) {
            const TempDir dir;
            RegistryStore store(dir.path(), kMapBytes, kTimeout);
            StoreCounters counters;
            ASSERT_EQ(ZPO_OK, store.writeAll(numbered(2, 10), false));
            ASSERT_EQ(ZPO_OK, store.counters(counters)); // the file was looked at just now
            if (content.empty()) {
                std::filesystem::resize_file(dir / "registry.mdb", 4096);
            } else {
                support::writeFile(dir / "new", content);
                std::filesystem::rename(dir / "new", dir / "registry.mdb");
            }
            EXPECT_EQ(status, toWrite ? store.remove(nameOf("key1")) : store.counters(counters));
            EXPECT_EQ(status, store.counters(counters));
            EXPECT_EQ(restores, counters.restores);
        }
    }
}

TEST(RegistryStore, ReadsLookAtTheFilesNameNowAndThen) {
    const TempDir dir;
    RegistryStore store(dir.path(), kMapBytes, kTimeout);
    StoreCounters counters;
    Entry entry;
    ASSERT_EQ(ZPO_OK, store.writeAll(numbered(1, 10), false));
    EXPECT_TRUE(support::waitUntil([&] {
        store.counters(counters); // looks
        std::filesystem::rename(dir / "registry.mdb", dir / "away");
        const std::uint32_t status = store.readEntry(nameOf("key0"), entry);
        std::filesystem::rename(dir / "away", dir / "registry.mdb");
        return status == ZPO_OK;
    }));
    std::filesystem::remove(dir / "registry.mdb-lock");
    EXPECT_EQ(ZPO_OK, store.counters(counters));
    EXPECT_TRUE(std::filesystem::exists(dir / "registry.mdb-lock")) << "the table of readers is looked at, too";
}

// LMDB's table of readers tells of later changes than the older file has, for as long as another process uses it.
TEST(RegistryStore, FollowsAnOlderFileWhileAnotherProcessUsesTheReplacedOne) {
    for (const bool toWrite : {true, false}) {
        const TempDir dir;
        RegistryStore store(dir.path(), kMapBytes, kTimeout);
        StoreCounters counters;
        ASSERT_EQ(ZPO_OK, store.write(nameOf("old"), EntryKind::Text, "x"));
        const std::string old = support::contentOf(dir / "registry.mdb");
        for (int i = 0; i < 8; ++i) {
            ASSERT_EQ(ZPO_OK, store.countBackup());
        }
        const pid_t other = support::startChild([&] {
            RegistryStore own(dir.path(), kMapBytes, kTimeout);
            own.counters(counters);
            support::writeFile(dir / "ready", "");
            return pause();
        });
        EXPECT_TRUE(support::waitUntil([&] { return std::filesystem::exists(dir / "ready"); }));
        support::writeFile(dir / "new", old);
        std::filesystem::rename(dir / "new", dir / "registry.mdb");
        EXPECT_EQ(ZPO_OK, toWrite ? store.remove(nameOf("old")) : store.counters(counters)) << toWrite;
        EXPECT_TRUE(store.counters(counters) == ZPO_OK && counters.backups == 0);
        kill(other, SIGKILL);
        support::waitForChild(other);
    }
}

// A stuck writer stops the others, each for a while, and no reader.
TEST(RegistryStore, OnlyWritesWaitForAWriterAndNotForEver) {
    const TempDir dir;
    RegistryStore store(dir.path(), kMapBytes, std::chrono::milliseconds(30));
    ASSERT_EQ(ZPO_OK, store.write(nameOf("a"), EntryKind::Text, "a"));
    FileLock stuck;
    ASSERT_EQ(0, stuck.acquire(dir / "registry.lock", {}));
    std::thread behind([&] { EXPECT_EQ(ZPO_REG_LOCKED, store.remove(nameOf("a"))); });
    EXPECT_EQ(ZPO_REG_LOCKED, store.write(nameOf("a"), EntryKind::Text, "b"));
    behind.join();
    Entry entry;
    EXPECT_EQ(ZPO_OK, store.readEntry(nameOf("a"), entry));
    EXPECT_EQ(ZPO_OK, RegistryStore(dir.path(), kMapBytes, kTimeout).readEntry(nameOf("a"), entry));
    EXPECT_NE(std::string::npos, support::contentOf(kHome.dir / "log/ZpoShared.log").find("keeps the registry locked"));
}

// Changes of threads that wait at the same time, and whether one of them fails: it must not take the others with it.
TEST(RegistryStore, ChangesThatWaitTogetherShareATransactionButNoFailure) {
    const std::tuple<std::function<std::uint32_t(RegistryStore&)>, std::uint32_t, unsigned> others[] = {
        {[](RegistryStore& store) { return store.write(nameOf("other"), EntryKind::Text, "x"); }, ZPO_OK, 12},
        {[](RegistryStore& store) { return store.remove(nameOf("absent")); }, ZPO_REG_ENTRY_NOT_FOUND, 1},
        {[](RegistryStore& store) { return store.writeAll(numbered(100, 60000), false); }, ZPO_REG_STORE_FULL, 12}};
    for (const auto& [other, status, writerCount] : others) {
        const TempDir dir;
        std::optional<RegistryStore> store(std::in_place, dir.path(), std::size_t{1} << 20U, kTimeout);
        ASSERT_EQ(ZPO_OK, store->replaceAll({}));
        std::optional<FileLock> held(std::in_place);
        ASSERT_EQ(0, held->acquire(dir / "registry.lock", {}));
        std::atomic<unsigned> begun{0};
        std::vector<std::thread> writers;
        for (unsigned i = 0; i < writerCount; ++i) {
            writers.emplace_back([&, i] {
                ++begun;
                EXPECT_EQ(ZPO_OK, store->write(nameOf("key" + std::to_string(i)), EntryKind::Text, "x"));
            });
        }
        writers.emplace_back([&, &make = other, wanted = status] {
            ++begun;
            EXPECT_EQ(wanted, make(*store));
        });
        while (begun <= writerCount) {
            std::this_thread::yield();
        }
        std::this_thread::sleep_for(std::chrono::milliseconds(50)); // until they wait
        held.reset();
        for (std::thread& writer : writers) {
            writer.join();
        }
        std::vector<Entry> entries;
        std::size_t damaged = 0;
        EXPECT_EQ(ZPO_OK, store->list(entries, damaged));
        EXPECT_EQ(writerCount + (status == ZPO_OK ? 1U : 0U), entries.size());
        store.reset();
        const std::size_t most = status == ZPO_OK ? writerCount / 2 : 2U + writerCount;
        EXPECT_EQ(0, support::inChild([&] { return mdb_txn_id(beginBeside(dir.path(), MDB_RDONLY)) <= most ? 0 : 1; }))
            << "transactions";
    }
}

TEST(RegistryStore, AReaderThatReopensTheFileDoesNotWaitForAWaitingWriter) {
    const TempDir dir;
    RegistryStore store(dir.path(), kMapBytes, kTimeout);
    StoreCounters counters;
    ASSERT_EQ(ZPO_OK, store.write(nameOf("a"), EntryKind::Text, "a"));
    std::optional<FileLock> held(std::in_place);
    ASSERT_EQ(0, held->acquire(dir / "registry.lock", {}));
    std::thread writer([&] { EXPECT_EQ(ZPO_OK, store.remove(nameOf("a"))); });
    EXPECT_TRUE(support::isOpen(getpid(), "registry.lock", 2));
    std::filesystem::copy(dir / "registry.mdb", dir / "new");
    std::filesystem::rename(dir / "new", dir / "registry.mdb");
    EXPECT_EQ(ZPO_OK, store.counters(counters));
    held.reset(); // before the writer's time is over
    writer.join();
}

TEST(EventWatch, FindsADirectoryThatIsMadeLevelByLevelAndOneThatIsReplaced) {
    const TempDir dir;
    const std::string state = dir / "a/b/state";
    EventWatch watch(state, -1, std::chrono::minutes(2));
    alarm(20); // a wait that misses its event would end much later
    for (const char* made : {"a", "a/b", "a/b/state"}) {
        watch.arm();
        std::filesystem::create_directory(dir / made);
        EXPECT_TRUE(support::isOpen(getpid(), "inotify", 1));
        EXPECT_TRUE(watch.wait());
    }
    watch.arm();
    announceEvent(state);
    EXPECT_TRUE(watch.wait());
    support::writeFile(dir / "new", "");
    std::filesystem::rename(dir / "new", state + "/registry.mdb");
    EXPECT_TRUE(watch.wait());
    std::filesystem::rename(state, dir / "old");
    std::filesystem::create_directory(state);
    EXPECT_TRUE(watch.wait());
    watch.arm();
    announceEvent(state);
    EXPECT_TRUE(watch.wait());
    alarm(0);
}

} // namespace
