// Writes CIM objects as CIM-XML elements. What providers deliver is sent unchanged, except where a client's parser
// would refuse it: impossible dates are sent as NULL, characters that XML does not allow are replaced; both are logged.
#pragma once

#include "cimserver/cimxml/XmlWriter.hpp"

#include "OW_CIM.hpp"

#include <string_view>

namespace cimserver::cimxml {

/// Which details of an object are wanted.
struct ObjectForm {
    bool qualifiers = true;
    bool classOrigin = false;
};

/// Which parts of a class are wanted.
struct ClassForm {
    bool localOnly = false; ///< without inherited features that the class does not override
    ObjectForm object;
    const OpenWBEM::StringArray* propertyList = nullptr; ///< null: all properties
};

/// VALUE, VALUE.ARRAY, VALUE.REFERENCE or VALUE.REFARRAY; nothing for NULL. `name` is for the log.
void writeValue(XmlWriter& writer, const OpenWBEM::CIMValue& value, std::string_view name);

/// PROPERTY, PROPERTY.ARRAY or PROPERTY.REFERENCE; `owner` is its class's name for the log.
void writeProperty(XmlWriter& writer, const OpenWBEM::CIMProperty& property, std::string_view owner,
                   const ObjectForm& form);
/// INSTANCE. Qualifiers that the provider put on properties are part of it in every form.
void writeInstance(XmlWriter& writer, const OpenWBEM::CIMInstance& instance, bool classOrigin);

/// CLASS
void writeClass(XmlWriter& writer, const OpenWBEM::CIMClass& cimClass, const ClassForm& form);

/// QUALIFIER.DECLARATION
void writeQualifierDeclaration(XmlWriter& writer, const OpenWBEM::CIMQualifierType& declaration);

/// PARAMVALUE with its NAME and PARAMTYPE; nothing for NULL.
void writeParamValue(XmlWriter& writer, std::string_view name, const OpenWBEM::CIMValue& value);
/// RETURNVALUE of a method; nothing for NULL.
void writeReturnValue(XmlWriter& writer, const OpenWBEM::CIMValue& value);

} // namespace cimserver::cimxml
