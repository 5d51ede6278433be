// How long the registry's calls take. The time of a write is that of the disk, which it waits for.

#include "ZpoShared.h"

#include <benchmark/benchmark.h>
#include <cstdlib>
#include <filesystem>
#include <string>

namespace {

// Makes a temporary registry with about as many entries as the Call Detail Recording feature has.
void prepare() {
    std::string directory = (std::filesystem::temp_directory_path() / "registry-bench-XXXXXX").string();
    if (mkdtemp(directory.data()) == nullptr) {
        std::abort();
    }
    setenv("ZPO_STATE_DIR", directory.c_str(), 1);
    for (int i = 0; i < 45; ++i) {
        ZpoSetRegEntryBinary("CDR", "CDRService", ("KEY" + std::to_string(i)).c_str(), "\0\x0a", 2);
    }
    ZpoSetRegEntryBinary("CDR", "CDRService", "PREFIX BIN", std::string(64, '\x0c').data(), 64);
    ZpoSetRegEntryString("CDR", "CDRPush", "TranTime", "02:00");
}

void readBinary(benchmark::State& state) {
    unsigned char bytes[2];
    for ([[maybe_unused]] auto _ : state) {
        if (ZpoGetRegEntryBinary("CDR", "CDRService", "KEY22", bytes, sizeof bytes) != ZPO_OK) {
            state.SkipWithError("read failed");
        }
        benchmark::DoNotOptimize(bytes);
    }
}
BENCHMARK(readBinary)->Threads(1)->Threads(2);

void readText(benchmark::State& state) {
    char text[512];
    for ([[maybe_unused]] auto _ : state) {
        if (ZpoGetRegEntryString("CDR", "CDRPush", "TranTime", text, sizeof text) != ZPO_OK) {
            state.SkipWithError("read failed");
        }
        benchmark::DoNotOptimize(text);
    }
}
BENCHMARK(readText);

void readAbsent(benchmark::State& state) {
    std::uint32_t value = 0;
    for ([[maybe_unused]] auto _ : state) {
        if (ZpoGetRegEntryInt("CDR", "CDRService", "NONE", &value) != ZPO_REG_ENTRY_NOT_FOUND) {
            state.SkipWithError("an absent entry was read");
        }
    }
}
BENCHMARK(readAbsent);

void write(benchmark::State& state) {
    for ([[maybe_unused]] auto _ : state) {
        if (ZpoSetRegEntryBinary("CDR", "CDRService", "KEY22", "\0\x0b", 2) != ZPO_OK) {
            state.SkipWithError("write failed");
        }
    }
}
BENCHMARK(write)->Threads(1)->Threads(2)->Threads(8)->Threads(64)->UseRealTime();

} // namespace

int main(int argc, char** argv) {
    prepare();
    benchmark::Initialize(&argc, argv);
    benchmark::RunSpecifiedBenchmarks();
    std::filesystem::remove_all(getenv("ZPO_STATE_DIR"));
    return 0;
}
