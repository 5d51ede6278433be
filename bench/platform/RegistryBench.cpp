#include "RegistryBench.hpp"

#include "LabServer.hpp"
#include "RawStore.hpp"
#include "RegistryStore.hpp"
#include "ZpoShared.h"

#include <atomic>
#include <cstdlib>
#include <filesystem>
#include <random>
#include <stdexcept>
#include <string>
#include <thread>
#include <vector>

namespace bench {
namespace {

constexpr std::size_t kMapBytes = std::size_t{1024} << 20U;
constexpr int kChunk = 50'000;
constexpr const char* kSection = "registry, beside raw LMDB";

void require(std::uint32_t status) {
    if (status != ZPO_OK) {
        throw std::runtime_error("the registry fails with status " + std::to_string(status));
    }
}

std::string keyOf(unsigned number) {
    return "KEY" + std::to_string(number);
}

void fill(const std::string& folder, unsigned entries) {
    zpo::RegistryStore store(folder, kMapBytes, std::chrono::seconds(5));
    for (unsigned first = 0; first < entries; first += kChunk) {
        std::vector<zpo::Entry> some;
        for (unsigned i = first; i < std::min(entries, first + kChunk); ++i) {
            some.push_back({"CDR", "Bench", keyOf(i), zpo::EntryKind::Binary, std::string(2, 'v')});
        }
        require(store.writeAll(some, true));
    }
}

/// 21 entries, as many as the settings of the service: near one another, or anywhere.
std::vector<std::string> chosen(unsigned entries, bool anywhere) {
    std::mt19937 random(1);
    std::vector<std::string> keys;
    for (unsigned i = 0; i < 21; ++i) {
        keys.push_back(keyOf(anywhere ? static_cast<unsigned>(random()) % entries : i));
    }
    return keys;
}

void readAll(const std::vector<std::string>& keys) {
    char bytes[2];
    for (const std::string& key : keys) {
        require(ZpoGetRegEntryBinary("CDR", "Bench", key.c_str(), bytes, sizeof bytes));
    }
}

Pairs compareReads(const Effort& effort, RawStore& raw, const std::vector<std::string>& keys) {
    std::vector<std::string> encoded;
    encoded.reserve(keys.size());
    for (const std::string& key : keys) {
        encoded.push_back(std::string("CDR") + '\0' + "Bench" + '\0' + key);
    }
    return compare(
        effort.rounds * 4, effort.quick ? 500 : 3000, [&] { readAll(keys); }, [&] { raw.read(encoded); });
}

/// A read of entries spread over the whole registry: each time others, so that most are in no cache.
double spreadRead(unsigned entries, int reads) {
    std::mt19937 random(2);
    char bytes[2];
    return timeOf(reads, [&] {
        require(ZpoGetRegEntryBinary("CDR", "Bench", keyOf(static_cast<unsigned>(random()) % entries).c_str(), bytes,
                                     sizeof bytes));
    });
}

void benchSize(Report& report, const Effort& effort, unsigned entries) {
    const LabFolder folder;
    ::setenv("ZPO_REGISTRY_MB", "1024", 1);
    fill(folder.path(), entries);
    std::filesystem::create_directory(folder.path() + "/raw");
    std::filesystem::copy(folder.path() + "/registry.mdb", folder.path() + "/raw/registry.mdb");
    RawStore raw(folder.path() + "/raw/registry.mdb", kMapBytes);

    const std::string of = " of " + std::to_string(entries) + " entries";
    const double open = timeOf(1, [] { readAll({keyOf(0)}); });
    const Pairs read = compareReads(effort, raw, chosen(entries, false));
    const double spread = spreadRead(entries, effort.quick ? 20'000 : 200'000);
    const Pairs change = compare(
        effort.rounds * 4, effort.quick ? 10 : 50,
        [] { require(ZpoSetRegEntryBinary("CDR", "Bench", "KEY7", "\0\x0b", 2)); }, [&] { raw.commit(); });
    const auto each = [](double nanosecondsOf21) { return nanosecondsOf21 / 21; };
    report.add(Row{kSection, "read" + of, "ns", each(read.cost()), each(read.floor()), read.ratio(), {}});
    report.add(Row{kSection, "read anywhere" + of, "ns", spread, 0, 0, {}});
    report.add(
        Row{kSection, "durable change" + of, "us", change.cost() / 1000, change.floor() / 1000, change.ratio(), {}});
    report.add(Row{kSection, "first read (open and check the file)" + of, "ms", open / 1e6, 0, 0, {}});
    const double x = entries;
    const auto point = [&](const char* curve, double y) {
        report.add(Point{"registry", "entries", "nanoseconds a read", curve, x, y});
    };
    point("the same 21 entries", each(read.cost()));
    point("entries anywhere", spread);
    point("raw LMDB, the same 21", each(read.floor()));
}

/// Durable changes a second of so many threads.
double changesASecond(unsigned threads, std::chrono::milliseconds time) {
    std::atomic<std::uint64_t> done{0};
    const auto end = Clock::now() + time;
    std::vector<std::thread> all;
    for (unsigned i = 0; i < threads; ++i) {
        all.emplace_back([&, key = keyOf(i)] {
            for (std::uint32_t value = 0; Clock::now() < end; ++value, ++done) {
                require(ZpoSetRegEntryInt("CDR", "Threads", key.c_str(), value));
            }
        });
    }
    for (std::thread& thread : all) {
        thread.join();
    }
    return static_cast<double>(done) / std::chrono::duration<double>(time).count();
}

void benchThreads(Report& report, const Effort& effort) {
    const LabFolder folder;
    for (const unsigned threads : {1U, 4U, 8U, 64U}) {
        Pairs pairs;
        for (int i = 0; i < effort.rounds; ++i) {
            const double single = changesASecond(1, effort.slice);
            pairs.add(changesASecond(threads, effort.slice), single);
        }
        report.add(Row{"registry, beside one thread",
                       "durable changes a second, " + std::to_string(threads) + " threads", "", pairs.cost(),
                       pairs.floor(), pairs.ratio(), threads == 64 ? ratioAtLeast(3) : Wanted()});
        report.add(Point{"changes", "threads", "durable changes a second", "registry", threads * 1.0, pairs.cost()});
    }
}

} // namespace

void benchRegistry(Report& report, const Effort& effort) {
    double first = 0;
    double last = 0;
    for (const unsigned entries : {100U, 1000U, 10'000U, 100'000U, 1'000'000U}) {
        report.addFromChild([&](Report& part) { benchSize(part, effort, entries); });
        last = report.costOf("read of " + std::to_string(entries) + " entries");
        first = first == 0 ? last : first;
    }
    report.add(Row{kSection, "read of 1,000,000 entries beside 100", "ns", last, first, 0, ratioAtMost(1.5)});
    report.addFromChild([&](Report& part) { benchThreads(part, effort); });
}

} // namespace bench
