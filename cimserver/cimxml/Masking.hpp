// Takes secrets out of requests and replies before they are written to a dump.
#pragma once

#include "cimserver/cimxml/XmlDocument.hpp"
#include "cimserver/http/Message.hpp"

namespace cimserver::cimxml {

/// The bodies with the contents of every property, parameter and key whose name contains "password" (in any case), of
/// embedded objects that mention one, and of the value that a GetProperty or SetProperty of such a property moves
/// replaced by "***". A body that holds none of these is shown as it is, but one with comments or processing
/// instructions loses them. An XML body that is not well-formed or exceeds the limits is shown as "***" only.
http::ShownBodies maskedBodies(const http::Request& request, const http::Response& response, const XmlLimits& limits);

} // namespace cimserver::cimxml
