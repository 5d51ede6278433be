// Boolean that text and pointers do not convert to by accident.

#pragma once

#include "OW_CommonFwd.hpp"
#include "OW_Types.hpp"
#include "OW_config.h"
#include <iosfwd>

namespace OpenWBEM {

class OW_COMMON_API Bool {
  public:
    /// False.
    Bool() : value_(false) {}
    Bool(bool value) : value_(value) {}
    /// A pointer is not a boolean.
    template <typename T>
    Bool(const T*) = delete;

    operator bool() const { return value_; }
    bool operator!() const { return !value_; }
    bool operator==(bool arg) const { return value_ == arg; }
    bool operator!=(bool arg) const { return value_ != arg; }
    bool operator==(const Bool& arg) const { return value_ == arg.value_; }
    bool operator!=(const Bool& arg) const { return value_ != arg.value_; }
    /// "true" or "false".
    String toString() const;

    /// One byte, 0 or 1. readObject() throws an Exception at the end of the stream.
    void writeObject(std::ostream& ostrm) const;
    void readObject(std::istream& istrm);

  private:
    bool value_;
};

/// False comes before true.
inline bool operator<(const Bool& x, const Bool& y) {
    return !x && static_cast<bool>(y);
}

/// Prints toString().
std::ostream& operator<<(std::ostream& ostrm, const Bool& arg);

} // namespace OpenWBEM
