// Writes the names of CIM objects as CIM-XML elements.
#pragma once

#include "cimserver/cimxml/XmlWriter.hpp"

#include "OW_CIM.hpp"

#include <string_view>

namespace cimserver::cimxml {

/// INSTANCENAME. Throws CimError Failed naming a key without a usable value.
void writeInstanceName(XmlWriter& writer, const OpenWBEM::CIMObjectPath& path);
/// INSTANCEPATH with `host`, and with `nameSpace` when the path has none of its own.
void writeInstancePath(XmlWriter& writer, const OpenWBEM::CIMObjectPath& path, std::string_view host,
                       const OpenWBEM::String& nameSpace);
/// CLASSPATH, with `nameSpace`.
void writeClassPath(XmlWriter& writer, const OpenWBEM::String& className, std::string_view host,
                    const OpenWBEM::String& nameSpace);
/// VALUE.REFERENCE, with the path's namespace when it has one; a path without keys names a class.
void writeReference(XmlWriter& writer, const OpenWBEM::CIMObjectPath& path);
/// The instance's path in the namespace, with its class and its key list.
OpenWBEM::CIMObjectPath nameOfInstance(const OpenWBEM::CIMInstance& instance, const OpenWBEM::String& nameSpace);

} // namespace cimserver::cimxml
