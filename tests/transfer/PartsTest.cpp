// The parts that need no server: addresses, host keys, paths, reports, files, the progress bar, times.
#include "Address.hpp"
#include "Console.hpp"
#include "Failure.hpp"
#include "HostKeys.hpp"
#include "PushSettings.hpp"
#include "Records.hpp"
#include "RunReport.hpp"
#include "Schedule.hpp"
#include "StateFolder.hpp"
#include "Support.hpp"
#include "Text.hpp"

#include <algorithm>
#include <cstring>
#include <pty.h>

namespace {

using namespace transfer;

std::string parsed(const std::string& text) {
    try {
        const Address address = parseAddress(text);
        return address.url() + " " + address.knownHostsName() + (address.isImplicitTls() ? " implicit" : "");
    } catch (const Failure&) {
        return "refused";
    }
}

TEST(Address, IsAHostAPortOrAUrl) {
    const std::vector<std::pair<std::string, std::string>> addresses = {
        {"A-Z_az.09", "sftp://A-Z_az.09:22 A-Z_az.09"},
        {"192.0.2.1:2022", "sftp://192.0.2.1:2022 [192.0.2.1]:2022"},
        {"2001:db8::1", "sftp://[2001:db8::1]:22 2001:db8::1"},
        {"[2001:db8::1]:99", "sftp://[2001:db8::1]:99 [2001:db8::1]:99"},
        {"sftp://h/", "sftp://h:22 h"},
        {"ftps://h", "ftps://h:21 [h]:21"},
        {"ftps://h:990", "ftps://h:990 [h]:990 implicit"},
        {"ftp://h", "ftp://h:21 [h]:21"},
        {"ftp://h:65535", "ftp://h:65535 [h]:65535"},
    };
    for (const auto& [text, expected] : addresses) {
        EXPECT_EQ(expected, parsed(text));
    }
    for (const std::string text : {"h:0", "h:65536", "h:", "h:22x", "h:+22", "http://h", "sftp://", "sftp://u:p@h",
                                   "h/in", "[::1", "[::1]x", "-h", "h h", "h\n", "SFTP://h", "\xc3\xa4"}) {
        EXPECT_EQ("refused", parsed(text)) << text;
    }
    EXPECT_TRUE(parsed(std::string(253, 'h')) != "refused" && parsed(std::string(254, 'h')) == "refused");
}

TEST(HostKey, TellsItsKindWhenItIsOne) {
    const auto kind = [](const std::string& blob) { return HostKey{blob}.kind(); };
    const auto withLength = [](std::size_t length) {
        return std::string("\0\0\0", 3) + static_cast<char>(length) + std::string(length, 'a');
    };
    EXPECT_EQ("ssh-rsa", kind(std::string("\0\0\0\7ssh-rsaXYZ", 14)));
    EXPECT_EQ("a", kind(withLength(1)));
    EXPECT_EQ(std::string(64, 'a'), kind(withLength(64)));
    for (const std::string& bad :
         {std::string(), std::string("\0\0\0", 3), withLength(0), withLength(65), withLength(9).substr(0, 12),
          std::string("\0\0\1\1a", 5), std::string("\0\0\0\3a b", 7), std::string("\0\0\0\2A\n", 6)}) {
        EXPECT_EQ("unknown", kind(bad));
    }
    EXPECT_EQ("SHA256:ungWv48Bz+pBQUDeXa4iI7ADYaOWF3qctBD/YfIAFa0", HostKey{"abc"}.fingerprint());
    EXPECT_EQ("YWJj", HostKey{"abc"}.base64());
    EXPECT_EQ("YWI=", HostKey{"ab"}.base64());
}

TEST(PushSettings, NameThePathOfAFile) {
    const std::pair<const char*, const char*> folders[] = {
        {"", "a.csv"}, {"/", "/a.csv"}, {"in", "in/a.csv"}, {"/in//", "/in/a.csv"}, {"in/x/", "in/x/a.csv"}};
    for (const auto& [folder, path] : folders) {
        StoredSettings stored;
        stored.type = 0;
        stored.address = "h";
        stored.user = "u";
        stored.folder = folder;
        EXPECT_EQ(path, checkedSettings(stored).pathOf("a.csv")) << folder;
    }
}

TEST(RunReport, ListsTheFirstFailures) {
    RunReport report;
    for (int i = 0; i < 23; ++i) {
        report.addFailure("a\nb.csv", "no\troom");
    }
    EXPECT_EQ(20U, report.failures.size());
    EXPECT_EQ(3U, report.moreFailures);
    EXPECT_EQ("a?b.csv", report.failures[0].file);
    EXPECT_EQ("no?room", report.failures[19].reason);
}

/// What is sent is the file that was listed.
TEST(LocalFile, IsNotSentWhileItChanges) {
    const support::TempDir dir;
    support::writeFile(dir / "a.csv", "12");
    const LocalFile file = finishedFiles(dir.path()).at(0);
    EXPECT_TRUE(file.isUnchanged());
    EXPECT_TRUE(static_cast<bool>(file.open()));
    support::writeFile(dir / "a.csv", "123");
    EXPECT_FALSE(file.isUnchanged());
    EXPECT_THROW(file.open(), Failure);
    std::filesystem::remove(dir / "a.csv");
    std::filesystem::create_symlink("/etc/passwd", dir / "a.csv");
    EXPECT_FALSE(file.isUnchanged());
    EXPECT_THROW(file.open(), Failure);
}

/// What the console draws on a terminal while so much of a file is sent.
std::string drawn(bool waited, std::uint64_t size, std::initializer_list<std::uint64_t> sent) {
    int ends[2];
    EXPECT_EQ(0, openpty(&ends[0], &ends[1], nullptr, nullptr, nullptr));
    const int kept = dup(2);
    dup2(ends[1], 2);
    Console console(waited, false);
    for (const std::uint64_t now : sent) {
        console.progress(std::string(40, 'n'), now, size);
        std::this_thread::sleep_for(std::chrono::milliseconds(2));
    }
    (void)!write(2, ".", 1);
    dup2(kept, 2);
    std::string text;
    char more[256];
    for (ssize_t count = 1; count > 0 && (text.empty() || text.back() != '.');) { // the terminal passes on what it has
        count = read(ends[0], more, sizeof more);
        text.append(more, static_cast<std::size_t>(std::max<ssize_t>(count, 0)));
    }
    for (const int fd : {ends[0], ends[1], kept}) {
        close(fd);
    }
    return text;
}

TEST(Console, DrawsHowMuchIsSent) {
    const std::string name = "\r" + std::string(32, 'n') + " [";
    EXPECT_EQ(name + std::string(7, '#') + std::string(23, ' ') + "]  25 %       0 kB/s.", drawn(true, 4, {1}));
    EXPECT_EQ(name + std::string(30, '#') + "] 100 %       0 kB/s.", drawn(true, 0, {0}));
    EXPECT_EQ(name + std::string(30, '#') + "] 150 %       0 kB/s.", drawn(true, 2, {3})) << "it has become shorter";
    EXPECT_EQ(".", drawn(false, 4, {1}));
    EXPECT_THAT(drawn(true, 199999, {0, 199999}), testing::EndsWith(" MB/s."));
    EXPECT_THAT(drawn(true, 3, {5, 3}), testing::EndsWith(" 0 kB/s.")) << "it is sent from its beginning again";
}

struct Firing {
    int minute, hour;
    const char *dayOfMonth, *dayOfWeek;
    int month;
    const char* next;
};

TEST(Schedule, FiresNextAsCronDoes) {
    setenv("TZ", "Europe/Berlin", 1);
    tzset();
    constexpr std::time_t kSaturday = 1774738740; // 23:59:00, the day before the clock goes forward
    const Firing firings[] = {
        {0, 2, "*", "*", 1024, "2026-03-29 03:00:00"},     {59, 23, "*", "*", 1024, "2026-03-29 23:59:00"},
        {30, 3, "*", "7", 1024, "2026-03-29 03:30:00"},    {30, 8, "*", "0", 1024, "2026-03-29 08:30:00"},
        {5, 0, "31", "*", 1024, "2026-03-31 00:05:00"},    {0, 0, "30", "*", 2, "never"},
        {0, 0, "29", "*", 2, "2028-02-29 00:00:00"},       {0, 0, "1", "1", 1024, "2026-03-30 00:00:00"},
        {0, 1024, "28", "*", 1024, "2026-04-28 00:00:00"}, {1024, 0, "*", "*", 1024, "2026-03-29 00:00:00"},
    };
    for (const Firing& firing : firings) {
        ZpoScheduledTaskRecord task{};
        task.minute = static_cast<std::uint16_t>(firing.minute);
        task.hour = static_cast<std::uint16_t>(firing.hour);
        task.month = static_cast<std::uint16_t>(firing.month);
        std::strcpy(task.dayOfMonth, firing.dayOfMonth);
        std::strcpy(task.dayOfWeek, firing.dayOfWeek);
        EXPECT_EQ(firing.next, timeText(nextTime(task, kSaturday)));
    }
    EXPECT_EQ("20260328235900.000000+060", cimTime(kSaturday));
    EXPECT_EQ("2026-03-28T23:59:00+01:00", isoTime(kSaturday));
    EXPECT_EQ(R"("a\"\\\u000a\u0080")", jsonText("a\"\\\n\x80"));
}

} // namespace
