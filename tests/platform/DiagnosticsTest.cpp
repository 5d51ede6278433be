// The diagnostic log.

#include "Files.hpp"
#include "Home.hpp"

#include <optional>
#include <regex>
#include <sys/resource.h>

namespace {

std::uint32_t registerLog(const char* file) {
    std::uint32_t handle = 0;
    EXPECT_EQ(ZPO_OK, ZpoDiagRegisterModule("CDRProvider.so", "CDR", "CDROAM", file, &handle));
    EXPECT_NE(0U, handle);
    return handle;
}

TEST(Diagnostics, WritesOneEscapedLineAnEntry) {
    const std::uint32_t handle = registerLog("format.log");
    const std::regex start("^\\d{4}-\\d\\d-\\d\\dT\\d\\d:\\d\\d:\\d\\d\\.\\d{3}[+-]\\d\\d:\\d\\d CDROAM\\[\\d+\\] ");
    const std::string longest(2000, 'x');
    const std::pair<std::string, std::string> texts[] = {
        {"getFormat error = 5", "getFormat error = 5"},
        {"error = 2097165", "error = 2097165: no such entry (0x20000d)"},
        {"error = 3145735x", "error = 3145735x"},
        {"12097165", "12097165"},
        {"2097165", "2097165"},
        {"a\nb\x01\\n\x7f\xe4", "a\\nb\\x01\\\\n\\x7f\xe4"},
        {longest, longest},
        {longest + "x", longest + " [cut]"}};
    std::string all;
    for (const auto& [text, written] : texts) {
        EXPECT_EQ(ZPO_OK, ZpoDiagAddLogEntry(handle, 2, 4, -1, text.c_str()));
        const std::string content = support::contentOf(kHome.dir / "log/format.log");
        const std::string line = content.substr(all.size());
        EXPECT_THAT(line, ::testing::EndsWith("] category=2 level=4 id=-1: " + written + "\n"));
        EXPECT_TRUE(std::regex_search(line, start)) << line;
        all = content;
    }
}

TEST(Diagnostics, RefusesUnknownHandlesAndUnusableArguments) {
    std::uint32_t handle = 55;
    std::uint32_t handles[256] = {};
    for (const char* file :
         {static_cast<const char*>(nullptr), "", "../up.log", "a/b", ".hidden", "line\n", "blank name"}) {
        EXPECT_EQ(ZPO_DIAG_BAD_ARGUMENT, ZpoDiagRegisterModule("m", "c", "n", file, &handle));
    }
    for (const std::string& name : {std::string(), std::string("a b"), std::string("\x7f"), std::string(65, 'n')}) {
        EXPECT_EQ(ZPO_DIAG_BAD_ARGUMENT, ZpoDiagRegisterModule("m", "c", name.c_str(), "x.log", &handle)) << name;
    }
    EXPECT_EQ(ZPO_DIAG_BAD_ARGUMENT, ZpoDiagRegisterModule("m", "c", "n", "x.log", nullptr));
    EXPECT_EQ(ZPO_DIAG_BAD_ARGUMENT, ZpoDiagRegisterModule(nullptr, "c", "n", "x.log", &handle));
    EXPECT_EQ(ZPO_DIAG_BAD_ARGUMENT, ZpoDiagRegisterModule("m", nullptr, "n", "x.log", &handle));
    EXPECT_EQ(ZPO_DIAG_BAD_ARGUMENT, ZpoDiagRegisterModule("m", "c", nullptr, "x.log", &handle));
    EXPECT_EQ(55U, handle);
    EXPECT_EQ(ZPO_DIAG_UNKNOWN_HANDLE, ZpoDiagAddLogEntry(0, 2, 4, -1, "x"));
    EXPECT_EQ(ZPO_OK, ZpoDiagRegisterModule("m", "c", ("!~" + std::string(62, 'n')).c_str(), "x.log", &handle));
    EXPECT_EQ(ZPO_OK, ZpoDiagDeregisterModule(handle));
    handle = registerLog("handles.log");
    EXPECT_EQ(ZPO_DIAG_BAD_ARGUMENT, ZpoDiagAddLogEntry(handle, 2, 4, -1, nullptr));
    EXPECT_EQ(ZPO_OK, ZpoDiagDeregisterModule(handle));
    EXPECT_EQ(ZPO_DIAG_UNKNOWN_HANDLE, ZpoDiagDeregisterModule(handle));
    EXPECT_EQ(ZPO_DIAG_UNKNOWN_HANDLE, ZpoDiagAddLogEntry(handle, 2, 4, -1, "x"));
    for (int i = 0; i < 256; ++i) {
        ZpoDiagRegisterModule("m", "c", "n", "x.log", &handles[i]);
    }
    EXPECT_EQ(ZPO_DIAG_TOO_MANY, ZpoDiagRegisterModule("m", "c", "n", "x.log", &handle));
    std::for_each(std::begin(handles), std::end(handles), ZpoDiagDeregisterModule);
}

std::string lineOf(int writer, int number) {
    return "<" + std::to_string(writer) + "." + std::to_string(number) + std::string(40, '.') + ">";
}

int writeLines(int writer, int count) {
    const std::uint32_t handle = registerLog("shared.log");
    std::uint32_t failures = 0;
    for (int i = 0; i < count; ++i) {
        failures |= ZpoDiagAddLogEntry(handle, 2, 4, -1, lineOf(writer, i).c_str());
    }
    return failures == ZPO_OK ? 0 : 1;
}

// Three processes write 36 KB through a log that is rotated at 16 KB: every line arrives once and whole.
TEST(Diagnostics, ProcessesShareALogThroughItsRotation) {
    constexpr int kPerWriter = 100;
    pid_t writers[3];
    for (int i = 0; i < 3; ++i) {
        writers[i] = support::startChild([i] { return writeLines(i, kPerWriter); });
    }
    for (const pid_t writer : writers) {
        EXPECT_EQ(0, support::waitForChild(writer));
    }
    std::string all;
    for (const char* file : {"log/shared.2.log", "log/shared.1.log", "log/shared.log"}) {
        all += support::contentOf(kHome.dir / file);
    }
    EXPECT_GT(std::filesystem::file_size(kHome.dir / "log/shared.1.log"), 8000U);
    for (int writer = 0; writer < 3; ++writer) {
        for (int i = 0; i < kPerWriter; ++i) {
            EXPECT_NE(std::string::npos, all.find(lineOf(writer, i) + "\n")) << writer << "." << i;
        }
    }
}

// Writes a line that the disk has only half the room for, and then one that fits.
int writeOnFullDisk() {
    const std::uint32_t handle = registerLog("full.log");
    std::signal(SIGXFSZ, SIG_IGN);
    const rlimit little{50, RLIM_INFINITY};
    setrlimit(RLIMIT_FSIZE, &little);
    const std::uint32_t failed = ZpoDiagAddLogEntry(handle, 2, 4, -1, "half");
    const rlimit enough{RLIM_INFINITY, RLIM_INFINITY};
    setrlimit(RLIMIT_FSIZE, &enough);
    const bool ok = ZpoDiagAddLogEntry(handle, 2, 4, -1, "whole") == ZPO_OK &&
                    ZpoDiagAddLogEntry(handle, 2, 4, -1, "next") == ZPO_OK;
    return failed == ZPO_DIAG_WRITE_FAILED && ok ? 0 : 1;
}

TEST(Diagnostics, ALineAfterAFailedWriteStandsAlone) {
    EXPECT_EQ(0, support::inChild(writeOnFullDisk));
    const std::string content = support::contentOf(kHome.dir / "log/full.log");
    EXPECT_EQ('\n', content[50]) << content;
    EXPECT_THAT(content, ::testing::ContainsRegex("\n2[^\n]*whole\n2[^\n]*next\n$"));
}

TEST(Diagnostics, ALogMayBeExactlyFull) {
    const std::string log = kHome.dir / "log/exact.log";
    const std::uint32_t handle = registerLog("exact.log");
    for (const std::size_t free : {0U, 1U}) {
        ASSERT_EQ(ZPO_OK, ZpoDiagAddLogEntry(handle, 2, 4, -1, "line"));
        const auto length = support::contentOf(log).size();
        support::writeFile(log, std::string(16384 - length + free, '1'));
        ASSERT_EQ(ZPO_OK, ZpoDiagAddLogEntry(handle, 2, 4, -1, "line"));
        EXPECT_EQ(free == 0 ? 16384 : length, std::filesystem::file_size(log));
        std::filesystem::remove(log);
    }
}

// The process waits for the lock to rotate, and meanwhile another has rotated.
TEST(Diagnostics, AFullLogIsRotatedOnce) {
    const std::string log = kHome.dir / "log/twice.log";
    ASSERT_EQ(ZPO_OK, ZpoDiagAddLogEntry(registerLog("twice.log"), 2, 4, -1, "first"));
    support::writeFile(log, std::string(16383, '1') + "\n");
    std::optional<zpo::FileLock> lock(std::in_place);
    ASSERT_EQ(0, lock->acquire(log + ".lock", {}));
    const pid_t writer = support::startChild([] {
        const std::uint32_t handle = registerLog("twice.log");
        return ZpoDiagAddLogEntry(handle, 2, 4, -1, "last") == ZPO_OK ? 0 : 1;
    });
    EXPECT_TRUE(support::isOpen(writer, "twice.log.lock", 2)); // one inherited, one of its own
    std::filesystem::rename(log, kHome.dir / "log/twice.1.log");
    support::writeFile(log, "new\n");
    lock.reset();
    EXPECT_EQ(0, support::waitForChild(writer));
    EXPECT_THAT(support::contentOf(log), ::testing::MatchesRegex("new\n.*last\n"));
    EXPECT_EQ('1', support::contentOf(kHome.dir / "log/twice.1.log")[0]);
}

} // namespace
