// The rows of a provider's tables: a CIM property or method and the accessors behind it.
//
//     readWrite<&QTX_CDRService::getDigitsLimit, &QTX_CDRService::setDigitsLimit>("DigitsLimit", Check::range(3, 24)),
//     readOnly<&QTX_CDRPullStatistics::getReasonForFailure>("ReasonForFailure"),
//     dateTime<&QTX_CDRPushStatistics::getLastTransferTime>("LastTransferTime"),
//     key<&QTX_CDRService::getName>("Name"),
//
// dateTime is a read-only property whose getter gives a text that is shown as a datetime.
//
// The CIM type follows from the accessors' value: unsigned char is uint8, unsigned short uint16, unsigned int uint32,
// bool boolean, std::string string.
#pragma once

#include "ManagedObject.hpp"

#include "OW_CIM.hpp"

#include <string>
#include <type_traits>

namespace cdroam {

/// Which values a client may set; a value refused here gives CIM error 4 and never reaches the setter.
struct Check {
    enum Kind { Any, MaxLength, Range } kind = Any;
    unsigned int lowest = 0;
    unsigned int highest = 0;

    static constexpr Check any() { return {}; }
    /// A text of at most so many bytes.
    static constexpr Check maxLength(unsigned int bytes) { return {MaxLength, 0, bytes}; }
    static constexpr Check range(unsigned int lowest, unsigned int highest) { return {Range, lowest, highest}; }
};

/// Source lines that the providers' CIM errors carry. They are fixed: support staff knows the errors by them.
struct SourceLine {
    static constexpr int kStartChange = 271;
    static constexpr int kSetter = 304;
    static constexpr int kEndChange = 311;
    static constexpr int kUnknownMethod = 352;
};

/// Raises CIM error 4, with `source` as its source file, when the check refuses the value of the property `name`.
void requireFit(const Check& check, const char* source, const char* name, const std::string& value);
void requireFit(const Check& check, const char* source, const char* name, unsigned int value);

/// Converts an accessor's value to CIM. A text ends at its first NUL.
OpenWBEM::CIMValue toCIMValue(unsigned char value);
OpenWBEM::CIMValue toCIMValue(unsigned short value);
OpenWBEM::CIMValue toCIMValue(unsigned int value);
OpenWBEM::CIMValue toCIMValue(bool value);
OpenWBEM::CIMValue toCIMValue(const std::string& value);

/// Converts a CIM value, which must be of the property's type, to the accessor's. A text takes the text form of a value
/// of any type. Throws what CIMValue throws.
void fromCIMValue(const OpenWBEM::CIMValue& from, unsigned char& to);
void fromCIMValue(const OpenWBEM::CIMValue& from, unsigned short& to);
void fromCIMValue(const OpenWBEM::CIMValue& from, unsigned int& to);
void fromCIMValue(const OpenWBEM::CIMValue& from, bool& to);
void fromCIMValue(const OpenWBEM::CIMValue& from, std::string& to);

/// The types in an accessor's signature: `Managed` is the object it is called on, const for a const getter.
template <class Accessor>
struct AccessorType;
template <class Class, class Taken>
struct AccessorType<int (Class::*)(Taken&, QualifierArray&) const> {
    using Object = Class;
    using Managed = const Class;
    using Value = Taken;
};
template <class Class, class Taken>
struct AccessorType<int (Class::*)(Taken&, QualifierArray&)> {
    using Object = Class;
    using Managed = Class;
    using Value = Taken;
};
template <class Class, class Taken>
struct AccessorType<int (Class::*)(Taken)> {
    using Object = Class;
    using Value = Taken;
};

/// A key property. Its getter is const in every class.
template <class Object>
struct KeyRow {
    const char* name;
    int (*read)(const Object& object, OpenWBEM::CIMValue& value);
};

/// A property. `Managed` is the managed class, const when its getters are const.
template <class Managed>
struct PropertyRow {
    using Object = std::remove_const_t<Managed>;

    OpenWBEM::CIMName name;
    OpenWBEM::CIMDataType::Type type;
    Check check{};
    /// Calls the getter and, when it returns 0, makes the value. Null for a key.
    int (*read)(Managed& object, OpenWBEM::CIMValue& value, QualifierArray& qualifiers) = nullptr;
    /// Checks the value and calls the setter; null when the property cannot be modified.
    int (*write)(Object& object, const OpenWBEM::CIMValue& value, const PropertyRow& row, const char* source) = nullptr;
    /// Like `read`, for a key; null for the others.
    int (*readKey)(const Object& object, OpenWBEM::CIMValue& value) = nullptr;

    PropertyRow(const char* propertyName, OpenWBEM::CIMDataType::Type cimType, decltype(read) reader)
        : name(propertyName), type(cimType), read(reader) {}
    PropertyRow(const KeyRow<Object>& key) : name(key.name), type(OpenWBEM::CIMDataType::STRING), readKey(key.read) {}

    bool isKey() const { return readKey != nullptr; }
    int readProperty(Managed& object, OpenWBEM::CIMValue& value, QualifierArray& qualifiers) const {
        return isKey() ? readKey(object, value) : read(object, value, qualifiers);
    }
};

/// A method without parameters; its result is a uint32.
template <class Object>
struct MethodRow {
    const char* name;
    unsigned int (Object::*run)();
};

template <auto Get>
int readProperty(typename AccessorType<decltype(Get)>::Managed& object, OpenWBEM::CIMValue& value,
                 QualifierArray& qualifiers) {
    typename AccessorType<decltype(Get)>::Value read{};
    const int status = (object.*Get)(read, qualifiers);
    if (status == Success) {
        value = toCIMValue(read);
    }
    return status;
}

/// Parses the getter's text as a date-time; throws what CIMDateTime throws when it is not one.
template <auto Get>
int readDateTime(typename AccessorType<decltype(Get)>::Managed& object, OpenWBEM::CIMValue& value,
                 QualifierArray& qualifiers) {
    std::string read;
    const int status = (object.*Get)(read, qualifiers);
    if (status == Success) {
        value = OpenWBEM::CIMValue(OpenWBEM::CIMDateTime(OpenWBEM::String(read.c_str())));
    }
    return status;
}

template <auto Get>
int readKeyProperty(const typename AccessorType<decltype(Get)>::Object& object, OpenWBEM::CIMValue& value) {
    QualifierArray ignored;
    return readProperty<Get>(object, value, ignored);
}

template <auto Set, class Row>
int writeProperty(typename AccessorType<decltype(Set)>::Object& object, const OpenWBEM::CIMValue& value, const Row& row,
                  const char* source) {
    typename AccessorType<decltype(Set)>::Value taken{};
    fromCIMValue(value, taken);
    requireFit(row.check, source, row.name.toString().c_str(), taken);
    return (object.*Set)(taken);
}

template <auto Get>
auto readOnly(const char* name) {
    using Getter = AccessorType<decltype(Get)>;
    return PropertyRow<typename Getter::Managed>(name, toCIMValue(typename Getter::Value{}).getType(),
                                                 &readProperty<Get>);
}

template <auto Get, auto Set>
auto readWrite(const char* name, Check check = Check::any()) {
    using Getter = AccessorType<decltype(Get)>;
    static_assert(std::is_same_v<typename Getter::Value, typename AccessorType<decltype(Set)>::Value>,
                  "the getter and the setter of a property take values of one type");
    auto row = readOnly<Get>(name);
    row.check = check;
    row.write = &writeProperty<Set, PropertyRow<typename Getter::Managed>>;
    return row;
}

template <auto Get>
auto dateTime(const char* name) {
    return PropertyRow<typename AccessorType<decltype(Get)>::Managed>(name, OpenWBEM::CIMDataType::DATETIME,
                                                                      &readDateTime<Get>);
}

template <auto Get>
auto key(const char* name) {
    return KeyRow<typename AccessorType<decltype(Get)>::Object>{name, &readKeyProperty<Get>};
}

} // namespace cdroam
