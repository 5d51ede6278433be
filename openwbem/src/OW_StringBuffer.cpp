#include "OW_StringBuffer.hpp"

#include "OW_Bool.hpp"
#include "OW_Char16.hpp"
#include <istream>
#include <ostream>

namespace OpenWBEM {

StringBuffer::StringBuffer(size_t initialSize) {
    m_text.reserve(initialSize);
}

StringBuffer::StringBuffer(const char* arg) : m_text(arg ? arg : "") {}

StringBuffer::StringBuffer(const String& arg) : m_text(arg.c_str(), arg.length()) {}

StringBuffer& StringBuffer::append(char c) {
    m_text.push_back(c);
    return *this;
}

StringBuffer& StringBuffer::append(const char* str) {
    m_text.append(str ? str : "");
    return *this;
}

StringBuffer& StringBuffer::append(const char* str, size_t len) {
    m_text.append(str, len);
    return *this;
}

StringBuffer& StringBuffer::operator+=(const String& arg) {
    return append(arg.c_str(), arg.length());
}

StringBuffer& StringBuffer::operator+=(const StringBuffer& arg) {
    m_text.append(arg.m_text);
    return *this;
}

StringBuffer& StringBuffer::operator+=(const Bool& arg) {
    return *this += arg.toString();
}

StringBuffer& StringBuffer::operator+=(const Char16& arg) {
    return *this += arg.toString();
}

StringBuffer& StringBuffer::operator+=(UInt8 v) {
    return append(std::to_string(v).c_str());
}

StringBuffer& StringBuffer::operator+=(Int8 v) {
    return append(std::to_string(v).c_str());
}

StringBuffer& StringBuffer::operator+=(UInt16 v) {
    return append(std::to_string(v).c_str());
}

StringBuffer& StringBuffer::operator+=(Int16 v) {
    return append(std::to_string(v).c_str());
}

StringBuffer& StringBuffer::operator+=(UInt32 v) {
    return append(std::to_string(v).c_str());
}

StringBuffer& StringBuffer::operator+=(Int32 v) {
    return append(std::to_string(v).c_str());
}

StringBuffer& StringBuffer::operator+=(UInt64 v) {
    return append(std::to_string(v).c_str());
}

StringBuffer& StringBuffer::operator+=(Int64 v) {
    return append(std::to_string(v).c_str());
}

StringBuffer& StringBuffer::operator+=(Real32 v) {
    return *this += static_cast<Real64>(v);
}

StringBuffer& StringBuffer::operator+=(Real64 v) {
    return *this += String(v);
}

char StringBuffer::operator[](size_t ndx) const {
    return ndx < m_text.length() ? m_text[ndx] : '\0';
}

String StringBuffer::toString() const {
    return String(m_text.data(), m_text.length());
}

String StringBuffer::releaseString() {
    String result(toString());
    m_text.clear();
    return result;
}

void StringBuffer::reset() {
    m_text.clear();
}

void StringBuffer::truncate(size_t index) {
    if (index < m_text.length()) {
        m_text.resize(index);
    }
}

size_t StringBuffer::length() const {
    return m_text.length();
}

const char* StringBuffer::c_str() const {
    return m_text.c_str();
}

bool StringBuffer::equals(const char* arg) const {
    return m_text == (arg ? arg : "");
}

bool StringBuffer::equals(const StringBuffer& arg) const {
    return m_text == arg.m_text;
}

bool StringBuffer::endsWith(char ch) const {
    return !m_text.empty() && m_text.back() == ch;
}

bool StringBuffer::getLine(std::istream& is) {
    m_text.clear();
    if (!std::getline(is, m_text)) {
        return false;
    }
    if (endsWith('\r')) {
        m_text.pop_back();
    }
    return true;
}

std::ostream& operator<<(std::ostream& ostr, const StringBuffer& arg) {
    return ostr.write(arg.c_str(), static_cast<std::streamsize>(arg.length()));
}

} // namespace OpenWBEM
