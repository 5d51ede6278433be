// The TLS side of the listeners: a context made from the configured files, at start and at each reload.
#pragma once

#include "cimserver/http/Settings.hpp"

#include <boost/asio/ssl/context.hpp>

#include <memory>
#include <string>

namespace cimserver::http {

/// Throws std::invalid_argument naming the part of a cipher list that OpenSSL cannot use.
void checkCiphers(const std::string& ciphers);

/// TLS from the minimum version on. Throws std::runtime_error naming the file that cannot be used.
std::shared_ptr<boost::asio::ssl::context> makeTlsContext(const TlsSettings& settings);

/// The common name of the client's certificate when it sent one that was verified; otherwise empty.
std::string verifiedCommonName(SSL* connection);

} // namespace cimserver::http
