// Queue of results.

#pragma once

#include "OW_CommonFwd.hpp"
#include "OW_EnumerationException.hpp"
#include "OW_IntrusiveReference.hpp"
#include "OW_TempFileEnumerationImplBase.hpp"
#include "OW_config.h"
#include <cstddef>
#include <iterator>

namespace OpenWBEM {

/// Elements are added at the end and taken from the front. Copies share them: an element taken from one is gone from
/// all. They are kept in their binary form, large queues in a temporary file: T needs readObject(), writeObject() and a
/// default constructor. When the file fails, functions throw EnumerationException or what those of T throw.
template <class T>
class Enumeration {
  public:
    Enumeration() : queue_(new TempFileEnumerationImplBase) {}
    /// Loads a file that releaseFile() made, and deletes it.
    Enumeration(const String& filename) : queue_(new TempFileEnumerationImplBase(filename)) {}

    bool hasMoreElements() const { return queue_->size() != 0; }
    size_t numberOfElements() const { return queue_->size(); }
    /// Takes the first element out; throws EnumerationException if there is none.
    T nextElement() {
        T result;
        nextElement(result);
        return result;
    }
    void nextElement(T& out) {
        out.readObject(queue_->beginRead());
        queue_->endRead();
    }
    void addElement(const T& element) {
        element.writeObject(queue_->beginWrite());
        queue_->endWrite();
    }
    void clear() { queue_->clear(); }

    /// Writes the elements to a temporary file, empties this and returns the name of the file. Call it before taking
    /// any element: the file begins with the first one ever added.
    String releaseFile() { return queue_->releaseFile(); }
    bool usingTempFile() const { return queue_->usingTempFile(); }

  private:
    IntrusiveReference<TempFileEnumerationImplBase> queue_;
};

/// Takes elements out of an Enumeration, one when it is made and one with each ++. When there are no more it equals the
/// end iterator, which the default constructor makes.
template <class T>
class Enumeration_input_iterator {
  public:
    typedef std::input_iterator_tag iterator_category;
    typedef T value_type;
    typedef std::ptrdiff_t difference_type;
    typedef const T* pointer;
    typedef const T& reference;

    Enumeration_input_iterator() : source_(nullptr) {}
    Enumeration_input_iterator(Enumeration<T>& source) : source_(&source) { take(); }

    reference operator*() const { return value_; }
    pointer operator->() const { return &value_; }
    Enumeration_input_iterator& operator++() {
        take();
        return *this;
    }
    Enumeration_input_iterator operator++(int) {
        const Enumeration_input_iterator former(*this);
        take();
        return former;
    }
    bool operator==(const Enumeration_input_iterator& other) const { return source_ == other.source_; }
    bool operator!=(const Enumeration_input_iterator& other) const { return source_ != other.source_; }

  private:
    void take() {
        if (source_->hasMoreElements()) {
            source_->nextElement(value_);
        } else {
            source_ = nullptr;
        }
    }

    Enumeration<T>* source_; // null at the end
    T value_;
};

/// Adds what is assigned to it to an Enumeration.
template <class T>
class Enumeration_insert_iterator {
  public:
    typedef std::output_iterator_tag iterator_category;
    typedef void value_type;
    typedef void difference_type;
    typedef void pointer;
    typedef void reference;

    explicit Enumeration_insert_iterator(Enumeration<T>& target) : target_(&target) {}

    Enumeration_insert_iterator& operator=(const T& value) {
        target_->addElement(value);
        return *this;
    }
    Enumeration_insert_iterator& operator*() { return *this; }
    Enumeration_insert_iterator& operator++() { return *this; }
    Enumeration_insert_iterator& operator++(int) { return *this; }

  private:
    Enumeration<T>* target_;
};

template <class T>
inline Enumeration_insert_iterator<T> Enumeration_inserter(Enumeration<T>& target) {
    return Enumeration_insert_iterator<T>(target);
}

} // namespace OpenWBEM
