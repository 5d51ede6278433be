#include "OW_UTF8Utils.hpp"

#include "OW_Array.hpp"
#include "OW_CaseFolding.hpp"
#include "OW_Char16.hpp"
#include "OW_ExceptionIds.hpp"
#include "OW_Format.hpp"
#include "OW_String.hpp"
#include "OW_StringBuffer.hpp"
#include <array>
#include <cstring>

namespace OpenWBEM {

OW_DEFINE_EXCEPTION_WITH_ID(InvalidUTF8)

namespace UTF8Utils {

namespace {
constexpr UInt32 kMalformed = 0xFFFFFFFF;

bool isContinuation(unsigned char c) {
    return (c & 0xC0) == 0x80;
}

// The length that the first byte of a sequence announces; 0 for a byte that cannot be first.
size_t sequenceLength(unsigned char first) {
    if (first < 0x80) {
        return 1;
    }
    if (first < 0xC2 || first > 0xF4) {
        return 0;
    }
    return first < 0xE0 ? 2 : first < 0xF0 ? 3 : 4;
}

// Reads one code point and moves p after it. From malformed text it takes one byte and returns kMalformed.
UInt32 decode(const char*& p) {
    static const UInt32 smallest[] = {0, 0, 0x80, 0x800, 0x10000};
    const unsigned char first = static_cast<unsigned char>(*p);
    const size_t len = sequenceLength(first);
    UInt32 code = len <= 1 ? first : first & (0xFFU >> (len + 1));
    for (size_t i = 1; i < len; ++i) {
        const unsigned char next = static_cast<unsigned char>(p[i]);
        if (!isContinuation(next)) // also true for the final NUL
        {
            ++p;
            return kMalformed;
        }
        code = (code << 6) | (next & 0x3FU);
    }
    const bool surrogate = code >= 0xD800 && code <= 0xDFFF;
    if (len == 0 || code < smallest[len] || code > 0x10FFFF || surrogate) {
        ++p;
        return kMalformed;
    }
    p += len;
    return code;
}

// Puts the code point into buffer and returns the number of bytes, 0 for a code point beyond Unicode's range.
size_t encode(UInt32 code, char (&buffer)[4]) {
    if (code > 0x10FFFF) {
        return 0;
    }
    const size_t len = code < 0x80 ? 1 : code < 0x800 ? 2 : code < 0x10000 ? 3 : 4;
    static const unsigned char heads[] = {0, 0, 0xC0, 0xE0, 0xF0};
    for (size_t i = len - 1; i > 0; --i) {
        buffer[i] = static_cast<char>(0x80 | (code & 0x3F));
        code >>= 6;
    }
    buffer[0] = static_cast<char>(heads[len] | code);
    return len;
}

// Iterates over the code points of a text's folded form.
class FoldedText {
  public:
    explicit FoldedText(const char* text) : next_(text), character_(text) {}

    // 0 at the end. Malformed bytes keep their value, beyond all code points.
    UInt32 next() {
        if (index_ == folded_.size() || folded_[index_] == 0) {
            character_ = next_;
            if (*next_ == '\0') {
                return 0;
            }
            fold();
        }
        return folded_[index_++];
    }
    // The beginning of the character that the last code point came from.
    const char* character() const { return character_; }

  private:
    void fold() {
        const UInt32 byte = static_cast<unsigned char>(*next_);
        const UInt32 code = decode(next_);
        index_ = 0;
        if (code == kMalformed) {
            folded_ = {{0x110000 + byte, 0, 0}};
        } else {
            folded_ = foldCase(code);
        }
    }

    const char* next_;
    const char* character_;
    std::array<UInt32, 3> folded_ = {{0, 0, 0}};
    size_t index_ = 0;
};

// The difference of the first bytes that differ, or of the folded code points there if none do.
int unfoldedDifference(const FoldedText& x, UInt32 codeOfX, const FoldedText& y, UInt32 codeOfY) {
    const char* a = x.character();
    const char* b = y.character();
    while (*a == *b && *a != '\0') {
        ++a;
        ++b;
    }
    const int difference = static_cast<unsigned char>(*a) - static_cast<unsigned char>(*b);
    return difference != 0 ? difference : codeOfX < codeOfY ? -1 : 1;
}
} // namespace

size_t charCount(const char* utf8str) {
    size_t count = 0;
    for (; *utf8str != '\0'; ++utf8str) {
        count += isContinuation(static_cast<unsigned char>(*utf8str)) ? 0U : 1U;
    }
    return count;
}

UInt16 UTF8toUCS2(const char* utf8char) {
    const UInt32 code = UTF8toUCS4(utf8char);
    return code > 0xFFFF ? UInt16(0xFFFF) : static_cast<UInt16>(code);
}

UInt32 UTF8toUCS4(const char* utf8char) {
    return decode(utf8char);
}

String UCS2toUTF8(UInt16 ucs2char) {
    return UCS4toUTF8(ucs2char);
}

String UCS4toUTF8(UInt32 ucs4char) {
    char buffer[4];
    return ucs4char == 0 ? String() : String(buffer, encode(ucs4char, buffer));
}

void UCS4toUTF8(UInt32 ucs4char, StringBuffer& sb) {
    char buffer[4];
    if (ucs4char != 0) {
        sb.append(buffer, encode(ucs4char, buffer));
    }
}

int compareToIgnoreCase(const char* str1, const char* str2) {
    // Up to the first byte outside ASCII, each byte is a character whose folded form is one byte too.
    for (; isASCII(*str1) && isASCII(*str2); ++str1, ++str2) {
        if (toLowerASCII(*str1) != toLowerASCII(*str2)) {
            return *str1 - *str2; // deliberately unfolded: "A" sorts before "_", "a" after it
        }
        if (*str1 == '\0') {
            return 0;
        }
    }
    FoldedText x(str1);
    FoldedText y(str2);
    for (;;) {
        const UInt32 codeOfX = x.next();
        const UInt32 codeOfY = y.next();
        if (codeOfX != codeOfY) {
            return unfoldedDifference(x, codeOfX, y, codeOfY);
        }
        if (codeOfX == 0) {
            return 0;
        }
    }
}

Array<UInt16> StringToUCS2(const String& input) {
    Array<UInt16> units;
    units.reserve(input.length());
    const char* const begin = input.c_str();
    for (const char* p = begin; p < begin + input.length();) {
        const size_t offset = static_cast<size_t>(p - begin);
        const UInt32 code = decode(p);
        if (code > 0xFFFF) {
            OW_THROW(InvalidUTF8Exception, Format("No 16-bit character at byte %1 of \"%2\"", offset, input).c_str());
        }
        units.push_back(static_cast<UInt16>(code));
    }
    return units;
}

String UCS2ToString(const void* input, size_t inputLength) {
    StringBuffer text(inputLength);
    const char* const bytes = static_cast<const char*>(input);
    for (size_t i = 0; i + sizeof(UInt16) <= inputLength; i += sizeof(UInt16)) {
        UInt16 unit = 0;
        std::memcpy(&unit, bytes + i, sizeof(unit)); // may be unaligned
        UCS4toUTF8(unit, text);
    }
    return text.releaseString();
}

String UCS2ToString(const Array<UInt16>& input) {
    return input.empty() ? String("") : UCS2ToString(&input[0], input.size() * sizeof(UInt16));
}

String UCS2ToString(const Array<char>& input) {
    return input.empty() ? String("") : UCS2ToString(&input[0], input.size());
}

void ISO8859ToUTF8(const char* source, char* destination, size_t capacity) {
    if (capacity == 0) {
        return;
    }
    size_t used = 0;
    for (; *source != '\0'; ++source) {
        char buffer[4];
        const size_t len = encode(static_cast<unsigned char>(*source), buffer);
        if (used + len >= capacity) {
            break;
        }
        std::memcpy(destination + used, buffer, len);
        used += len;
    }
    destination[used] = '\0';
}

} // namespace UTF8Utils

} // namespace OpenWBEM
