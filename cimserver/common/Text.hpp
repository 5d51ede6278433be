// Texts of requests and names: ASCII letters count as the same in any case, independent of the locale.
#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace cimserver {

bool equalsIgnoringCase(std::string_view a, std::string_view b);

/// True when `part` occurs in `text`; `part` is given in lower case.
bool containsIgnoringCase(std::string_view text, std::string_view part);

/// The text with its ASCII letters in lower case.
std::string folded(std::string_view text);

/// Without blanks and tabs at either end.
std::string_view trimmed(std::string_view text);

/// The pieces between separators, trimmed, empty ones left out.
std::vector<std::string_view> split(std::string_view text, char separator);

/// A namespace's name without leading slashes.
std::string_view withoutSlashes(std::string_view nameSpace);

/// The text in double quotes, cut to what fits an error description.
std::string quote(std::string_view text);

/// The present time in UTC, by a format of strftime.
std::string utcNow(const char* format);

/// This machine's name; "localhost" when it has none.
std::string hostName();

} // namespace cimserver
