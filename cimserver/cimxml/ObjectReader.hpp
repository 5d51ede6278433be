// Reads paths, instances and values from a request, with the types of the class they belong to: a value that does not
// fit the class is refused here and never reaches a provider, whatever type the request claims.
#pragma once

#include "cimserver/cim/CimError.hpp"
#include "cimserver/cimom/Cimom.hpp"
#include "cimserver/cimxml/WellFormedness.hpp"

#include "OW_CIM.hpp"

#include <pugixml.hpp>

#include <string_view>

namespace cimserver::cimxml {

/// Reads elements that have passed checkGrammar. Everything throws CimError (InvalidParameter unless said) or
/// what Cimom::classOf throws for a namespace or class that does not exist; `missing` is its code for the class.
class ObjectReader {
  public:
    /// All must outlive the reader; `limits` are those of an embedded object's text.
    ObjectReader(const cimom::Cimom& cimom, const OpenWBEM::String& nameSpace, const XmlLimits& limits)
        : cimom_(cimom), nameSpace_(nameSpace), limits_(limits) {}

    /// INSTANCENAME: the class in the request's spelling, keys in the class's spelling and type. A key that the class
    /// does not have, or twice, is refused; a missing one is left out.
    OpenWBEM::CIMObjectPath instanceName(pugi::xml_node element, Status missing = Status::InvalidClass) const;
    /// INSTANCENAME or CLASSNAME, in the request's spelling.
    OpenWBEM::CIMObjectPath objectName(pugi::xml_node element, Status missing) const;
    /// INSTANCE: its properties in request order, each the class's own with the request's value. NoSuchProperty for one
    /// that the class does not have.
    OpenWBEM::CIMInstance instance(pugi::xml_node element) const;
    /// The value inside an element (PROPERTY, PARAMVALUE, IPARAMVALUE ...) of what the class declares with this type
    /// and these qualifiers; null when it holds none. EmbeddedInstance and EmbeddedObject make objects of strings,
    /// whatever the request says of them. A value that does not fit the type is refused with `mismatch`, naming `name`.
    OpenWBEM::CIMValue value(pugi::xml_node parent, const OpenWBEM::CIMDataType& type,
                             const OpenWBEM::CIMQualifierArray& qualifiers, std::string_view name,
                             Status mismatch = Status::InvalidParameter) const;

  private:
    OpenWBEM::CIMObjectPath path(pugi::xml_node instanceName, const OpenWBEM::String& className,
                                 const OpenWBEM::String& nameSpace, const OpenWBEM::CIMClass* cimClass) const;
    OpenWBEM::CIMProperty key(pugi::xml_node parent, const char* name, const OpenWBEM::CIMClass* cimClass) const;
    OpenWBEM::CIMObjectPath reference(pugi::xml_node valueReference) const;
    OpenWBEM::CIMProperty property(pugi::xml_node element, const OpenWBEM::CIMClass& cimClass) const;
    /// An INSTANCE that stands in a property or parameter: each property plain, without what the class says of it. The
    /// class must be `className`, unless that is empty, or one derived from it.
    OpenWBEM::CIMInstance embeddedInstance(pugi::xml_node element, const OpenWBEM::String& className) const;
    /// A CLASS that stands in a property or parameter: the schema's class, which must have the same features.
    OpenWBEM::CIMClass embeddedClass(pugi::xml_node element) const;
    OpenWBEM::CIMValue embedded(const OpenWBEM::CIMValue& texts, const OpenWBEM::String& className,
                                std::string_view name) const;

    const cimom::Cimom& cimom_;
    const OpenWBEM::String& nameSpace_;
    const XmlLimits& limits_;
    unsigned depth_ = 0; ///< of objects embedded in one another
};

} // namespace cimserver::cimxml
