#include "cimserver/schema/Names.hpp"

#include "cimserver/common/Text.hpp"

#include <algorithm>
#include <string_view>

namespace cimserver::schema {

std::string localNamespace(std::string written) {
    std::replace(written.begin(), written.end(), '\\', '/');
    std::string_view name = written;
    constexpr std::string_view kHere = "//./";
    if (name.substr(0, kHere.size()) == kHere) {
        name.remove_prefix(kHere.size());
    } else if (name.substr(0, 2) == "//") {
        return {};
    }
    return std::string(withoutSlashes(trimmed(name)));
}

} // namespace cimserver::schema
