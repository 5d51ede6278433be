// The members of String that compare, search and split.

#include "OW_Array.hpp"
#include "OW_CaseFolding.hpp"
#include "OW_String.hpp"
#include "OW_UTF8Utils.hpp"
#include <algorithm>
#include <cctype>
#include <cstring>
#include <strings.h>

namespace OpenWBEM {

namespace {
const char* orEmpty(const char* text) {
    return text ? text : "";
}

bool isBlank(char c) {
    return std::isspace(static_cast<unsigned char>(c)) != 0;
}

bool sameBytes(const char* a, const char* b, size_t len, String::EIgnoreCaseFlag ignoreCase) {
    return (ignoreCase == String::E_CASE_SENSITIVE ? std::strncmp(a, b, len) : ::strncasecmp(a, b, len)) == 0;
}
} // namespace

int String::compareTo(const String& arg) const {
    return buf_ == arg.buf_ ? 0 : std::strcmp(c_str(), arg.c_str());
}

int String::compareTo(const char* arg) const {
    return std::strcmp(c_str(), orEmpty(arg));
}

int String::compareToIgnoreCase(const String& arg) const {
    return buf_ == arg.buf_ ? 0 : UTF8Utils::compareToIgnoreCase(c_str(), arg.c_str());
}

int String::compareToIgnoreCase(const char* arg) const {
    return UTF8Utils::compareToIgnoreCase(c_str(), orEmpty(arg));
}

bool String::equals(const String& arg) const {
    return compareTo(arg) == 0;
}

bool String::equals(const char* arg) const {
    return compareTo(arg) == 0;
}

bool String::equalsIgnoreCase(const String& arg) const {
    const bool same = length() == arg.length() && std::memcmp(c_str(), arg.c_str(), length()) == 0;
    return same || compareToIgnoreCase(arg) == 0;
}

bool String::equalsIgnoreCase(const char* arg) const {
    return equals(arg) || compareToIgnoreCase(arg) == 0;
}

bool String::startsWith(const char* arg, EIgnoreCaseFlag ignoreCase) const {
    const char* beginning = orEmpty(arg);
    const size_t len = std::strlen(beginning);
    return len == 0 ? empty() : len <= length() && sameBytes(c_str(), beginning, len, ignoreCase);
}

bool String::startsWith(const String& arg, EIgnoreCaseFlag ignoreCase) const {
    return startsWith(arg.c_str(), ignoreCase);
}

bool String::startsWith(char arg) const {
    return !empty() && c_str()[0] == arg;
}

bool String::endsWith(const char* arg, EIgnoreCaseFlag ignoreCase) const {
    const char* ending = orEmpty(arg);
    const size_t len = std::strlen(ending);
    return len == 0 ? empty() : len <= length() && sameBytes(c_str() + length() - len, ending, len, ignoreCase);
}

bool String::endsWith(const String& arg, EIgnoreCaseFlag ignoreCase) const {
    return endsWith(arg.c_str(), ignoreCase);
}

bool String::endsWith(char arg) const {
    return !empty() && c_str()[length() - 1] == arg;
}

size_t String::indexOf(char ch, size_t fromIndex) const {
    return fromIndex < length() ? buf_.getPtr()->text.find(ch, fromIndex) : npos;
}

size_t String::indexOf(const char* arg, size_t fromIndex) const {
    return fromIndex < length() ? buf_.getPtr()->text.find(orEmpty(arg), fromIndex) : npos;
}

size_t String::indexOf(const String& arg, size_t fromIndex) const {
    return indexOf(arg.c_str(), fromIndex);
}

size_t String::lastIndexOf(char ch, size_t fromIndex) const {
    return buf_ ? buf_.getPtr()->text.rfind(ch, fromIndex) : npos;
}

size_t String::lastIndexOf(const char* arg, size_t fromIndex) const {
    return buf_ ? buf_.getPtr()->text.rfind(orEmpty(arg), fromIndex) : npos;
}

size_t String::lastIndexOf(const String& arg, size_t fromIndex) const {
    return lastIndexOf(arg.c_str(), fromIndex);
}

String String::substring(size_t beginIndex, size_t len) const {
    if (beginIndex >= length()) {
        return String();
    }
    if (beginIndex == 0 && len >= length()) {
        return *this;
    }
    return String(c_str() + beginIndex, std::min(len, length() - beginIndex));
}

bool String::isSpaces() const {
    return std::all_of(c_str(), c_str() + length(), isBlank);
}

StringArray String::tokenize(const char* delims, EReturnDelimitersFlag returnDelimitersFlag,
                             EEmptyTokenReturnFlag returnEmptyTokens) const {
    StringArray tokens;
    if (empty() || !delims) {
        return empty() ? tokens : StringArray(1, *this);
    }
    const bool withDelimiters = returnDelimitersFlag == E_RETURN_TOKENS || returnDelimitersFlag == E_RETURN_DELIMITERS;
    const char* const first = c_str();
    const char* const last = first + length();
    for (const char* p = first; p < last;) {
        const size_t len = std::strcspn(p, delims);
        // An empty piece counts between two delimiters only, not before the first or after the last.
        if (len != 0 || (returnEmptyTokens == E_RETURN_EMPTY_TOKENS && p != first && p < last)) {
            tokens.push_back(String(p, len));
        }
        p += len;
        if (withDelimiters && p < last) {
            tokens.push_back(String(p, 1));
        }
        ++p;
    }
    return tokens;
}

String& String::toLowerCase() {
    if (buf_) {
        std::string& text = buf_->text;
        std::transform(text.begin(), text.end(), text.begin(), toLowerASCII);
    }
    return *this;
}

String& String::toUpperCase() {
    if (buf_) {
        std::string& text = buf_->text;
        std::transform(text.begin(), text.end(), text.begin(),
                       [](unsigned char c) { return static_cast<char>(c >= 'a' && c <= 'z' ? c - 'a' + 'A' : c); });
    }
    return *this;
}

String& String::ltrim() {
    const char* end = c_str() + length();
    return erase(0, static_cast<size_t>(std::find_if_not(c_str(), end, isBlank) - c_str()));
}

String& String::rtrim() {
    size_t len = length();
    while (len != 0 && isBlank(c_str()[len - 1])) {
        --len;
    }
    return erase(len);
}

String& String::trim() {
    return rtrim().ltrim();
}

} // namespace OpenWBEM
