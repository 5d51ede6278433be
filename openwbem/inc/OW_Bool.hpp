// Truth value that text and pointers do not turn into by accident.

#pragma once

#include "OW_CommonFwd.hpp"
#include "OW_Types.hpp"
#include "OW_config.h"
#include <iosfwd>

namespace OpenWBEM {

class OW_COMMON_API Bool {
  public:
    /// False.
    Bool() : m_value(false) {}
    Bool(bool value) : m_value(value) {}
    /// A pointer is no truth value.
    template <typename T>
    Bool(const T*) = delete;

    operator bool() const { return m_value; }
    bool operator!() const { return !m_value; }
    bool operator==(bool arg) const { return m_value == arg; }
    bool operator!=(bool arg) const { return m_value != arg; }
    bool operator==(const Bool& arg) const { return m_value == arg.m_value; }
    bool operator!=(const Bool& arg) const { return m_value != arg.m_value; }
    /// "true" or "false".
    String toString() const;

  private:
    bool m_value;
};

/// False comes before true.
inline bool operator<(const Bool& x, const Bool& y) {
    return !x && static_cast<bool>(y);
}

/// Prints toString().
std::ostream& operator<<(std::ostream& ostrm, const Bool& arg);

} // namespace OpenWBEM
