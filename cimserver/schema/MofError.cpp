#include "cimserver/schema/MofError.hpp"

namespace cimserver::schema {

void fail(const Location& location, const std::string& text) {
    throw MofError(*location.file + ":" + std::to_string(location.line) + ":" + std::to_string(location.column) + ": " +
                   text);
}

} // namespace cimserver::schema
