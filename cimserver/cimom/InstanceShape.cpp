#include "cimserver/cimom/InstanceShape.hpp"

#include "cimserver/cim/CimError.hpp"

#include "OW_CIMAccess.hpp"
#include "OW_CIMValueCast.hpp"

#include <algorithm>

namespace cimserver::cimom {

// A "for" over an array that a function returns would copy its elements: only a constant array is read in place.

namespace {

bool isUntyped(const CIMProperty& property) {
    return !CIMAccess::dataType(property);
}

/// True when the properties are those of the class, in its order, each with a type.
bool areComplete(const CIMPropertyArray& delivered, const CIMClass& cimClass) {
    const CIMPropertyArray& declared = CIMAccess::properties(cimClass);
    return std::equal(delivered.begin(), delivered.end(), declared.begin(), declared.end(),
                      [](const CIMProperty& one, const CIMProperty& known) {
                          return CIMAccess::name(one) == CIMAccess::name(known) && !isUntyped(one);
                      });
}

CIMPropertyArray completeProperties(const CIMPropertyArray& delivered, const CIMClass& cimClass,
                                    const StringArray* covered) {
    CIMPropertyArray all(delivered);
    for (const CIMProperty& declared : CIMAccess::properties(cimClass)) {
        const CIMProperty* const found = CIMAccess::find(delivered, CIMAccess::name(declared));
        if (found == nullptr) {
            if (isWanted(covered, declared.getName())) {
                all.push_back(CIMProperty(CIMAccess::name(declared), CIMAccess::dataType(declared)));
            }
        } else if (isUntyped(*found)) {
            all[static_cast<std::size_t>(found - &delivered.front())].setDataType(CIMAccess::dataType(declared));
        }
    }
    return all;
}

CIMPropertyArray selected(const CIMPropertyArray& all, const StringArray* propertyList) {
    CIMPropertyArray wanted;
    for (const CIMProperty& property : all) {
        if (propertyList != nullptr && !isWanted(propertyList, property.getName())) {
            continue;
        }
        if (isUntyped(property)) {
            throw CimError(Status::Failed,
                           std::string("Property ") + property.getName().c_str() + " has no type defined");
        }
        if (propertyList != nullptr) {
            wanted.push_back(property);
        }
    }
    return propertyList != nullptr ? wanted : all;
}

bool hasValue(const CIMPropertyArray& properties, const CIMName& name) {
    return std::any_of(properties.begin(), properties.end(),
                       [&](const CIMProperty& p) { return CIMAccess::name(p) == name && bool(CIMAccess::value(p)); });
}

/// The first key of the class that has no value among those; null when all have.
const CIMProperty* missingKey(const CIMPropertyArray& keys, const CIMClass& cimClass) {
    const CIMPropertyArray& declared = CIMAccess::keys(cimClass);
    const auto missing = std::find_if(declared.begin(), declared.end(),
                                      [&](const CIMProperty& key) { return !hasValue(keys, CIMAccess::name(key)); });
    return missing == declared.end() ? nullptr : &*missing;
}

/// The key with its value from the instance's key list, its properties or the path; null when none has it.
CIMProperty keyOf(const CIMInstance& instance, const CIMProperty& declared, const CIMObjectPath& path) {
    const CIMName name(declared.getName());
    CIMValue value = CIMObjectPath(name, instance.getKeyValuePairs()).getKeyValue(name);
    if (!value) {
        value = instance.getPropertyValue(name);
    }
    if (!value) {
        value = path.getKeyValue(name);
    }
    CIMProperty key(name, declared.getDataType());
    return key.setValue(value);
}

CIMPropertyArray completeKeys(const CIMInstance& delivered, const CIMClass& cimClass, const CIMObjectPath& path) {
    if (missingKey(CIMAccess::keys(delivered), cimClass) == nullptr) {
        return CIMAccess::keys(delivered);
    }
    CIMPropertyArray keys;
    for (const CIMProperty& key : CIMAccess::keys(cimClass)) {
        const CIMProperty found = keyOf(delivered, key, path);
        if (found.getValue()) {
            keys.push_back(found);
        }
    }
    return keys;
}

/// The property's present value; from the path when the instance does not have the property.
CIMValue presentValue(const CIMInstance& previous, const CIMObjectPath& path, const CIMProperty& declared) {
    const CIMName& name = CIMAccess::name(declared);
    const CIMProperty* const shown = CIMAccess::find(CIMAccess::properties(previous), name);
    const CIMValue value = shown != nullptr ? CIMAccess::value(*shown) : path.getKeyValue(name);
    if (isEmbedded(value)) {
        return value;
    }
    try {
        return CIMValueCast::castValueToDataType(value, declared.getDataType());
    } catch (const Exception&) {
        return value; // the types cannot be compared, so the value counts as different
    }
}

bool sameValue(const CIMValue& present, const CIMValue& sent);

/// True when the instances have the same class and values: neither the order nor what is NULL counts.
bool sameInstance(const CIMInstance& present, const CIMInstance& sent) {
    const auto values = [](const CIMInstance& one) {
        const CIMPropertyArray all = one.getProperties();
        return std::count_if(all.begin(), all.end(), [](const CIMProperty& p) { return bool(p.getValue()); });
    };
    const CIMPropertyArray all = sent.getProperties();
    return present.getClassName().equalsIgnoreCase(sent.getClassName()) && values(present) == values(sent) &&
           std::all_of(all.begin(), all.end(), [&](const CIMProperty& p) {
               return !p.getValue() || sameValue(presentValue(present, CIMObjectPath(), p), p.getValue());
           });
}

bool sameValue(const CIMValue& present, const CIMValue& sent) {
    if (!isEmbedded(present) || !sent || !present.sameType(sent)) { // arrays are types of their own
        return present.equal(sent);
    }
    if (present.getType() == CIMDataType::EMBEDDEDCLASS) {
        return present.toString().equals(sent.toString());
    }
    if (!sent.isArray()) {
        return sameInstance(present.toCIMInstance(), sent.toCIMInstance());
    }
    const CIMInstanceArray before = present.toCIMInstanceArray();
    const CIMInstanceArray after = sent.toCIMInstanceArray();
    return std::equal(before.begin(), before.end(), after.begin(), after.end(), sameInstance);
}

/// Appends the class's key properties with the values of the path: providers find the object by them.
void appendKeys(CIMPropertyArray& properties, const CIMObjectPath& path, const CIMClass& cimClass) {
    for (const CIMProperty& declared : CIMAccess::keys(cimClass)) {
        CIMProperty key(declared);
        properties.push_back(key.setValue(path.getKeyValue(CIMAccess::name(declared))));
    }
}

/// Refuses a key that differs from the path's; NULL is ignored.
void requireSameKey(const CIMProperty& sent, const CIMObjectPath& path) {
    const CIMValue value = sent.getValue();
    if (value && !value.equal(path.getKeyValue(CIMAccess::name(sent)))) {
        throw CimError(Status::InvalidParameter,
                       std::string("The key property ") + sent.getName().c_str() + " cannot be modified");
    }
}

} // namespace

bool isEmbedded(const CIMValue& value) {
    return value && (value.getType() == CIMDataType::EMBEDDEDINSTANCE || value.getType() == CIMDataType::EMBEDDEDCLASS);
}

bool isWanted(const StringArray* propertyList, const String& name) {
    return propertyList == nullptr || std::any_of(propertyList->begin(), propertyList->end(),
                                                  [&](const String& listed) { return listed.equalsIgnoreCase(name); });
}

CIMInstance shaped(const CIMInstance& delivered, const CIMClass& cimClass, const StringArray* propertyList,
                   const CIMObjectPath& path, const std::optional<StringArray>& covered) {
    CIMInstance result(delivered);
    if (result.getClassName().empty()) {
        result.setClassName(CIMName(cimClass.getName()));
    }
    const CIMPropertyArray& properties = CIMAccess::properties(delivered);
    if (propertyList == nullptr && areComplete(properties, cimClass) &&
        missingKey(CIMAccess::keys(delivered), cimClass) == nullptr) {
        return result;
    }
    const CIMPropertyArray keys = completeKeys(delivered, cimClass, path);
    result.setProperties(
        selected(completeProperties(properties, cimClass, covered ? &*covered : nullptr), propertyList));
    return result.setKeys(keys);
}

CIMInstance shapedWithKeys(const CIMInstance& delivered, const CIMClass& cimClass, const StringArray* propertyList,
                           const std::optional<StringArray>& covered) {
    CIMInstance result = shaped(delivered, cimClass, propertyList, CIMObjectPath(), covered);
    requireKeys(result.getKeyValuePairs(), cimClass);
    return result;
}

const CIMInstance& requireInstance(const CIMInstance& delivered) {
    if (!delivered) {
        throw CimError(Status::Failed, "Provider erroneously returned a NULL CIMInstance");
    }
    return delivered;
}

void requireKeys(const CIMPropertyArray& keys, const CIMClass& cimClass) {
    if (const CIMProperty* const missing = missingKey(keys, cimClass)) {
        throw CimError(Status::Failed, std::string("No key value for ") + missing->getName().c_str());
    }
}

Modification modificationOf(const CIMInstance& modified, const CIMInstance& previous, const CIMClass& cimClass,
                            const CIMObjectPath& path, const StringArray* propertyList, bool all) {
    Modification result;
    CIMPropertyArray properties;
    properties.reserve(CIMAccess::keys(cimClass).size() + CIMAccess::properties(modified).size());
    appendKeys(properties, path, cimClass);
    const auto take = [&](const CIMProperty& property) {
        properties.push_back(property);
        result.changes.push_back(property);
        result.names.push_back(property.getName());
    };
    for (const CIMProperty& sent : CIMAccess::properties(modified)) {
        CIMProperty property = cimClass.getProperty(CIMAccess::name(sent));
        property.setValue(CIMAccess::value(sent));
        if (property.isKey()) {
            requireSameKey(property, path);
        } else if (propertyList != nullptr
                       ? isWanted(propertyList, sent.getName())
                       : all || !sameValue(presentValue(previous, path, property), property.getValue())) {
            take(property);
        }
    }
    if (propertyList != nullptr) {
        for (const String& listed : *propertyList) {
            const CIMProperty declared = cimClass.getProperty(CIMName(listed));
            if (!declared.isKey() && !isWanted(&result.names, listed)) {
                take(declared);
            }
        }
    }
    result.instance = CIMInstance(CIMName(modified.getClassName()));
    result.instance.setProperties(properties);
    result.instance.setKeys(path.getKeys());
    return result;
}

} // namespace cimserver::cimom
