// A statistic, which a transfer program writes into the registry.
#pragma once

#include "Setting.hpp"

namespace cdroam {

/// A setting whose missing entry is not a failure.
template <class Kind>
class Statistic : public Setting<Kind> {
  public:
    using Setting<Kind>::Setting;

    /// Reads the entry. A missing entry, which is not created, and a failed read give `unread`.
    template <class Value>
    int get(Value& value, const Value& unread = Value{}) const {
        const std::uint32_t status = this->load();
        const int result = status == ZPO_REG_ENTRY_NOT_FOUND ? Success : this->finishGet(status, value);
        if (status != 0) {
            value = unread;
        }
        return result;
    }

    /// Reads the entry. A missing entry is created with the kind's zero.
    template <class Value>
    int getOrCreate(Value& value) const {
        const std::uint32_t status = this->load();
        if (status != ZPO_REG_ENTRY_NOT_FOUND) {
            return this->finishGet(status, value);
        }
        this->store({});
        this->decodeLiteral({}, value);
        return Success;
    }

    /// Stores the kind's zero; a failure is ignored.
    void clear() { this->store({}); }
};

} // namespace cdroam
