// The declarations of one namespace: the compiler fills it, the repository answers from it.
#pragma once

#include "cimserver/common/Text.hpp"

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
    using InstancePointer = std::shared_ptr<const OpenWBEM::CIMInstance>;

    OpenWBEM::String name;
    NameMap<std::shared_ptr<const OpenWBEM::CIMQualifierType>> qualifiers;
    NameMap<ClassPointer> classes;
    NameMap<std::vector<ClassPointer>> children;       ///< by superclass; "" holds the top classes
    std::map<std::string, InstancePointer> instances;  ///< by instanceKey
    NameMap<std::vector<InstancePointer>> instancesOf; ///< by class, as declared

    const OpenWBEM::CIMClass* findClass(std::string_view className) const;
    /// The declaration in the namespace, else the standard one.
    const OpenWBEM::CIMQualifierType* findQualifier(std::string_view qualifierName) const;
    /// True for the class itself and its superclasses, declared or not.
    bool isA(const OpenWBEM::String& className, const OpenWBEM::String& ancestor) const;
    /// The key that the path's instance is stored under. Case of names, order of keys, host, and whether this namespace
    /// is spelled out make no difference.
    std::string instanceKey(const OpenWBEM::CIMObjectPath& path) const;
};

using Namespaces = NameMap<Namespace>;

} // namespace cimserver::schema
