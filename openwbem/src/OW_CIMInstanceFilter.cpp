// Copies of instances that are filtered, or fitted to a class.

#include "OW_CIMClass.hpp"
#include "OW_CIMInstance.hpp"
#include "OW_CIMModel.hpp"
#include "OW_CIMProperty.hpp"
#include "OW_CIMQualifier.hpp"
#include "OW_CIMValue.hpp"

namespace OpenWBEM {

namespace {

/// The instance with other properties, its key list kept, and without qualifiers of its own if they are excluded.
CIMInstance withProperties(const CIMInstance& instance, const CIMPropertyArray& properties,
                           WBEMFlags::EIncludeQualifiersFlag includeQualifiers) {
    CIMInstance copy(instance);
    const CIMPropertyArray keys = instance.getKeyValuePairs();
    copy.setProperties(properties).setKeys(keys);
    return includeQualifiers ? copy : copy.setQualifiers(CIMQualifierArray());
}

} // namespace

CIMInstance CIMInstance::clone(WBEMFlags::ELocalOnlyFlag localOnly, WBEMFlags::EIncludeQualifiersFlag includeQualifiers,
                               WBEMFlags::EIncludeClassOriginFlag includeClassOrigin,
                               const StringArray* propertyList) const {
    CIMPropertyArray kept;
    const CIMPropertyArray all = getProperties();
    for (const CIMProperty& property : all) {
        const bool listed = !propertyList || listContains(*propertyList, CIMAccess::name(property));
        if (listed && !(localOnly && property.getPropagated())) {
            kept.push_back(property.clone(includeQualifiers, includeClassOrigin));
        }
    }
    return withProperties(*this, kept, includeQualifiers);
}

CIMInstance CIMInstance::clone(WBEMFlags::ELocalOnlyFlag localOnly, WBEMFlags::EIncludeQualifiersFlag includeQualifiers,
                               WBEMFlags::EIncludeClassOriginFlag includeClassOrigin, const StringArray& propertyList,
                               bool noProps) const {
    const StringArray none;
    const StringArray* list = propertyList.empty() ? nullptr : &propertyList;
    return clone(localOnly, includeQualifiers, includeClassOrigin, noProps ? &none : list);
}

CIMInstance CIMInstance::clone(WBEMFlags::ELocalOnlyFlag localOnly, WBEMFlags::EDeepFlag deep,
                               WBEMFlags::EIncludeQualifiersFlag includeQualifiers,
                               WBEMFlags::EIncludeClassOriginFlag includeClassOrigin, const StringArray* propertyList,
                               const CIMClass& requestedClass, const CIMClass& cimClass) const {
    CIMInstance fitted(*this);
    fitted.syncWithClass(cimClass);
    const StringArray wanted = cimClass.getCloneProps(localOnly, deep, propertyList, requestedClass);
    return fitted.clone(WBEMFlags::E_NOT_LOCAL_ONLY, includeQualifiers, includeClassOrigin, &wanted);
}

CIMInstance CIMInstance::filterProperties(const StringArray& propertyList,
                                          WBEMFlags::EIncludeQualifiersFlag includeQualifiers,
                                          WBEMFlags::EIncludeClassOriginFlag includeClassOrigin,
                                          bool ignorePropertyList) const {
    return clone(WBEMFlags::E_NOT_LOCAL_ONLY, includeQualifiers, includeClassOrigin,
                 ignorePropertyList ? nullptr : &propertyList);
}

namespace {

/// The class's property, with the value of the instance's property if it has one.
CIMProperty fit(const CIMProperty& declared, const CIMProperty& given) {
    CIMProperty fitted(declared);
    const CIMValue value = given.getValue();
    return value ? fitted.setValue(value) : fitted;
}

CIMPropertyArray withoutUnknown(const CIMPropertyArray& properties, const CIMClass& cimClass) {
    CIMPropertyArray known;
    for (const CIMProperty& property : properties) {
        if (cimClass.getProperty(CIMAccess::name(property))) {
            known.push_back(property);
        }
    }
    return known;
}

CIMPropertyArray withoutQualifiers(const CIMPropertyArray& properties) {
    CIMPropertyArray plain;
    for (const CIMProperty& property : properties) {
        plain.push_back(property.clone(WBEMFlags::E_EXCLUDE_QUALIFIERS, WBEMFlags::E_INCLUDE_CLASS_ORIGIN));
    }
    return plain;
}

} // namespace

CIMInstance& CIMInstance::syncWithClass(const CIMClass& cimClass, WBEMFlags::EIncludeQualifiersFlag includeQualifiers) {
    CIMPropertyArray properties = withoutUnknown(getProperties(), cimClass);
    const CIMPropertyArray allDeclared = cimClass.getAllProperties();
    for (const CIMProperty& declared : allDeclared) {
        const size_t i = indexOfName(properties, CIMAccess::name(declared));
        if (i < properties.size()) {
            properties[i] = fit(declared, properties[i]);
        } else {
            properties.push_back(declared);
        }
    }
    setProperties(properties);
    if (!includeQualifiers) {
        *this = withProperties(*this, withoutQualifiers(properties), includeQualifiers);
    }
    return *this;
}

CIMInstance CIMInstance::createModifiedInstance(const CIMInstance& previousInstance,
                                                WBEMFlags::EIncludeQualifiersFlag includeQualifiers,
                                                const StringArray* propertyList, const CIMClass& cimClass) const {
    CIMInstance modified(*this);
    if (!includeQualifiers) {
        modified.setQualifiers(previousInstance.getQualifiers());
    }
    modified.syncWithClass(cimClass);
    if (!propertyList) {
        return modified;
    }
    const CIMPropertyArray all = modified.getProperties();
    for (const CIMProperty& property : all) {
        const CIMProperty previous = previousInstance.getProperty(CIMAccess::name(property));
        if (previous && !listContains(*propertyList, CIMAccess::name(property))) {
            modified.updatePropertyValue(previous);
        }
    }
    return modified;
}

} // namespace OpenWBEM
