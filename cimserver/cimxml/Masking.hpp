// Takes secrets out of requests and replies before they are written to a dump, and out of values for some users.
#pragma once

#include "cimserver/cimxml/WellFormedness.hpp"
#include "cimserver/cimxml/XmlDocument.hpp"
#include "cimserver/http/Message.hpp"

#include "OW_CIM.hpp"

#include <string>
#include <string_view>

namespace cimserver::cimxml {

/// True for a text that contains "password", and for an embedded object that may spell it in another way.
bool holdsSecret(std::string_view text);

/// An error's text without what follows the name of a secret.
std::string withoutSecrets(const std::string& description);

/// The value as somebody may see it who must not know secrets: "***" or NULL for a property whose name contains
/// "password", and for an embedded object that mentions one; otherwise as it is.
OpenWBEM::CIMValue valueWithoutSecret(const OpenWBEM::String& name, const OpenWBEM::CIMValue& value);
/// The instance with such values. Keys are left as they are.
OpenWBEM::CIMInstance withoutSecretValues(OpenWBEM::CIMInstance instance);

/// Returns the bodies with secrets replaced by "***": the contents of every property, parameter and key whose name
/// contains "password" (in any case), embedded objects that mention one, and the value in a GetProperty or SetProperty
/// of such a property. Otherwise a body is shown unchanged, without comments and processing instructions. A request
/// that is not well-formed or exceeds the limits, and XML in a response that is not well-formed, is shown as "***".
http::ShownBodies maskedBodies(const http::Request& request, const http::Response& response, const XmlLimits& limits);

} // namespace cimserver::cimxml
