// A setting that reports by status: the settings of the CDR service.
#pragma once

#include "Access.hpp"

namespace cdroam {

/// The accessors return 0; a registry failure is logged and gives 100 from `get` and 101 from `set`. A missing entry is
/// a failure like any other.
template <class Kind>
class Setting : public Access<Kind> {
  public:
    using Access<Kind>::Access;

    /// Reads the entry. A failed read gives the kind's zero.
    template <class Value>
    int get(Value& value) const {
        return finishGet(this->load(), value);
    }

    /// Like `get`, after a `load` that returned `status`.
    template <class Value>
    int finishGet(std::uint32_t status, Value& value) const {
        if (status != 0) {
            this->logFailedRead(status);
            this->decodeLiteral({}, value);
            return ReadFailed;
        }
        this->decodeOrReplace({}, value);
        return Success;
    }

    /// Writes the entry.
    template <class Value>
    int set(const Value& value) {
        const std::uint32_t status = this->write(value);
        if (status != 0) {
            this->logFailedWrite(status);
            return WriteFailed;
        }
        return Success;
    }
};

} // namespace cdroam
