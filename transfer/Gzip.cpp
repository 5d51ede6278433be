#include "Gzip.hpp"

#include "Failure.hpp"
#include "Files.hpp"

#include <cerrno>
#include <cstdio>
#include <cstring>
#include <fcntl.h>
#include <unistd.h>
#include <vector>
#include <zlib.h>

namespace transfer {
namespace {

constexpr std::size_t kChunk = std::size_t{64} << 10U;
constexpr int kGzipFormat = 16; // added to the window's bits
constexpr int kMemoryLevel = 8;

[[noreturn]] void refuse(const char* what, int error) {
    throw Failure(Scope::File, std::string(what) + ": " + std::strerror(error));
}

class Compressor {
  public:
    Compressor(int input, int output) : input_(input), output_(output) {
        if (deflateInit2(&stream_, Z_DEFAULT_COMPRESSION, Z_DEFLATED, MAX_WBITS + kGzipFormat, kMemoryLevel,
                         Z_DEFAULT_STRATEGY) != Z_OK) {
            throw std::bad_alloc();
        }
    }
    ~Compressor() { deflateEnd(&stream_); }
    Compressor(const Compressor&) = delete;
    Compressor& operator=(const Compressor&) = delete;

    std::uint32_t run() {
        for (bool more = true; more;) {
            more = fill();
            do {
                drain(more ? Z_NO_FLUSH : Z_FINISH);
            } while (stream_.avail_out == 0);
        }
        return static_cast<std::uint32_t>(crc_);
    }

  private:
    /// Whether the input had a further chunk.
    bool fill() {
        const ssize_t got = pread(input_, in_.data(), kChunk, position_);
        if (got < 0) {
            refuse("the file cannot be read", errno);
        }
        position_ += got;
        stream_.next_in = in_.data();
        stream_.avail_in = static_cast<uInt>(got);
        return got > 0;
    }
    void drain(int flush) {
        stream_.next_out = out_.data();
        stream_.avail_out = static_cast<uInt>(kChunk);
        deflate(&stream_, flush);
        const std::size_t count = kChunk - stream_.avail_out;
        crc_ = crc32(crc_, out_.data(), static_cast<uInt>(count));
        if (const int error = zpo::writeAll(output_, {reinterpret_cast<const char*>(out_.data()), count})) {
            refuse("its compressed form cannot be written", error);
        }
    }

    z_stream stream_{};
    int input_;
    int output_;
    off_t position_ = 0;
    uLong crc_ = 0;
    std::vector<unsigned char> in_ = std::vector<unsigned char>(kChunk);
    std::vector<unsigned char> out_ = std::vector<unsigned char>(kChunk);
};

} // namespace

std::uint32_t compressFile(int fd, const std::string& path) {
    const std::string unfinished = path + ".tmp";
    const zpo::UniqueFd output = zpo::openFile(unfinished, O_WRONLY | O_CREAT | O_TRUNC | O_NOFOLLOW, 0640);
    if (!output) {
        refuse("its compressed form cannot be written", errno);
    }
    const std::uint32_t crc = Compressor(fd, output.get()).run();
    if (std::rename(unfinished.c_str(), path.c_str()) != 0) {
        refuse("its compressed form cannot be written", errno);
    }
    return crc;
}

} // namespace transfer
