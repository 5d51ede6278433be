// The CIM header fields of a request over HTTP, and those of its answer.
#pragma once

#include "cimserver/cimxml/RequestMessage.hpp"
#include "cimserver/http/Message.hpp"

#include <string>
#include <string_view>

namespace cimserver::cimxml {

/// The answer to OPTIONS: the protocol and the groups of operations that are offered.
http::Response optionsResponse();

/// The request's CIM header fields, under the prefix that an M-POST declares.
class CimHeaders {
  public:
    /// Throws HttpError 501 for an M-POST that declares another extension or none.
    explicit CimHeaders(const http::Request& request);

    /// Refuses anything but a method call (400 unsupported-operation), and another protocol version (501).
    void requireMethodCall() const;
    /// Refuses with header-mismatch when CIMMethod or CIMObject is missing, or one of them or CIMProtocolVersion
    /// differs from the message.
    void requireAgreement(const RequestMessage& message) const;

    /// Adds a CIM field to the answer, under the request's prefix.
    void add(http::Response& response, const std::string& name, std::string value) const;
    /// Adds the fields by which an answer to an M-POST says that the extension was applied.
    void addExtension(http::Response& response) const;

  private:
    const std::string* find(std::string_view name) const;

    const http::Request& request_;
    std::string prefix_; ///< "" or "73-"
};

} // namespace cimserver::cimxml
