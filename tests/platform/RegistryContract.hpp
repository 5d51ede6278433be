#pragma once

// What every registry behind the C functions keeps, the real library and a stand-in alike. Include this file in one
// source of a test program that is linked to the registry under test; each test works in a section of its own.

#include "Support.hpp"
#include "ZpoShared.h"

#include <numeric>

namespace registry_contract {

constexpr const char* kComponent = "Contract";

TEST(RegistryContract, ReadsBackWhatWasWritten) {
    for (const std::uint32_t length : {1U, 2U, 30U, 64U, 4096U}) {
        std::string value(length, '\0');
        std::iota(value.begin(), value.end(), '\x7f');
        std::string read(length, 'x');
        ASSERT_EQ(ZPO_OK, ZpoSetRegEntryBinary(kComponent, "Values", "binary", value.data(), length));
        EXPECT_EQ(ZPO_OK, ZpoGetRegEntryBinary(kComponent, "Values", "binary", read.data(), length));
        EXPECT_EQ(value, read);
    }
    for (const std::string& value :
         {std::string(), std::string("02:30"), std::string("a\tb\n\xe4\xff\x7f"), std::string(511, 'z')}) {
        char read[512] = "before";
        ASSERT_EQ(ZPO_OK, ZpoSetRegEntryString(kComponent, "Values", "text", value.c_str()));
        EXPECT_EQ(ZPO_OK, ZpoGetRegEntryString(kComponent, "Values", "text", read, sizeof read));
        EXPECT_EQ(value, read);
    }
    for (const std::uint32_t value : {0U, 1U, 0x80000000U, 0xFFFFFFFFU}) {
        std::uint32_t read = ~value;
        ASSERT_EQ(ZPO_OK, ZpoSetRegEntryInt(kComponent, "Values", "integer", value));
        EXPECT_EQ(ZPO_OK, ZpoGetRegEntryInt(kComponent, "Values", "integer", &read));
        EXPECT_EQ(value, read);
    }
}

// The destination of a failed read is left alone, whatever the failure.
struct Destination {
    unsigned char bytes[8] = {1, 2, 3, 4, 5};
    char text[8] = "before";
    std::uint32_t integer = 77;

    bool isUntouched() const {
        return bytes[0] == 1 && bytes[4] == 5 && std::string(text) == "before" && integer == 77;
    }
};

TEST(RegistryContract, RefusesAbsentEntriesAndAnotherKindOrLength) {
    ZpoSetRegEntryBinary(kComponent, "Kinds", "binary", "wxyz", 4);
    ZpoSetRegEntryString(kComponent, "Kinds", "text", "1234567");
    ZpoSetRegEntryInt(kComponent, "Kinds", "integer", 5);
    Destination to;
    for (const std::string key : {"absent", "binary", "text", "integer"}) {
        const std::uint32_t wanted = key == "absent" ? ZPO_REG_ENTRY_NOT_FOUND : ZPO_REG_WRONG_KIND;
        if (key != "binary") {
            EXPECT_EQ(wanted, ZpoGetRegEntryBinary(kComponent, "Kinds", key.c_str(), to.bytes, 4)) << key;
        }
        if (key != "text") {
            EXPECT_EQ(wanted, ZpoGetRegEntryString(kComponent, "Kinds", key.c_str(), to.text, 8)) << key;
        }
        if (key != "integer") {
            EXPECT_EQ(wanted, ZpoGetRegEntryInt(kComponent, "Kinds", key.c_str(), &to.integer)) << key;
        }
    }
    for (const std::uint32_t length : {1U, 3U, 5U}) {
        EXPECT_EQ(ZPO_REG_WRONG_LENGTH, ZpoGetRegEntryBinary(kComponent, "Kinds", "binary", to.bytes, length))
            << length;
    }
    EXPECT_EQ(ZPO_REG_BUFFER_TOO_SMALL, ZpoGetRegEntryString(kComponent, "Kinds", "text", to.text, 7));
    EXPECT_TRUE(to.isUntouched());
}

TEST(RegistryContract, ReplacesWholeEntriesAndNeverCutsAText) {
    char read[512];
    ZpoSetRegEntryInt(kComponent, "Long", "text", 1);
    ZpoSetRegEntryString(kComponent, "Long", "text", "old"); // replaces the entry with its kind
    EXPECT_EQ(ZPO_REG_TEXT_TOO_LONG, ZpoSetRegEntryString(kComponent, "Long", "text", std::string(512, 'a').c_str()));
    EXPECT_EQ(ZPO_OK, ZpoGetRegEntryString(kComponent, "Long", "text", read, sizeof read));
    EXPECT_STREQ("old", read);
}

TEST(RegistryContract, RefusesUnusableArguments) {
    char buffer[8] = {};
    for (const char* bad : {static_cast<const char*>(nullptr), ""}) {
        EXPECT_NE(ZPO_OK, ZpoSetRegEntryInt(bad, "s", "k", 1));
        EXPECT_NE(ZPO_OK, ZpoSetRegEntryInt(kComponent, bad, "k", 1));
        EXPECT_NE(ZPO_OK, ZpoSetRegEntryInt(kComponent, "s", bad, 1));
    }
    EXPECT_NE(ZPO_OK, ZpoGetRegEntryInt(kComponent, "s", "k", nullptr));
    EXPECT_NE(ZPO_OK, ZpoGetRegEntryBinary(kComponent, "s", "k", nullptr, 1));
    EXPECT_NE(ZPO_OK, ZpoSetRegEntryBinary(kComponent, "s", "k", nullptr, 1));
    EXPECT_NE(ZPO_OK, ZpoGetRegEntryString(kComponent, "s", "k", nullptr, 8));
    EXPECT_NE(ZPO_OK, ZpoSetRegEntryString(kComponent, "s", "k", nullptr));
    ZpoSetRegEntryBinary(kComponent, "s", "k", "x", 1);
    EXPECT_EQ(ZPO_REG_BAD_ARGUMENT, ZpoSetRegEntryBinary(kComponent, "s", "k", buffer, 0));
    EXPECT_EQ(ZPO_REG_BAD_ARGUMENT, ZpoGetRegEntryBinary(kComponent, "s", "k", buffer, 0));
    EXPECT_EQ(ZPO_REG_BAD_ARGUMENT, ZpoGetRegEntryString(kComponent, "s", "k", buffer, 0));
}

TEST(RegistryContract, TellsNamesApart) {
    std::uint32_t read = 0;
    ZpoSetRegEntryInt(kComponent, "ab", "c", 1);
    ZpoSetRegEntryInt(kComponent, "a", "bc", 2);
    ZpoSetRegEntryInt(kComponent, "AB", "c", 3);
    EXPECT_EQ(ZPO_OK, ZpoGetRegEntryInt(kComponent, "ab", "c", &read));
    EXPECT_EQ(1U, read);
}

TEST(RegistryContract, ServesThreadsAtOnce) {
    std::vector<std::thread> threads;
    for (unsigned thread = 0; thread < 4; ++thread) {
        threads.emplace_back([thread] {
            const std::string key = "key" + std::to_string(thread);
            for (std::uint32_t value = 0; value < 25; ++value) {
                std::uint32_t read = 77;
                EXPECT_EQ(ZPO_OK, ZpoSetRegEntryInt(kComponent, "Threads", key.c_str(), value));
                EXPECT_EQ(ZPO_OK, ZpoGetRegEntryInt(kComponent, "Threads", key.c_str(), &read));
                EXPECT_EQ(value, read);
            }
        });
    }
    for (std::thread& thread : threads) {
        thread.join();
    }
}

} // namespace registry_contract
