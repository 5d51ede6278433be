#include "OW_CIMException.hpp"

#include "OW_ExceptionIds.hpp"
#include "OW_IntrusiveCountableBase.hpp"
#include <array>
#include <cstring>
#include <string>
#include <utility>

namespace OpenWBEM {

namespace {
constexpr std::array<const char*, 18> kTexts = {{
    "no error",
    "general error",
    "Access to CIM resource unavailable to client",
    "namespace does not exist",
    "invalid parameter passed to method",
    "class does not exist",
    "requested object could not be found",
    "requested operation is not supported",
    "operation cannot be done on class with subclasses",
    "operator cannot be done on class with instances",
    "specified superclass does not exist",
    "object already exists",
    "specified property does not exist",
    "value supplied is incompatible with type",
    "query language is not recognized or supported",
    "query is not valid for the specified query language",
    "extrinsic method could not be executed",
    "extrinsic method does not exist",
}};

const char* textOf(int code) {
    return code >= 0 && static_cast<size_t>(code) < kTexts.size() ? kTexts[static_cast<size_t>(code)] : "unknown error";
}

std::string longText(const char* text, const char* message) {
    if (*message == '\0') {
        return text;
    }
    if (std::strncmp(message, text, std::strlen(text)) == 0) {
        return message;
    }
    return std::string(text) + " (" + message + ")";
}
} // namespace

struct CIMException::LongText : public IntrusiveCountableBase {
    explicit LongText(std::string t) : text(std::move(t)) {}
    const std::string text;
};

CIMException::CIMException(const char* file, int line, ErrNoType errval, const char* msg, const Exception* other)
    : Exception(file, line, msg, errval, other, ExceptionIds::CIMExceptionId) {}

CIMException::CIMException(const CIMException& e) noexcept = default;
CIMException& CIMException::operator=(const CIMException& rhs) noexcept = default;
CIMException::~CIMException() noexcept = default;

void CIMException::swap(CIMException& x) noexcept {
    Exception::swap(x);
    longText_.swap(x.longText_);
}

const char* CIMException::type() const {
    return "CIMException";
}

CIMException* CIMException::clone() const noexcept {
    return ExceptionDetail::clone(*this);
}

CIMException::ErrNoType CIMException::getErrNo() const {
    return static_cast<ErrNoType>(getErrorCode());
}

void CIMException::setErrNo(ErrNoType e) {
    setErrorCode(e);
}

const char* CIMException::getMessage() const {
    if (!longText_) {
        const char* text = textOf(getErrorCode());
        try {
            longText_ = new LongText(longText(text, Exception::getMessage()));
        } catch (const std::bad_alloc&) {
            return text;
        }
    }
    return longText_->text.c_str();
}

} // namespace OpenWBEM
