// An HTTP request as the transport passes it on, and the answer it expects back.
#pragma once

#include <functional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace cimserver::http {

/// Who sent a request, as far as the transport established it.
struct Identity {
    std::string user;     ///< empty when the server runs without authentication
    bool mayWrite = true; ///< false for the role "read": modifying operations are refused with CIM error 2
};

/// Header fields in the order received; names keep their spelling and are compared ignoring case.
class Fields {
  public:
    void add(std::string name, std::string value) { fields_.emplace_back(std::move(name), std::move(value)); }
    /// The value of the first field of that name; null when there is none.
    const std::string* find(std::string_view name) const;
    const std::vector<std::pair<std::string, std::string>>& all() const { return fields_; }

  private:
    std::vector<std::pair<std::string, std::string>> fields_;
};

/// A complete request: the head was within the limits, the sender is authenticated, the body is whole.
struct Request {
    std::string method;    ///< "POST", "M-POST", "OPTIONS", ...
    std::string target;    ///< as sent, e.g. "/cimom"
    unsigned version = 11; ///< 10 or 11
    Fields fields;
    std::string body;
    std::string peer; ///< address and port for logs, e.g. "127.0.0.1:41234"
    Identity identity;
};

/// An answer; the transport adds Content-Length, Connection and Date.
struct Response {
    unsigned status = 200;
    Fields fields;
    std::string body;
};

/// What a dump shows of the bodies of a request and its answer.
struct ShownBodies {
    std::string request;
    std::string response;
};

using Mask = std::function<ShownBodies(const Request&, const Response&)>;

/// What is served.
struct Application {
    /// Answers one request. Called on worker threads, several at a time; an exception becomes HTTP 500.
    std::function<Response(const Request&)> handle;
    /// The answer to OPTIONS; the transport adds Allow.
    Response options{};
    /// What is wrong, a line each, for the health request; empty when nothing is. Called on the I/O thread.
    std::function<std::string()> problems{};
    /// Masks secrets for the dump. Called on the I/O thread; without it a dump shows no bodies.
    Mask mask{};
};

} // namespace cimserver::http
