// Makes requests from the bytes of a connection. Independent of sockets and time: the caller feeds it.
#pragma once

#include "cimserver/http/Message.hpp"
#include "cimserver/http/Settings.hpp"

#include <cstdint>
#include <memory>
#include <optional>

namespace cimserver::http {

/// How a request's body is delimited and what becomes of the connection.
struct Framing {
    bool keepAlive = false;
    bool chunked = false;
    bool expectsContinue = false;
    std::optional<std::uint64_t> contentLength;

    bool hasBody() const { return chunked || contentLength.value_or(0) > 0; }
};

/// Why the bytes are not a request. The stream is unusable afterwards.
struct ReadError {
    unsigned status = 400;
    std::string text;
};

class RequestReader {
  public:
    enum class Progress { NeedMore, Done, Failed };

    explicit RequestReader(const Limits& limits);
    ~RequestReader();
    RequestReader(const RequestReader&) = delete;
    RequestReader& operator=(const RequestReader&) = delete;

    /// Drops the present request; bytes after it are kept and begin the next.
    void reset();
    void feed(std::string_view bytes) { buffer_.append(bytes); }
    /// True when bytes of a next request are there; drops the empty lines that some clients send before one.
    bool hasInput();

    /// Bytes that are kept of this request and the next.
    std::size_t held() const;
    /// Frees what there is of the body.
    void dropBody();

    Progress readHead();
    /// After readHead: collects the body; with `discard` it is thrown away.
    Progress readBody(bool discard);

    /// After readHead. The Authorization field is not in `request().fields` but in authorization().
    Request& request() { return request_; }
    const Request& request() const { return request_; }
    const Framing& framing() const { return framing_; }
    const std::optional<std::string>& authorization() const { return authorization_; }
    /// After Failed.
    const ReadError& error() const { return error_; }

  private:
    struct Parser;

    Progress fail(ReadError error);
    void takeHead();
    Progress checkFraming();
    Progress checkFields();

    Limits limits_;
    std::string buffer_;
    std::unique_ptr<Parser> parser_;
    Request request_;
    Framing framing_;
    std::optional<std::string> authorization_;
    ReadError error_;
};

} // namespace cimserver::http
