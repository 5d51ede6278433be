#pragma once

#include "RegistryEntry.hpp"

#include <string>
#include <string_view>
#include <vector>

namespace zpo {

// A backup is a text: a first line that names the format, the entries as EntryText.hpp writes them, and a last line
// with their count and the CRC-32 of everything before it.

constexpr std::size_t kMaxBackupBytes = std::size_t{256} << 20U;

std::string formatBackup(const std::vector<Entry>& entries);

/// Appends the entries of a backup. Returns false and sets `error` when the backup is damaged or incomplete.
bool parseBackup(std::string_view text, std::vector<Entry>& entries, std::string& error);

} // namespace zpo
