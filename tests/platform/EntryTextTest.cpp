// The text form of entries, in settings files and backups.

#include "EntryText.hpp"
#include "BackupFile.hpp"
#include "Settings.hpp"
#include "StatusText.hpp"
#include "Support.hpp"
#include "ZpoShared.h"

#include <sstream>

namespace {

using namespace zpo;

std::vector<Entry> oddEntries() {
    return {
        {"CDR", "CDRService", "FEATURE CODE", EntryKind::Binary, std::string("\xf9\x00\x12", 3)},
        {"C\"", "S\\", "#k", EntryKind::Text, "a \"quoted\" \\ text\n\twith\x01 \xe4 # and more"},
        {"#C", "S", "empty", EntryKind::Text, ""},
        {"C", "S", "longest", EntryKind::Text, std::string(511, 'z')},
        {"C", "S", "n", EntryKind::Integer, encodeInteger(4294967295U)},
    };
}

std::string formatted(const std::vector<Entry>& entries) {
    std::string text;
    for (const Entry& entry : entries) {
        text += formatEntryText(entry) + "\n";
    }
    return text;
}

TEST(EntryText, ReadsBackWhatItWrites) {
    std::vector<Entry> read;
    std::string error;
    const std::string text = formatted(oddEntries());
    ASSERT_TRUE(parseEntries("# a comment\n\n  \r\n" + text, read, error)) << error;
    EXPECT_EQ(text, formatted(read));
    ASSERT_EQ(oddEntries().size(), read.size());
    EXPECT_EQ(oddEntries()[1].bytes, read[1].bytes);
}

TEST(EntryText, NamesTheLineThatIsWrong) {
    std::istringstream wrong("C S|C S k|C S k int|C S k int 0x|C S k int 0x1g|C S k binary|C S k text a b|C S k number "
                             "5|C S k binary 0g|C S k binary 0|C S k int -1|C S k int 4294967296|"
                             "C S k int 5 6|C S k text|C S k text \"open|C S k text \"bad \\q escape\"|"
                             "C S k text \"bad \\x4g\"|C S k text \"nul \\x00\"|C S k text a\"b|C S \"k\"x text y|"
                             "C S \"\" text y|C S \"tab\\t\" text y|C S good int 1|C S k text " +
                             std::string(512, 'a'));
    for (std::string line; std::getline(wrong, line, '|');) {
        std::vector<Entry> entries;
        std::string error;
        EXPECT_FALSE(parseEntries("C S good int 1\n" + line, entries, error)) << line;
        EXPECT_EQ(0U, error.find("line 2: ")) << line << ": " << error;
    }
}

TEST(BackupFile, AnyDamageIsFound) {
    const std::string good = formatBackup(oddEntries());
    std::vector<Entry> entries;
    std::string error;
    ASSERT_TRUE(parseBackup(good, entries, error)) << error;
    EXPECT_EQ(oddEntries().size(), entries.size());
    for (std::size_t i = 0; i < good.size(); ++i) {
        std::string bad = good;
        bad[i] = static_cast<char>(bad[i] ^ 4);
        EXPECT_FALSE(parseBackup(bad, entries, error)) << "byte " << i;
        EXPECT_FALSE(parseBackup(good.substr(0, i), entries, error)) << "cut at " << i;
    }
    EXPECT_FALSE(parseBackup(good + "C S more int 1\n", entries, error));
}

TEST(Settings, UnusableValuesAreToldApartFromMissingOnes) {
    for (const std::string& bad : {std::string("relative"), std::string("/line\nfeed"), "/" + std::string(3840, 'x')}) {
        setenv("ZPO_STATE_DIR", bad.c_str(), 1);
        EXPECT_FALSE(readSettings().stateDirectory.has_value()) << bad;
    }
    const std::pair<std::string, std::string> directories[] = {
        {"/a/b//", "/a/b"},
        {"//", "/"},
        {"", "/var/lib/zpo"},
        {"/" + std::string(3839, 'x'), "/" + std::string(3839, 'x')}};
    for (const auto& [text, directory] : directories) {
        setenv("ZPO_STATE_DIR", text.c_str(), 1);
        EXPECT_EQ(directory, readSettings().stateDirectory.value_or("none"));
    }
    unsetenv("ZPO_STATE_DIR");
    EXPECT_EQ("/var/lib/zpo", *readSettings().stateDirectory);
    using Number = std::optional<std::uint64_t>;
    const std::tuple<const char*, const char*, Number Settings::*, Number> numbers[] = {
        // null: not set
        {"ZPO_REGISTRY_MB", nullptr, &Settings::registryBytes, 16U << 20U},
        {"ZPO_REGISTRY_MB", "", &Settings::registryBytes, 16U << 20U},
        {"ZPO_REGISTRY_MB", "1", &Settings::registryBytes, 1U << 20U},
        {"ZPO_REGISTRY_MB", "1024", &Settings::registryBytes, 1U << 30U},
        {"ZPO_REGISTRY_MB", "1025", &Settings::registryBytes, {}},
        {"ZPO_REGISTRY_MB", "12x", &Settings::registryBytes, {}},
        {"ZPO_REGISTRY_MB", "99999999999999999999", &Settings::registryBytes, {}},
        {"ZPO_LOG_KB", nullptr, &Settings::logBytes, 1U << 20U},
        {"ZPO_LOG_KB", "15", &Settings::logBytes, {}},
        {"ZPO_LOG_KB", "16", &Settings::logBytes, 16U << 10U},
        {"ZPO_LOG_KB", "65536", &Settings::logBytes, 65536U << 10U},
        {"ZPO_LOG_KB", "65537", &Settings::logBytes, {}},
        {"ZPO_CRONTAB_SUNDAY", nullptr, &Settings::sunday, 7},
        {"ZPO_CRONTAB_SUNDAY", "0", &Settings::sunday, 0},
        {"ZPO_CRONTAB_SUNDAY", "3", &Settings::sunday, {}},
        {"ZPO_LOCK_TIMEOUT", nullptr, &Settings::lockSeconds, 5},
        {"ZPO_LOCK_TIMEOUT", "60", &Settings::lockSeconds, 60},
        {"ZPO_LOCK_TIMEOUT", "61", &Settings::lockSeconds, {}},
    };
    for (const auto& [variable, text, setting, value] : numbers) {
        text == nullptr ? unsetenv(variable) : setenv(variable, text, 1);
        EXPECT_EQ(value, readSettings().*setting) << variable << "=" << (text == nullptr ? "" : text);
        unsetenv(variable);
    }
}

} // namespace
