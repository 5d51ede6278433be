// The store in its file: damage, lack of room, interruption, replacement.

#include "ProcessRegistry.hpp"
#include "Support.hpp"
#include "ZpoShared.h"

#include <csignal>
#include <filesystem>
#include <gtest/gtest.h>
#include <random>
#include <thread>
#include <unistd.h>

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
        std::vector<Entry> some;
        for (int i = 0; i < 40; ++i) {
            some.push_back({"C", "S", std::to_string(i), EntryKind::Binary, std::string(1 + random() % 20000, 'x')});
        }
        ASSERT_EQ(ZPO_OK, round % 5 == 4 ? store.replaceAll(some) : store.writeAll(some, false)) << round;
        for (int i = 0; i < 10; ++i) {
            store.remove(nameOf(std::to_string(random() % 40)));
        }
        std::vector<Entry> entries;
        std::size_t damaged = 0;
        ASSERT_EQ(ZPO_OK, RegistryStore(dir.path(), kMapBytes, kTimeout).list(entries, damaged)) << round;
        EXPECT_EQ(0U, damaged);
    }
}

TEST(RegistryStore, ReportsADamagedFileAndRecoversWhenItIsReplaced) {
    const TempDir dir;
    const std::string file = dir / "registry.mdb";
    const std::string good = fillStore(dir.path());
    std::string pageZeroed = good;
    pageZeroed.replace(3 * 4096, 4096, 4096, '\0');
    std::vector<std::string> damaged{std::string(9000, 'a'), std::string(good.size(), '\0'), pageZeroed};
    for (const std::size_t cut : {std::size_t{100}, std::size_t{4096}, std::size_t{8192}, good.size() / 2}) {
        damaged.push_back(good.substr(0, cut));
    }
    for (std::size_t what = 0; what < damaged.size(); ++what) {
        RegistryStore store(dir.path(), kMapBytes, kTimeout);
        Entry entry;
        support::writeFile(file, damaged[what]);
        EXPECT_EQ(ZPO_REG_STORE_CORRUPT, store.readEntry(nameOf("key1"), entry)) << what;
        EXPECT_EQ(ZPO_REG_STORE_CORRUPT, store.write(nameOf("new"), EntryKind::Text, "x")) << what;
        support::writeFile(file, good);
        EXPECT_EQ(ZPO_OK, store.readEntry(nameOf("key1"), entry)) << what;
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

TEST(RegistryStore, PassesOverADamagedRecordAndStillListsTheOthers) {
    const TempDir dir;
    {
        RegistryStore store(dir.path(), kMapBytes, kTimeout);
        store.write(nameOf("bad"), EntryKind::Text, "findme");
        store.write(nameOf("good"), EntryKind::Text, "fine");
    }
    std::string bytes = support::contentOf(dir / "registry.mdb");
    for (auto at = bytes.find("tfindme"); at != std::string::npos; at = bytes.find("tfindme", at + 1)) {
        bytes[at] = '?';
    }
    support::writeFile(dir / "registry.mdb", bytes);
    RegistryStore store(dir.path(), kMapBytes, kTimeout);
    Entry entry;
    std::vector<Entry> entries;
    std::size_t damaged = 0;
    EXPECT_EQ(ZPO_REG_ENTRY_DAMAGED, store.readEntry(nameOf("bad"), entry));
    EXPECT_EQ(ZPO_OK, store.list(entries, damaged));
    EXPECT_EQ(1U, damaged);
    EXPECT_EQ(1U, entries.size());
}

TEST(RegistryStore, FullIsAStatusAndChangesNothing) {
    const TempDir dir;
    RegistryStore store(dir.path(), std::size_t{1} << 20U, kTimeout);
    EXPECT_EQ(ZPO_OK, store.write(nameOf("kept"), EntryKind::Text, "old"));
    std::vector<Entry> many = numbered(100, 60000);
    many.push_back({"C", "S", "kept", EntryKind::Text, "new"});
    EXPECT_EQ(ZPO_REG_STORE_FULL, store.writeAll(many, false));
    EXPECT_EQ(ZPO_REG_STORE_FULL, store.replaceAll(many));
    std::vector<Entry> entries;
    std::size_t damaged = 0;
    EXPECT_EQ(ZPO_OK, store.list(entries, damaged));
    ASSERT_EQ(1U, entries.size());
    EXPECT_EQ("old", entries[0].bytes);
}

// Writes two entries at a time until killed; what it reports through the pipe is committed.
int writePairs(const std::string& directory, int pipe) {
    RegistryStore store(directory, kMapBytes, kTimeout);
    Entry first;
    store.readEntry(nameOf("first"), first);
    for (std::uint32_t number = first.bytes.empty() ? 1 : first.integer() + 1;; ++number) {
        const std::string bytes = encodeInteger(number);
        if (store.writeAll(
                {{"C", "S", "first", EntryKind::Integer, bytes}, {"C", "S", "second", EntryKind::Integer, bytes}},
                false) != ZPO_OK ||
            write(pipe, &number, sizeof number) != sizeof number) {
            return 1;
        }
    }
}

TEST(RegistryStore, AKilledWriterLosesNothingCommitted) {
    const TempDir dir;
    std::mt19937 random(3);
    for (int round = 0; round < 10; ++round) {
        int ends[2];
        ASSERT_EQ(0, pipe(ends));
        const pid_t writer = support::startChild([&] { return writePairs(dir.path(), ends[1]); });
        close(ends[1]);
        std::uint32_t reported = 0;
        ASSERT_EQ(sizeof reported, static_cast<std::size_t>(read(ends[0], &reported, sizeof reported)));
        std::this_thread::sleep_for(std::chrono::microseconds(random() % 30000));
        kill(writer, SIGKILL);
        ASSERT_EQ(-SIGKILL, support::waitForChild(writer));
        while (read(ends[0], &reported, sizeof reported) == sizeof reported) {
        }
        close(ends[0]);
        RegistryStore store(dir.path(), kMapBytes, kTimeout);
        Entry first;
        Entry second;
        ASSERT_EQ(ZPO_OK, store.readEntry(nameOf("first"), first));
        ASSERT_EQ(ZPO_OK, store.readEntry(nameOf("second"), second));
        EXPECT_EQ(first.integer(), second.integer());
        EXPECT_GE(first.integer(), reported);
    }
}

} // namespace
