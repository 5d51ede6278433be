#include "cimserver/cimom/SchemaCheck.hpp"

#include "cimserver/cimom/InstanceShape.hpp"
#include "cimserver/common/Log.hpp"

#include <string>

namespace cimserver::cimom {

namespace {

/// What is wrong with the property, or nothing.
std::string mistakeIn(const CIMProperty& delivered, const CIMClass& cimClass) {
    const CIMProperty declared = cimClass.getProperty(CIMName(delivered.getName()));
    const std::string name = delivered.getName().c_str();
    if (!declared) {
        return name + " is not declared";
    }
    const CIMDataType is = delivered.getDataType();
    const CIMDataType should = declared.getDataType();
    const bool untyped = !is || is.getType() == CIMDataType::CIMNULL;
    const bool embedded = isEmbedded(delivered.getValue()) && should.getType() == CIMDataType::STRING;
    if (untyped || embedded || (is.getType() == should.getType() && is.isArrayType() == should.isArrayType())) {
        return "";
    }
    return name + " is declared as " + should.toString().c_str() + " and delivered as " + is.toString().c_str();
}

} // namespace

bool SchemaCheck::isFirst(const CIMClass& cimClass) {
    const std::lock_guard lock(mutex_);
    return seen_.insert(&cimClass).second;
}

void SchemaCheck::onAnswer(const CIMInstance& delivered, const CIMClass& cimClass) {
    const String name = delivered.getClassName();
    const bool own = name.empty() || name.equalsIgnoreCase(cimClass.getName());
    if (!own || !isFirst(cimClass)) {
        return;
    }
    std::string mistakes;
    const CIMPropertyArray properties = delivered.getProperties();
    for (const CIMProperty& property : properties) {
        const std::string mistake = mistakeIn(property, cimClass);
        mistakes += (mistakes.empty() || mistake.empty() ? "" : "; ") + mistake;
    }
    if (!mistakes.empty()) {
        log::write(log::Level::Warning, "schema",
                   std::string(cimClass.getName().c_str()) + " does not fit what its provider delivers: " + mistakes);
    }
}

} // namespace cimserver::cimom
