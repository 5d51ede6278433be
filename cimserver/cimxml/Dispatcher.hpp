// The CIM-XML side of the server: takes a request as the transport hands it on, has the operation carried out, and
// writes the answer.
#pragma once

#include "Enumerations.hpp"
#include "XmlDocument.hpp"

#include "cimserver/http/Message.hpp"
#include "cimserver/operations/Cimom.hpp"

#include <chrono>
#include <string>
#include <string_view>

namespace cimserver::cimxml {

class AuditRecord;
class CimHeaders;
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
    explicit Dispatcher(operations::Cimom& cimom, DispatcherSettings settings = {});

    /// What is no CIM-XML request gets HTTP 400 or 501 with CIMError; everything else HTTP 200 with the result or an
    /// ERROR. Never throws.
    http::Response handle(const http::Request& request) noexcept;

  private:
    struct Outcome {
        int code = 0; ///< CIM status code; 0: done
        std::string description;
    };

    http::Response answer(const http::Request& request);
    std::string reply(const http::Request& request, const RequestMessage& message);
    template <typename Work>
    Outcome attempt(Work work);
    void runOperation(const operations::RequestContext& context, const RequestMessage& message, AuditRecord& audit,
                      XmlWriter& content);
    bool modifies(const RequestMessage& message) const;

    operations::Cimom& cimom_;
    const DispatcherSettings settings_;
    Enumerations enumerations_;
};

} // namespace cimserver::cimxml
