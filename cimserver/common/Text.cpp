#include "cimserver/common/Text.hpp"

#include <unistd.h>

#include <algorithm>
#include <ctime>
#include <iomanip>
#include <locale>
#include <sstream>

namespace cimserver {
namespace {

constexpr std::size_t kLongestQuote = 120;

char lower(char c) {
    return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c;
}

bool equalLower(char a, char b) {
    return a == b || lower(a) == lower(b);
}

std::size_t findIgnoringCase(std::string_view text, std::string_view part) {
    for (std::size_t at = 0; !part.empty() && at + part.size() <= text.size(); ++at) {
        if (equalLower(text[at], part.front()) && equalsIgnoringCase(text.substr(at, part.size()), part)) {
            return at;
        }
    }
    return part.empty() ? 0 : std::string_view::npos;
}

/// Replaces what stands before the last `at` of the authority after each `scheme`. An authority ends at a `slash` or at
/// what no URL has.
std::string withoutUserInfo(std::string_view text, std::string_view scheme, std::string_view slash,
                            std::string_view at) {
    std::string result;
    for (auto found = findIgnoringCase(text, scheme); found != std::string_view::npos;
         found = findIgnoringCase(text, scheme)) {
        result += text.substr(0, found + scheme.size());
        text.remove_prefix(found + scheme.size());
        const auto before = text.substr(0, findIgnoringCase(text, slash));
        const auto authority = before.substr(0, before.find_first_of("/?#\"'<>\\ \t\r\n"));
        if (const auto end = authority.rfind(at); end != std::string_view::npos) {
            result += "***";
            text.remove_prefix(end);
        }
    }
    return result.append(text);
}

} // namespace

bool sameIgnoringCase(std::string_view a, std::string_view b) {
    return a == b || std::equal(a.begin(), a.end(), b.begin(), equalLower);
}

bool LessIgnoringCase::operator()(std::string_view a, std::string_view b) const {
    const auto end = a.begin() + std::min(a.size(), b.size());
    const auto [x, y] = std::mismatch(a.begin(), end, b.begin(), equalLower);
    return x == end ? a.size() < b.size() : lower(*x) < lower(*y);
}

bool containsIgnoringCase(std::string_view text, std::string_view part) {
    return findIgnoringCase(text, part) != std::string_view::npos;
}

std::string folded(std::string_view text) {
    std::string result(text);
    std::transform(result.begin(), result.end(), result.begin(), lower);
    return result;
}

std::string_view trimmed(std::string_view text) {
    const auto isBlank = [](char c) { return c == ' ' || c == '\t'; };
    while (!text.empty() && isBlank(text.front())) {
        text.remove_prefix(1);
    }
    while (!text.empty() && isBlank(text.back())) {
        text.remove_suffix(1);
    }
    return text;
}

std::vector<std::string_view> split(std::string_view text, char separator) {
    std::vector<std::string_view> pieces;
    while (!text.empty()) {
        const auto end = std::min(text.find(separator), text.size());
        const auto piece = trimmed(text.substr(0, end));
        if (!piece.empty()) {
            pieces.push_back(piece);
        }
        text.remove_prefix(std::min(end + 1, text.size()));
    }
    return pieces;
}

std::string_view withoutSlashes(std::string_view nameSpace) {
    return nameSpace.substr(std::min(nameSpace.find_first_not_of('/'), nameSpace.size()));
}

std::string quote(std::string_view text) {
    const std::string shown = withoutUserInfo(text); // before an end that gives user and password away is cut off
    return '"' + shown.substr(0, kLongestQuote) + (shown.size() > kLongestQuote ? "...\"" : "\"");
}

std::string withoutUserInfo(std::string_view text) {
    if (text.find('%') == std::string_view::npos && text.find("://") == std::string_view::npos) {
        return std::string(text);
    }
    std::string result = withoutUserInfo(text, "://", "/", "@");
    for (const char* at : {"%40", "@"}) {
        result = withoutUserInfo(result, "%3A%2F%2F", "%2F", at);
    }
    return result;
}

std::string utcNow(const char* format) {
    const auto now = std::time(nullptr);
    std::tm parts{};
    gmtime_r(&now, &parts);
    std::ostringstream text;
    text.imbue(std::locale::classic());
    text << std::put_time(&parts, format);
    return text.str();
}

std::string hostName() {
    char name[256] = "";
    return ::gethostname(name, sizeof name - 1) == 0 && name[0] != '\0' ? name : "localhost";
}

} // namespace cimserver
