#include "cimserver/http/Text.hpp"

#include <algorithm>

namespace cimserver::http {
namespace {

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

bool containsIgnoringCase(std::string_view text, std::string_view part) {
    return std::search(text.begin(), text.end(), part.begin(), part.end(), equalLower) != text.end();
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

} // namespace cimserver::http
