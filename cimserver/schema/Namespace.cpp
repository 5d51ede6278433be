#include "cimserver/schema/Namespace.hpp"

namespace cimserver::schema {

using namespace OpenWBEM;

namespace {

template <class Map>
auto findIn(const Map& map, std::string_view name) -> decltype(&*map.begin()->second) {
    const auto found = map.find(fold(name));
    return found == map.end() ? nullptr : &*found->second;
}

} // namespace

const CIMClass* Namespace::findClass(std::string_view className) const {
    return findIn(classes, className);
}

const CIMQualifierType* Namespace::findQualifier(std::string_view qualifierName) const {
    return findIn(qualifiers, qualifierName);
}

} // namespace cimserver::schema
