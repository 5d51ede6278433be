// The instance manager of a managed class: the list of its live objects. The managers of all classes have the same
// virtual functions in the same order; only the two that create and destroy are named after the class, in its header:
//
//   InstanceManagerBase     destructor, init
//   CFactory                createC, destroyC; they always throw
//   InstanceManager         add, remove, get, startIteration, hasNext, next, endIteration
//
// A manager does not own the objects that it lists.
#pragma once

#include "CFG_Exception.hpp"
#include "InstanceTable.hpp"

#include <cstddef>
#include <string>
#include <utility>

namespace cdroam {

class InstanceManagerBase {
  public:
    InstanceManagerBase() = default;
    InstanceManagerBase(const InstanceManagerBase&) = delete;
    InstanceManagerBase& operator=(const InstanceManagerBase&) = delete;
    virtual ~InstanceManagerBase() = default;

    /// Called when the manager becomes its class's current one; does nothing.
    virtual void init() {}
};

/// One of the key values that an object is found by.
template <std::size_t>
using KeyText = const std::string&;

/// `Factory` declares the virtual functions that come first; `Object` is the managed class, with one key for each
/// element of `Keys`.
template <class Factory, class Object, class Keys>
class InstanceManagerOf;

template <class Factory, class Object, std::size_t... keys>
class InstanceManagerOf<Factory, Object, std::index_sequence<keys...>> : public Factory {
  public:
    /// Lists the object, replacing one listed under the same keys.
    virtual void add(Object* object) { table_.add(object->compositeKey(), object); }
    /// Takes the object's keys off the list; keys that are not listed are not an error.
    virtual void remove(Object* object) { table_.remove(object->compositeKey()); }
    /// The object with these keys, which are compared as one concatenated text. Throws CFG_NoInstance when there is
    /// none.
    virtual Object* get(KeyText<keys>... values) { return table_.get(concatenated(values...)); }

    // One iteration at a time, in byte-wise key order: startIteration, next while hasNext, endIteration.
    virtual void startIteration() { table_.startIteration(); }
    virtual bool hasNext() { return table_.hasNext(); }
    /// Throws CFG_NoInstance at the end.
    virtual Object* next() { return table_.next(); }
    virtual void endIteration() { table_.endIteration(); }

  private:
    static const std::string& concatenated(const std::string& only) { return only; }
    template <class... Others>
    static std::string concatenated(const std::string& first, const Others&... others) {
        std::string all;
        all.reserve((first.size() + ... + others.size()));
        all += first;
        (all += ... += others);
        return all;
    }

    InstanceTable<Object> table_;
};

template <class Factory, class Object, std::size_t keys>
using InstanceManager = InstanceManagerOf<Factory, Object, std::make_index_sequence<keys>>;

} // namespace cdroam
