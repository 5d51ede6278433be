// Writes CIM objects as CIM-XML elements. What a provider delivered is taken as it is, but never leaves the server in a
// form that a client's parser refuses: impossible dates go out as NULL, wrong characters are replaced; both are logged.
#pragma once

#include "XmlWriter.hpp"

#include "OW_CIM.hpp"

#include <string>
#include <string_view>

namespace cimserver::cimxml {

/// Which of an object's details are wanted.
struct ObjectForm {
    bool qualifiers = true;
    bool classOrigin = false;
};

/// VALUE, VALUE.ARRAY, VALUE.REFERENCE or VALUE.REFARRAY; nothing for NULL.
void writeValue(XmlWriter& writer, const OpenWBEM::CIMValue& value);

/// INSTANCENAME. Throws CimError Failed naming a key without value.
void writeInstanceName(XmlWriter& writer, const OpenWBEM::CIMObjectPath& path);
/// INSTANCEPATH with `host`, and with `nameSpace` when the path has none of its own.
void writeInstancePath(XmlWriter& writer, const OpenWBEM::CIMObjectPath& path, std::string_view host,
                       const OpenWBEM::String& nameSpace);
/// The name that an instance's key list spells.
OpenWBEM::CIMObjectPath nameOfInstance(const OpenWBEM::CIMInstance& instance, const OpenWBEM::String& nameSpace);

/// QUALIFIER elements. ValueMap and Values of different length are cut to the shorter.
void writeQualifiers(XmlWriter& writer, const OpenWBEM::CIMQualifierArray& qualifiers, bool withPropagated);
/// PROPERTY, PROPERTY.ARRAY or PROPERTY.REFERENCE; `owner` is its class's name for the log.
void writeProperty(XmlWriter& writer, const OpenWBEM::CIMProperty& property, std::string_view owner,
                   const ObjectForm& form);
/// INSTANCE. Qualifiers that the provider put on properties are part of it in every form.
void writeInstance(XmlWriter& writer, const OpenWBEM::CIMInstance& instance, bool classOrigin);

/// NAME and PARAMTYPE of a parameter with a value: PARAMVALUE; nothing for NULL.
void writeParamValue(XmlWriter& writer, std::string_view name, const OpenWBEM::CIMValue& value);
/// RETURNVALUE of a method; nothing for NULL.
void writeReturnValue(XmlWriter& writer, const OpenWBEM::CIMValue& value);

/// Adds EmbeddedObject where a value or a qualifier says that a text is an object.
void writeEmbeddedObject(XmlWriter& writer, OpenWBEM::CIMDataType::Type type,
                         const OpenWBEM::CIMQualifierArray& qualifiers);

} // namespace cimserver::cimxml
