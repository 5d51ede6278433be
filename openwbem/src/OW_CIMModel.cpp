#include "OW_CIMModel.hpp"

#include "OW_CIMFlavor.hpp"
#include "OW_CIMQualifier.hpp"
#include "OW_CIMValue.hpp"
#include "OW_String.hpp"

#include <cstdio>

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

void appendEscaped(std::string& text, char character) {
    switch (character) {
    case '\\':
    case '"':
        text += '\\';
        text += character;
        return;
    case '\n':
        text += "\\n";
        return;
    case '\t':
        text += "\\t";
        return;
    case '\r':
        text += "\\r";
        return;
    default:
        break;
    }
    if (static_cast<unsigned char>(character) < 0x20) {
        char code[8];
        std::snprintf(code, sizeof(code), "\\x%04X", static_cast<unsigned>(character));
        text += code;
    } else {
        text += character;
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
    std::string quoted = "\"";
    for (size_t i = 0; i < text.length(); ++i) {
        appendEscaped(quoted, text.c_str()[i]);
    }
    quoted += '"';
    return String(quoted.data(), quoted.size());
}

std::string qualifiersToMOF(const CIMQualifierArray& qualifiers, const char* indent) {
    if (qualifiers.empty()) {
        return std::string();
    }
    std::string text = indent;
    const char* separator = "[";
    for (const CIMQualifier& qualifier : qualifiers) {
        text += separator;
        text += qualifier.toMOF().c_str();
        separator = ", ";
    }
    return text + "]\n";
}

} // namespace OpenWBEM
