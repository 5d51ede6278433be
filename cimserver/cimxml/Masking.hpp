// Takes secrets out of requests and replies before they are written to a dump.
#pragma once

#include "cimserver/cimxml/WellFormedness.hpp"
#include "cimserver/cimxml/XmlDocument.hpp"
#include "cimserver/http/Message.hpp"

#include <string>
#include <string_view>

namespace cimserver::cimxml {

/// True for a text that contains "password", and for an embedded object that may spell it in another way.
bool holdsSecret(std::string_view text);

/// An error's text without what follows the name of a secret.
std::string withoutSecrets(const std::string& description);

/// Returns the bodies with secrets replaced by "***": the contents of every property, parameter and key whose name
/// contains "password" (in any case), embedded objects that mention one, and the value in a GetProperty or SetProperty
/// of such a property. Otherwise a body is shown unchanged, without comments and processing instructions. A request
/// that is not well-formed or exceeds the limits, and XML in a response that is not well-formed, is shown as "***".
http::ShownBodies maskedBodies(const http::Request& request, const http::Response& response, const XmlLimits& limits);

} // namespace cimserver::cimxml
