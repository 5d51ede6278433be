#include "OW_Exception.hpp"

#include "OW_Array.hpp"
#include "OW_Assertion.hpp"
#include "OW_CIMErrorException.hpp"
#include "OW_EnumerationException.hpp"
#include "OW_ExceptionIds.hpp"
#include "OW_Format.hpp"
#include "OW_IntrusiveCountableBase.hpp"
#include "OW_NULLValueException.hpp"
#include "OW_NoSuchPropertyException.hpp"
#include "OW_NoSuchQualifierException.hpp"
#include <cstdio>
#include <cstring>
#include <ostream>
#include <string>
#include <utility>

namespace OpenWBEM {

struct Exception::Texts : public IntrusiveCountableBase {
    const std::string file;
    const std::string message;
    const Exception* const cause; // owned; only here is its destructor accessible

    Texts(const char* thrower, const char* msg, const Exception* other)
        : file(thrower ? thrower : ""), message(msg ? msg : ""), cause(other ? other->clone() : nullptr) {}
    Texts(const Texts&) = delete;
    Texts& operator=(const Texts&) = delete;
    ~Texts() override { delete cause; }
};

Exception::Exception(const char* file, int line, const char* msg, int errorCode, const Exception* other, int subClassId)
    : line_(line), errorCode_(errorCode), subClassId_(subClassId) {
    try {
        texts_ = new Texts(file, msg, other);
    } catch (const std::bad_alloc&) {
        texts_ = nullptr; // better to throw it without its text than to fail here
    }
}

Exception::Exception(const char* file, int line, const char* msg) : Exception(file, line, msg, UNKNOWN_ERROR_CODE) {}

Exception::Exception(int subClassId, const char* file, int line, const char* msg, int errorCode, const Exception* other)
    : Exception(file, line, msg, errorCode, other, subClassId) {}

Exception::Exception(const Exception& e) noexcept = default;
Exception::~Exception() noexcept = default;
Exception& Exception::operator=(const Exception& rhs) noexcept = default;

void Exception::swap(Exception& x) noexcept {
    texts_.swap(x.texts_);
    std::swap(line_, x.line_);
    std::swap(errorCode_, x.errorCode_);
    std::swap(subClassId_, x.subClassId_);
}

const char* Exception::type() const {
    return "Exception";
}

const char* Exception::getMessage() const {
    return texts_ ? texts_->message.c_str() : "";
}

const char* Exception::getFile() const {
    return texts_ ? texts_->file.c_str() : "";
}

int Exception::getLine() const {
    return line_;
}

const Exception* Exception::getSubException() const {
    return texts_ ? texts_->cause : nullptr;
}

int Exception::getErrorCode() const {
    return errorCode_;
}

int Exception::getSubClassId() const {
    return subClassId_;
}

Exception* Exception::clone() const {
    return new (std::nothrow) Exception(*this);
}

const char* Exception::what() const noexcept {
    return getMessage();
}

void Exception::setSubClassId(int subClassId) {
    subClassId_ = subClassId;
}

void Exception::setErrorCode(int errorCode) {
    errorCode_ = errorCode;
}

std::ostream& operator<<(std::ostream& os, const Exception& e) {
    if (*e.getFile() != '\0') {
        os << e.getFile() << ": ";
    } else {
        os << "[no file]: ";
    }
    if (e.getLine() != 0) {
        os << e.getLine() << ' ';
    } else {
        os << "[no line] ";
    }
    return os << e.type() << ": " << (*e.getMessage() != '\0' ? e.getMessage() : "[no message]");
}

void ExceptionDetail::formatErrno(char* buffer, size_t size, const char* msg, int errnum) {
    char text[256];
    const char* const description = ::strerror_r(errnum, text, sizeof(text));
    if (msg) {
        std::snprintf(buffer, size, "%s: %d(%s)", msg, errnum, description);
    } else {
        std::snprintf(buffer, size, "%s", description);
    }
}

OW_DEFINE_EXCEPTION_WITH_ID(Assertion)
OW_DEFINE_EXCEPTION_WITH_ID(Enumeration)
OW_DEFINE_EXCEPTION_WITH_ID(NULLValue)
OW_DEFINE_EXCEPTION_WITH_ID(NoSuchProperty)
OW_DEFINE_EXCEPTION_WITH_ID(NoSuchQualifier)
OW_DEFINE_EXCEPTION_WITH_ID(OutOfBounds)

const char* const CIMErrorException::unsupported_protocol_version = "unsupported-protocol-version";
const char* const CIMErrorException::multiple_requests_unsupported = "multiple-requests-unsupported";
const char* const CIMErrorException::unsupported_cim_version = "unsupported-cim-version";
const char* const CIMErrorException::unsupported_dtd_version = "unsupported-dtd-version";
const char* const CIMErrorException::request_not_valid = "request-not-valid";
const char* const CIMErrorException::request_not_well_formed = "request-not-well-formed";
const char* const CIMErrorException::request_not_loosely_valid = "request-not-loosely-valid";
const char* const CIMErrorException::header_mismatch = "header-mismatch";
const char* const CIMErrorException::unsupported_operation = "unsupported-operation";

CIMErrorException::CIMErrorException(const char* file, int line, const char* msg)
    : Exception(file, line, msg, UNKNOWN_ERROR_CODE, nullptr, ExceptionIds::CIMErrorExceptionId) {}
CIMErrorException::~CIMErrorException() noexcept = default;

CIMErrorException* CIMErrorException::clone() const noexcept {
    return ExceptionDetail::clone(*this);
}

const char* CIMErrorException::type() const {
    return "CIMErrorException";
}

void ArrayDetail::throwArrayOutOfBounds(size_t size, size_t index) {
    OW_THROW(OutOfBoundsException, Format("Array Index out of bounds. size = %1, index = %2", size, index).c_str());
}

} // namespace OpenWBEM
