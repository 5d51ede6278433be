// The TLS side of the listeners: a context made from the configured files, at start and at each reload.
#pragma once

#include "cimserver/http/Settings.hpp"

#include <boost/asio/ssl/context.hpp>

#include <memory>
#include <string>

namespace cimserver::http {

/// TLS 1.2 and 1.3 with forward secrecy. Throws std::runtime_error naming the file that cannot be used.
std::shared_ptr<boost::asio::ssl::context> makeTlsContext(const TlsSettings& settings);

/// The common name of the client's certificate when it sent one that was verified; otherwise empty.
std::string verifiedCommonName(SSL* connection);

} // namespace cimserver::http
