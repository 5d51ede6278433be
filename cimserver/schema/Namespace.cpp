#include "cimserver/schema/Namespace.hpp"

#include "cimserver/common/Text.hpp"
#include "cimserver/schema/QualifierTypes.hpp"

namespace cimserver::schema {

using namespace OpenWBEM;

namespace {

template <class Map>
auto findIn(const Map& map, std::string_view name) -> decltype(&*map.begin()->second) {
    const auto found = map.find(name);
    return found == map.end() ? nullptr : &*found->second;
}

} // namespace

const CIMClass* Namespace::findClass(std::string_view className) const {
    return findIn(classes, className);
}

const CIMQualifierType* Namespace::findQualifier(std::string_view qualifierName) const {
    const CIMQualifierType* const declared = findIn(qualifiers, qualifierName);
    return declared != nullptr ? declared : standardQualifier(qualifierName);
}

bool Namespace::isA(const String& className, const String& ancestor) const {
    String current = className;
    while (!current.empty() && !current.equalsIgnoreCase(ancestor)) {
        const CIMClass* const found = findClass(current.c_str());
        current = found != nullptr ? found->getSuperClass() : String();
    }
    return !current.empty();
}

std::string Namespace::instanceKey(const CIMObjectPath& path) const {
    std::map<std::string, std::string> keys;
    for (const CIMProperty& key : path.getKeys()) {
        const CIMValue value = key.getValue();
        const bool reference = value && value.getType() == CIMDataType::REFERENCE && !value.isArray();
        keys[folded(key.getName().c_str())] =
            reference ? instanceKey(value.toCIMObjectPath()) : std::string(value.toString().c_str());
    }
    const std::string where = folded(withoutSlashes(trimmed(path.getNameSpace().c_str())));
    std::string text = (where == folded(name.c_str()) ? "" : where) + ":" + folded(path.getClassName().c_str());
    for (const auto& [keyName, value] : keys) {
        text.append(".").append(keyName).append("=").append(std::to_string(value.size())).append(":").append(value);
    }
    return text;
}

} // namespace cimserver::schema
