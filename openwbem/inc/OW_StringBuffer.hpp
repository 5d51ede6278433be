// Text under construction.

#pragma once

#include "OW_Bool.hpp"
#include "OW_CIMFwd.hpp"
#include "OW_Char16.hpp"
#include "OW_String.hpp"
#include "OW_Types.hpp"
#include "OW_config.h"
#include <cstring>
#include <iosfwd>
#include <string>

namespace OpenWBEM {

static const size_t OW_DEFAULT_ALLOCATION_UNIT = 128;

/// Text that grows at its end in constant time per character.
class OW_COMMON_API StringBuffer {
  public:
    /// The same as a member.
    static const size_t OW_DEFAULT_ALLOCATION_UNIT = OpenWBEM::OW_DEFAULT_ALLOCATION_UNIT;

    /// Empty, with room for that many bytes; 0 means OW_DEFAULT_ALLOCATION_UNIT.
    StringBuffer(size_t allocSize = OW_DEFAULT_ALLOCATION_UNIT);
    StringBuffer(const char* arg);
    StringBuffer(const String& arg);
    StringBuffer(const StringBuffer& arg);
    StringBuffer& operator=(const StringBuffer& arg);
    StringBuffer& operator=(const String& arg);
    StringBuffer& operator=(const char* arg);
    void swap(StringBuffer& arg);

    /// These append the text of the argument, reals with six places; a null pointer adds nothing, a character '\0' is
    /// added like any other.
    StringBuffer& append(char c);
    StringBuffer& append(const char* str) { return append(str, str ? std::strlen(str) : 0); }
    StringBuffer& append(const char* str, const size_t len);
    StringBuffer& append(const String& arg) { return append(arg.c_str(), arg.length()); }
    StringBuffer& append(const StringBuffer& arg);
    StringBuffer& operator+=(char c) { return append(c); }
    StringBuffer& operator+=(const char* str) { return append(str); }
    StringBuffer& operator+=(const String& arg) { return append(arg); }
    StringBuffer& operator+=(const StringBuffer& arg) { return append(arg); }
    StringBuffer& operator+=(Char16 arg) { return append(arg.toString()); }
    StringBuffer& operator+=(Bool arg) { return append(arg.toString()); }
    StringBuffer& operator+=(UInt8 v) { return append(std::to_string(v).c_str()); }
    StringBuffer& operator+=(Int8 v) { return append(std::to_string(v).c_str()); }
    StringBuffer& operator+=(UInt16 v) { return append(std::to_string(v).c_str()); }
    StringBuffer& operator+=(Int16 v) { return append(std::to_string(v).c_str()); }
    StringBuffer& operator+=(UInt32 v) { return append(std::to_string(v).c_str()); }
    StringBuffer& operator+=(Int32 v) { return append(std::to_string(v).c_str()); }
    StringBuffer& operator+=(UInt64 v) { return append(std::to_string(v).c_str()); }
    StringBuffer& operator+=(Int64 v) { return append(std::to_string(v).c_str()); }
    StringBuffer& operator+=(Real32 v) { return append(std::to_string(v).c_str()); }
    StringBuffer& operator+=(Real64 v) { return append(std::to_string(v).c_str()); }
    StringBuffer& operator+=(const CIMDateTime& arg) OW_DEPRECATED;
    StringBuffer& operator+=(const CIMObjectPath& arg) OW_DEPRECATED;

    /// The character at ndx; '\0' from the end on.
    char operator[](size_t ndx) const { return ndx < text_.length() ? text_[ndx] : '\0'; }
    String toString() const { return String(text_.data(), text_.length()); }
    /// Moves the text out: afterwards this may only be assigned to, reset or destroyed. length() is still the old one.
    String releaseString();
    /// Empties.
    void reset();
    /// Cuts the text at index, if it is longer.
    void truncate(size_t index);
    /// Removes the last character.
    void chop();
    /// Removes the blanks at both ends.
    void trim();
    size_t length() const { return length_; }
    /// Allocated size in bytes.
    size_t allocated() const { return allocated_; }
    /// The text, always NUL-terminated; valid until the next change.
    const char* c_str() const { return text_.c_str(); }
    /// These three are false on an empty buffer, equals("") too.
    bool equals(const char* arg) const { return arg && !text_.empty() && text_ == arg; }
    bool startsWith(char ch) const { return !text_.empty() && text_.front() == ch; }
    bool endsWith(char ch) const { return !text_.empty() && text_.back() == ch; }
    /// Replaces the text with the next line of the stream, or appends the line, and returns c_str(). The line ends
    /// before its newline or first '\r'. At the end of the stream eofbit is set, and failbit if nothing was read.
    const char* getLine(std::istream& is, bool resetBuffer = true);

  private:
    void grow();

    std::string text_;
    size_t length_;
    size_t allocated_;
};

std::ostream& operator<<(std::ostream& ostr, const StringBuffer& arg);

} // namespace OpenWBEM
