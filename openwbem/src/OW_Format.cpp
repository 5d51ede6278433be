#include "OW_Format.hpp"

#include "OW_StringBuffer.hpp"
#include <ostream>

namespace OpenWBEM {

Format::Format(const char* fmt, const String& a) {
    insert(fmt, &a, 1);
}

Format::Format(const char* fmt, const String& a, const String& b) {
    const String arguments[] = {a, b};
    insert(fmt, arguments, 2);
}

Format::Format(const char* fmt, const String& a, const String& b, const String& c) {
    const String arguments[] = {a, b, c};
    insert(fmt, arguments, 3);
}

void Format::insert(const char* fmt, const String* arguments, size_t count) {
    StringBuffer text;
    const char* fault = nullptr; // the rest of the format that the text says is wrong
    for (const char* p = fmt; *p != '\0' && !fault; ++p) {
        if (*p != '%') {
            text += *p;
            continue;
        }
        const char specifier = *++p;
        if (specifier == '%') {
            text += '%';
        } else if (specifier < '1' || specifier > '9') {
            fault = specifier == '\0' ? "%" : p;
        } else if (static_cast<size_t>(specifier - '0') > count) {
            text += "\n*** Parameter specifier too large.";
            fault = p;
        } else {
            text += arguments[specifier - '1'];
        }
        if (specifier == '\0') {
            break;
        }
    }
    if (fault) {
        text += "\n*** Error in format string at \"";
        text += fault;
        text += "\".\n";
    }
    text_ = text.releaseString();
}

std::ostream& operator<<(std::ostream& ostr, const Format& f) {
    return ostr << f.toString();
}

} // namespace OpenWBEM
