#include "OW_TempFileEnumerationImplBase.hpp"

#include "OW_EnumerationException.hpp"

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <fstream>
#include <sstream>
#include <unistd.h>

namespace OpenWBEM {

namespace {

// A released file: the elements, then their number and this mark, most significant byte first.
constexpr unsigned char kMark[] = {'O', 'W', 'e', 'n', 'u', 'm', '0', '1'};
constexpr size_t kCountBytes = 8;
constexpr std::streamoff kTrailerSize = sizeof(kMark) + kCountBytes;
constexpr std::streamoff kLargestInMemory = 65536;

const std::ios::openmode kReadAndWrite = std::ios::in | std::ios::out | std::ios::binary;

[[noreturn]] void fail(const char* what) {
    OW_THROW(EnumerationException, what);
}

/// A new empty file that only this user can read; its name is put into name.
std::unique_ptr<std::fstream> makeFile(std::string& name) {
    const char* folder = std::getenv("TMPDIR");
    name = std::string(folder && *folder ? folder : "/tmp") + "/owenumXXXXXX";
    const int descriptor = ::mkstemp(&name[0]);
    if (descriptor < 0) {
        fail("Failed to open file");
    }
    ::close(descriptor);
    auto file = std::make_unique<std::fstream>(name, kReadAndWrite);
    if (!*file) {
        std::remove(name.c_str());
        fail("Failed to open file");
    }
    return file;
}

void copyBytes(std::iostream& from, std::streamoff count, std::iostream& to) {
    from.clear();
    from.seekg(0);
    char chunk[4096];
    while (count > 0) {
        const auto wanted = static_cast<std::streamsize>(std::min(count, std::streamoff(sizeof(chunk))));
        if (!from.read(chunk, wanted) || !to.write(chunk, wanted)) {
            fail("Failed to write file");
        }
        count -= wanted;
    }
}

void putTrailer(std::iostream& file, size_t count) {
    for (size_t shift = 8 * kCountBytes; shift > 0; shift -= 8) {
        file.put(static_cast<char>(static_cast<unsigned long long>(count) >> (shift - 8)));
    }
    file.write(reinterpret_cast<const char*>(kMark), sizeof(kMark));
    if (!file.flush()) {
        fail("Failed to write file");
    }
}

/// Reads the number of elements from the end of the file, and where they end. An element takes a byte or more.
size_t takeTrailer(std::iostream& file, std::streamoff& end) {
    file.seekg(0, std::ios::end);
    end = static_cast<std::streamoff>(file.tellg()) - kTrailerSize;
    unsigned char trailer[kTrailerSize] = {};
    if (end < 0 || !file.seekg(end) || !file.read(reinterpret_cast<char*>(trailer), sizeof(trailer))) {
        fail("Failed to read file");
    }
    unsigned long long count = 0;
    for (size_t i = 0; i < kCountBytes; ++i) {
        count = count << 8 | trailer[i];
    }
    if (std::memcmp(trailer + kCountBytes, kMark, sizeof(kMark)) != 0 || count > static_cast<unsigned long long>(end)) {
        fail("Failed to read file");
    }
    return static_cast<size_t>(count);
}

} // namespace

TempFileEnumerationImplBase::TempFileEnumerationImplBase()
    : stream_(std::make_unique<std::stringstream>(kReadAndWrite)), readPosition_(0), writePosition_(0), count_(0),
      usingFile_(false) {}

TempFileEnumerationImplBase::TempFileEnumerationImplBase(const String& filename)
    : stream_(std::make_unique<std::fstream>(filename.c_str(), kReadAndWrite)), readPosition_(0), writePosition_(0),
      count_(0), usingFile_(true) {
    if (!*stream_) {
        fail("Failed to open file");
    }
    count_ = takeTrailer(*stream_, writePosition_);
    std::remove(filename.c_str());
}

TempFileEnumerationImplBase::~TempFileEnumerationImplBase() = default;

void TempFileEnumerationImplBase::clear() {
    stream_ = std::make_unique<std::stringstream>(kReadAndWrite);
    readPosition_ = writePosition_ = 0;
    count_ = 0;
    usingFile_ = false;
}

void TempFileEnumerationImplBase::moveToFile() {
    std::string name;
    auto file = makeFile(name);
    std::remove(name.c_str());
    copyBytes(*stream_, writePosition_, *file);
    stream_ = std::move(file);
    usingFile_ = true;
}

std::ostream& TempFileEnumerationImplBase::beginWrite() {
    if (!usingFile_ && writePosition_ >= kLargestInMemory) {
        moveToFile();
    }
    stream_->clear();
    stream_->seekp(writePosition_);
    return *stream_;
}

void TempFileEnumerationImplBase::endWrite() {
    if (!*stream_) {
        fail("Failed to write file");
    }
    writePosition_ = stream_->tellp();
    ++count_;
}

std::istream& TempFileEnumerationImplBase::beginRead() {
    if (count_ == 0) {
        fail("Attempt to Extract from empty Enum");
    }
    stream_->clear();
    stream_->seekg(readPosition_);
    return *stream_;
}

void TempFileEnumerationImplBase::endRead() {
    readPosition_ = stream_->tellg();
    --count_;
}

String TempFileEnumerationImplBase::releaseFile() {
    std::string name;
    const auto file = makeFile(name);
    try {
        copyBytes(*stream_, writePosition_, *file);
        putTrailer(*file, count_);
    } catch (const EnumerationException&) {
        std::remove(name.c_str());
        throw;
    }
    clear();
    return String(name.c_str());
}

} // namespace OpenWBEM
