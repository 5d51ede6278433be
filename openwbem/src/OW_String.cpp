#include "OW_String.hpp"

#include "OW_Array.hpp"
#include "OW_ExceptionIds.hpp"
#include "OW_UTF8Utils.hpp"
#include <cstdarg>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <istream>
#include <ostream>
#include <string>
#include <utility>
#include <vector>

namespace OpenWBEM {

OW_DEFINE_EXCEPTION_WITH_ID(StringConversion)

const size_t String::npos;

String::String(const char* str) : buf_(str ? new ByteBuf(str) : nullptr) {}
String::String(Int32 val) : buf_(new ByteBuf(std::to_string(val))) {}
String::String(UInt32 val) : buf_(new ByteBuf(std::to_string(val))) {}
String::String(Int64 val) : buf_(new ByteBuf(std::to_string(val))) {}
String::String(UInt64 val) : buf_(new ByteBuf(std::to_string(val))) {}
#if defined(OW_INT64_IS_LONG_LONG)
String::String(long val) : buf_(new ByteBuf(std::to_string(val))) {}
String::String(unsigned long val) : buf_(new ByteBuf(std::to_string(val))) {}
#endif
String::String(char c) : buf_(c != '\0' ? new ByteBuf(std::string(1, c)) : nullptr) {}
String::String(const char* str, size_t len) : buf_(str ? new ByteBuf(std::string(str, len)) : nullptr) {}

String::String(Real64 val) {
    format("%g", val);
}

String::String(ETakeOwnershipFlag, char* allocated, size_t len) {
    const AutoPtrVec<char> owner(allocated);
    *this = String(allocated, len);
}

String::ByteBuf& String::writable() {
    if (!buf_) {
        buf_ = new ByteBuf;
    }
    return *buf_;
}

size_t String::UTF8Length() const {
    return UTF8Utils::charCount(c_str());
}

const char* String::getBytes() const {
    return c_str();
}

char* String::allocateCString() const {
    const size_t size = length() + 1;
    char* copy = static_cast<char*>(std::malloc(size));
    if (copy) {
        std::memcpy(copy, c_str(), size);
    }
    return copy;
}

char String::charAt(size_t ndx) const {
    return ndx < length() ? c_str()[ndx] : '\0';
}

const char& String::operator[](size_t ndx) const {
    static const char none = '\0';
    const buf_t& buf = buf_;
    return ndx <= buf->text.length() ? buf->text[ndx] : none;
}

char& String::operator[](size_t ndx) {
    thread_local char none;
    none = '\0';
    ByteBuf& buf = *buf_;
    return ndx <= buf.text.length() ? buf.text[ndx] : none;
}

String String::toString() const {
    return *this;
}

UInt32 String::hashCode() const {
    UInt32 hash = 2166136261U; // FNV-1a
    for (const char* p = c_str(); *p != '\0'; ++p) {
        hash = (hash ^ static_cast<unsigned char>(*p)) * 16777619U;
    }
    return hash;
}

String& String::concat(const char* arg) {
    if (arg) {
        writable().text.append(arg);
    }
    return *this;
}

String& String::concat(const String& arg) {
    const String source(arg); // arg may be this String
    if (source.buf_) {
        writable().text.append(source.c_str(), source.length());
    }
    return *this;
}

String& String::concat(char arg) {
    writable().text.push_back(arg);
    return *this;
}

String& String::erase() {
    buf_ = nullptr;
    return *this;
}

String& String::erase(size_t idx, size_t len) {
    if (idx < length() && len != 0) {
        writable().text.erase(idx, len);
    }
    return *this;
}

int String::format(const char* fmt, ...) {
    std::va_list args;
    va_start(args, fmt);
    const int len = std::vsnprintf(nullptr, 0, fmt, args);
    va_end(args);
    if (len >= 0) {
        std::string text(static_cast<size_t>(len) + 1, '\0');
        va_start(args, fmt);
        std::vsnprintf(&text[0], text.size(), fmt, args);
        va_end(args);
        text.pop_back();
        buf_ = new ByteBuf(std::move(text));
    }
    return len;
}

void String::writeObject(std::ostream& ostrm) const {
    const size_t len = length();
    if (len > 0xFFFFFFFFU) {
        OW_THROW(StringConversionException, "A text of more than 4 GB cannot be written");
    }
    for (int shift = 24; shift >= 0; shift -= 8) {
        ostrm.put(static_cast<char>((len >> shift) & 0xFF));
    }
    ostrm.write(c_str(), static_cast<std::streamsize>(len));
    if (!ostrm) {
        OW_THROW(StringConversionException, "Failed to write a text to a stream");
    }
}

void String::readObject(std::istream& istrm) {
    unsigned char head[4] = {};
    istrm.read(reinterpret_cast<char*>(head), sizeof(head));
    size_t left = (static_cast<size_t>(head[0]) << 24) | (static_cast<size_t>(head[1]) << 16) |
                  (static_cast<size_t>(head[2]) << 8) | head[3];
    std::string text;
    std::vector<char> piece(65536); // in pieces: a wrong length must not allocate gigabytes
    while (istrm && left != 0) {
        const size_t wanted = std::min(left, piece.size());
        istrm.read(piece.data(), static_cast<std::streamsize>(wanted));
        text.append(piece.data(), static_cast<size_t>(istrm.gcount()));
        left -= wanted;
    }
    if (!istrm) {
        OW_THROW(StringConversionException, "A text in a stream is shorter than it says");
    }
    buf_ = new ByteBuf(std::move(text));
}

unsigned long long int String::strtoull(const char* nptr, char** endptr, int base) {
    return ::strtoull(nptr, endptr, base);
}

long long int String::strtoll(const char* nptr, char** endptr, int base) {
    return ::strtoll(nptr, endptr, base);
}

const char* String::strchr(const char* theStr, int c) {
    return std::strchr(theStr, c);
}

String String::getLine(std::istream& istr) {
    std::string line;
    std::getline(istr, line);
    if (!line.empty() && line.back() == '\r') {
        line.pop_back();
    }
    return String(line.data(), line.length());
}

String operator+(const String& s1, const String& s2) {
    return String(s1.c_str(), s1.length()).concat(s2);
}

String operator+(const char* p, const String& s) {
    return String(p).concat(s);
}

String operator+(const String& s, const char* p) {
    return String(s.c_str(), s.length()).concat(p);
}

String operator+(char c, const String& s) {
    return String(c).concat(s);
}

String operator+(const String& s, char c) {
    return String(s.c_str(), s.length()).concat(c);
}

std::ostream& operator<<(std::ostream& ostr, const String& arg) {
    return ostr.write(arg.c_str(), static_cast<std::streamsize>(arg.length()));
}

} // namespace OpenWBEM
