#include "OW_StringBuffer.hpp"

#include "OW_CIMDateTime.hpp"
#include "OW_CIMObjectPath.hpp"
#include <algorithm>
#include <istream>
#include <ostream>
#include <utility>

namespace OpenWBEM {

const size_t StringBuffer::OW_DEFAULT_ALLOCATION_UNIT;

StringBuffer::StringBuffer(size_t allocSize)
    : length_(0), allocated_(allocSize == 0 ? OW_DEFAULT_ALLOCATION_UNIT : allocSize) {}

StringBuffer::StringBuffer(const char* arg)
    : text_(arg ? arg : ""), length_(text_.length()), allocated_(length_ + OW_DEFAULT_ALLOCATION_UNIT) {}

StringBuffer::StringBuffer(const String& arg)
    : text_(arg.c_str(), arg.length()), length_(text_.length()), allocated_(length_ + OW_DEFAULT_ALLOCATION_UNIT) {}

StringBuffer::StringBuffer(const StringBuffer& arg) = default;
StringBuffer& StringBuffer::operator=(const StringBuffer& arg) = default;

StringBuffer& StringBuffer::operator=(const String& arg) {
    return *this = StringBuffer(arg);
}

StringBuffer& StringBuffer::operator=(const char* arg) {
    return *this = StringBuffer(arg);
}

void StringBuffer::swap(StringBuffer& arg) {
    text_.swap(arg.text_);
    std::swap(length_, arg.length_);
    std::swap(allocated_, arg.allocated_);
}

/// After a change of the text.
void StringBuffer::grow() {
    length_ = text_.length();
    if (length_ >= allocated_) {
        allocated_ = length_ + std::max(allocated_, OW_DEFAULT_ALLOCATION_UNIT);
    }
}

StringBuffer& StringBuffer::append(char c) {
    text_.push_back(c);
    grow();
    return *this;
}

StringBuffer& StringBuffer::append(const char* str, const size_t len) {
    if (len != 0) {
        text_.append(str, len);
        grow();
    }
    return *this;
}

StringBuffer& StringBuffer::append(const StringBuffer& arg) {
    text_.append(arg.text_);
    grow();
    return *this;
}

StringBuffer& StringBuffer::operator+=(const CIMDateTime& arg) {
    return append(arg.toString());
}

StringBuffer& StringBuffer::operator+=(const CIMObjectPath& arg) {
    return append(arg.toString());
}

String StringBuffer::releaseString() {
    String result(toString());
    std::string().swap(text_);
    return result;
}

void StringBuffer::reset() {
    text_.clear();
    length_ = 0;
}

void StringBuffer::truncate(size_t index) {
    if (index < text_.length()) {
        text_.resize(index);
        length_ = index;
    }
}

void StringBuffer::chop() {
    if (!text_.empty()) {
        truncate(text_.length() - 1);
    }
}

void StringBuffer::trim() {
    *this = toString().trim();
}

const char* StringBuffer::getLine(std::istream& is, bool resetBuffer) {
    if (resetBuffer) {
        reset();
    }
    std::string line;
    std::getline(is, line);
    append(line.data(), std::min(line.find('\r'), line.length()));
    return c_str();
}

std::ostream& operator<<(std::ostream& ostr, const StringBuffer& arg) {
    return ostr << arg.toString();
}

} // namespace OpenWBEM
