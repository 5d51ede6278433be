#include "BackupFile.hpp"

#include "EntryText.hpp"

#include <boost/crc.hpp>
#include <fmt/format.h>

namespace zpo {
namespace {

constexpr std::string_view kFirstLine = "# zpo registry backup 1\n";
constexpr std::string_view kLastLineStart = "# end ";

std::string lastLine(std::size_t count, std::string_view before) {
    boost::crc_32_type crc;
    crc.process_bytes(before.data(), before.size());
    return fmt::format("{}{} entries, crc {:08x}\n", kLastLineStart, count, crc.checksum());
}

} // namespace

std::string formatBackup(const std::vector<Entry>& entries) {
    std::string text(kFirstLine);
    for (const Entry& entry : entries) {
        text += formatEntryText(entry) + '\n';
    }
    return text + lastLine(entries.size(), text);
}

bool parseBackup(std::string_view text, std::vector<Entry>& entries, std::string& error) {
    if (text.substr(0, kFirstLine.size()) != kFirstLine) {
        error = "not a registry backup";
        return false;
    }
    const auto lineFeed = text.size() < 2 ? std::string_view::npos : text.rfind('\n', text.size() - 2);
    const std::string_view body = text.substr(0, lineFeed + 1);
    const std::string_view end = text.substr(body.size());
    if (end.substr(0, kLastLineStart.size()) != kLastLineStart) {
        error = "the backup is cut: its last line is missing";
        return false;
    }
    if (!parseEntries(body, entries, error)) {
        return false;
    }
    if (end != lastLine(entries.size(), body)) {
        error = "the backup is damaged: its checksum does not match";
        return false;
    }
    return true;
}

} // namespace zpo
