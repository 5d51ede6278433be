#include "StoreCheck.hpp"

#include <cstddef>
#include <cstdint>
#include <cstring>
#include <fmt/format.h>
#include <sys/stat.h>
#include <unistd.h>
#include <vector>

namespace zpo {
namespace {

// LMDB's file (data format 1), in the machine's byte order and word size:
//   page: header | node offsets growing up | free | nodes growing down; an overflow page is a header and bytes
//   pages 0 and 1 are the heads: header | Head; the one with the higher transaction number is in force
//   each head roots two trees: [0] free pages per transaction, [1] the entries
struct PageHeader {
    std::size_t number;
    std::uint16_t pad;
    std::uint16_t flags;
    std::uint16_t lower; // overflow: the page count in the 32 bits of both
    std::uint16_t upper;
};

struct Tree {
    std::uint32_t pad; // of the free tree: the page size
    std::uint16_t flags;
    std::uint16_t depth;
    std::size_t branchPages, leafPages, overflowPages, entries, root;
};

struct Head {
    std::uint32_t magic, version;
    std::size_t address, mapSize;
    Tree trees[2];
    std::size_t lastPage, transaction;
};

struct Node {
    std::uint32_t size; // of the value; branch: the child's page number, whose upper bits are the flags
    std::uint16_t flags, keySize;
};

constexpr std::uint32_t kMagicNumber = 0xBEEFC0DE;
constexpr std::uint16_t kBranchPage = 1, kLeafPage = 2, kOverflowPage = 4, kHeadPage = 8;
constexpr std::uint16_t kBigData = 1;
constexpr std::size_t kNoRoot = ~std::size_t{0};
constexpr std::size_t kMaxBytes = std::size_t{1} << 30U; // the largest store
constexpr std::uint16_t kMaxDepth = 32;                  // LMDB's cursors go no deeper
// The free tree's flags: its keys are integers, and the store is a file (MDB_NOSUBDIR). The entries' tree has none.
constexpr std::uint16_t kFreeTreeFlags = 0x4008;

template <class T>
T load(const std::string& page, std::size_t offset) {
    T value;
    std::memcpy(&value, page.data() + offset, sizeof value);
    return value;
}

bool readExactly(int fd, std::string& bytes, std::size_t offset) {
    return pread(fd, bytes.data(), bytes.size(), static_cast<off_t>(offset)) == static_cast<ssize_t>(bytes.size());
}

bool isPageSize(std::size_t size) {
    return size >= 512 && size <= 65536 && (size & (size - 1)) == 0;
}

std::size_t childOf(const Node& node) {
    const auto upper = sizeof(std::size_t) > sizeof node.size ? std::uint64_t{node.flags} << 32U : 0;
    return static_cast<std::size_t>(upper | node.size);
}

std::string checkHead(const PageHeader& page, const Head& head) {
    if ((page.flags & kHeadPage) == 0 || head.magic != kMagicNumber || head.version != 1) {
        return "no registry file";
    }
    if (!isPageSize(head.trees[0].pad) || head.lastPage >= kMaxBytes / head.trees[0].pad ||
        head.trees[0].flags != kFreeTreeFlags || head.trees[1].flags != 0) {
        return "damaged head page";
    }
    return {};
}

std::string readHead(int fd, std::size_t offset, Head& head) {
    std::string bytes(sizeof(PageHeader) + sizeof(Head), '\0');
    if (!readExactly(fd, bytes, offset)) {
        return "file is shorter than its head pages";
    }
    head = load<Head>(bytes, sizeof(PageHeader));
    return checkHead(load<PageHeader>(bytes, 0), head);
}

// Walks both trees of one head and marks each page it visits; a page visited twice is damage.
class PageWalk {
  public:
    PageWalk(int fd, const Head& head)
        : fd_(fd), head_(head), pageSize_(head.trees[0].pad), used_(head.lastPage + 1, false) {}

    std::string run() {
        if (used_.size() < 2) {
            return "damaged head page";
        }
        used_[0] = used_[1] = true;
        for (const bool freeTree : {true, false}) {
            const Tree& tree = head_.trees[freeTree ? 0 : 1];
            if (tree.depth > kMaxDepth || (tree.root == kNoRoot) != (tree.depth == 0)) {
                return "damaged head page";
            }
            if (tree.root != kNoRoot && !walk(tree.root, tree.depth, freeTree)) {
                return problem_;
            }
        }
        return {};
    }

  private:
    bool fail(std::size_t page, const char* what) {
        problem_ = fmt::format("page {}: {}", page, what);
        return false;
    }

    bool take(std::size_t page, std::size_t count) {
        if (page >= used_.size() || count == 0 || count > used_.size() - page) {
            return fail(page, "outside the file");
        }
        for (std::size_t i = page; i < page + count; ++i) {
            if (used_[i]) {
                return fail(i, "used twice");
            }
            used_[i] = true;
        }
        return true;
    }

    bool readPage(std::size_t page, std::string& bytes) {
        bytes.assign(pageSize_, '\0');
        if (!readExactly(fd_, bytes, page * pageSize_)) {
            return fail(page, "missing, the file is too short");
        }
        return load<PageHeader>(bytes, 0).number == page || fail(page, "does not bear its number");
    }

    bool walk(std::size_t page, std::uint16_t depth, bool freeTree) {
        std::string bytes;
        if (!take(page, 1) || !readPage(page, bytes)) {
            return false;
        }
        const auto header = load<PageHeader>(bytes, 0);
        if (header.flags != (depth == 1 ? kLeafPage : kBranchPage)) {
            return fail(page, "not the kind that the tree has at this depth");
        }
        if (header.lower < sizeof(PageHeader) || header.lower % 2 != 0 || header.upper < header.lower ||
            header.upper > pageSize_) {
            return fail(page, "damaged header");
        }
        const std::size_t count = (header.lower - sizeof(PageHeader)) / 2;
        if (count < (depth == 1 ? 1U : 2U)) {
            return fail(page, "too few nodes");
        }
        for (std::size_t i = 0; i < count; ++i) {
            if (!walkNode(page, bytes, load<std::uint16_t>(bytes, sizeof(PageHeader) + 2 * i), depth, freeTree)) {
                return false;
            }
        }
        return true;
    }

    bool walkNode(std::size_t page, const std::string& bytes, std::size_t offset, std::uint16_t depth, bool freeTree) {
        if (offset < load<PageHeader>(bytes, 0).upper || offset % 2 != 0 || offset + sizeof(Node) > pageSize_) {
            return fail(page, "node outside the page");
        }
        const auto node = load<Node>(bytes, offset);
        const std::size_t data = offset + sizeof(Node) + node.keySize;
        if (depth > 1) {
            return data <= pageSize_ ? walk(childOf(node), static_cast<std::uint16_t>(depth - 1), freeTree)
                                     : fail(page, "key outside the page");
        }
        const std::size_t size = node.flags == kBigData ? sizeof(std::size_t) : node.size;
        if (data > pageSize_ || size > pageSize_ - data || node.flags > kBigData ||
            (freeTree && node.keySize != sizeof(std::size_t))) {
            return fail(page, "damaged node");
        }
        if (node.flags != kBigData) {
            return !freeTree || takeFreePages(page, bytes.substr(data, size));
        }
        std::string big;
        return readOverflow(load<std::size_t>(bytes, data), node.size, big) && (!freeTree || takeFreePages(page, big));
    }

    bool readOverflow(std::size_t page, std::size_t size, std::string& data) {
        std::string first;
        if (page >= used_.size()) {
            return fail(page, "outside the file");
        }
        if (!readPage(page, first)) {
            return false;
        }
        const auto header = load<PageHeader>(first, 0);
        const auto count = load<std::uint32_t>(first, offsetof(PageHeader, lower));
        if (header.flags != kOverflowPage || !take(page, count) || size > count * pageSize_ - sizeof(PageHeader)) {
            return fail(page, "damaged overflow page");
        }
        data.assign(size, '\0');
        return readExactly(fd_, data, page * pageSize_ + sizeof(PageHeader)) ||
               fail(page, "missing, the file is too short");
    }

    // A list of free pages: how many, then their numbers, descending.
    bool takeFreePages(std::size_t page, const std::string& list) {
        const std::size_t slots = list.size() / sizeof(std::size_t);
        const std::size_t count = slots == 0 ? 0 : load<std::size_t>(list, 0);
        if (slots == 0 || count >= slots) {
            return fail(page, "damaged list of free pages");
        }
        std::size_t previous = used_.size();
        for (std::size_t i = 1; i <= count; ++i) {
            const auto freed = load<std::size_t>(list, i * sizeof(std::size_t));
            if (freed >= previous || !take(freed, 1)) {
                return fail(page, "damaged list of free pages");
            }
            previous = freed;
        }
        return true;
    }

    int fd_;
    const Head& head_;
    std::size_t pageSize_;
    std::vector<bool> used_;
    std::string problem_;
};

} // namespace

std::string checkStoreHeads(int fd) {
    struct stat status {};
    if (fstat(fd, &status) != 0 || !S_ISREG(status.st_mode)) {
        return "not a regular file";
    }
    if (status.st_size == 0) {
        return {};
    }
    Head head{};
    std::string problem = readHead(fd, 0, head);
    if (!problem.empty()) {
        return problem;
    }
    const std::size_t pageSize = head.trees[0].pad;
    if (status.st_size < static_cast<off_t>(2 * pageSize)) {
        return "file is shorter than its head pages";
    }
    problem = readHead(fd, pageSize, head);
    return problem.empty() && head.trees[0].pad != pageSize ? "damaged head page" : problem;
}

std::string checkStorePages(int fd, std::size_t transaction, bool& headReplaced) {
    Head head{};
    std::string problem = readHead(fd, 0, head);
    if (problem.empty() && transaction % 2 == 1) {
        problem = readHead(fd, head.trees[0].pad, head);
    }
    if (!problem.empty()) {
        return problem;
    }
    headReplaced = head.transaction != transaction;
    return headReplaced ? std::string() : PageWalk(fd, head).run();
}

} // namespace zpo
