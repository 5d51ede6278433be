// Pushes under faults: killed, cut off, out of room, many, large. CDR_TRANSFER_KILLS says how often a push is killed;
// CDR_TRANSFER_LARGE=1 adds 1,000 files and one of 2 GB.
#include "FarEndServer.hpp"

#include <random>
#include <sys/resource.h>
#include <sys/wait.h>

namespace {

using namespace transfer_testing;
using ::testing::HasSubstr;

constexpr int kFiles = 20;

pid_t startPush() {
    return support::startChild([] { return support::become({"CDRTransfer", "--wait"}, "/dev/null"); });
}

std::string contentOfFile(int number) {
    return std::to_string(number) + std::string(static_cast<std::size_t>(number) * 5000, 'c') + "\n";
}

std::string nameOfFile(int number) {
    return "CDR-" + std::to_string(100 + number) + ".csv";
}

/// Each file is whole where it has its own name, and nowhere gone.
void expectWhole(const PushLab& lab, bool all) {
    for (int i = 0; i < kFiles; ++i) {
        const bool far = std::filesystem::exists(lab.far("in/" + nameOfFile(i)));
        if (far) {
            ASSERT_TRUE(support::contentOf(lab.far("in/" + nameOfFile(i))) == contentOfFile(i)) << nameOfFile(i);
        } else {
            ASSERT_FALSE(all) << nameOfFile(i) << " has not arrived";
            ASSERT_TRUE(support::contentOf(lab.local(nameOfFile(i))) == contentOfFile(i))
                << nameOfFile(i) << " is lost";
        }
    }
}

TEST(Faults, AKilledPushLosesNothingAndLeavesNothingHalf) {
    const char* const wanted = getenv("CDR_TRANSFER_KILLS");
    const int kills = wanted == nullptr ? 20 : std::atoi(wanted);
    PushLab& lab = PushLab::started();
    std::mt19937 random(1);
    std::uniform_int_distribution<useconds_t> spread(0, 250000);
    int killed = 0;
    for (unsigned round = 0; killed < kills && !testing::Test::HasFailure(); ++round) {
        lab.reset();
        lab.setByte("DeleteFlag", static_cast<int>(round % 2));
        for (int i = 0; i < kFiles; ++i) {
            lab.record(nameOfFile(i), contentOfFile(i));
        }
        for (bool done = false; !done && killed < kills;) {
            const pid_t push = startPush();
            usleep(spread(random) / (round % 3 + 1));
            kill(push, SIGKILL);
            const int code = support::waitForChild(push);
            done = code == 0;
            killed += done ? 0 : 1;
            ASSERT_TRUE(done || code == -SIGKILL) << code << lab.run("CDRTransfer --status").output;
            expectWhole(lab, false);
        }
        EXPECT_EQ(0, lab.run("CDRTransfer --wait").exitCode) << lab.run("CDRTransfer --status").output;
        expectWhole(lab, true);
        EXPECT_EQ("20\n", lab.run("ls " + lab.far("in") + " | wc -l").output);
    }
    std::printf("%d killed\n", killed);
}

TEST(Faults, AServerThatDiesInAFileGetsTheRestAfterwards) {
    PushLab& lab = PushLab::started();
    const std::string content(std::size_t{8} << 20U, 'l');
    lab.record("CDR-1.csv", content);
    const pid_t push = startPush();
    std::string half; // the unfinished upload at the far end
    EXPECT_TRUE(support::waitUntil([&] {
        for (const auto& entry : std::filesystem::directory_iterator(lab.far("in"))) {
            half = entry.file_size() > 1000000 ? entry.path().string() : "";
        }
        return !half.empty();
    }));
    lab.kill();
    EXPECT_EQ(1, support::waitForChild(push));
    EXPECT_THAT(lab.run("CDRTransfer --status").output, HasSubstr("given up after 1 try: CDR-1.csv"));
    EXPECT_LT(std::filesystem::file_size(half), content.size());
    lab.run("printf X | dd conv=notrunc of=" + half); // shows that only the rest is sent
    lab.start();
    EXPECT_EQ(0, lab.run("CDRTransfer --wait").exitCode);
    EXPECT_TRUE(support::contentOf(lab.far("in/CDR-1.csv")) == "X" + content.substr(1));
}

TEST(Faults, AFullDiskAtTheFarEndIsTold) {
    const std::string disk = "mkdir -p \"$2/files\" && mount -t tmpfs -o size=256k none \"$2/files\" && exec \"$@\"";
    if (PushLab::run("unshare --mount true").exitCode != 0) {
        GTEST_SKIP() << "needs the right to mount";
    }
    PushLab& lab = PushLab::started();
    lab.kill();
    lab.start({"unshare", "--mount", "sh", "-c", disk, "sh"});
    lab.set("DestFolder", "");
    lab.setByte("NumRetry", 1);
    lab.setByte("DeleteFlag", 1);
    lab.record("CDR-1.csv", "fits");
    lab.record("CDR-2.csv", std::string(1000000, 'x'));
    EXPECT_EQ(1, lab.run("CDRTransfer --wait").exitCode);
    EXPECT_THAT(lab.run("CDRTransfer --status").output,
                testing::AllOf(HasSubstr("1 of 2 files sent"), HasSubstr("given up after 2 tries: CDR-2.csv")));
    EXPECT_EQ("CDR-2.csv\n", lab.run("ls " + lab.local("")).output);
    lab.kill();
}

TEST(Faults, ManyAndLargeFilesTakeLittleMemory) {
    if (getenv("CDR_TRANSFER_LARGE") == nullptr) {
        GTEST_SKIP() << "CDR_TRANSFER_LARGE is not set";
    }
    constexpr std::uintmax_t kLarge = 2000000000;
    PushLab& lab = PushLab::started();
    for (int i = 0; i < 1000; ++i) {
        lab.record("CDR-" + std::to_string(1000 + i) + ".csv", std::to_string(i));
    }
    lab.record("large.csv", "");
    std::filesystem::resize_file(lab.local("large.csv"), kLarge);
    const auto start = std::chrono::steady_clock::now();
    const pid_t push = startPush();
    int status = 0;
    rusage usage{};
    wait4(push, &status, 0, &usage);
    std::printf("%.1f s, %ld kB\n", std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count(),
                usage.ru_maxrss);
    EXPECT_EQ(0, status);
    EXPECT_LT(usage.ru_maxrss, 64 * 1024);
    EXPECT_EQ("1001\n", lab.run("ls " + lab.far("in") + " | wc -l").output);
    EXPECT_EQ("999", support::contentOf(lab.far("in/CDR-1999.csv")));
    EXPECT_EQ(kLarge, std::filesystem::file_size(lab.far("in/large.csv")));
}

} // namespace
