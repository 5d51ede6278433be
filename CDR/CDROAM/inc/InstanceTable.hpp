// The list of the live objects of a managed class, with the one cursor that enumerations share.
#pragma once

#include "CFG_Exception.hpp"

#include <map>
#include <string>

namespace cdroam {

/// Objects by their composite key, in byte-wise key order. Does not own them. One cursor: one iteration at a time.
template <class Object>
class InstanceTable {
  public:
    InstanceTable() : cursor_(objects_.end()) {}
    InstanceTable(const InstanceTable&) = delete;
    InstanceTable& operator=(const InstanceTable&) = delete;

    /// An object already listed under the key is replaced.
    void add(const std::string& key, Object* object) { objects_[key] = object; }

    /// A missing key is not an error. A cursor on the removed object advances to the next.
    void remove(const std::string& key) {
        const auto found = objects_.find(key);
        if (found == objects_.end()) {
            return;
        }
        const bool underCursor = found == cursor_;
        const auto next = objects_.erase(found);
        if (underCursor) {
            cursor_ = next;
        }
    }

    /// Throws CFG_NoInstance when nothing is listed under the key.
    Object* get(const std::string& key) const {
        const auto found = objects_.find(key);
        if (found == objects_.end() || found->second == nullptr) {
            throw CFG_NoInstance();
        }
        return found->second;
    }

    void startIteration() { cursor_ = objects_.begin(); }
    bool hasNext() const { return cursor_ != objects_.end(); }
    void endIteration() { cursor_ = objects_.end(); }

    /// Returns the object under the cursor and advances it. Throws CFG_NoInstance at the end, and for a null pointer,
    /// without advancing.
    Object* next() {
        if (!hasNext() || cursor_->second == nullptr) {
            throw CFG_NoInstance();
        }
        return (cursor_++)->second;
    }

  private:
    using Objects = std::map<std::string, Object*>;
    Objects objects_;
    typename Objects::iterator cursor_;
};

} // namespace cdroam
