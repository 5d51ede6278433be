// Definitions of Array's members; included by OW_Array.hpp.

#pragma once

#include "OW_Array.hpp"
#include "OW_config.h"

namespace OpenWBEM {

template <class T>
inline const typename Array<T>::V& Array<T>::readable() const {
    static const V none;
    return impl_ ? impl_->v : none;
}
template <class T>
inline typename Array<T>::V& Array<T>::writable() {
    if (!impl_) {
        impl_ = new Elements;
    }
    return impl_->v;
}
template <class T>
inline void Array<T>::check(size_type index, size_type limit) const {
    if (index >= limit) {
        ArrayDetail::throwArrayOutOfBounds(size(), index);
    }
}

template <class T>
inline Array<T>::Array() {}
template <class T>
inline Array<T>::Array(V* toWrap) {
    const AutoPtr<V> owner(toWrap);
    writable().swap(*owner);
}
template <class T>
inline Array<T>::Array(size_type n) {
    writable().resize(n);
}
template <class T>
inline Array<T>::Array(size_type n, const T& value) {
    writable().assign(n, value);
}
template <class T>
inline Array<T>::Array(int n, const T& value) {
    writable().assign(static_cast<size_type>(n), value);
}
template <class T>
inline Array<T>::Array(long n, const T& value) {
    writable().assign(static_cast<size_type>(n), value);
}
template <class T>
template <class InputIterator, class>
inline Array<T>::Array(InputIterator first, InputIterator last) {
    writable().assign(first, last);
}
template <class T>
inline typename Array<T>::iterator Array<T>::begin() {
    return writable().begin();
}
template <class T>
inline typename Array<T>::const_iterator Array<T>::begin() const {
    return readable().begin();
}
template <class T>
inline typename Array<T>::iterator Array<T>::end() {
    return writable().end();
}
template <class T>
inline typename Array<T>::const_iterator Array<T>::end() const {
    return readable().end();
}
template <class T>
inline typename Array<T>::reverse_iterator Array<T>::rbegin() {
    return writable().rbegin();
}
template <class T>
inline typename Array<T>::const_reverse_iterator Array<T>::rbegin() const {
    return readable().rbegin();
}
template <class T>
inline typename Array<T>::reverse_iterator Array<T>::rend() {
    return writable().rend();
}
template <class T>
inline typename Array<T>::const_reverse_iterator Array<T>::rend() const {
    return readable().rend();
}
template <class T>
inline typename Array<T>::size_type Array<T>::size() const {
    return readable().size();
}
template <class T>
inline typename Array<T>::size_type Array<T>::max_size() const {
    return readable().max_size();
}
template <class T>
inline typename Array<T>::size_type Array<T>::capacity() const {
    return readable().capacity();
}
template <class T>
inline bool Array<T>::empty() const {
    return readable().empty();
}
template <class T>
inline void Array<T>::reserve(size_type n) {
    writable().reserve(n);
}
template <class T>
inline typename Array<T>::reference Array<T>::operator[](size_type n) {
    check(n, size());
    return writable()[n];
}
template <class T>
inline typename Array<T>::const_reference Array<T>::operator[](size_type n) const {
    check(n, size());
    return readable()[n];
}
template <class T>
inline typename Array<T>::reference Array<T>::front() {
    return writable().front();
}
template <class T>
inline typename Array<T>::const_reference Array<T>::front() const {
    return readable().front();
}
template <class T>
inline typename Array<T>::reference Array<T>::back() {
    return writable().back();
}
template <class T>
inline typename Array<T>::const_reference Array<T>::back() const {
    return readable().back();
}
template <class T>
inline void Array<T>::push_back(const T& x) {
    writable().push_back(x);
}
template <class T>
inline void Array<T>::append(const T& x) {
    writable().push_back(x);
}
template <class T>
inline Array<T>& Array<T>::operator+=(const T& x) {
    push_back(x);
    return *this;
}
template <class T>
inline void Array<T>::appendArray(const Array<T>& x) {
    const Array<T> source(x); // x may be this array
    writable().insert(end(), source.begin(), source.end());
}
template <class T>
inline void Array<T>::pop_back() {
    writable().pop_back();
}
template <class T>
inline typename Array<T>::iterator Array<T>::insert(iterator position, const T& x) {
    return writable().insert(position, x);
}
template <class T>
template <class InputIterator>
inline void Array<T>::insert(iterator position, InputIterator first, InputIterator last) {
    writable().insert(position, first, last);
}
template <class T>
inline void Array<T>::insert(size_type position, const T& x) {
    check(position, size() + 1);
    writable().insert(begin() + static_cast<difference_type>(position), x);
}
template <class T>
inline void Array<T>::remove(size_type index) {
    check(index, size());
    writable().erase(begin() + static_cast<difference_type>(index));
}
template <class T>
inline void Array<T>::remove(size_type begin, size_type end) {
    check(end, size() + 1);
    check(begin, end + 1);
    V& v = writable();
    v.erase(v.begin() + static_cast<difference_type>(begin), v.begin() + static_cast<difference_type>(end));
}
template <class T>
inline typename Array<T>::iterator Array<T>::erase(iterator position) {
    return writable().erase(position);
}
template <class T>
inline typename Array<T>::iterator Array<T>::erase(iterator first, iterator last) {
    return writable().erase(first, last);
}
template <class T>
inline void Array<T>::clear() {
    impl_ = COWIntrusiveReference<Elements>();
}
template <class T>
inline void Array<T>::resize(size_type newSize) {
    writable().resize(newSize);
}
template <class T>
inline void Array<T>::resize(size_type newSize, const T& x) {
    writable().resize(newSize, x);
}
template <class T>
inline void Array<T>::swap(Array<T>& x) {
    impl_.swap(x.impl_);
}

template <class T>
inline bool operator==(const Array<T>& x, const Array<T>& y) {
    if (x.size() != y.size()) {
        return false;
    }
    typename Array<T>::const_iterator j = y.begin();
    for (typename Array<T>::const_iterator i = x.begin(); i != x.end(); ++i, ++j) {
        if (!(*i == *j)) {
            return false;
        }
    }
    return true;
}
template <class T>
inline bool operator!=(const Array<T>& x, const Array<T>& y) {
    return !(x == y);
}
template <class T>
inline bool operator<(const Array<T>& x, const Array<T>& y) {
    typename Array<T>::const_iterator j = y.begin();
    for (typename Array<T>::const_iterator i = x.begin(); i != x.end(); ++i, ++j) {
        if (j == y.end() || *j < *i) {
            return false;
        }
        if (*i < *j) {
            return true;
        }
    }
    return j != y.end();
}
template <class T>
inline bool operator<=(const Array<T>& x, const Array<T>& y) {
    return !(y < x);
}
template <class T>
inline bool operator>(const Array<T>& x, const Array<T>& y) {
    return y < x;
}
template <class T>
inline bool operator>=(const Array<T>& x, const Array<T>& y) {
    return !(x < y);
}
template <class T>
inline void swap(Array<T>& x, Array<T>& y) {
    x.swap(y);
}

} // namespace OpenWBEM
