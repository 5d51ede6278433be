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
    return lower(a) == lower(b);
}

} // namespace

bool equalsIgnoringCase(std::string_view a, std::string_view b) {
    return a.size() == b.size() && std::equal(a.begin(), a.end(), b.begin(), equalLower);
}

bool LessIgnoringCase::operator()(std::string_view a, std::string_view b) const {
    return std::lexicographical_compare(a.begin(), a.end(), b.begin(), b.end(),
                                        [](char x, char y) { return lower(x) < lower(y); });
}

bool containsIgnoringCase(std::string_view text, std::string_view part) {
    return std::search(text.begin(), text.end(), part.begin(), part.end(), equalLower) != text.end();
}

std::string folded(std::string_view text) {
    std::string result(text);
    std::transform(result.begin(), result.end(), result.begin(), lower);
    return result;
}

std::string_view trimmed(std::string_view text) {
    const auto first = text.find_first_not_of(" \t");
    if (first == std::string_view::npos) {
        return {};
    }
    return text.substr(first, text.find_last_not_of(" \t") - first + 1);
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
    return '"' + std::string(text.substr(0, kLongestQuote)) + (text.size() > kLongestQuote ? "...\"" : "\"");
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
