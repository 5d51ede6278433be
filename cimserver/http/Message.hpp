// An HTTP request as the transport passes it on, and the answer it expects back.
#pragma once

#include <functional>
#include <memory>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace cimserver {
class MemoryAccount;
}

namespace cimserver::http {

/// Who sent a request, as far as the transport established it.
struct Identity {
    std::string user;     ///< empty when the server runs without authentication
    bool mayWrite = true; ///< false for the role "read": modifying operations are refused with CIM error 2
};

/// Header fields in the order received; names keep their spelling and are compared ignoring case.
class Fields {
  public:
    void add(std::string name, std::string value) {
        if (fields_.empty()) {
            fields_.reserve(8); // most heads have not more
        }
        fields_.emplace_back(std::move(name), std::move(value));
    }
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
    MemoryAccount* memory = nullptr; ///< of the request and its answer, if the transport keeps one
};

/// An answer; the transport adds Content-Length (or Transfer-Encoding), Connection and Date.
struct Response {
    unsigned status = 200;
    Fields fields;
    std::string body;
    /// The rest of a body that is made no faster than it is taken: each call returns what follows, the one after the
    /// last returns nothing. Null when the body is whole. Called on workers, one call at a time; an exception ends the
    /// connection, so that the client sees a body cut short.
    std::function<std::string()> rest{};
};

/// What a dump shows of the bodies of a request and its answer.
struct ShownBodies {
    std::string request;
    std::string response;
};

using Mask = std::function<ShownBodies(const Request&, const Response&)>;

/// A request under way. All members may be called from any thread.
class Exchange {
  public:
    virtual ~Exchange() = default;
    virtual const Request& request() const = 0;
    /// True when the client has closed its side. It may only have ended sending, and still read the answer.
    virtual bool abandoned() const = 0;
    /// To be called once; the request is not to be used afterwards.
    virtual void answer(Response response) = 0;
    /// Runs the task on a worker.
    virtual void post(std::function<void()> task) = 0;
};

/// What is served.
struct Application {
    /// Answers one request, now or later. Called on workers, several at a time; an exception becomes HTTP 500.
    std::function<void(const std::shared_ptr<Exchange>&)> handle;
    /// The answer to OPTIONS; the transport adds Allow.
    Response options{};
    /// What is wrong, a line each, for the health request; empty when nothing is. Called on the I/O thread.
    std::function<std::string()> problems{};
    /// Masks secrets for the dump. Called on the I/O thread; without it a dump shows no bodies.
    Mask mask{};
    /// What the health request is answered instead of "ok" when nothing is wrong; empty for "ok".
    std::function<std::string()> notices{};
    /// Finds out whether the server can do its work, and calls back once, on any thread, with what is wrong, a line
    /// each. Called on the I/O thread.
    std::function<void(std::function<void(const std::string&)>)> ready{};
};

} // namespace cimserver::http
