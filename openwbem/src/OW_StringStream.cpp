// The streams over Strings and over devices.

#include "OW_StringStream.hpp"

#include "OW_BaseStreamBuffer.hpp"
#include <algorithm>

namespace OpenWBEM {

namespace StringStreamDetail {
std::streambuf::int_type OutputBuffer::overflow(int_type c) {
    if (!traits_type::eq_int_type(c, traits_type::eof())) {
        text.append(traits_type::to_char_type(c));
    }
    return traits_type::not_eof(c);
}

std::streamsize OutputBuffer::xsputn(const char* s, std::streamsize n) {
    text.append(s, static_cast<size_t>(n));
    return n;
}

InputBuffer::InputBuffer(const String& text) : text_(text) {
    // The base class reads through pointers to non-const but never writes without a put area.
    char* begin = const_cast<char*>(text_.c_str());
    setg(begin, begin, begin + text_.length());
}
} // namespace StringStreamDetail

OStringStream::OStringStream(size_t size) : OutputHolder(size), std::ostream(&buffer) {}
OStringStream::~OStringStream() = default;

IStringStream::IStringStream(const String& s) : InputHolder(s), std::istream(&buffer) {}
IStringStream::~IStringStream() = default;

BaseStreamBuffer::BaseStreamBuffer(size_t bufferSize)
    : input_(std::max<size_t>(bufferSize, 1)), output_(std::max<size_t>(bufferSize, 1)) {
    setg(input_.data(), input_.data(), input_.data());
    setp(output_.data(), output_.data() + output_.size());
}

BaseStreamBuffer::~BaseStreamBuffer() = default;

int BaseStreamBuffer::sync() {
    const bool written = writeDevice(pbase(), static_cast<size_t>(pptr() - pbase()));
    setp(output_.data(), output_.data() + output_.size());
    return written ? 0 : -1;
}

std::streambuf::int_type BaseStreamBuffer::overflow(int_type c) {
    if (sync() != 0) {
        return traits_type::eof();
    }
    return traits_type::eq_int_type(c, traits_type::eof()) ? traits_type::not_eof(c)
                                                           : sputc(traits_type::to_char_type(c));
}

std::streambuf::int_type BaseStreamBuffer::underflow() {
    const size_t size = readDevice(input_.data(), input_.size());
    setg(input_.data(), input_.data(), input_.data() + size);
    return size == 0 ? traits_type::eof() : traits_type::to_int_type(*gptr());
}

size_t BaseStreamBuffer::readDevice(char*, size_t) {
    return 0;
}

bool BaseStreamBuffer::writeDevice(const char*, size_t size) {
    return size == 0;
}

} // namespace OpenWBEM
