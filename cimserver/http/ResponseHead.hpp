// The head of an answer.
#pragma once

#include "cimserver/http/Message.hpp"

#include <cstddef>
#include <string>

namespace cimserver::http {

/// The status line and the header fields, with those that the transport adds, up to and with the empty line. `version`
/// is the request's. `room` is reserved behind it. I/O thread only.
std::string responseHead(const Response& response, unsigned version, bool closeAfter, std::size_t room);

} // namespace cimserver::http
