// The exception that carries a CIM status code to the client.

#pragma once

#include "OW_Exception.hpp"
#include "OW_config.h"

namespace OpenWBEM {

/// The one exception that a provider should throw: its code and its message reach the client.
class OW_VISIBILITY_DEFAULT OW_COMMON_API CIMException : public Exception {
  public:
    /// The status codes of CIM operations over HTTP. Servers also send other codes, so every int is a valid value.
    enum ErrNoType : int {
        SUCCESS = 0,
        FAILED = 1,
        ACCESS_DENIED = 2,
        INVALID_NAMESPACE = 3,
        INVALID_PARAMETER = 4,
        INVALID_CLASS = 5,
        NOT_FOUND = 6,
        NOT_SUPPORTED = 7,
        CLASS_HAS_CHILDREN = 8,
        CLASS_HAS_INSTANCES = 9,
        INVALID_SUPERCLASS = 10,
        ALREADY_EXISTS = 11,
        NO_SUCH_PROPERTY = 12,
        TYPE_MISMATCH = 13,
        QUERY_LANGUAGE_NOT_SUPPORTED = 14,
        INVALID_QUERY = 15,
        METHOD_NOT_AVAILABLE = 16,
        METHOD_NOT_FOUND = 17
    };

    /// file and msg are copied and may be null; other is cloned and may be null.
    CIMException(const char* file, int line, ErrNoType errval, const char* msg = nullptr,
                 const Exception* other = nullptr);
    CIMException(const CIMException& e) noexcept;
    CIMException& operator=(const CIMException& rhs) noexcept;
    ~CIMException() noexcept override;
    void swap(CIMException& x) noexcept;

    const char* type() const override;
    CIMException* clone() const noexcept override;
    /// The code; may be none of the enumerators.
    ErrNoType getErrNo() const;
    /// Has no effect on the text once getMessage() was called.
    void setErrNo(ErrNoType e);
    /// The text of the code, then the message in brackets. Without a message only the text of the code; when the
    /// message begins with that text, only the message. The result is composed on the first call and kept.
    const char* getMessage() const override;

  private:
    struct LongText;
    mutable IntrusiveReference<const LongText> longText_; // shared with the copies; null until getMessage()
};

} // namespace OpenWBEM

#define OW_THROWCIM(errval) throw CIMException(__FILE__, __LINE__, (errval))
/// msg is a const char*, which is copied.
#define OW_THROWCIMMSG(errval, msg) throw CIMException(__FILE__, __LINE__, (errval), (msg))
/// subex points to the cause, which is cloned.
#define OW_THROWCIM_SUBEX(errval, msg, subex) throw CIMException(__FILE__, __LINE__, (errval), (msg), (subex))
