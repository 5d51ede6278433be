#include "cimserver/schema/MofError.hpp"

namespace cimserver::schema {

void fail(const Place& place, const std::string& text) {
    throw MofError(*place.file + ":" + std::to_string(place.line) + ":" + std::to_string(place.column) + ": " + text);
}

} // namespace cimserver::schema
