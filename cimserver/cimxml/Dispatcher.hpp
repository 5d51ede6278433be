// The CIM-XML side of the server: takes a request from the transport, runs the operation and writes the answer.
#pragma once

#include "cimserver/cim/CimError.hpp"
#include "cimserver/cimom/Cimom.hpp"
#include "cimserver/cimxml/Enumerations.hpp"
#include "cimserver/cimxml/WellFormedness.hpp"
#include "cimserver/http/Message.hpp"

#include <atomic>
#include <chrono>
#include <cstdint>
#include <map>
#include <string>

namespace cimserver::cimxml {

class AuditRecord;
struct Operation;
class RequestMessage;
class XmlWriter;

struct DispatcherSettings {
    std::string hostName;                          ///< in the paths of replies; empty: this machine's name
    XmlLimits xml;                                 ///< of requests
    Enumerations::Limits enumerations;             ///< open at a time
    std::chrono::seconds longestEnumeration{300};  ///< the greatest OperationTimeout
    std::map<std::string, std::string> errorHints; ///< by a failure's text, or "none"
    bool hideSecrets = false;                      ///< from users who may not write
};

/// Answers POST and M-POST requests. May be called from several threads.
class Dispatcher {
  public:
    /// `cimom` must outlive the dispatcher.
    explicit Dispatcher(cimom::Cimom& cimom, DispatcherSettings settings = {});

    /// Other HTTP methods get 405; a request that is not valid CIM-XML gets 400 or 501, usually with a CIMError header;
    /// one for which there is no memory gets 503, an internal failure 500. Every other request gets 200 with the result
    /// or an ERROR. Throws nothing but a Deferral.
    http::Response handle(const http::Request& request);
    const DispatcherSettings& settings() const { return settings_; }
    /// Operations that ended in a CIM error since the start.
    std::uint64_t errors() const { return errors_; }

  private:
    http::Response answer(const http::Request& request);
    http::Response reply(const http::Request& request, const RequestMessage& message);
    std::string hintFor(const Outcome& outcome) const;
    void run(const Operation* operation, const cimom::RequestContext& context, const RequestMessage& message,
             AuditRecord& audit, XmlWriter& content);

    cimom::Cimom& cimom_;
    const DispatcherSettings settings_;
    Enumerations enumerations_;
    std::atomic<std::uint64_t> errors_{0};
};

} // namespace cimserver::cimxml
