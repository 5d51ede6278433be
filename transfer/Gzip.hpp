// The compressed form of a file.
#pragma once

#include <cstdint>
#include <string>

namespace transfer {

/// Writes the gzip form of the open file to `path`, which appears only when it is whole. The same content gives the
/// same bytes. Returns the CRC-32 of these. Throws Failure, scope File.
std::uint32_t compressFile(int fd, const std::string& path);

} // namespace transfer
