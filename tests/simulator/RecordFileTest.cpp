// Record files: clipped, limited, and what is left of a simulator that was killed or of a full disk.
#include "RecordFile.hpp"
#include "Support.hpp"

#include <sys/resource.h>

namespace {

using namespace cdrsim;

constexpr std::time_t kTime = 1795348800;

/// What the record files take; other files do not count.
std::uintmax_t bytesIn(const std::string& folder) {
    std::uintmax_t bytes = 0;
    for (const auto& entry : std::filesystem::directory_iterator(folder)) {
        const std::string name = entry.path().filename();
        bytes += name == "current.part" || name.find("CDR-2") == 0 ? entry.file_size() : 0;
    }
    return bytes;
}

TEST(RecordFile, IsClippedBySizeAndTheOldestGoFirst) {
    const support::TempDir dir;
    support::writeFile(dir / "CDR-1.csv", std::string(1 << 20, 'x')); // someone else's
    RecordFolder folder(dir.path());
    RecordFile file(folder);
    ServiceSettings settings;
    settings.clipFileSize100K = settings.diskSpaceLimitMb = 1;
    std::string oldest;
    for (int i = 0; i < 130; ++i) {
        file.add(std::string(10000, 'r') + "\n", settings, kTime + i / 40);
        ASSERT_LE(bytesIn(dir.path()), 1U << 20U) << i;
        if (i == 35) {
            oldest = folder.finished().front().name;
            folder.markPulled(folder.finished().front());
        }
    }
    EXPECT_TRUE(std::filesystem::exists(dir / "CDR-1.csv"));
    EXPECT_FALSE(std::filesystem::exists(dir / (oldest + ".pulled")));
    EXPECT_EQ(9U, folder.finished().size()) << "as many as there is room for, ten records in each";
}

TEST(RecordFile, IsClippedWhenItWouldGrowTooLargeAndWhenItsTimeIsOver) {
    const support::TempDir dir;
    RecordFolder folder(dir.path());
    RecordFile file(folder);
    ServiceSettings settings;
    settings.headerFormat = settings.clipFileSize100K = settings.diskSpaceLimitMb = 0; // without limits
    const auto add = [&](std::size_t size) { file.add(std::string(size - 1, 'r') + "\n", settings, kTime); };
    add(3 << 20U);
    EXPECT_TRUE(folder.finished().empty());
    settings.clipFileSize100K = 1;
    add(102400);
    EXPECT_EQ(1U, folder.finished().size());
    add(1);
    EXPECT_EQ(2U, folder.finished().size());
    add(102399);
    EXPECT_EQ(2U, folder.finished().size()) << "just as large as it may be";
    file.clipWhenDue(4, kTime + 59);
    EXPECT_EQ(2U, folder.finished().size());
    file.clipWhenDue(4, kTime + 60);
    EXPECT_TRUE(file.isEmpty());
    file.clipWhenDue(4, kTime + 120);
    EXPECT_EQ(3U, folder.finished().size());
    settings.diskSpaceLimitMb = 3;
    file.keepWithinDiskLimit(settings);
    EXPECT_EQ(2U, folder.finished().size());
    EXPECT_EQ(204800U, folder.finishedBytes());
    EXPECT_THAT(file.takeNews().back(), testing::MatchesRegex("removed CDR-.*: the disk limit is reached"));
    EXPECT_EQ(2U, folder.shrinkTo(102399).size());
    add(10);
    std::filesystem::remove(folder.currentFile());
    add(10);
    EXPECT_EQ("the current file was removed by someone else, with 1 records", file.takeNews().at(0));
    std::filesystem::rename(folder.currentFile(), dir / "kept");
    support::writeFile(folder.currentFile(), "another's");
    EXPECT_ANY_THROW(add(10)) << "which is not this program's";
    EXPECT_TRUE(file.isEmpty());
}

TEST(RecordFolder, NumbersTheFilesOfASecond) {
    const support::TempDir dir;
    RecordFolder folder(dir.path());
    const auto finish = [&] {
        support::writeFile(folder.currentFile(), "1,a\n");
        return folder.finishCurrent(kTime).substr(19);
    };
    const std::string first = "CDR-20261122-120000-"; // in UTC
    setenv("TZ", "UTC", 1);
    support::writeFile(dir / first + "001.csv", "");
    support::writeFile(dir / first + "002.csv.pulled", "");
    EXPECT_EQ("-003.csv", finish());
    char number[16];
    for (int i = 4; i < 999; ++i) {
        std::snprintf(number, sizeof number, "%03d.csv", i);
        support::writeFile(dir / first + number, "");
    }
    EXPECT_EQ("-999.csv", finish());
    EXPECT_EQ("-000.csv", finish());
    EXPECT_THROW(finish(), std::runtime_error);
    EXPECT_EQ("-001.csv", folder.finishCurrent(kTime + 1).substr(19)) << "the search has come around";
    EXPECT_EQ(1000U, folder.finished().size()) << "the fetched one does not count";
    EXPECT_EQ(16U, folder.finishedBytes());
}

TEST(RecordFile, KeepsItsLinesWhole) {
    const auto limitFiles = [](rlim_t size) {
        const rlimit limit{size, RLIM_INFINITY};
        setrlimit(RLIMIT_FSIZE, &limit);
    };
    const support::TempDir dir;
    RecordFolder folder(dir.path());
    RecordFile file(folder);
    std::signal(SIGXFSZ, SIG_IGN);
    limitFiles(50);
    EXPECT_ANY_THROW(file.add("1,one\n", {}, kTime)) << "not even the head fits";
    limitFiles(200);
    file.add("2,two\n", {}, kTime);
    EXPECT_ANY_THROW(file.add("3," + std::string(100, 't') + "\n", {}, kTime));
    limitFiles(RLIM_INFINITY);
    file.add("4,four\n", {}, kTime);
    file.clip(kTime);
    file.clip(kTime);
    ASSERT_EQ(1U, folder.finished().size());
    EXPECT_THAT(support::contentOf(dir / folder.finished()[0].name), testing::EndsWith("Charge\n2,two\n4,four\n"));
}

TEST(RecordFolder, FinishesWhatAKilledSimulatorLeft) {
    for (const auto& [left, finished] : std::vector<std::pair<std::string, std::string>>{
             {"Record\n1,a\n2,b\n", "Record\n1,a\n2,b\n"},
             {"1,a\n2,", "1,a\n"},
             {"# begun\nRecord\n", ""},
             {"Record\n1,a", ""},
         }) {
        const support::TempDir dir;
        support::writeFile(dir / "current.part", left);
        RecordFolder folder(dir.path());
        const std::string name = folder.finishStale();
        EXPECT_EQ(finished, name.empty() ? "" : support::contentOf(dir / name)) << left;
        EXPECT_FALSE(std::filesystem::exists(dir / "current.part")) << left;
    }
}

} // namespace
