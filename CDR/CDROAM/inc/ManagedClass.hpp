// What the declarations of the managed classes share.
//
// A managed class is described by one table, a macro with a row for each CIM property and method, in the order of its
// virtual slots, which is also the order of the properties in a CIM instance:
//
//     #define QTX_EXAMPLE_TABLE(RW, RO, KEY, METHOD)                   a property name is a name in C++ as in CIM
//         RW(Limit, uint16, Word, "LIMIT", Check::range(3, 24))        can be modified
//         RO(Count, uint32, Counter, "COUNT")                          can only be read
//         KEY(InstanceID)                                              key property, a string
//         METHOD(Refresh)                                              CIM method without parameters, returns uint32
//
// The columns: name, CIM type, how the value lies in its registry entry (a kind of Registry.hpp, or Own where rows
// share an entry), the registry key, and which values a client may set. From the table come the class and its
// instance managers (ManagedClass.ipp), the accessors of its implementation and its provider (ClassProvider.ipp).
#pragma once

#include "InstanceTable.hpp"

#include "OW_Array.hpp"
#include "OW_CIMFwd.hpp"
#include "OW_CIMQualifier.hpp"

#include <initializer_list>
#include <string>

/// What a getter may add to a property: "Applicable" and "ValidValueMap".
using QualifierArray = OpenWBEM::Array<OpenWBEM::CIMQualifier>;

namespace cdroam::cim {

// The CIM types of properties, and the type that holds such a value in a managed object.
struct uint8 {
    using Value = unsigned char;
};
struct uint16 {
    using Value = unsigned short;
};
struct uint32 {
    using Value = unsigned int;
};
struct boolean {
    using Value = bool;
};
struct string {
    using Value = std::string;
};
/// The text of a CIM date-time, parsed when the instance is built.
struct datetime {
    using Value = std::string;
};

} // namespace cdroam::cim

namespace cdroam {

/// The texts one after the other, with nothing between them: key values as an instance table lists them.
std::string concatenated(std::initializer_list<std::string> texts);

} // namespace cdroam

#define CDR_JOIN_(A, B) A##B
#define CDR_JOIN(A, B) CDR_JOIN_(A, B)
#define CDR_TEXT_(A) #A
#define CDR_TEXT(A) CDR_TEXT_(A)
// All arguments but the first, which is empty where a table's rows expand to ", this, that".
#define CDR_TAIL_(FIRST, ...) __VA_ARGS__
#define CDR_TAIL(...) CDR_TAIL_(__VA_ARGS__)
#define CDR_NONE(...)

// Names of a family, and its key list as parameters and as arguments.
#define CDR_MANAGER CDR_JOIN(CDR_CLASS, InstanceManager)
#define CDR_IMPL_MANAGER CDR_JOIN(CDR_CLASS, ImplInstanceManager)
#define CDR_KEY_PARAMETER(NAME) , const std::string& NAME
#define CDR_KEY_PARAMETERS CDR_TAIL(CDR_TABLE(CDR_NONE, CDR_NONE, CDR_KEY_PARAMETER, CDR_NONE))
#define CDR_UNNAMED_KEY_PARAMETER(NAME) , const std::string&
#define CDR_UNNAMED_KEY_PARAMETERS CDR_TAIL(CDR_TABLE(CDR_NONE, CDR_NONE, CDR_UNNAMED_KEY_PARAMETER, CDR_NONE))
#define CDR_KEY_ARGUMENT(NAME) , NAME
#define CDR_KEY_ARGUMENTS CDR_TAIL(CDR_TABLE(CDR_NONE, CDR_NONE, CDR_KEY_ARGUMENT, CDR_NONE))

// The virtual slots of a row in the managed class.
#define CDR_SLOTS_RO(NAME, TYPE, ...)                                                                                  \
    virtual int get##NAME(cdroam::cim::TYPE::Value& value, QualifierArray& qualifiers) const;
#define CDR_SLOTS_RW(NAME, TYPE, ...)                                                                                  \
    CDR_SLOTS_RO(NAME, TYPE, )                                                                                         \
    virtual int set##NAME(cdroam::cim::TYPE::Value value);
#define CDR_SLOTS_KEY(NAME) virtual int get##NAME(std::string& value, QualifierArray& qualifiers) const;
#define CDR_SLOTS_METHOD(NAME) virtual unsigned int NAME() = 0;

// The overrides of a row in the class's implementation, and a member to cache what the entry holds.
#define CDR_OVERRIDES_RO(NAME, TYPE, ...)                                                                              \
    int get##NAME(cdroam::cim::TYPE::Value& value, QualifierArray& qualifiers) const override;
#define CDR_OVERRIDES_RW(NAME, TYPE, ...)                                                                              \
    CDR_OVERRIDES_RO(NAME, TYPE, )                                                                                     \
    int set##NAME(cdroam::cim::TYPE::Value value) override;
#define CDR_OVERRIDES_METHOD(NAME) unsigned int NAME() override;
#define CDR_OVERRIDES(TABLE) TABLE(CDR_OVERRIDES_RW, CDR_OVERRIDES_RO, CDR_NONE, CDR_OVERRIDES_METHOD)
#define CDR_CACHE(NAME, TYPE, KIND, ...) cdroam::KIND::Cache NAME{};
