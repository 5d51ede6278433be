#include "OW_CIMModel.hpp"

#include "OW_CIMFlavor.hpp"
#include "OW_CIMObjectPath.hpp"
#include "OW_CIMQualifier.hpp"
#include "OW_CIMValue.hpp"
#include "OW_String.hpp"

#include <string>

namespace OpenWBEM {

bool hasTrueElement(const CIMQualifierArray& qualifiers, const CIMName& name) {
    const size_t i = indexOfName(qualifiers, name);
    if (i == qualifiers.size()) {
        return false;
    }
    const CIMValue value = qualifiers[i].getValue();
    return value && value.getType() == CIMDataType::BOOLEAN && !value.isArray() && value.toBool();
}

bool listContains(const StringArray& list, const CIMName& name) {
    for (const String& entry : list) {
        if (name == entry) {
            return true;
        }
    }
    return false;
}

namespace {

Int32 oppositeOf(Int32 flavor) {
    switch (flavor) {
    case CIMFlavor::ENABLEOVERRIDE:
        return CIMFlavor::DISABLEOVERRIDE;
    case CIMFlavor::DISABLEOVERRIDE:
        return CIMFlavor::ENABLEOVERRIDE;
    case CIMFlavor::RESTRICTED:
        return CIMFlavor::TOSUBCLASS;
    case CIMFlavor::TOSUBCLASS:
        return CIMFlavor::RESTRICTED;
    default:
        return CIMFlavor::INVALID;
    }
}

} // namespace

void addFlavorTo(CIMFlavorArray& flavors, const CIMFlavor& flavor) {
    if (!flavor || containsFlavor(flavors, flavor)) {
        return;
    }
    removeFlavorFrom(flavors, oppositeOf(flavor.getFlavor()));
    flavors.push_back(flavor);
}

void removeFlavorFrom(CIMFlavorArray& flavors, Int32 flavor) {
    for (size_t i = flavors.size(); i > 0; --i) {
        if (flavors[i - 1].getFlavor() == flavor) {
            flavors.remove(i - 1);
        }
    }
}

bool containsFlavor(const CIMFlavorArray& flavors, const CIMFlavor& flavor) {
    for (const CIMFlavor& present : flavors) {
        if (present.getFlavor() == flavor.getFlavor()) {
            return true;
        }
    }
    return false;
}

String quoteForMOF(const String& text) {
    return "\"" + CIMObjectPath::escape(text) + "\"";
}

String joined(const StringArray& texts, const char* separator) {
    std::string all;
    for (const String& text : texts) {
        if (&text != &*texts.begin()) {
            all += separator;
        }
        all.append(text.c_str(), text.length());
    }
    return String(all.data(), all.size());
}

String qualifiersToMOF(const CIMQualifierArray& qualifiers, const char* separator) {
    StringArray texts;
    for (const CIMQualifier& qualifier : qualifiers) {
        texts.push_back(qualifier.toMOF());
    }
    return texts.empty() ? String() : "[" + joined(texts, separator) + "]";
}

} // namespace OpenWBEM
