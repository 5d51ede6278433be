#include "OW_Exception.hpp"

#include "OW_Array.hpp"
#include "OW_Assertion.hpp"
#include "OW_Enumeration.hpp"
#include "OW_Format.hpp"
#include "OW_IntrusiveCountableBase.hpp"
#include "OW_NULLValueException.hpp"
#include "OW_NoSuchPropertyException.hpp"
#include "OW_NoSuchQualifierException.hpp"
#include <atomic>
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

    Texts(const char* file_, const char* message_, const Exception* cause_)
        : file(file_ ? file_ : ""), message(message_ ? message_ : ""), cause(cause_ ? cause_->clone() : nullptr) {}
    Texts(const Texts&) = delete;
    Texts& operator=(const Texts&) = delete;
    ~Texts() override { delete cause; }
};

Exception::Exception(const char* file, int line, const char* msg, int errorCode, const Exception* other, int subClassId)
    : m_line(line), m_errorCode(errorCode), m_subClassId(subClassId) {
    try {
        m_texts = new Texts(file, msg, other);
    } catch (const std::bad_alloc&) {
        m_texts = nullptr; // the exception under way is worth more than its text
    }
}

Exception::Exception(const Exception& e) noexcept = default;
Exception::~Exception() noexcept = default;
Exception& Exception::operator=(const Exception& rhs) noexcept = default;

void Exception::swap(Exception& x) noexcept {
    m_texts.swap(x.m_texts);
    std::swap(m_line, x.m_line);
    std::swap(m_errorCode, x.m_errorCode);
    std::swap(m_subClassId, x.m_subClassId);
}

const char* Exception::type() const {
    return "Exception";
}

const char* Exception::getMessage() const {
    return m_texts ? m_texts->message.c_str() : "";
}

const char* Exception::getFile() const {
    return m_texts ? m_texts->file.c_str() : "";
}

int Exception::getLine() const {
    return m_line;
}

const Exception* Exception::getSubException() const {
    return m_texts ? m_texts->cause : nullptr;
}

int Exception::getErrorCode() const {
    return m_errorCode;
}

int Exception::getSubClassId() const {
    return m_subClassId;
}

Exception* Exception::clone() const {
    return new (std::nothrow) Exception(*this);
}

const char* Exception::what() const noexcept {
    return getMessage();
}

void Exception::setSubClassId(int subClassId) {
    m_subClassId = subClassId;
}

void Exception::setErrorCode(int errorCode) {
    m_errorCode = errorCode;
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
    std::snprintf(buffer, size, "%s%s%s", msg ? msg : "", msg ? ": " : "", std::strerror(errnum));
}

int ExceptionDetail::allocateSubClassId() {
    static std::atomic<int> last{1000}; // below: ids that the library gives itself
    return ++last;
}

OW_DEFINE_EXCEPTION(Assertion)
OW_DEFINE_EXCEPTION(Enumeration)
OW_DEFINE_EXCEPTION(NULLValue)
OW_DEFINE_EXCEPTION(NoSuchProperty)
OW_DEFINE_EXCEPTION(NoSuchQualifier)
OW_DEFINE_EXCEPTION(OutOfBounds)

void ArrayDetail::throwArrayOutOfBounds(size_t size, size_t index) {
    OW_THROW(OutOfBoundsException, Format("Array Index out of bounds. size = %1, index = %2", size, index).c_str());
}

} // namespace OpenWBEM
