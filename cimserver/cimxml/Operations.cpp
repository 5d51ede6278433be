#include "cimserver/cimxml/Operations.hpp"

#include "cimserver/common/Text.hpp"

#include <algorithm>

namespace cimserver::cimxml {
namespace {

using Kind = ParameterKind;

constexpr Parameter localOnly{"LocalOnly", Kind::Flag, Presence::DefaultFalse};
constexpr Parameter deep{"DeepInheritance", Kind::Flag, Presence::DefaultTrue};
constexpr Parameter shallow{"DeepInheritance", Kind::Flag, Presence::DefaultFalse};
constexpr Parameter withQualifiers{"IncludeQualifiers", Kind::Flag, Presence::DefaultTrue};
constexpr Parameter withoutQualifiers{"IncludeQualifiers", Kind::Flag, Presence::DefaultFalse};
constexpr Parameter classOrigin{"IncludeClassOrigin", Kind::Flag, Presence::DefaultFalse};
constexpr Parameter propertyList{"PropertyList", Kind::TextArray, Presence::Optional};
constexpr Parameter className{"ClassName", Kind::ClassName, Presence::Required};
constexpr Parameter anyClassName{"ClassName", Kind::ClassName, Presence::Optional};
constexpr Parameter instanceName{"InstanceName", Kind::InstanceName, Presence::Required};
constexpr Parameter propertyName{"PropertyName", Kind::Text, Presence::Required};
constexpr Parameter objectName{"ObjectName", Kind::ObjectName, Presence::Required};
constexpr Parameter assocClass{"AssocClass", Kind::ClassName, Presence::Optional};
constexpr Parameter resultClass{"ResultClass", Kind::ClassName, Presence::Optional};
constexpr Parameter role{"Role", Kind::Text, Presence::Optional};
constexpr Parameter resultRole{"ResultRole", Kind::Text, Presence::Optional};
constexpr Parameter filterLanguage{"FilterQueryLanguage", Kind::Text, Presence::Optional};
constexpr Parameter filterQuery{"FilterQuery", Kind::Text, Presence::Optional};
constexpr Parameter operationTimeout{"OperationTimeout", Kind::Number, Presence::Optional};
constexpr Parameter continueOnError{"ContinueOnError", Kind::Flag, Presence::DefaultFalse};
constexpr Parameter firstObjects{"MaxObjectCount", Kind::Number, Presence::Optional};
constexpr Parameter nextObjects{"MaxObjectCount", Kind::Number, Presence::Required};
constexpr Parameter enumeration{"EnumerationContext", Kind::Text, Presence::Required};

/// Absent flags have the protocol's defaults, but for LocalOnly: clients that leave it out mean FALSE.
const std::vector<Operation>& table() {
    static const std::vector<Operation> operations = {
        {"GetClass", false, getClass, {className, localOnly, withQualifiers, classOrigin, propertyList}},
        {"EnumerateClasses", false, enumerateClasses, {anyClassName, shallow, localOnly, withQualifiers, classOrigin}},
        {"EnumerateClassNames", false, enumerateClassNames, {anyClassName, shallow}},
        {"GetQualifier", false, getQualifier, {{"QualifierName", Kind::Text, Presence::Required}}},
        {"EnumerateQualifiers", false, enumerateQualifiers, {}},

        {"GetInstance", false, getInstance, {instanceName, localOnly, withoutQualifiers, classOrigin, propertyList}},
        {"EnumerateInstances",
         false,
         enumerateInstances,
         {className, localOnly, deep, withoutQualifiers, classOrigin, propertyList}},
        {"EnumerateInstanceNames", false, enumerateInstanceNames, {className}},
        {"ModifyInstance",
         true,
         modifyInstance,
         {{"ModifiedInstance", Kind::NamedInstance, Presence::Required}, withQualifiers, propertyList}},
        {"CreateInstance", true, createInstance, {{"NewInstance", Kind::Instance, Presence::Required}}},
        {"DeleteInstance", true, deleteInstance, {instanceName}},
        {"GetProperty", false, getProperty, {instanceName, propertyName}},
        {"SetProperty", true, setProperty, {instanceName, propertyName, {"NewValue", Kind::Value, Presence::Optional}}},

        {"Associators",
         false,
         associators,
         {objectName, assocClass, resultClass, role, resultRole, withoutQualifiers, classOrigin, propertyList}},
        {"AssociatorNames", false, associatorNames, {objectName, assocClass, resultClass, role, resultRole}},
        {"References",
         false,
         references,
         {objectName, resultClass, role, withoutQualifiers, classOrigin, propertyList}},
        {"ReferenceNames", false, referenceNames, {objectName, resultClass, role}},

        {"OpenEnumerateInstances",
         false,
         openEnumerateInstances,
         {className, deep, classOrigin, propertyList, filterLanguage, filterQuery, operationTimeout, continueOnError,
          firstObjects}},
        {"OpenEnumerateInstancePaths",
         false,
         openEnumerateInstancePaths,
         {className, filterLanguage, filterQuery, operationTimeout, continueOnError, firstObjects}},
        {"PullInstancesWithPath", false, pullInstancesWithPath, {enumeration, nextObjects}},
        {"PullInstancePaths", false, pullInstancePaths, {enumeration, nextObjects}},
        {"CloseEnumeration", false, closeEnumeration, {enumeration}},
    };
    return operations;
}

} // namespace

const Operation* findOperation(const RequestMessage& message) {
    static const Operation method{"", true, callMethod, {}};
    if (message.isMethodCall()) {
        return &method;
    }
    const auto found = std::find_if(table().begin(), table().end(), [&](const Operation& operation) {
        return equalsIgnoringCase(operation.name, message.name());
    });
    return found == table().end() ? nullptr : &*found;
}

} // namespace cimserver::cimxml
