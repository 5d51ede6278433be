#pragma once

// What is behind a CIMValue: one of 34 alternatives, 17 scalar ones and the arrays of them in the same order, so that
// the index of the alternative is the whole type of the value.

#include "OW_Array.hpp"
#include "OW_Bool.hpp"
#include "OW_CIMClass.hpp"
#include "OW_CIMDataType.hpp"
#include "OW_CIMDateTime.hpp"
#include "OW_CIMInstance.hpp"
#include "OW_CIMModel.hpp"
#include "OW_CIMObjectPath.hpp"
#include "OW_CIMProperty.hpp"
#include "OW_CIMValue.hpp"
#include "OW_Char16.hpp"
#include "OW_String.hpp"

#include <array>
#include <type_traits>
#include <utility>
#include <variant>

namespace OpenWBEM {

typedef std::variant<Bool, Char16, UInt8, Int8, UInt16, Int16, UInt32, Int32, UInt64, Int64, Real32, Real64, String,
                     CIMDateTime, CIMObjectPath, CIMClass, CIMInstance, BoolArray, Char16Array, UInt8Array, Int8Array,
                     UInt16Array, Int16Array, UInt32Array, Int32Array, UInt64Array, Int64Array, Real32Array,
                     Real64Array, StringArray, CIMDateTimeArray, CIMObjectPathArray, CIMClassArray, CIMInstanceArray>
    CIMValueStorage;

constexpr size_t kScalarKinds = 17;

/// A scalar alternative: its type and what messages call it.
struct CIMValueKind {
    CIMDataType::Type type;
    const char* name;
    const char* arrayName;
};

extern const CIMValueKind kValueKinds[kScalarKinds];

class CIMValue::CIMValueImpl : public COWIntrusiveCountableBase {
  public:
    template <class T>
    explicit CIMValueImpl(const T& x) : storage(std::in_place_type<T>, x) {}
    explicit CIMValueImpl(CIMValueStorage&& x) : storage(std::move(x)) {}

    CIMValueImpl* clone() const { return new CIMValueImpl(*this); }

    /// A new one, but a shared one for boolean and uint8, which most properties of devices are.
    template <class T>
    static COWIntrusiveReference<CIMValueImpl> of(const T& x) {
        if constexpr (std::is_same<T, Bool>::value) {
            return shared<T, 2>(x ? 1 : 0);
        } else if constexpr (std::is_same<T, UInt8>::value) {
            return shared<T, 256>(x);
        } else {
            return new CIMValueImpl(x);
        }
    }

    bool isArray() const { return storage.index() >= kScalarKinds; }
    CIMDataType::Type type() const {
        return kValueKinds[isArray() ? storage.index() - kScalarKinds : storage.index()].type;
    }

    /// The value as exactly a T, or for a scalar sint64 as any number; throws ValueCastException otherwise.
    template <class T>
    T get() const {
        if (const T* exact = std::get_if<T>(&storage)) {
            return *exact;
        }
        if constexpr (std::is_arithmetic<T>::value) {
            if (const Int64* number = std::get_if<Int64>(&storage)) {
                return static_cast<T>(*number);
            }
        }
        throwNotA(indexOf<T>(std::make_index_sequence<std::variant_size_v<CIMValueStorage>>()));
    }

    CIMValueStorage storage;

  private:
    template <class T, size_t Count>
    static const COWIntrusiveReference<CIMValueImpl>& shared(size_t value) {
        typedef std::array<COWIntrusiveReference<CIMValueImpl>, Count> Table;
        static const Table& table = *[] {
            auto* made = new Table;
            for (size_t i = 0; i < Count; ++i) {
                (*made)[i] = new CIMValueImpl(T(static_cast<UInt8>(i)));
            }
            return made;
        }();
        return table[value];
    }
    template <class T, size_t... I>
    static constexpr size_t indexOf(std::index_sequence<I...>) {
        return ((std::is_same<T, std::variant_alternative_t<I, CIMValueStorage>>::value ? I : 0) + ...);
    }
    [[noreturn]] static void throwNotA(size_t index);
};

/// Reaches into a CIMValue that is not null, and makes one.
class CIMValueAccess {
  public:
    static const CIMValueStorage& storage(const CIMValue& value) { return value.impl_->storage; }
    static CIMValue make(CIMValueStorage&& storage) {
        CIMValue value(CIMNULL);
        value.impl_ = new CIMValue::CIMValueImpl(std::move(storage));
        return value;
    }
};

/// The alternative of that index, with the value that a default constructor gives.
CIMValueStorage makeAlternative(size_t index);

/// The index of the scalar alternative of that type; kScalarKinds if there is none.
size_t kindOf(CIMDataType::Type type);

/// The text of each element of an array, or the one of a scalar.
StringArray textsOf(const CIMValueStorage& storage);

/// Reads the texts as elements of an array alternative, or the first text as a scalar one. Throws like
/// CIMValue::createSimpleValue().
void parseTexts(const StringArray& texts, CIMValueStorage& storage);

} // namespace OpenWBEM
