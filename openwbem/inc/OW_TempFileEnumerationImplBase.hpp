// What the copies of an Enumeration share.

#pragma once

#include "OW_IntrusiveCountableBase.hpp"
#include "OW_String.hpp"
#include "OW_config.h"
#include <cstddef>
#include <iosfwd>
#include <memory>

namespace OpenWBEM {

/// A queue of elements in their binary form: in memory, and in an unnamed temporary file once it is large. The caller
/// writes and reads each element between the begin and end functions; an exception in between leaves the queue
/// unchanged. Throws EnumerationException when the file fails.
class OW_VISIBILITY_DEFAULT OW_COMMON_API TempFileEnumerationImplBase : public IntrusiveCountableBase {
  public:
    TempFileEnumerationImplBase();
    /// Loads a file that releaseFile() made, and deletes it.
    explicit TempFileEnumerationImplBase(const String& filename);
    ~TempFileEnumerationImplBase() override;

    size_t size() const { return count_; }
    bool usingTempFile() const { return usingFile_; }
    void clear();

    std::ostream& beginWrite();
    void endWrite();
    /// Throws EnumerationException for an empty queue.
    std::istream& beginRead();
    void endRead();

    /// Writes the queue to a temporary file, empties it and returns the name of the file. The file begins with the
    /// first element that was ever added, although it counts only those not taken yet.
    String releaseFile();

  private:
    void moveToFile();

    std::unique_ptr<std::iostream> stream_;
    std::streamoff readPosition_;
    std::streamoff writePosition_;
    size_t count_;
    bool usingFile_;
};

} // namespace OpenWBEM
