#pragma once

// The binary form of the CIM model: what readObject() and writeObject() of its classes are made of.
//
// Numbers are most significant byte first, texts and arrays a 32-bit count and their content, an object that may be
// null a byte 0 or 1 and the object. A reader trusts no count: it grows with the bytes that are really there.

#include "OW_Array.hpp"
#include "OW_Bool.hpp"
#include "OW_CIMBase.hpp"
#include "OW_CIMDataType.hpp"
#include "OW_CIMDateTime.hpp"
#include "OW_CIMName.hpp"
#include "OW_CIMStreamException.hpp"
#include "OW_Char16.hpp"

#include <cstring>
#include <memory>
#include <tuple>
#include <type_traits>

namespace OpenWBEM {
namespace CIMStream {

void putNumber(std::ostream& ostrm, UInt64 number, int bytes);
UInt64 takeNumber(std::istream& istrm, int bytes);
void put(std::ostream& ostrm, const String& text);
void take(std::istream& istrm, String& text);

template <class T>
std::enable_if_t<std::is_integral<T>::value> put(std::ostream& ostrm, const T& number) {
    putNumber(ostrm, static_cast<UInt64>(number), sizeof(T));
}
template <class T>
std::enable_if_t<std::is_integral<T>::value> take(std::istream& istrm, T& number) {
    number = static_cast<T>(takeNumber(istrm, sizeof(T)));
}

inline void put(std::ostream& ostrm, const bool& truth) {
    putNumber(ostrm, truth ? 1 : 0, 1);
}
inline void take(std::istream& istrm, bool& truth) {
    truth = takeNumber(istrm, 1) != 0;
}
inline void put(std::ostream& ostrm, const Bool& truth) {
    truth.writeObject(ostrm);
}
inline void take(std::istream& istrm, Bool& truth) {
    truth.readObject(istrm);
}
inline void put(std::ostream& ostrm, const Char16& character) {
    character.writeObject(ostrm);
}
inline void take(std::istream& istrm, Char16& character) {
    character.readObject(istrm);
}

template <class Real, class Bits>
void putReal(std::ostream& ostrm, Real number) {
    Bits bits = 0;
    std::memcpy(&bits, &number, sizeof(bits));
    putNumber(ostrm, bits, sizeof(bits));
}
template <class Real, class Bits>
Real takeReal(std::istream& istrm) {
    const Bits bits = static_cast<Bits>(takeNumber(istrm, sizeof(Bits)));
    Real number = 0;
    std::memcpy(&number, &bits, sizeof(bits));
    return number;
}
inline void put(std::ostream& ostrm, const Real32& number) {
    putReal<Real32, UInt32>(ostrm, number);
}
inline void take(std::istream& istrm, Real32& number) {
    number = takeReal<Real32, UInt32>(istrm);
}
inline void put(std::ostream& ostrm, const Real64& number) {
    putReal<Real64, UInt64>(ostrm, number);
}
inline void take(std::istream& istrm, Real64& number) {
    number = takeReal<Real64, UInt64>(istrm);
}

inline void put(std::ostream& ostrm, const CIMName& name) {
    name.writeObject(ostrm);
}
inline void take(std::istream& istrm, CIMName& name) {
    name.readObject(istrm);
}
inline void put(std::ostream& ostrm, const CIMDateTime& dateTime) {
    dateTime.writeObject(ostrm);
}
inline void take(std::istream& istrm, CIMDateTime& dateTime) {
    dateTime.readObject(istrm);
}

template <class T>
bool isPresent(const T& object) {
    return object.operator!() == false;
}
/// A data type that names no type is false, but not null.
inline bool isPresent(const CIMDataType& dataType) {
    return dataType != CIMDataType(CIMNULL);
}

template <class T>
std::enable_if_t<std::is_base_of<CIMBase, T>::value> put(std::ostream& ostrm, const T& object) {
    const bool present = isPresent(object);
    put(ostrm, present);
    if (present) {
        object.writeObject(ostrm);
    }
}
template <class T>
std::enable_if_t<std::is_base_of<CIMBase, T>::value> take(std::istream& istrm, T& object) {
    bool present = false;
    take(istrm, present);
    if (present) {
        object.readObject(istrm);
    } else {
        object.setNull();
    }
}

/// An object to read into; the classes without a default constructor start as null.
template <class T>
std::enable_if_t<std::is_default_constructible<T>::value, T> blank() {
    return T();
}
template <class T>
std::enable_if_t<!std::is_default_constructible<T>::value, T> blank() {
    return T(CIMNULL);
}

template <class T>
void put(std::ostream& ostrm, const Array<T>& array) {
    put(ostrm, static_cast<UInt32>(array.size()));
    for (const T& element : array) {
        put(ostrm, element);
    }
}
template <class T>
void take(std::istream& istrm, Array<T>& array) {
    array = Array<T>();
    UInt32 count = 0;
    for (take(istrm, count); count > 0; --count) {
        T element = blank<T>();
        take(istrm, element);
        array.push_back(element);
    }
}

/// Writes the signature and every field of the data.
template <class D>
void writeData(std::ostream& ostrm, const char* signature, const D& data) {
    CIMBase::writeSig(ostrm, signature);
    std::apply([&](const auto&... field) { (put(ostrm, field), ...); }, D::fields(data));
}

/// Reads what writeData() wrote into new data.
template <class D>
std::unique_ptr<D> readData(std::istream& istrm, const char* signature) {
    CIMBase::readSig(istrm, signature);
    auto data = std::make_unique<D>();
    std::apply([&](auto&... field) { (take(istrm, field), ...); }, D::fields(*data));
    return data;
}

} // namespace CIMStream
} // namespace OpenWBEM
