// Which requests are passed to the application: decided from the head alone, before the body is read.
#pragma once

#include "cimserver/http/Message.hpp"
#include "cimserver/http/RequestReader.hpp"
#include "cimserver/http/Settings.hpp"

#include <optional>

namespace cimserver::http {

/// The path of an origin-form or absolute-form target, without the query.
std::string_view pathOf(std::string_view target);

/// A plain text answer of that status.
Response textResponse(unsigned status, std::string_view text);

/// The answer to a method that a path does not offer (405) or that nobody knows (501).
Response refuseMethod(const std::string& method, std::string_view allowed);

/// Whether the request is for this server, as Host and an absolute target tell: an IP address, "localhost" or one of
/// the names. Otherwise a web page could reach the server by its own host name, which its owner made lead here.
bool isForThisHost(const Request& request, const std::vector<std::string>& hostNames);

/// True for the health request, which needs no authentication.
bool isHealthRequest(const Request& request);

/// True for the request whether the server is ready, which needs none either.
bool isReadyRequest(const Request& request);

/// The answer to either: 200 "ok" or with the notices, or 503 with the problems.
Response healthResponse(const std::string& problems, const std::string& notices);

/// The methods of the served paths, for the Allow field.
constexpr const char* kAllowed = "POST, M-POST, OPTIONS";

/// True for the OPTIONS request, which the application's fixed response answers.
bool asksForOptions(const Request& request);

/// The transport's own refusals (404, 405, 501, 411, 413, 415, 406, 417). Nothing when the request is one for the
/// handler.
std::optional<Response> answerFromHead(const Request& request, const Framing& framing, const Limits& limits);

/// False when an Accept field excludes both application/xml and text/xml.
bool acceptsXml(std::string_view accept);

} // namespace cimserver::http
