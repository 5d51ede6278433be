#pragma once

#include <cstddef>
#include <string>

namespace zpo {

// LMDB trusts its file: a short or damaged one ends in a bus error or an abort. These checks read the file without
// mapping it and accept only what LMDB can walk safely.

/// Checks the file's size and both of its head pages, before LMDB opens it. An empty file is a new store. Returns what
/// is wrong, or an empty text.
std::string checkStoreHeads(int fd);

/// Checks every page in use by transaction `transaction`, which the caller holds open for reading so that nobody reuses
/// the pages. Returns what is wrong, or an empty text; sets `headReplaced` when the transaction's head page has been
/// overwritten meanwhile and the caller should begin a new transaction.
std::string checkStorePages(int fd, std::size_t transaction, bool& headReplaced);

} // namespace zpo
