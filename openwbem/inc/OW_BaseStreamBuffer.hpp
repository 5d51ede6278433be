// Base of the stream buffers for devices.

#pragma once

#include "OW_config.h"
#include <cstddef>
#include <streambuf>
#include <vector>

namespace OpenWBEM {

/// Buffers what is read from and written to a device that a derived class implements.
class OW_VISIBILITY_DEFAULT OW_COMMON_API BaseStreamBuffer : public std::streambuf {
  public:
    /// bufferSize in bytes, at least 1, for each direction.
    explicit BaseStreamBuffer(size_t bufferSize = 4096);
    ~BaseStreamBuffer() override;

  protected:
    int_type overflow(int_type c) override;
    int sync() override;
    int_type underflow() override;

    /// Reads up to size bytes and returns how many; 0 at the end. By default there is nothing to read.
    virtual size_t readDevice(char* buffer, size_t size);
    /// Writes all bytes; false if that fails. By default nothing can be written. A derived class must flush in its
    /// destructor.
    virtual bool writeDevice(const char* buffer, size_t size);

  private:
    BaseStreamBuffer(const BaseStreamBuffer&);
    BaseStreamBuffer& operator=(const BaseStreamBuffer&);

    std::vector<char> input_;
    std::vector<char> output_;
};

} // namespace OpenWBEM
