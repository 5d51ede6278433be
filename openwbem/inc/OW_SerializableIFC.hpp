// Interface of the objects that can be written to and read from a binary stream.

#pragma once

#include "OW_config.h"
#include <iosfwd>

namespace OpenWBEM {

class OW_VISIBILITY_DEFAULT OW_COMMON_API SerializableIFC {
  public:
    virtual ~SerializableIFC();
    /// Replaces this object by the one that writeObject() put into the stream. Throws an Exception when the stream does
    /// not hold one; the object is then unchanged.
    virtual void readObject(std::istream& istrm) = 0;
    /// Appends this object to the stream. Throws an Exception when the stream fails.
    virtual void writeObject(std::ostream& ostrm) const = 0;
};

} // namespace OpenWBEM
