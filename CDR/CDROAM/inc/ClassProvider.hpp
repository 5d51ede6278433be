// What a per-class provider does, written once over a description of the class: the conversions between managed objects
// and CIM instances, the look-ups and the CIM operations. ClassProvider.ipp declares the provider classes themselves.
#pragma once

#include "ManagedClass.hpp"

#include "OW_CIM.hpp"
#include "OW_CppInstanceProviderIFC.hpp"
#include "OW_CppMethodProviderIFC.hpp"

#include <array>
#include <cstddef>
#include <string>
#include <tuple>
#include <vector>

namespace cdroam {

/// Which values a client may set; what is refused here never reaches the setter and gives CIM error 4.
struct Check {
    enum Kind { Any, MaxLength, Range } kind = Any;
    unsigned int lowest = 0;
    unsigned int highest = 0;

    static constexpr Check any() { return {}; }
    /// A text of at most so many bytes.
    static constexpr Check maxLength(unsigned int bytes) { return {MaxLength, 0, bytes}; }
    static constexpr Check range(unsigned int lowest, unsigned int highest) { return {Range, lowest, highest}; }
};

/// Source lines that the providers' CIM errors carry; a client's support staff knows them by these numbers.
struct SourceLine {
    static constexpr int StartChange = 271;
    static constexpr int Setter = 304;
    static constexpr int EndChange = 311;
    static constexpr int UnknownMethod = 352;
};

/// Raises a CIM error whose message is the status in decimal.
[[noreturn]] void throwFailed(const char* source, int line, int status);

/// Raises CIM error 4 when the value of the property `name` is refused.
void checkLength(const char* source, const char* name, const Check& check, const std::string& value);
void checkRange(const char* source, const char* name, const Check& check, unsigned int value);

// From a value of a managed object to a CIM value and back. A request's value must be of the property's type, as an
// object manager delivers it: CIMValue does not convert. A text takes any value's text form.
OpenWBEM::CIMValue toCIMValue(cim::uint8, unsigned char value);
OpenWBEM::CIMValue toCIMValue(cim::uint16, unsigned short value);
OpenWBEM::CIMValue toCIMValue(cim::uint32, unsigned int value);
OpenWBEM::CIMValue toCIMValue(cim::boolean, bool value);
/// A NUL in the value ends it.
OpenWBEM::CIMValue toCIMValue(cim::string, const std::string& value);
/// Throws what CIMDateTime throws for a text that is none.
OpenWBEM::CIMValue toCIMValue(cim::datetime, const std::string& value);

void fromCIMValue(const OpenWBEM::CIMValue& from, unsigned char& to);
void fromCIMValue(const OpenWBEM::CIMValue& from, unsigned short& to);
void fromCIMValue(const OpenWBEM::CIMValue& from, unsigned int& to);
void fromCIMValue(const OpenWBEM::CIMValue& from, bool& to);
void fromCIMValue(const OpenWBEM::CIMValue& from, std::string& to);

/// One row of a class's table, as its provider uses it.
template <class Object>
struct PropertyRow {
    const char* name;
    const char* type; ///< CIM type
    bool key;
    /// Calls the getter and, when it returns 0, makes the value.
    int (*read)(const Object& object, OpenWBEM::CIMValue& value, QualifierArray& qualifiers);
    /// Checks the value and calls the setter; null when the property cannot be modified.
    int (*write)(Object& object, const OpenWBEM::CIMValue& value, const PropertyRow& row, const char* source);
    Check check;
};

template <class Object>
struct MethodRow {
    const char* name;
    unsigned int (Object::*run)();
};

inline void checkValue(const char* source, const char* name, const Check& check, const std::string& value) {
    checkLength(source, name, check, value);
}
inline void checkValue(const char* source, const char* name, const Check& check, unsigned int value) {
    checkRange(source, name, check, value);
}

template <class Object, class Type, int (Object::*Get)(typename Type::Value&, QualifierArray&) const>
int readProperty(const Object& object, OpenWBEM::CIMValue& value, QualifierArray& qualifiers) {
    typename Type::Value read{};
    const int status = (object.*Get)(read, qualifiers);
    if (status == 0) {
        value = toCIMValue(Type{}, read);
    }
    return status;
}

template <class Object, class Type, int (Object::*Set)(typename Type::Value)>
int writeProperty(Object& object, const OpenWBEM::CIMValue& value, const PropertyRow<Object>& row, const char* source) {
    typename Type::Value taken{};
    fromCIMValue(value, taken);
    checkValue(source, row.name, row.check, taken);
    return (object.*Set)(taken);
}

/// The algorithms. `Class` describes the managed class:
///   Object, Manager       its classes
///   name                  its CIM class name
///   source                what the provider's CIM errors carry as file
///   properties(), methods()   its rows
///   keyCount              how many of the properties are keys
///   create, destroy       its manager's creator and destroyer
template <class Class>
class ClassProvider {
  public:
    using Object = typename Class::Object;
    using Keys = std::array<std::string, Class::keyCount>;

    /// Fills the instance with every property whose getter returns 0, and with its keys. The others keep what they had.
    static void toInstance(const Object& object, OpenWBEM::CIMInstance& instance) {
        OpenWBEM::CIMPropertyArray keys;
        for (const PropertyRow<Object>& row : Class::properties()) {
            OpenWBEM::CIMValue value(OpenWBEM::CIMNULL);
            QualifierArray qualifiers;
            if (row.read(object, value, qualifiers) != 0) {
                continue;
            }
            OpenWBEM::CIMProperty property(row.name, value);
            if (row.key) {
                keys.push_back(property);
            }
            property.setQualifiers(qualifiers);
            instance.setProperty(property);
        }
        // An object manager builds the instance's name from its keys, not from its properties.
        instance.setKeys(keys);
    }

    /// Replaces the path's keys. CIM error 6 when a key cannot be read.
    static void toPath(const Object& object, OpenWBEM::CIMObjectPath& path) {
        OpenWBEM::CIMPropertyArray keys;
        for (const PropertyRow<Object>& row : Class::properties()) {
            if (!row.key) {
                continue;
            }
            OpenWBEM::CIMValue value(OpenWBEM::CIMNULL);
            QualifierArray ignored;
            if (row.read(object, value, ignored) != 0) {
                throwNotFound(__LINE__);
            }
            keys.push_back(OpenWBEM::CIMProperty(row.name, value));
        }
        path.setKeys(keys);
    }

    /// The object that the path names. CIM error 6 when a key is absent or null, or there is no such object.
    static Object* find(const OpenWBEM::CIMObjectPath& path) {
        return find([&path](const char* key) { return path.getKey(key); });
    }

    /// The object that the instance's key properties name, with the same errors.
    static Object* find(const OpenWBEM::CIMInstance& instance) {
        return find([&instance](const char* key) { return instance.getProperty(key); });
    }

    static void enumInstanceNames(const OpenWBEM::String& ns, const OpenWBEM::String& className,
                                  OpenWBEM::CIMObjectPathResultHandlerIFC& result) {
        OpenWBEM::CIMObjectPath path(className, ns);
        forEach([&](const Object& object) {
            toPath(object, path);
            result.handle(path);
        });
    }

    /// One instance is filled for each object in turn: a property that cannot be read of a later object keeps what an
    /// earlier one put there. That is deliberate.
    static void enumInstances(OpenWBEM::CIMInstanceResultHandlerIFC& result) {
        OpenWBEM::CIMInstance instance(Class::name);
        forEach([&](const Object& object) {
            toInstance(object, instance);
            result.handle(instance);
        });
    }

    static OpenWBEM::CIMInstance getInstance(const OpenWBEM::CIMObjectPath& path) {
        const Object* object = find(path);
        OpenWBEM::CIMInstance instance(Class::name);
        toInstance(*object, instance);
        return instance;
    }

    /// CIM error 7 from every manager of the module. A manager that can create gets the new object modified like an
    /// existing one, and has it destroyed when that fails.
    static OpenWBEM::CIMObjectPath createInstance(const OpenWBEM::String& ns, const OpenWBEM::CIMInstance& instance) {
        Object* object = create(instance);
        try {
            modify(*object, instance);
        } catch (const OpenWBEM::CIMException& failure) {
            (Object::getInstanceManager()->*Class::destroy)(object);
            throw OpenWBEM::CIMException(failure);
        }
        OpenWBEM::CIMObjectPath path(Class::name, ns);
        toPath(*object, path);
        return path;
    }

    /// CIM error 6 for an unknown object, otherwise 7 from every manager of the module.
    static void deleteInstance(const OpenWBEM::CIMObjectPath& path) {
        Object* object = find(path);
        try {
            (Object::getInstanceManager()->*Class::destroy)(object);
        } catch (const CFG_InstanceDeletionFailed&) {
            throw OpenWBEM::CIMException(Class::source, __LINE__, OpenWBEM::CIMException::NOT_SUPPORTED);
        }
    }

    /// Sets the properties in the instance's order; null values and names that cannot be modified are passed over. The
    /// first failure ends it: what was set before stays set, and the change is not ended.
    static void modify(Object& object, const OpenWBEM::CIMInstance& instance) {
        requireSuccess(object.startChange(), SourceLine::StartChange);
        const OpenWBEM::CIMPropertyArray properties = instance.getProperties();
        for (const OpenWBEM::CIMProperty& property : properties) {
            const PropertyRow<Object>* row = writableRow(property.getName());
            const OpenWBEM::CIMValue value = property.getValue();
            if (row != nullptr && value) {
                requireSuccess(row->write(object, value, *row, Class::source), SourceLine::Setter);
            }
        }
        requireSuccess(object.endChange(), SourceLine::EndChange);
    }

    /// CIM error 17 for a name that is not exactly a method's.
    static OpenWBEM::CIMValue invokeMethod(const OpenWBEM::CIMObjectPath& path, const OpenWBEM::String& methodName) {
        for (const MethodRow<Object>& row : Class::methods()) {
            if (methodName.equals(row.name)) {
                return OpenWBEM::CIMValue(OpenWBEM::UInt32((find(path)->*row.run)()));
            }
        }
        throw OpenWBEM::CIMException(Class::source, SourceLine::UnknownMethod,
                                     OpenWBEM::CIMException::METHOD_NOT_FOUND);
    }

  private:
    [[noreturn]] static void throwNotFound(int line) {
        throw OpenWBEM::CIMException(Class::source, line, OpenWBEM::CIMException::NOT_FOUND);
    }

    static void requireSuccess(int status, int line) {
        if (status != 0) {
            throwFailed(Class::source, line, status);
        }
    }

    template <class Use>
    static void forEach(Use use) {
        Object::getInstanceManager()->startIteration();
        while (Object::getInstanceManager()->hasNext()) {
            use(*Object::getInstanceManager()->next());
        }
        Object::getInstanceManager()->endIteration();
    }

    static const PropertyRow<Object>* writableRow(const OpenWBEM::String& name) {
        for (const PropertyRow<Object>& row : Class::properties()) {
            if (row.write != nullptr && name.equals(row.name)) {
                return &row;
            }
        }
        return nullptr;
    }

    /// Calls `keyValue` with the name of each key in key order and gathers the texts it returns.
    template <class KeyValue>
    static Keys gatherKeys(KeyValue keyValue) {
        Keys keys;
        std::size_t filled = 0;
        for (const PropertyRow<Object>& row : Class::properties()) {
            if (row.key) {
                keys.at(filled++) = keyValue(row.name);
            }
        }
        return keys;
    }

    template <class KeyProperty>
    static Object* find(KeyProperty keyProperty) {
        const Keys keys = gatherKeys([&keyProperty](const char* name) {
            const OpenWBEM::CIMProperty property = keyProperty(name);
            if (!property || !property.getValue()) {
                throwNotFound(__LINE__);
            }
            return std::string(property.getValue().toString().c_str());
        });
        try {
            return callWith(&Class::Manager::get, keys);
        } catch (const CFG_NoInstance&) {
            throwNotFound(__LINE__);
        }
    }

    static Object* create(const OpenWBEM::CIMInstance& instance) {
        const Keys keys = gatherKeys([&instance](const char* name) {
            const OpenWBEM::CIMProperty property = instance.getProperty(name);
            const bool given = property && property.getValue();
            return std::string(given ? property.getValue().toString().c_str() : "");
        });
        try {
            return callWith(Class::create, keys);
        } catch (const CFG_InstanceCreationFailed&) {
            throw OpenWBEM::CIMException(Class::source, __LINE__, OpenWBEM::CIMException::NOT_SUPPORTED);
        }
    }

    /// Calls an operation of the current manager that takes the key values.
    template <class Operation>
    static Object* callWith(Operation operation, const Keys& keys) {
        return std::apply(
            [operation](const auto&... key) { return (Object::getInstanceManager()->*operation)(key...); }, keys);
    }
};

} // namespace cdroam
