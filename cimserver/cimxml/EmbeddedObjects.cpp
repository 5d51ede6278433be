#include "cimserver/cimxml/EmbeddedObjects.hpp"

#include "cimserver/cim/CimError.hpp"
#include "cimserver/cimxml/Characters.hpp"
#include "cimserver/cimxml/Errors.hpp"
#include "cimserver/cimxml/Grammar.hpp"
#include "cimserver/cimxml/XmlDocument.hpp"

namespace cimserver::cimxml {

using namespace OpenWBEM;

namespace {

[[noreturn]] void refuse(const std::string& what) {
    throw CimError(Status::InvalidParameter, "embedded object: " + what);
}

/// The object in the text; the document is gone when it returns.
CIMValue readObject(const std::string& text, const XmlLimits& limits, const ReadObject& read) {
    try {
        const XmlDocument document(text, limits);
        checkGrammar(document.root(), Strictness::Loose);
        return read(document.root());
    } catch (const HttpError& error) {
        refuse(error.what());
    } catch (const GrammarError& error) {
        refuse(error.what());
    }
}

} // namespace

std::optional<String> embeddedClassName(const CIMDataType& type, const CIMQualifierArray& qualifiers) {
    for (const CIMQualifier& qualifier : qualifiers) {
        const String& name = CIMAccess::text(CIMAccess::name(qualifier));
        if (type.getType() != CIMDataType::STRING || !name.startsWith("Embedded", String::E_CASE_INSENSITIVE)) {
            continue;
        }
        const CIMValue value = qualifier.getValue();
        if (value && name.equalsIgnoreCase("EmbeddedInstance")) {
            return value.toString();
        }
        if (value && name.equalsIgnoreCase("EmbeddedObject") && value.equal(CIMValue(true))) {
            return String();
        }
    }
    return std::nullopt;
}

CIMValue embeddedObjects(const CIMValue& texts, const XmlLimits& limits, const ReadObject& read) {
    if (!texts.isArray()) {
        const std::string text = toStd(texts.toString());
        const bool blank = text.find_first_not_of(" \t\r\n") == std::string::npos;
        return blank ? CIMValue(CIMNULL) : readObject(text, limits, read);
    }
    CIMInstanceArray instances;
    CIMClassArray classes;
    for (const String& text : texts.toStringArray()) {
        const CIMValue object = readObject(toStd(text), limits, read);
        if (object.getType() == CIMDataType::EMBEDDEDINSTANCE) {
            instances.push_back(object.toCIMInstance());
        } else {
            classes.push_back(object.toCIMClass());
        }
    }
    if (!instances.empty() && !classes.empty()) {
        refuse("instances among classes");
    }
    return classes.empty() ? CIMValue(instances) : CIMValue(classes);
}

} // namespace cimserver::cimxml
