#include "cimserver/cimxml/OperationTable.hpp"

#include "cimserver/common/Text.hpp"

#include <algorithm>

namespace cimserver::cimxml {
namespace {

using Kind = ParameterKind;

constexpr Parameter kLocalOnly{"LocalOnly", Kind::Flag, Presence::DefaultFalse};
constexpr Parameter kDeep{"DeepInheritance", Kind::Flag, Presence::DefaultTrue};
constexpr Parameter kShallow{"DeepInheritance", Kind::Flag, Presence::DefaultFalse};
constexpr Parameter kWithQualifiers{"IncludeQualifiers", Kind::Flag, Presence::DefaultTrue};
constexpr Parameter kWithoutQualifiers{"IncludeQualifiers", Kind::Flag, Presence::DefaultFalse};
constexpr Parameter kClassOrigin{"IncludeClassOrigin", Kind::Flag, Presence::DefaultFalse};
constexpr Parameter kPropertyList{"PropertyList", Kind::TextArray, Presence::Optional};
constexpr Parameter kClassName{"ClassName", Kind::ClassName, Presence::Required};
constexpr Parameter kAnyClassName{"ClassName", Kind::ClassName, Presence::Optional};
constexpr Parameter kInstanceName{"InstanceName", Kind::InstanceName, Presence::Required};
constexpr Parameter kPropertyName{"PropertyName", Kind::Text, Presence::Required};
constexpr Parameter kObjectName{"ObjectName", Kind::ObjectName, Presence::Required};
constexpr Parameter kAssocClass{"AssocClass", Kind::ClassName, Presence::Optional};
constexpr Parameter kResultClass{"ResultClass", Kind::ClassName, Presence::Optional};
constexpr Parameter kRole{"Role", Kind::Text, Presence::Optional};
constexpr Parameter kResultRole{"ResultRole", Kind::Text, Presence::Optional};
constexpr Parameter kFilterLanguage{"FilterQueryLanguage", Kind::Text, Presence::Optional};
constexpr Parameter kFilterQuery{"FilterQuery", Kind::Text, Presence::Optional};
constexpr Parameter kOperationTimeout{"OperationTimeout", Kind::Number, Presence::Optional};
constexpr Parameter kContinueOnError{"ContinueOnError", Kind::Flag, Presence::DefaultFalse};
constexpr Parameter kFirstObjects{"MaxObjectCount", Kind::Number, Presence::Optional};
constexpr Parameter kNextObjects{"MaxObjectCount", Kind::Number, Presence::Required};
constexpr Parameter kEnumeration{"EnumerationContext", Kind::Text, Presence::Required};

/// Missing flags have the protocol's defaults, except for LocalOnly: clients that leave it out mean FALSE.
const std::vector<Operation>& table() {
    static const std::vector<Operation> operations = {
        {"GetClass", false, getClass, {kClassName, kLocalOnly, kWithQualifiers, kClassOrigin, kPropertyList}},
        {"EnumerateClasses",
         false,
         enumerateClasses,
         {kAnyClassName, kShallow, kLocalOnly, kWithQualifiers, kClassOrigin}},
        {"EnumerateClassNames", false, enumerateClassNames, {kAnyClassName, kShallow}},
        {"GetQualifier", false, getQualifier, {{"QualifierName", Kind::Text, Presence::Required}}},
        {"EnumerateQualifiers", false, enumerateQualifiers, {}},

        {"GetInstance",
         false,
         getInstance,
         {kInstanceName, kLocalOnly, kWithoutQualifiers, kClassOrigin, kPropertyList}},
        {"EnumerateInstances",
         false,
         enumerateInstances,
         {kClassName, kLocalOnly, kDeep, kWithoutQualifiers, kClassOrigin, kPropertyList}},
        {"EnumerateInstanceNames", false, enumerateInstanceNames, {kClassName}},
        {"ModifyInstance",
         true,
         modifyInstance,
         {{"ModifiedInstance", Kind::NamedInstance, Presence::Required}, kWithQualifiers, kPropertyList}},
        {"CreateInstance", true, createInstance, {{"NewInstance", Kind::Instance, Presence::Required}}},
        {"DeleteInstance", true, deleteInstance, {kInstanceName}},
        {"GetProperty", false, getProperty, {kInstanceName, kPropertyName}},
        {"SetProperty",
         true,
         setProperty,
         {kInstanceName, kPropertyName, {"NewValue", Kind::Value, Presence::Optional}}},

        {"Associators",
         false,
         associators,
         {kObjectName, kAssocClass, kResultClass, kRole, kResultRole, kWithoutQualifiers, kClassOrigin, kPropertyList}},
        {"AssociatorNames", false, associatorNames, {kObjectName, kAssocClass, kResultClass, kRole, kResultRole}},
        {"References",
         false,
         references,
         {kObjectName, kResultClass, kRole, kWithoutQualifiers, kClassOrigin, kPropertyList}},
        {"ReferenceNames", false, referenceNames, {kObjectName, kResultClass, kRole}},

        {"OpenEnumerateInstances",
         false,
         openEnumerateInstances,
         {kClassName, kDeep, kClassOrigin, kPropertyList, kFilterLanguage, kFilterQuery, kOperationTimeout,
          kContinueOnError, kFirstObjects}},
        {"OpenEnumerateInstancePaths",
         false,
         openEnumerateInstancePaths,
         {kClassName, kFilterLanguage, kFilterQuery, kOperationTimeout, kContinueOnError, kFirstObjects}},
        {"PullInstancesWithPath", false, pullInstancesWithPath, {kEnumeration, kNextObjects}},
        {"PullInstancePaths", false, pullInstancePaths, {kEnumeration, kNextObjects}},
        {"CloseEnumeration", false, closeEnumeration, {kEnumeration}},
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
