// Definitions of Array's members; included by OW_Array.hpp.

#pragma once

#include "OW_Array.hpp"
#include "OW_config.h"

namespace OpenWBEM {

template <class T>
inline const typename Array<T>::V& Array<T>::readable() const {
    static const V none;
    return impl_ ? impl_.getPtr()->v : none;
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
inline Array<T>::Array(V* toWrap) {
    const AutoPtr<V> owner(toWrap);
    writable().swap(*owner);
}
template <class T>
template <class InputIterator, class>
inline Array<T>::Array(InputIterator first, InputIterator last) {
    writable().assign(first, last);
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

} // namespace OpenWBEM
