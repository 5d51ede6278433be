// A setting of the push transfer.
#pragma once

#include "Access.hpp"
#include "CFG_Exception.hpp"

namespace cdroam {

/// The accessors return 0; a registry failure is logged and throws CFG_ReadError from `get` and CFG_WriteError from
/// `set`. The first read of a missing entry creates it with its default.
template <class Kind>
class PushSetting : public Access<Kind> {
  public:
    using typename Access<Kind>::Literal;

    /// `absent` is the default, also cached before the first read; `failed` is what a failed read leaves in the
    /// caller's value.
    PushSetting(const char* property, Entry entry, Literal absent = {}, Literal failed = {})
        : Access<Kind>(property, entry, "Push-"), absent_(absent), failed_(failed) {
        this->cacheLiteral(absent);
    }

    /// Reads the entry. For a text that is empty or has control characters it logs a warning and gives the default.
    template <class Value>
    int get(Value& value) const {
        const std::uint32_t status = this->load();
        if (status == 0) {
            this->decodeOrReplace(absent_, value);
            return Success;
        }
        if (status == ZPO_REG_ENTRY_NOT_FOUND) {
            this->store(absent_);
            this->decodeLiteral(absent_, value);
            return Success;
        }
        this->logFailedRead(status);
        this->decodeLiteral(failed_, value);
        throw CFG_ReadError();
    }

    /// Writes the entry; a failure is logged at the level given.
    template <class Value>
    int set(const Value& value, LogLevel level = LogError) {
        const std::uint32_t status = this->write(value);
        if (status != 0) {
            this->logFailedWrite(status, level);
            throw CFG_WriteError();
        }
        return Success;
    }

    /// Reads the entry for the schedule. A missing entry is created; after any other failure a text is empty.
    void refresh() {
        if (this->load() == ZPO_REG_ENTRY_NOT_FOUND) {
            this->store(absent_);
        }
    }

  private:
    Literal absent_;
    Literal failed_;
};

} // namespace cdroam
