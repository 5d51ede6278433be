// Queue of results.

#pragma once

#include "OW_CommonFwd.hpp"
#include "OW_Exception.hpp"
#include "OW_config.h"
#include <cstddef>
#include <deque>

namespace OpenWBEM {

/// An element was demanded of an empty Enumeration.
OW_DECLARE_APIEXCEPTION(Enumeration, OW_COMMON_API)

/// Elements are added at the end and taken from the front. Copies are independent.
template <class T>
class Enumeration {
  public:
    bool hasMoreElements() const { return !m_elements.empty(); }
    size_t numberOfElements() const { return m_elements.size(); }
    /// Takes the first element out; throws EnumerationException if there is none.
    T nextElement() {
        checkNotEmpty();
        T result(m_elements.front());
        m_elements.pop_front();
        return result;
    }
    void nextElement(T& out) {
        checkNotEmpty();
        out = m_elements.front();
        m_elements.pop_front();
    }
    void addElement(const T& element) { m_elements.push_back(element); }
    void clear() { m_elements.clear(); }

  private:
    void checkNotEmpty() const {
        if (m_elements.empty()) {
            OW_THROW(EnumerationException, "The enumeration has no more elements");
        }
    }

    std::deque<T> m_elements;
};

} // namespace OpenWBEM
