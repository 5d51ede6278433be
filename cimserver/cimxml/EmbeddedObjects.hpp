// Instances and classes that a string property or parameter holds as XML text.
#pragma once

#include "cimserver/cimxml/ObjectReader.hpp"
#include "cimserver/cimxml/XmlDocument.hpp"

#include "OW_CIM.hpp"

#include <optional>

namespace cimserver::cimxml {

/// Nothing for a plain string; else the class whose instances it holds (qualifier EmbeddedInstance), or an empty name
/// for any instance or class (EmbeddedObject).
std::optional<OpenWBEM::String> embeddedClassName(const OpenWBEM::CIMDataType& type,
                                                  const OpenWBEM::CIMQualifierArray& qualifiers);

/// The objects in a string or an array of strings, as a value of instances or of classes; null for a blank string.
/// Those of a class named must be its instances. Throws CimError InvalidParameter for a text that holds no such object.
OpenWBEM::CIMValue embeddedObjects(const OpenWBEM::CIMValue& texts, const OpenWBEM::String& className,
                                   const XmlLimits& limits, const ObjectReader& reader);

} // namespace cimserver::cimxml
