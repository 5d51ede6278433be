// Instances and classes that a string property or parameter holds as XML text.
#pragma once

#include "cimserver/cimxml/WellFormedness.hpp"

#include "OW_CIM.hpp"

#include <pugixml.hpp>

#include <functional>
#include <optional>

namespace cimserver::cimxml {

/// Nothing for a plain string; else the class whose instances it holds (qualifier EmbeddedInstance), or an empty name
/// for any instance or class (EmbeddedObject).
std::optional<OpenWBEM::String> embeddedClassName(const OpenWBEM::CIMDataType& type,
                                                  const OpenWBEM::CIMQualifierArray& qualifiers);

/// Makes an instance or a class of an element that has passed checkGrammar.
using ReadObject = std::function<OpenWBEM::CIMValue(pugi::xml_node element)>;

/// The objects in a string or an array of strings, as a value of instances or of classes; null for a blank string.
/// Throws CimError InvalidParameter for a text that is no XML of CIM.
OpenWBEM::CIMValue embeddedObjects(const OpenWBEM::CIMValue& texts, const XmlLimits& limits, const ReadObject& read);

} // namespace cimserver::cimxml
