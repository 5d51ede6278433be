// The CIM status codes with their texts, and the exception that carries one to the client.
#pragma once

#include "OW_CIMException.hpp"
#include "OW_String.hpp"

#include <string>
#include <string_view>
#include <utility>

namespace cimserver {

/// CIM status codes; those above 17 are newer than OpenWBEM's own list.
enum class Status {
    Failed = 1,
    AccessDenied = 2,
    InvalidNamespace = 3,
    InvalidParameter = 4,
    InvalidClass = 5,
    NotFound = 6,
    NotSupported = 7,
    NoSuchProperty = 12,
    TypeMismatch = 13,
    QueryLanguageNotSupported = 14,
    MethodNotFound = 17,
    InvalidEnumerationContext = 21,
    InvalidOperationTimeout = 22,
    ContinuationOnErrorNotSupported = 26,
    ServerLimitsExceeded = 27,
};

/// What the server itself throws; providers throw CIMException or anything else.
class CimError : public OpenWBEM::CIMException {
  public:
    /// getMessage() is the code's standard text with `detail` in brackets, as OpenWBEM composes it.
    CimError(Status code, std::string_view detail);
    /// Code Failed; getMessage() is exactly `text`, or the standard text when it is empty.
    static CimError fromException(const char* text) { return CimError(text); }

    const char* getMessage() const override;
    CimError* clone() const noexcept override;

  private:
    explicit CimError(const char* text);

    OpenWBEM::String text_; ///< empty: CIMException composes the text
};

/// Ends a run of a request that has done nothing yet, because the provider it needs has no room: it is run again later.
/// No error: whoever translates exceptions lets it pass.
class Deferral {};

/// Rethrows the exception being handled: a CIMException and a Deferral unchanged, any other as CimError::fromException
/// with its text ("Unknown Exception" when it has none).
[[noreturn]] void rethrowAsCimException();

/// Runs `call` and translates exceptions like rethrowAsCimException.
template <class Call>
auto asCimError(Call&& call) -> decltype(call()) {
    try {
        return call();
    } catch (...) {
        rethrowAsCimException();
    }
}

/// How an operation ended, for the reply, the counters, the audit and the log.
struct Outcome {
    int code = 0; ///< CIM status code; 0: done
    std::string description;
};

/// Runs `work`; an exception becomes the outcome.
template <class Work>
Outcome outcomeOf(Work&& work) {
    try {
        asCimError(std::forward<Work>(work));
        return {};
    } catch (const OpenWBEM::CIMException& error) {
        const int code = error.getErrNo();
        return {code == 0 ? static_cast<int>(Status::Failed) : code, error.getMessage()};
    }
}

} // namespace cimserver
