// Filtered copies of classes, and their MOF text.

#include "OW_CIMClass.hpp"
#include "OW_CIMMethod.hpp"
#include "OW_CIMModel.hpp"
#include "OW_CIMProperty.hpp"
#include "OW_CIMQualifier.hpp"

#include <algorithm>

namespace OpenWBEM {

namespace {

CIMQualifierArray localQualifiers(const CIMQualifierArray& qualifiers) {
    CIMQualifierArray local;
    for (const CIMQualifier& qualifier : qualifiers) {
        if (!qualifier.getPropagated()) {
            local.push_back(qualifier);
        }
    }
    return local;
}

} // namespace

CIMClass CIMClass::clone(WBEMFlags::ELocalOnlyFlag localOnly, WBEMFlags::EIncludeQualifiersFlag includeQualifiers,
                         WBEMFlags::EIncludeClassOriginFlag includeClassOrigin, const StringArray& propertyList,
                         bool noProps) const {
    CIMClass copy = filterProperties(propertyList, noProps);
    CIMPropertyArray properties;
    const CIMPropertyArray listed = copy.getAllProperties();
    for (const CIMProperty& property : listed) {
        if (!(localOnly && property.getPropagated())) {
            properties.push_back(property.clone(includeQualifiers, includeClassOrigin));
        }
    }
    CIMMethodArray methods;
    const CIMMethodArray all = getAllMethods();
    for (const CIMMethod& method : all) {
        const CIMMethod kept = method.clone(localOnly, includeQualifiers, includeClassOrigin);
        if (kept) {
            methods.push_back(kept);
        }
    }
    copy.setProperties(properties).setMethods(methods);
    if (!includeQualifiers) {
        return copy.setQualifiers(CIMQualifierArray());
    }
    return localOnly ? copy.setQualifiers(localQualifiers(getQualifiers())) : copy;
}

CIMClass CIMClass::filterProperties(const StringArray& propertyList, bool noProps) const {
    CIMPropertyArray kept;
    const CIMPropertyArray all = getAllProperties();
    for (const CIMProperty& property : all) {
        if (!noProps && (propertyList.empty() || listContains(propertyList, CIMAccess::name(property)))) {
            kept.push_back(property);
        }
    }
    return CIMClass(*this).setProperties(kept);
}

namespace {

/// Whether an instance includes this property of its own class when requestedClass is asked for. Properties that
/// requestedClass has are included, with localOnly only those it declares itself; those subclasses add, only with deep.
bool isWanted(const CIMProperty& property, const CIMClass& requestedClass, WBEMFlags::ELocalOnlyFlag localOnly,
              WBEMFlags::EDeepFlag deep) {
    const CIMProperty requested = requestedClass.getProperty(CIMAccess::name(property));
    if (!requested) {
        return deep == WBEMFlags::E_DEEP;
    }
    return !localOnly || !requested.getPropagated();
}

} // namespace

StringArray CIMClass::getCloneProps(WBEMFlags::ELocalOnlyFlag localOnly, WBEMFlags::EDeepFlag deep,
                                    const StringArray* propertyList, const CIMClass& requestedClass) const {
    StringArray names;
    const CIMPropertyArray all = getAllProperties();
    for (const CIMProperty& property : all) {
        const bool listed = !propertyList || listContains(*propertyList, CIMAccess::name(property));
        if (listed && isWanted(property, requestedClass, localOnly, deep)) {
            names.push_back(property.getName());
        }
    }
    return names;
}

StringArray CIMClass::getCloneProps(WBEMFlags::ELocalOnlyFlag localOnly, WBEMFlags::EDeepFlag deep,
                                    const StringArray& propertyList, bool noProps,
                                    const CIMClass& requestedClass) const {
    const StringArray none;
    const StringArray* list = propertyList.empty() ? nullptr : &propertyList;
    return getCloneProps(localOnly, deep, noProps ? &none : list, requestedClass);
}

String CIMClass::toString() const {
    return toMOF();
}

namespace {

bool isIndication(const CIMQualifier& qualifier) {
    return CIMAccess::name(qualifier) == CIMQualifier::CIM_QUAL_INDICATION;
}

/// The qualifiers in the order of MOF: Association moves to the front, then Indication swaps places with the first.
CIMQualifierArray inOrderOfMOF(CIMQualifierArray qualifiers) {
    const auto first = qualifiers.begin();
    const auto last = qualifiers.end();
    const auto association =
        std::find_if(first, last, [](const CIMQualifier& q) { return q.isAssociationQualifier(); });
    if (association != last) {
        std::rotate(first, association, association + 1);
    }
    const auto indication = std::find_if(first, last, isIndication);
    if (indication != last) {
        std::iter_swap(first, indication);
    }
    return qualifiers;
}

template <class T>
String allToMOF(const Array<T>& elements) {
    StringArray texts;
    for (const T& element : elements) {
        texts.push_back(element.toMOF());
    }
    return joined(texts, "");
}

} // namespace

String CIMClass::toMOF() const {
    String text = qualifiersToMOF(inOrderOfMOF(getQualifiers()), ",\n ");
    text += (text.empty() ? "class " : "\nclass ") + getName();
    if (!getSuperClass().empty()) {
        text += ":" + getSuperClass();
    }
    return text + "\n{\n" + allToMOF(getAllProperties()) + allToMOF(getAllMethods()) + "};\n";
}

} // namespace OpenWBEM
