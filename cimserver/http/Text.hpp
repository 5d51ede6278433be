// Small helpers for the texts of HTTP heads: ASCII only, independent of the locale.
#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace cimserver::http {

bool equalsIgnoringCase(std::string_view a, std::string_view b);

/// True when `part` occurs in `text`; `part` is given in lower case.
bool containsIgnoringCase(std::string_view text, std::string_view part);

/// Without blanks and tabs at either end.
std::string_view trimmed(std::string_view text);

/// The pieces between separators, trimmed, empty ones left out.
std::vector<std::string_view> split(std::string_view text, char separator);

} // namespace cimserver::http
