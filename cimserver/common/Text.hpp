// Helpers for texts. Ignoring case means ASCII letters, independent of the locale.
#pragma once

#include <map>
#include <string>
#include <string_view>
#include <vector>

namespace cimserver {

/// For texts of the same length.
bool sameIgnoringCase(std::string_view a, std::string_view b);

inline bool equalsIgnoringCase(std::string_view a, std::string_view b) {
    return a.size() == b.size() && sameIgnoringCase(a, b);
}

/// Orders texts ignoring case; look-ups need no std::string.
struct LessIgnoringCase {
    using is_transparent = void; // NOLINT(readability-identifier-naming): the standard library's name
    bool operator()(std::string_view a, std::string_view b) const;
};
template <class T>
using NameMap = std::map<std::string, T, LessIgnoringCase>;

/// True when `part` occurs in `text`.
bool containsIgnoringCase(std::string_view text, std::string_view part);

/// The text with its ASCII letters in lower case.
std::string folded(std::string_view text);

/// Without blanks and tabs at either end.
std::string_view trimmed(std::string_view text);

/// The pieces between separators, trimmed, empty ones left out.
std::vector<std::string_view> split(std::string_view text, char separator);

/// A namespace's name without leading slashes.
std::string_view withoutSlashes(std::string_view nameSpace);

/// The text in double quotes, as withoutUserInfo gives it, cut to a length that suits an error description.
std::string quote(std::string_view text);

/// False for a text in which withoutUserInfo finds nothing.
bool mayHoldUrl(std::string_view text);

/// The text with "***" for user name and password in each URL, also in percent-encoded ones.
std::string withoutUserInfo(std::string_view text);

/// The present time in UTC, by a format of strftime.
std::string utcNow(const char* format);

/// This machine's name; "localhost" when it has none.
std::string hostName();

} // namespace cimserver
