// Every kind of damage in the store's file is found where it is, before LMDB maps it.

#include "StoreCheck.hpp"
#include "Files.hpp"
#include "RegistryStore.hpp"
#include "Support.hpp"
#include "ZpoShared.h"

#include <cstring>
#include <fcntl.h>

namespace {

using namespace zpo;

constexpr std::size_t kPage = 4096;
constexpr std::size_t kWord = sizeof(std::size_t);
// Of a page: its number, then these.
constexpr std::size_t kFlags = kWord + 2, kLower = kWord + 4, kUpper = kWord + 6, kNodes = kWord + 8;
// Of a head page: the free tree, then the entries' tree, then two numbers.
constexpr std::size_t kMagic = kNodes, kVersion = kNodes + 4, kTrees = kNodes + 8 + 2 * kWord;
constexpr std::size_t kTree = 8 + 5 * kWord, kTreeFlags = 4, kDepth = 6, kRoot = 8 + 4 * kWord;
constexpr std::size_t kLastPage = kTrees + 2 * kTree, kTransaction = kLastPage + kWord;

class StoreCheck : public ::testing::Test {
  protected:
    StoreCheck() {
        const std::string value(60, 'v');
        RegistryStore store(dir_.path(), std::size_t{16} << 20U, std::chrono::seconds(5));
        std::vector<Entry> entries{{"C", "S", "0", EntryKind::Binary, std::string(9000, 'v')}};
        for (int i = 1; i < 300; ++i) {
            entries.push_back({"C", "S", std::to_string(i), EntryKind::Binary, value});
        }
        EXPECT_EQ(ZPO_OK, store.writeAll(entries, false));
        EXPECT_EQ(ZPO_OK, store.writeAll({entries.begin() + 1, entries.begin() + 40}, false)); // frees pages
        good_ = support::contentOf(dir_ / "registry.mdb");
        head_ = number(kTransaction) > number(kPage + kTransaction) ? 0 : kPage;
        freeLeaf_ = number(head_ + kTrees + kRoot) * kPage;
        branch_ = number(head_ + kTrees + kTree + kRoot) * kPage;
        leaf_ = child(node(branch_, 0)) * kPage;
        bigPlace_ = node(leaf_, 1) + 8 + 5; // behind the node's header and its key, five bytes
        big_ = number(bigPlace_) * kPage;
    }

    template <class T = std::size_t>
    T number(std::size_t at) const {
        T value;
        std::memcpy(&value, &good_[at], sizeof value);
        return value;
    }
    std::size_t node(std::size_t page, std::size_t i) const {
        return page + number<std::uint16_t>(page + kNodes + 2 * i);
    }
    std::size_t child(std::size_t node) const { return number<std::uint32_t>(node); }

    // What is said of the file.
    std::string problemOf(const std::string& content, std::size_t newer = 0) {
        support::writeFile(dir_ / "file", content);
        const UniqueFd fd = openFile(dir_ / "file", O_RDONLY);
        std::string problem = checkStoreHeads(fd.get());
        bool replaced = false;
        if (problem.empty() && !content.empty()) {
            problem = checkStorePages(fd.get(), number(head_ + kTransaction) + newer, replaced);
        }
        return replaced ? "replaced" : problem;
    }

    template <class T>
    std::string with(std::size_t at, T value) {
        std::string content = good_;
        std::memcpy(&content[at], &value, sizeof value);
        return problemOf(content);
    }

    const support::TempDir dir_;
    std::string good_;
    std::size_t head_ = 0, freeLeaf_ = 0, branch_ = 0, leaf_ = 0, big_ = 0; // where the pages begin
    std::size_t bigPlace_ = 0;                                              // of the number of the page `big_`
};

std::string at(std::size_t page, const char* what) {
    return "page " + std::to_string(page / kPage) + ": " + what;
}

TEST_F(StoreCheck, OfHeads) {
    const std::string damaged = "damaged head page", foreign = "no registry file",
                      shorter = "file is shorter than its head pages";
    EXPECT_EQ("", problemOf(good_));
    EXPECT_EQ("", problemOf(""));
    EXPECT_EQ("replaced", problemOf(good_, 2));
    for (const std::size_t size : {std::size_t{100}, kPage, 2 * kPage - 1}) {
        EXPECT_EQ(shorter, problemOf(good_.substr(0, size))) << size;
    }
    EXPECT_EQ("not a regular file", checkStoreHeads(openFile(dir_.path(), O_RDONLY).get()));
    for (const std::size_t head : {std::size_t{0}, kPage}) {
        EXPECT_EQ(foreign, with<std::uint16_t>(head + kFlags, 0));
        EXPECT_EQ(foreign, with<std::uint32_t>(head + kMagic, 0));
        EXPECT_EQ(foreign, with<std::uint32_t>(head + kVersion, 2));
        for (const std::uint32_t pageSize : {0U, 256U, 5000U, 8192U + (head == 0 ? 1U : 0U), 131072U}) {
            EXPECT_EQ(damaged, with(head + kTrees, pageSize)) << pageSize;
        }
        EXPECT_EQ(damaged, with(head + kLastPage, (std::size_t{1} << 30U) / kPage));
        EXPECT_EQ("", with(head + kLastPage, (std::size_t{1} << 30U) / kPage - 1));
        EXPECT_EQ(damaged, with<std::uint16_t>(head + kTrees + kTreeFlags, 0));
        EXPECT_EQ(damaged, with<std::uint16_t>(head + kTrees + kTree + kTreeFlags, 4));
    }
    EXPECT_EQ(foreign, with(kTrees, 512U)) << "there is no second head";
    EXPECT_EQ(shorter, with(kTrees, 65536U));
}

TEST_F(StoreCheck, OfTheRootsOfTrees) {
    const std::size_t entries = head_ + kTrees + kTree;
    const std::string damaged = "damaged head page";
    EXPECT_EQ(damaged, with<std::size_t>(head_ + kLastPage, 0));
    EXPECT_EQ(at(freeLeaf_, "outside the file"), with<std::size_t>(head_ + kLastPage, 1));
    EXPECT_EQ(damaged, with<std::uint16_t>(entries + kDepth, 33));
    EXPECT_EQ(at(leaf_, "not the kind that the tree has at this depth"), with<std::uint16_t>(entries + kDepth, 32));
    EXPECT_EQ(damaged, with<std::uint16_t>(entries + kDepth, 0));
    EXPECT_EQ(damaged, with(entries + kRoot, ~std::size_t{0}));
    EXPECT_EQ(at(kPage, "used twice"), with<std::size_t>(entries + kRoot, 1));
    EXPECT_EQ(at(good_.size(), "outside the file"), with(entries + kRoot, number(head_ + kLastPage) + 1));
}

TEST_F(StoreCheck, OfPages) {
    for (const std::size_t page : {branch_, leaf_}) {
        const bool isLeaf = page == leaf_;
        EXPECT_EQ(at(page, "does not bear its number"), with(page, std::size_t{77}));
        EXPECT_EQ(at(page, "not the kind that the tree has at this depth"),
                  with<std::uint16_t>(page + kFlags, isLeaf ? 1 : 2));
        const auto lower = number<std::uint16_t>(page + kLower), upper = number<std::uint16_t>(page + kUpper);
        for (const int wrong : {int{kNodes} - 2, lower + 1, upper + 2}) {
            EXPECT_EQ(at(page, "damaged header"), with(page + kLower, static_cast<std::uint16_t>(wrong))) << wrong;
        }
        EXPECT_EQ(at(page, "damaged header"), with<std::uint16_t>(page + kUpper, kPage + 2));
        EXPECT_EQ(at(page, "too few nodes"), with<std::uint16_t>(page + kLower, kNodes));
        EXPECT_EQ(isLeaf ? "" : at(page, "too few nodes"), with<std::uint16_t>(page + kLower, kNodes + 2));
        for (const int wrong : {upper - 2, upper + 1, int{kPage} - 6}) {
            EXPECT_EQ(at(page, "node outside the page"), with(page + kNodes, static_cast<std::uint16_t>(wrong)))
                << wrong;
        }
        EXPECT_EQ(at(page, isLeaf ? "damaged node" : "key outside the page"),
                  with<std::uint16_t>(node(page, 1) + 6, kPage));
    }
    EXPECT_EQ("", with<std::uint16_t>(leaf_ + kNodes, kPage - 8)) << "the last eight bytes are zeros";
    EXPECT_EQ(at(leaf_, "damaged node"), with<std::uint32_t>(node(leaf_, 2), kPage));
    EXPECT_EQ(at(leaf_, "damaged node"), with<std::uint16_t>(node(leaf_, 2) + 4, 2));
    EXPECT_EQ(at(freeLeaf_, "missing, the file is too short"), problemOf(good_.substr(0, freeLeaf_)));
}

TEST_F(StoreCheck, OfLargeValues) {
    const std::string damaged = at(big_, "damaged overflow page");
    EXPECT_EQ("page 777: outside the file", with<std::size_t>(bigPlace_, 777));
    EXPECT_EQ(at(big_, "does not bear its number"), with(big_, std::size_t{77}));
    EXPECT_EQ(damaged, with<std::uint16_t>(big_ + kFlags, 2));
    for (const std::uint32_t pages : {0U, 1U, 30U, 4000000000U}) {
        EXPECT_EQ(damaged, with(big_ + kLower, pages)) << pages;
    }
    const auto most = static_cast<std::uint32_t>(3 * kPage - kNodes);
    EXPECT_EQ("", with(node(leaf_, 1), most));
    EXPECT_EQ(damaged, with(node(leaf_, 1), most + 1));
}

TEST_F(StoreCheck, OfFreePages) {
    const std::size_t first = node(freeLeaf_, 0);
    const std::size_t list = first + 8 + kWord;
    ASSERT_GE(number(list), 2U) << "pages are free";
    const std::string damaged = at(freeLeaf_, "damaged list of free pages");
    EXPECT_EQ(at(freeLeaf_, "damaged node"), with<std::uint16_t>(first + 6, kWord - 1));
    EXPECT_EQ(damaged, with<std::uint32_t>(first, kWord - 1));
    EXPECT_EQ(damaged, with(list, number(list) + 1));
    EXPECT_EQ("", with(list, number(list) - 1));
    EXPECT_EQ(damaged, with(list + kWord, std::size_t{1})) << "in use";
    EXPECT_EQ(damaged, with(list + number(list) * kWord, std::size_t{1})) << "the last is in use";
    EXPECT_EQ(damaged, with(list + 2 * kWord, number(list + kWord))) << "twice";
    EXPECT_EQ(damaged, with(list + kWord, number(list + 2 * kWord) - 1)) << "not in order";
}

} // namespace
