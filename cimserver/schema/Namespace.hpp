// The declarations of one namespace, as the compiler builds them and the repository answers from them.
#pragma once

#include "cimserver/schema/Names.hpp"

#include "OW_CIM.hpp"

#include <map>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

namespace cimserver::schema {

/// Objects are shared and constant, so copying a namespace to compile into the copy is cheap and leaves the pointers
/// that were given out valid.
struct Namespace {
    using ClassPointer = std::shared_ptr<const OpenWBEM::CIMClass>;

    std::string name;
    std::map<std::string, std::shared_ptr<const OpenWBEM::CIMQualifierType>> qualifiers;
    std::map<std::string, ClassPointer> classes;
    std::map<std::string, std::vector<ClassPointer>> children; ///< by superclass; "" holds the top classes

    const OpenWBEM::CIMClass* findClass(std::string_view className) const;
    const OpenWBEM::CIMQualifierType* findQualifier(std::string_view qualifierName) const;
};

using Namespaces = std::map<std::string, Namespace>;

} // namespace cimserver::schema
