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

/// A std::vector whose copies share their elements until one of them is changed. Non-const access, also begin() and
/// operator[] of an Array that is not const, counts as a change: iterators and references obtained before an Array was
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

    Array();
    /// Takes ownership of toWrap, which is not null.
    explicit Array(V* toWrap);
    /// n elements, default constructed or copies of value.
    explicit Array(size_type n);
    Array(size_type n, const T& value);
    Array(int n, const T& value);
    Array(long n, const T& value);
    /// The elements of the range.
    template <class InputIterator, class = typename std::enable_if<!std::is_arithmetic<InputIterator>::value>::type>
    Array(InputIterator first, InputIterator last);

    iterator begin();
    const_iterator begin() const;
    iterator end();
    const_iterator end() const;
    reverse_iterator rbegin();
    const_reverse_iterator rbegin() const;
    reverse_iterator rend();
    const_reverse_iterator rend() const;
    size_type size() const;
    size_type max_size() const;
    size_type capacity() const;
    bool empty() const;
    void reserve(size_type n);

    /// Element n; throws OutOfBoundsException if there is none.
    reference operator[](size_type n);
    const_reference operator[](size_type n) const;
    /// First and last element; undefined for an empty array.
    reference front();
    const_reference front() const;
    reference back();
    const_reference back() const;

    void push_back(const T& x);
    void append(const T& x);
    Array<T>& operator+=(const T& x);
    void appendArray(const Array<T>& x);
    void pop_back();

    /// Puts elements before the position, which the returned iterator then points to.
    iterator insert(iterator position, const T& x);
    template <class InputIterator>
    void insert(iterator position, InputIterator first, InputIterator last);
    /// Puts x before element position (size() appends); throws OutOfBoundsException beyond.
    void insert(size_type position, const T& x);
    /// Removes the element at index, or those from begin up to end (exclusive). Throws OutOfBoundsException.
    void remove(size_type index);
    void remove(size_type begin, size_type end);
    iterator erase(iterator position);
    iterator erase(iterator first, iterator last);
    void clear();
    void resize(size_type newSize);
    void resize(size_type newSize, const T& x);
    void swap(Array<T>& x);

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
inline bool operator==(const Array<T>& x, const Array<T>& y);
template <class T>
inline bool operator!=(const Array<T>& x, const Array<T>& y);
/// The order of the first elements that differ; a beginning comes before the whole.
template <class T>
inline bool operator<(const Array<T>& x, const Array<T>& y);
template <class T>
inline bool operator<=(const Array<T>& x, const Array<T>& y);
template <class T>
inline bool operator>(const Array<T>& x, const Array<T>& y);
template <class T>
inline bool operator>=(const Array<T>& x, const Array<T>& y);
template <class T>
inline void swap(Array<T>& x, Array<T>& y);

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
