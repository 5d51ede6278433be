#include "cimserver/schema/Names.hpp"

#include <algorithm>

namespace cimserver::schema {

namespace {

char lower(char c) {
    return c >= 'A' && c <= 'Z' ? static_cast<char>(c | 0x20) : c;
}

} // namespace

std::string fold(std::string_view name) {
    std::string folded(name);
    std::transform(folded.begin(), folded.end(), folded.begin(), lower);
    return folded;
}

bool sameName(std::string_view a, std::string_view b) {
    return std::equal(a.begin(), a.end(), b.begin(), b.end(), [](char x, char y) { return lower(x) == lower(y); });
}

std::string trimmedNamespace(std::string_view name) {
    const std::size_t begin = std::min(name.find_first_not_of("/ \t"), name.size());
    const std::size_t end = name.find_last_not_of(" \t");
    return std::string(begin == name.size() ? std::string_view() : name.substr(begin, end + 1 - begin));
}

std::string localNamespace(std::string written) {
    std::replace(written.begin(), written.end(), '\\', '/');
    const std::string_view here = "//./";
    if (written.compare(0, here.size(), here) == 0) {
        return trimmedNamespace(written.substr(here.size()));
    }
    return written.compare(0, 2, "//") == 0 ? std::string() : trimmedNamespace(written);
}

} // namespace cimserver::schema
