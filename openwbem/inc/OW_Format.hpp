// Text with inserted arguments.

#pragma once

#include "OW_String.hpp"
#include "OW_StringStream.hpp"
#include "OW_config.h"

namespace OpenWBEM {

/// Inserts the arguments, 1 to 9 of them, for %1 to %9 as operator<< prints them (so a UInt8 as a character, a bool as
/// a digit), in any order and repeatedly; %% is a percent sign. A faulty format ends the text with an error message.
class OW_COMMON_API Format {
  public:
    template <typename A, typename... B>
    Format(const char* fmt, const A& a, const B&... b) {
        static_assert(sizeof...(B) < 9, "Format takes nine arguments at most");
        const String arguments[] = {text(a), text(b)...};
        insert(fmt, arguments, sizeof...(B) + 1);
    }
    Format(const char* fmt, const String& a);
    Format(const char* fmt, const String& a, const String& b);
    Format(const char* fmt, const String& a, const String& b, const String& c);

    operator String() const { return text_; }
    String toString() const { return text_; }
    /// Valid as long as this object lives.
    const char* c_str() const { return text_.c_str(); }

  private:
    template <typename T>
    static String text(const T& t) {
        OStringStream stream;
        stream << t;
        return stream.releaseString();
    }
    static String text(const String& t) { return t; }
    static String text(const char* t) { return String(t); }
    static String text(char* t) { return String(t); }

    void insert(const char* fmt, const String* arguments, size_t count);

    String text_;
};

std::ostream& operator<<(std::ostream& ostr, const Format& f);

} // namespace OpenWBEM
