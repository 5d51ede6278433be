#include "Errors.hpp"

#include "OW_CIMException.hpp"

namespace cimserver::cimxml {
namespace {

constexpr std::size_t longestQuote = 120;

const char* youngerText(StatusCode code) {
    switch (code) {
    case InvalidEnumerationContext:
        return "enumeration context is not valid";
    case InvalidOperationTimeout:
        return "operation timeout is not supported";
    case ContinuationOnErrorNotSupported:
        return "continuation on error is not supported";
    case ServerLimitsExceeded:
        return "server limits exceeded";
    default:
        return nullptr;
    }
}

std::string description(StatusCode code, std::string_view detail) {
    if (const char* standard = youngerText(code)) {
        return std::string(standard) + " (" + std::string(detail) + ")";
    }
    const auto number = static_cast<OpenWBEM::CIMException::ErrNoType>(code);
    return OpenWBEM::CIMException(__FILE__, __LINE__, number, std::string(detail).c_str()).getMessage();
}

} // namespace

HttpError notWellFormed(std::string text) {
    return {400, "request-not-well-formed", std::move(text)};
}

HttpError notValid(std::string text) {
    return {400, "request-not-valid", std::move(text)};
}

HttpError notLooselyValid(std::string text) {
    return {400, "request-not-loosely-valid", std::move(text)};
}

HttpError headerMismatch(std::string text) {
    return {400, "header-mismatch", std::move(text)};
}

OperationError::OperationError(StatusCode code, std::string_view detail)
    : code_(code), text_(description(code, detail)) {}

std::string quote(std::string_view text) {
    if (text.size() <= longestQuote) {
        return "\"" + std::string(text) + "\"";
    }
    return "\"" + std::string(text.substr(0, longestQuote)) + "...\"";
}

} // namespace cimserver::cimxml
