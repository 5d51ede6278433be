// Streams that read from and write to Strings.

#pragma once

#include "OW_BaseStreamBuffer.hpp"
#include "OW_String.hpp"
#include "OW_StringBuffer.hpp"
#include "OW_config.h"
#include <istream>
#include <ostream>
#include <streambuf>

namespace OpenWBEM {

namespace StringStreamDetail {
/// Appends what is written to a StringBuffer.
class OW_VISIBILITY_DEFAULT OutputBuffer : public std::streambuf {
  public:
    explicit OutputBuffer(size_t size) : text(size) {}
    StringBuffer text;

  protected:
    int_type overflow(int_type c) override;
    std::streamsize xsputn(const char* s, std::streamsize n) override;
};

/// Reads a String, which it keeps.
class OW_VISIBILITY_DEFAULT InputBuffer : public std::streambuf {
  public:
    explicit InputBuffer(const String& text);

  private:
    String text_;
};

// Bases, so that a stream's buffer is there before and after the stream.
struct OutputHolder {
    explicit OutputHolder(size_t size) : buffer(size) {}
    OutputBuffer buffer;
};
struct InputHolder {
    explicit InputHolder(const String& text) : buffer(text) {}
    InputBuffer buffer;
};
} // namespace StringStreamDetail

/// Output stream into a String.
class OW_VISIBILITY_DEFAULT OW_COMMON_API OStringStream : private StringStreamDetail::OutputHolder,
                                                          public std::ostream {
  public:
    /// With room for size bytes to begin with.
    explicit OStringStream(size_t size = 256);
    ~OStringStream() override;
    /// What was written so far.
    String toString() const { return buffer.text.toString(); }
    /// The same, and empties the stream.
    String releaseString() {
        String text(buffer.text.releaseString());
        reset();
        return text;
    }
    /// Valid until the next output.
    const char* c_str() const { return buffer.text.c_str(); }
    size_t length() const { return buffer.text.length(); }
    void reset() { buffer.text.reset(); }
};

/// Input stream from a String.
class OW_VISIBILITY_DEFAULT OW_COMMON_API IStringStream : private StringStreamDetail::InputHolder, public std::istream {
  public:
    explicit IStringStream(const String& s);
    ~IStringStream() override;
};

} // namespace OpenWBEM
