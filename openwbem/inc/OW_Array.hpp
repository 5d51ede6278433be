// Sequence of elements that is cheap to copy.

#pragma once

#include "OW_ArrayFwd.hpp"
#include "OW_COWIntrusiveCountableBase.hpp"
#include "OW_COWIntrusiveReference.hpp"
#include "OW_COWReference.hpp"
#include "OW_Exception.hpp"
#include "OW_Types.hpp"
#include "OW_config.h"
#include <type_traits>
#include <vector>

namespace OpenWBEM {

/// An index lies outside of an array.
OW_DECLARE_APIEXCEPTION(OutOfBounds, OW_COMMON_API)

namespace ArrayDetail {
/// Throws OutOfBoundsException "Array Index out of bounds. size = ..., index = ...".
[[noreturn]] OW_VISIBILITY_DEFAULT void throwArrayOutOfBounds(size_t size, size_t index);
} // namespace ArrayDetail

/// A std::vector whose copies share their elements until one of them is changed. Non-const access, including begin()
/// and operator[] of a non-const Array, counts as a change: iterators and references obtained before an Array was
/// copied must not be used afterwards. Different Arrays that share their elements may be used by different threads at
/// once. T may be incomplete where only the name Array<T> is used.
template <class T>
class Array {
    typedef std::vector<T> V;

  public:
    typedef typename V::value_type value_type;
    typedef typename V::pointer pointer;
    typedef typename V::const_pointer const_pointer;
    typedef typename V::iterator iterator;
    typedef typename V::const_iterator const_iterator;
    typedef typename V::reference reference;
    typedef typename V::const_reference const_reference;
    typedef typename V::size_type size_type;
    typedef typename V::difference_type difference_type;
    typedef typename V::reverse_iterator reverse_iterator;
    typedef typename V::const_reverse_iterator const_reverse_iterator;

    Array() {}
    /// Takes ownership of toWrap, which is not null.
    explicit Array(V* toWrap);
    /// n elements, default constructed or copies of value.
    explicit Array(size_type n) { writable().resize(n); }
    Array(size_type n, const T& value) { writable().assign(n, value); }
    Array(int n, const T& value) { writable().assign(static_cast<size_type>(n), value); }
    Array(long n, const T& value) { writable().assign(static_cast<size_type>(n), value); }
    /// The elements of the range.
    template <class InputIterator, class = typename std::enable_if<!std::is_arithmetic<InputIterator>::value>::type>
    Array(InputIterator first, InputIterator last);

    iterator begin() { return writable().begin(); }
    const_iterator begin() const { return impl_ ? impl_.getPtr()->v.begin() : const_iterator(); }
    iterator end() { return writable().end(); }
    const_iterator end() const { return impl_ ? impl_.getPtr()->v.end() : const_iterator(); }
    reverse_iterator rbegin() { return writable().rbegin(); }
    const_reverse_iterator rbegin() const { return readable().rbegin(); }
    reverse_iterator rend() { return writable().rend(); }
    const_reverse_iterator rend() const { return readable().rend(); }
    size_type size() const { return impl_ ? impl_.getPtr()->v.size() : 0; }
    size_type max_size() const { return readable().max_size(); }
    size_type capacity() const { return readable().capacity(); }
    bool empty() const { return size() == 0; }
    void reserve(size_type n) { writable().reserve(n); }

    /// Element n; throws OutOfBoundsException if there is none.
    reference operator[](size_type n);
    const_reference operator[](size_type n) const;
    /// First and last element; undefined for an empty array.
    reference front() { return writable().front(); }
    const_reference front() const { return readable().front(); }
    reference back() { return writable().back(); }
    const_reference back() const { return readable().back(); }

    void push_back(const T& x) { writable().push_back(x); }
    void append(const T& x) { writable().push_back(x); }
    Array<T>& operator+=(const T& x);
    void appendArray(const Array<T>& x);
    void pop_back() { writable().pop_back(); }

    /// Puts elements before the position, which the returned iterator then points to.
    iterator insert(iterator position, const T& x) { return writable().insert(position, x); }
    template <class InputIterator>
    void insert(iterator position, InputIterator first, InputIterator last);
    /// Puts x before element position (size() appends); throws OutOfBoundsException beyond.
    void insert(size_type position, const T& x);
    /// Removes the element at index, or those from begin up to end (exclusive). Throws OutOfBoundsException.
    void remove(size_type index);
    void remove(size_type begin, size_type end);
    iterator erase(iterator position) { return writable().erase(position); }
    iterator erase(iterator first, iterator last) { return writable().erase(first, last); }
    void clear() { impl_ = COWIntrusiveReference<Elements>(); }
    void resize(size_type newSize) { writable().resize(newSize); }
    void resize(size_type newSize, const T& x) { writable().resize(newSize, x); }
    void swap(Array<T>& x) { impl_.swap(x.impl_); }

    friend bool operator==(const Array& x, const Array& y) { return x.readable() == y.readable(); }
    friend bool operator!=(const Array& x, const Array& y) { return !(x == y); }
    /// Lexicographic order.
    friend bool operator<(const Array& x, const Array& y) { return x.readable() < y.readable(); }
    friend bool operator<=(const Array& x, const Array& y) { return !(y < x); }
    friend bool operator>(const Array& x, const Array& y) { return y < x; }
    friend bool operator>=(const Array& x, const Array& y) { return !(x < y); }

  private:
    struct Elements : public COWIntrusiveCountableBase {
        Elements() {}
        explicit Elements(const V& elements) : v(elements) {}
        Elements* clone() const { return new Elements(v); }

        V v;
    };

    const V& readable() const;
    V& writable();
    void check(size_type index, size_type limit) const;

    COWIntrusiveReference<Elements> impl_; // null: empty, nothing allocated yet
};

template <class T>
inline void swap(Array<T>& x, Array<T>& y) {
    x.swap(y);
}

typedef Array<UInt8> UInt8Array;
typedef Array<Int8> Int8Array;
typedef Array<UInt16> UInt16Array;
typedef Array<Int16> Int16Array;
typedef Array<UInt32> UInt32Array;
typedef Array<Int32> Int32Array;
typedef Array<UInt64> UInt64Array;
typedef Array<Int64> Int64Array;
typedef Array<Real32> Real32Array;
typedef Array<Real64> Real64Array;

} // namespace OpenWBEM

#include "OW_ArrayImpl.hpp"
