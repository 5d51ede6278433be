// The CIM-XML side of the server: takes a request as the transport hands it on, has the operation carried out, and
// writes the answer.
#pragma once

#include "cimserver/cimom/Cimom.hpp"
#include "cimserver/cimxml/Enumerations.hpp"
#include "cimserver/cimxml/XmlDocument.hpp"
#include "cimserver/http/Message.hpp"

#include <atomic>
#include <chrono>
#include <cstdint>
#include <string>
#include <string_view>

namespace cimserver::cimxml {

class AuditRecord;
struct Operation;
class RequestMessage;
class XmlWriter;

struct DispatcherSettings {
    std::string hostName;                         ///< in the paths of replies; empty: this machine's name
    XmlLimits xml;                                ///< of requests
    Enumerations::Limits enumerations;            ///< open at a time
    std::chrono::seconds longestEnumeration{300}; ///< the greatest OperationTimeout
};

/// Answers POST and M-POST requests. May be called from several threads.
class Dispatcher {
  public:
    /// `cimom` outlives the dispatcher.
    explicit Dispatcher(cimom::Cimom& cimom, DispatcherSettings settings = {});

    /// What is no CIM-XML request gets HTTP 400 or 501 with CIMError; everything else HTTP 200 with the result or an
    /// ERROR. Never throws.
    http::Response handle(const http::Request& request) noexcept;
    const DispatcherSettings& settings() const { return settings_; }
    /// Operations that ended in a CIM error since the start.
    std::uint64_t errors() const { return errors_; }

  private:
    http::Response answer(const http::Request& request);
    std::string reply(const http::Request& request, const RequestMessage& message);
    void run(const Operation* operation, const cimom::RequestContext& context, const RequestMessage& message,
             AuditRecord& audit, XmlWriter& content);

    cimom::Cimom& cimom_;
    const DispatcherSettings settings_;
    Enumerations enumerations_;
    std::atomic<std::uint64_t> errors_{0};
};

} // namespace cimserver::cimxml
