#pragma once

// What the classes of the CIM model share inside the library.

#include "OW_Array.hpp"
#include "OW_CIMAccess.hpp"
#include "OW_CIMException.hpp"
#include "OW_CIMFwd.hpp"
#include "OW_CIMNULL.hpp"
#include "OW_CIMName.hpp"
#include "OW_COWIntrusiveCountableBase.hpp"
#include "OW_COWIntrusiveReference.hpp"
#include "OW_String.hpp"

#include <algorithm>
#include <tuple>

namespace OpenWBEM {

/// Base of the data D behind a handle. D lists its fields once, in D::fields(), for comparing and for the binary form.
template <class D>
struct ModelData : public COWIntrusiveCountableBase {
    D* clone() const { return new D(static_cast<const D&>(*this)); }
};

/// The data of a new object, which all new objects share until they are changed.
template <class D>
const COWIntrusiveReference<D>& sharedDefault() {
    static const auto& shared = *new COWIntrusiveReference<D>(new D);
    return shared;
}

/// The order of two handles by the fields of their data; null first.
template <class D>
bool sortsBefore(const COWIntrusiveReference<D>& x, const COWIntrusiveReference<D>& y) {
    if (!x || !y) {
        return !x && !!y;
    }
    return D::fields(*x) < D::fields(*y);
}

/// The position of the first element of that name, or the size of the array.
///
/// Elements are looked through in their order: there are some tens of them, and CIMName compares hashes first. An index
/// would cost every instance more than it saves.
template <class T>
size_t indexOfName(const Array<T>& elements, const CIMName& name) {
    const auto found =
        std::find_if(elements.begin(), elements.end(), [&](const T& one) { return CIMAccess::name(one) == name; });
    return static_cast<size_t>(found - elements.begin());
}

/// The element of that name, or a null one.
template <class T>
T elementNamed(const Array<T>& elements, const CIMName& name) {
    const size_t i = indexOfName(elements, name);
    return i < elements.size() ? elements[i] : T(CIMNULL);
}

/// The same, among the elements whose origin is that class.
template <class T>
T elementNamed(const Array<T>& elements, const CIMName& name, const CIMName& originClass) {
    for (const T& element : elements) {
        if (CIMAccess::name(element) == name && originClass == element.getOriginClass()) {
            return element;
        }
    }
    return T(CIMNULL);
}

/// Replaces the element of the same name, or appends it; a null one is ignored.
template <class T>
void setElement(Array<T>& elements, const T& element) {
    if (!element) {
        return;
    }
    const size_t i = indexOfName(elements, CIMAccess::name(element));
    if (i < elements.size()) {
        elements[i] = element;
    } else {
        elements.push_back(element);
    }
}

/// Appends the element; throws CIMException ALREADY_EXISTS if there is one of its name. The message names it by what.
template <class T>
void addElement(Array<T>& elements, const T& element, const char* what) {
    const CIMName& name = CIMAccess::name(element);
    if (indexOfName(elements, name) < elements.size()) {
        const String message = String(what) + " " + name.toString() + " already exists";
        OW_THROWCIMMSG(CIMException::ALREADY_EXISTS, message.c_str());
    }
    elements.push_back(element);
}

/// False if there is none of that name.
template <class T>
bool removeElement(Array<T>& elements, const CIMName& name) {
    const size_t i = indexOfName(elements, name);
    if (i == elements.size()) {
        return false;
    }
    elements.remove(i);
    return true;
}

/// True if there is a qualifier of that name whose value is the boolean true.
bool hasTrueElement(const CIMQualifierArray& qualifiers, const CIMName& name);

/// True if the name is in the list, ignoring case.
bool listContains(const StringArray& list, const CIMName& name);

/// Adds a flavor in place of its opposite, as qualifiers and their types do it.
void addFlavorTo(CIMFlavorArray& flavors, const CIMFlavor& flavor);
void removeFlavorFrom(CIMFlavorArray& flavors, Int32 flavor);
bool containsFlavor(const CIMFlavorArray& flavors, const CIMFlavor& flavor);

/// The text in double quotes, escaped as MOF writes strings.
String quoteForMOF(const String& text);

String joined(const StringArray& texts, const char* separator);

/// "[A,B(true)]", or nothing without qualifiers.
String qualifiersToMOF(const CIMQualifierArray& qualifiers, const char* separator = ",");

} // namespace OpenWBEM
