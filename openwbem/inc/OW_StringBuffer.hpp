// Text under construction.

#pragma once

#include "OW_CommonFwd.hpp"
#include "OW_String.hpp"
#include "OW_Types.hpp"
#include "OW_config.h"
#include <iosfwd>
#include <string>

namespace OpenWBEM {

/// Text that grows at its end in constant time per character.
class OW_COMMON_API StringBuffer {
  public:
    /// Empty, with room for that many bytes.
    explicit StringBuffer(size_t initialSize = 128);
    explicit StringBuffer(const char* arg);
    explicit StringBuffer(const String& arg);

    /// These append the text of the argument; a null pointer adds nothing, a character '\0' is added like any other.
    StringBuffer& append(char c);
    StringBuffer& append(const char* str);
    StringBuffer& append(const char* str, size_t len);
    StringBuffer& operator+=(char c) { return append(c); }
    StringBuffer& operator+=(const char* str) { return append(str); }
    StringBuffer& operator+=(const String& arg);
    StringBuffer& operator+=(const StringBuffer& arg);
    StringBuffer& operator+=(const Bool& arg);
    StringBuffer& operator+=(const Char16& arg);
    StringBuffer& operator+=(UInt8 v);
    StringBuffer& operator+=(Int8 v);
    StringBuffer& operator+=(UInt16 v);
    StringBuffer& operator+=(Int16 v);
    StringBuffer& operator+=(UInt32 v);
    StringBuffer& operator+=(Int32 v);
    StringBuffer& operator+=(UInt64 v);
    StringBuffer& operator+=(Int64 v);
    StringBuffer& operator+=(Real32 v);
    StringBuffer& operator+=(Real64 v);

    /// The character at ndx; '\0' from the end on.
    char operator[](size_t ndx) const;
    String toString() const;
    /// The text; this is empty afterwards.
    String releaseString();
    /// Empties.
    void reset();
    /// Cuts the text at index, if it is longer.
    void truncate(size_t index);
    size_t length() const;
    /// The terminated text, valid until the next change.
    const char* c_str() const;
    bool equals(const char* arg) const;
    bool equals(const StringBuffer& arg) const;
    bool endsWith(char ch) const;
    /// Replaces the text by the next line of the stream without its end; false at the end of the stream.
    bool getLine(std::istream& is);

  private:
    std::string m_text;
};

std::ostream& operator<<(std::ostream& ostr, const StringBuffer& arg);
inline bool operator==(const StringBuffer& x, const StringBuffer& y) {
    return x.equals(y);
}
inline bool operator!=(const StringBuffer& x, const StringBuffer& y) {
    return !x.equals(y);
}

} // namespace OpenWBEM
