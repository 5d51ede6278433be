// Base class of all exceptions of the library, and the macros to declare, define and throw them.

#pragma once

#include "OW_AutoPtr.hpp"
#include "OW_CommonFwd.hpp"
#include "OW_config.h"
#include <exception>
#include <iosfwd>
#include <new>

namespace OpenWBEM {

/// Says what went wrong and where. Catch it by reference: only derived classes can be made, copied and thrown. Copying
/// never fails. Without memory a text is lost, but not the exception.
class OW_VISIBILITY_DEFAULT OW_COMMON_API Exception : public std::exception {
  public:
    static const int UNKNOWN_SUBCLASS_ID = -1;
    static const int UNKNOWN_ERROR_CODE = -1;

    /// Name of the class, such as "CIMException".
    virtual const char* type() const;
    /// The message, never null; lives as long as this object.
    virtual const char* getMessage() const;
    /// Source file that threw, never null.
    const char* getFile() const;
    /// Line that threw; 0 if not known.
    int getLine() const;
    /// The cause, owned by this object; null if there is none.
    const Exception* getSubException() const;
    /// Code within the class; UNKNOWN_ERROR_CODE if the thrower gave none.
    int getErrorCode() const;
    /// Number that identifies the class, one of ExceptionIds; UNKNOWN_SUBCLASS_ID for a class without one.
    int getSubClassId() const;
    /// A copy that the caller owns; null if there is no memory.
    virtual Exception* clone() const;
    /// The same as getMessage().
    const char* what() const noexcept override;

  protected:
    /// file and msg are copied and may be null; other is cloned and may be null.
    Exception(const char* file, int line, const char* msg, int errorCode, const Exception* other = nullptr,
              int subClassId = UNKNOWN_SUBCLASS_ID);
    /// For older sources: without code and id, or with the id first.
    OW_DEPRECATED Exception(const char* file, int line, const char* msg);
    OW_DEPRECATED Exception(int subClassId, const char* file, int line, const char* msg, int errorCode,
                            const Exception* other = nullptr);
    Exception(const Exception& e) noexcept;
    ~Exception() noexcept override;
    Exception& operator=(const Exception& rhs) noexcept;
    void swap(Exception& x) noexcept;
    void setSubClassId(int subClassId);
    void setErrorCode(int errorCode);

  private:
    struct Texts;

    IntrusiveReference<const Texts> texts_; // shared with the copies; null if there was no memory
    int line_;
    int errorCode_;
    int subClassId_;
};

/// Prints "FILE: LINE TYPE: MESSAGE", with "[no file]", "[no line]" and "[no message]" for what is missing.
std::ostream& operator<<(std::ostream& os, const Exception& e);

namespace ExceptionDetail {
/// Writes the system's text of errnum, between "msg: errnum(" and ")" unless msg is null. At most size bytes, always
/// NUL-terminated.
OW_VISIBILITY_DEFAULT void formatErrno(char* buffer, size_t size, const char* msg, int errnum);

inline const char* textOf(const char* text) {
    return text;
}
template <class Text>
inline auto textOf(const Text& text) -> decltype(text.c_str()) {
    return text.c_str();
}

/// An exception of class Ex for an error of the operating system.
template <class Ex>
inline Ex makeErrno(const char* file, int line, const char* msg, int errnum, int errorCode) {
    char buffer[512];
    formatErrno(buffer, sizeof(buffer), msg, errnum);
    return Ex(file, line, buffer, errorCode);
}

/// Clones without throwing; null if there is no memory.
template <class Ex>
inline Ex* clone(const Ex& e) noexcept {
    return new (std::nothrow) Ex(e);
}
} // namespace ExceptionDetail

} // namespace OpenWBEM

// NOLINTBEGIN(bugprone-macro-parentheses): the names of types and members cannot be put in parentheses
/// Declares class NAMEException, derived from BASE. LINKAGE is one of the OW_..._API marks.
#define OW_DECLARE_APIEXCEPTION2(NAME, BASE, LINKAGE)                                                                  \
    class OW_VISIBILITY_DEFAULT LINKAGE NAME##Exception : public BASE {                                                \
      public:                                                                                                          \
        NAME##Exception(const char* file, int line, const char* msg,                                                   \
                        int errorCode = ::OpenWBEM::Exception::UNKNOWN_ERROR_CODE,                                     \
                        const ::OpenWBEM::Exception* otherException = nullptr,                                         \
                        int subClassId = ::OpenWBEM::Exception::UNKNOWN_SUBCLASS_ID);                                  \
        NAME##Exception(const NAME##Exception&) noexcept = default;                                                    \
        NAME##Exception& operator=(const NAME##Exception&) noexcept = default;                                         \
        ~NAME##Exception() noexcept override;                                                                          \
        NAME##Exception* clone() const noexcept override;                                                              \
        const char* type() const override;                                                                             \
    };
#define OW_DECLARE_APIEXCEPTION(NAME, LINKAGE) OW_DECLARE_APIEXCEPTION2(NAME, ::OpenWBEM::Exception, LINKAGE)
#define OW_DECLARE_EXCEPTION2(NAME, BASE) OW_DECLARE_APIEXCEPTION2(NAME, BASE, )
#define OW_DECLARE_EXCEPTION(NAME) OW_DECLARE_APIEXCEPTION2(NAME, ::OpenWBEM::Exception, )

/// Defines what the matching declaration declared. ID is the subclass id of exceptions that are made without one.
#define OW_DEFINE_EXCEPTION_MEMBERS(NAME, BASE, ID)                                                                    \
    NAME##Exception::NAME##Exception(const char* file, int line, const char* msg, int errorCode,                       \
                                     const ::OpenWBEM::Exception* otherException, int subClassId)                      \
        : BASE(file, line, msg, errorCode, otherException,                                                             \
               subClassId == ::OpenWBEM::Exception::UNKNOWN_SUBCLASS_ID ? (ID) : subClassId) {}                        \
    NAME##Exception::~NAME##Exception() noexcept {}                                                                    \
    NAME##Exception* NAME##Exception::clone() const noexcept {                                                         \
        return ::OpenWBEM::ExceptionDetail::clone(*this);                                                              \
    }                                                                                                                  \
    const char* NAME##Exception::type() const {                                                                        \
        return #NAME "Exception";                                                                                      \
    }
#define OW_DEFINE_EXCEPTION2(NAME, BASE)                                                                               \
    OW_DEFINE_EXCEPTION_MEMBERS(NAME, BASE, ::OpenWBEM::Exception::UNKNOWN_SUBCLASS_ID)
#define OW_DEFINE_EXCEPTION(NAME) OW_DEFINE_EXCEPTION2(NAME, ::OpenWBEM::Exception)
/// The id is ::OpenWBEM::ExceptionIds::NAMEExceptionId, to which a provider adds its own constants.
#define OW_DEFINE_EXCEPTION_WITH_BASE_AND_ID(NAME, BASE)                                                               \
    OW_DEFINE_EXCEPTION_MEMBERS(NAME, BASE, ::OpenWBEM::ExceptionIds::NAME##ExceptionId)
#define OW_DEFINE_EXCEPTION_WITH_ID(NAME) OW_DEFINE_EXCEPTION_WITH_BASE_AND_ID(NAME, ::OpenWBEM::Exception)

/// Throw exType with the place of the macro. msg is a const char*, which is copied; subex is the cause itself, not a
/// pointer to it, and is cloned.
#define OW_THROW(exType, msg) throw exType(__FILE__, __LINE__, (msg))
#define OW_THROWL(exType, line, msg) throw exType(__FILE__, (line), (msg))
#define OW_THROW_ERR(exType, msg, err) throw exType(__FILE__, __LINE__, (msg), (err))
#define OW_THROW_SUBEX(exType, msg, subex)                                                                             \
    throw exType(__FILE__, __LINE__, (msg), ::OpenWBEM::Exception::UNKNOWN_ERROR_CODE, &(subex))
#define OW_THROW_ERR_SUBEX(exType, msg, err, subex) throw exType(__FILE__, __LINE__, (msg), (err), &(subex))
/// For an error of the operating system: its text and its number as the code. The first form reads errno.
#define OW_THROW_ERRNO(exType) OW_THROW_ERRNO1(exType, errno)
#define OW_THROW_ERRNO1(exType, errnum)                                                                                \
    throw ::OpenWBEM::ExceptionDetail::makeErrno<exType>(__FILE__, __LINE__, nullptr, (errnum), (errnum))
/// The same with the message "msg: errnum(text)"; msg is a const char* or has c_str(). The code stays unknown.
#define OW_THROW_ERRNO_MSG(exType, msg) OW_THROW_ERRNO_MSG1(exType, msg, errno)
#define OW_THROW_ERRNO_MSG1(exType, msg, errnum)                                                                       \
    throw ::OpenWBEM::ExceptionDetail::makeErrno<exType>(__FILE__, __LINE__, ::OpenWBEM::ExceptionDetail::textOf(msg), \
                                                         (errnum), ::OpenWBEM::Exception::UNKNOWN_ERROR_CODE)

// NOLINTEND(bugprone-macro-parentheses)
