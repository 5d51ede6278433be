#include "cimserver/cimxml/RequestedSelection.hpp"

#include "cimserver/cimxml/Arguments.hpp"

namespace cimserver::cimxml {

using namespace OpenWBEM;

RequestedSelection::RequestedSelection(const Arguments& arguments) : propertyList_(arguments.texts("PropertyList")) {
    using namespace OpenWBEM::WBEMFlags;
    selection_.localOnly = arguments.flag("LocalOnly") ? E_LOCAL_ONLY : E_NOT_LOCAL_ONLY;
    selection_.deep = arguments.flag("DeepInheritance") ? E_DEEP : E_SHALLOW;
    selection_.includeQualifiers = arguments.flag("IncludeQualifiers") ? E_INCLUDE_QUALIFIERS : E_EXCLUDE_QUALIFIERS;
    selection_.includeClassOrigin =
        arguments.flag("IncludeClassOrigin") ? E_INCLUDE_CLASS_ORIGIN : E_EXCLUDE_CLASS_ORIGIN;
    selection_.propertyList = propertyList_ ? &*propertyList_ : nullptr;
}

} // namespace cimserver::cimxml
