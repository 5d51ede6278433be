#include "cimserver/cim/CimError.hpp"

#include <exception>
#include <new>

namespace cimserver {

using OpenWBEM::CIMException;

namespace {

/// The standard text of a code that OpenWBEM does not know; null for the others.
const char* textOfNewerCode(Status code) {
    switch (code) {
    case Status::InvalidEnumerationContext:
        return "enumeration context is not valid";
    case Status::InvalidOperationTimeout:
        return "operation timeout is not supported";
    case Status::ContinuationOnErrorNotSupported:
        return "continuation on error is not supported";
    case Status::ServerLimitsExceeded:
        return "server limits exceeded";
    default:
        return nullptr;
    }
}

} // namespace

CimError::CimError(Status code, std::string_view detail)
    : CIMException(__FILE__, __LINE__, static_cast<ErrNoType>(code), std::string(detail).c_str()) {
    if (const char* text = textOfNewerCode(code)) {
        text_ = (detail.empty() ? text : std::string(text) + " (" + std::string(detail) + ")").c_str();
    }
}

CimError::CimError(const char* text)
    : CIMException(__FILE__, __LINE__, FAILED, text), text_(text != nullptr ? text : "") {}

const char* CimError::getMessage() const {
    return text_.empty() ? CIMException::getMessage() : text_.c_str();
}

CimError* CimError::clone() const noexcept {
    return new (std::nothrow) CimError(*this);
}

void rethrowAsCimException() {
    try {
        throw;
    } catch (const CIMException&) {
        throw;
    } catch (const Deferral&) {
        throw;
    } catch (const OpenWBEM::Exception& foreign) {
        throw CimError::fromException(foreign.getMessage());
    } catch (const std::exception& foreign) {
        throw CimError::fromException(foreign.what());
    } catch (...) {
        throw CimError::fromException("Unknown Exception");
    }
}

} // namespace cimserver
