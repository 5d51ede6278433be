// One getInstance of the service settings through the umbrella provider, and how many times as long as the bare reads
// of its 21 entries it takes: a ratio, so that machines can be compared.
#include "CDRProvider.hpp"
#include "QTX_CDRService.hpp"
#include "ZpoShared.h"
#ifdef CDR_FAKE_PLATFORM
#include "FakePlatform.hpp"
#endif

#include "OW_CIM.hpp"
#include "OW_ProviderEnvironmentIFC.hpp"

#include <benchmark/benchmark.h>

#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <iostream>
#include <string>

using namespace OpenWBEM;

namespace {

constexpr const char* kSection = "CDRService";

void forgetCalls() {
#ifdef CDR_FAKE_PLATFORM
    fakes::FakePlatform::get().forget();
#endif
}

// Calls `use` with each entry's key and its length in bytes, 0 for an integer.
template <class Use>
void forEachEntry(Use use) {
    for (const char* key :
         {"FORMAT", "TYPE", "LANG", "FILTER", "DATE", "HEADER", "DNIS", "CONNECT", "DIGITSSUPP", "SCHEDULE", "FILESIZE",
          "NAME", "LONGID", "CALLTYPE", "CHARGE", "SUPERVISE", "TIME", "HOSPITAL"}) {
        use(key, 1U);
    }
    use("FEATURE CODE", 2U);
    use("DIGITSLIMIT", 2U);
    use("DISKLIMIT", 0U);
}

void createEntries() {
    forEachEntry([](const char* key, std::uint32_t bytes) {
        const unsigned char value[2] = {0, 4};
        const std::uint32_t status = bytes == 0 ? ZpoSetRegEntryInt("CDR", kSection, key, 4)
                                                : ZpoSetRegEntryBinary("CDR", kSection, key, value, bytes);
        if (status != 0) {
            (void)std::fprintf(stderr, "cannot write %s: %x\n", key, status);
            std::exit(1);
        }
    });
}

void readEntries() {
    forEachEntry([](const char* key, std::uint32_t bytes) {
        unsigned char value[2];
        std::uint32_t number = 0;
        benchmark::DoNotOptimize(bytes == 0 ? ZpoGetRegEntryInt("CDR", kSection, key, &number)
                                            : ZpoGetRegEntryBinary("CDR", kSection, key, value, bytes));
    });
}

CIMObjectPath servicePath() {
    return CIMObjectPath::parse("root/cimv2:QTX_CDRService.SystemCreationClassName=\"QTX_System\",SystemName=\"QTX\","
                                "CreationClassName=\"QTX_CDRService\",Name=\"CDRService\"");
}

double nanoseconds(std::chrono::steady_clock::duration time) {
    return std::chrono::duration<double, std::nano>(time).count();
}

void getInstance(benchmark::State& state) {
    static CDRProvider provider;
    static const bool initialised = [] {
        provider.initialize(ProviderEnvironmentIFCRef());
        return true;
    }();
    benchmark::DoNotOptimize(initialised);
    const CIMObjectPath path = servicePath();
    double module = 0;
    double bare = 0;
    for ([[maybe_unused]] auto _ : state) {
        const auto start = std::chrono::steady_clock::now();
        benchmark::DoNotOptimize(provider.getInstance(ProviderEnvironmentIFCRef(), "root/cimv2", path,
                                                      WBEMFlags::E_NOT_LOCAL_ONLY, WBEMFlags::E_INCLUDE_QUALIFIERS,
                                                      WBEMFlags::E_EXCLUDE_CLASS_ORIGIN, nullptr, CIMClass(CIMNULL)));
        const auto between = std::chrono::steady_clock::now();
        readEntries();
        const auto end = std::chrono::steady_clock::now();
        module += nanoseconds(between - start);
        bare += nanoseconds(end - between);
        state.SetIterationTime(std::chrono::duration<double>(between - start).count());
        forgetCalls();
    }
    state.counters["per_bare_reads"] = module / bare;
}
BENCHMARK(getInstance)->UseManualTime()->Unit(benchmark::kMicrosecond);

} // namespace

// The real library works on a temporary registry.
int main(int argc, char** argv) {
    std::string home = std::filesystem::temp_directory_path() / "module_bench.XXXXXX";
    if (mkdtemp(home.data()) == nullptr || setenv("ZPO_STATE_DIR", home.c_str(), 1) != 0 ||
        setenv("ZPO_LOG_DIR", home.c_str(), 1) != 0 || std::freopen("/dev/null", "w", stdout) == nullptr) {
        std::perror("module_bench");
        return 1;
    }
    createEntries();
    benchmark::Initialize(&argc, argv);
    benchmark::ConsoleReporter reporter(benchmark::ConsoleReporter::OO_Tabular);
    reporter.SetOutputStream(&std::cerr); // the module's traces go to standard output
    reporter.SetErrorStream(&std::cerr);
    benchmark::RunSpecifiedBenchmarks(&reporter);
    std::filesystem::remove_all(home);
    return 0;
}
