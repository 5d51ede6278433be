#include "OW_CIMValue.hpp"

#include "OW_CIMValueCast.hpp"
#include "OW_CIMValueImpl.hpp"

#include <algorithm>

namespace OpenWBEM {

const CIMValueKind kValueKinds[kScalarKinds] = {
    {CIMDataType::BOOLEAN, "BOOLEAN", "BOOLEAN"},
    {CIMDataType::CHAR16, "CHAR16", "CHAR16"},
    {CIMDataType::UINT8, "UINT8", "UINT8"},
    {CIMDataType::SINT8, "SINT8", "SINT8"},
    {CIMDataType::UINT16, "UINT16", "UINT16"},
    {CIMDataType::SINT16, "SINT16", "SINT16"},
    {CIMDataType::UINT32, "UINT32", "UINT32"},
    {CIMDataType::SINT32, "SINT32", "SINT32"},
    {CIMDataType::UINT64, "UINT64", "UINT64"},
    {CIMDataType::SINT64, "SINT64", "SINT64"},
    {CIMDataType::REAL32, "REAL32", "REAL32"},
    {CIMDataType::REAL64, "REAL64", "REAL64"},
    {CIMDataType::STRING, "STRING", "STRING"},
    {CIMDataType::DATETIME, "DATETIME", "DATETIME"},
    {CIMDataType::REFERENCE, "REFERENCE", "OBJECTPATH"},
    {CIMDataType::EMBEDDEDCLASS, "CLASS", "CLASS"},
    {CIMDataType::EMBEDDEDINSTANCE, "INSTANCE", "INSTANCE"},
};

void CIMValue::CIMValueImpl::throwNotA(size_t index) {
    String message = "CIMValue::CIMValueImpl::get - Value is not a ";
    if (index < kScalarKinds) {
        message += kValueKinds[index].name;
    } else {
        message += String(kValueKinds[index % kScalarKinds].arrayName) + " ARRAY";
    }
    OW_THROW(ValueCastException, message.c_str());
}

size_t kindOf(CIMDataType::Type type) {
    const CIMValueKind* kind =
        std::find_if(kValueKinds, kValueKinds + kScalarKinds, [type](const CIMValueKind& k) { return k.type == type; });
    return static_cast<size_t>(kind - kValueKinds);
}

namespace {

template <size_t... I>
CIMValueStorage makeOneOf(size_t index, std::index_sequence<I...>) {
    CIMValueStorage storage;
    ((I == index ? static_cast<void>(storage.emplace<I>()) : static_cast<void>(0)), ...);
    return storage;
}

} // namespace

CIMValueStorage makeAlternative(size_t index) {
    return makeOneOf(index, std::make_index_sequence<std::variant_size_v<CIMValueStorage>>());
}

CIMValue::CIMValue(CIMNULL_t) {}
CIMValue::CIMValue(const CIMValue& other) = default;
CIMValue::~CIMValue() = default;
CIMValue& CIMValue::operator=(const CIMValue& other) = default;

CIMValue::CIMValue(bool x) : CIMValue(Bool(x)) {}
CIMValue::CIMValue(const char* x) : CIMValue(x ? String(x) : String("")) {}

// Constructor, get() and to...() of one type, named after it. ARGUMENT is how the constructor takes it.
// NOLINTBEGIN(bugprone-macro-parentheses): a type cannot stand in parentheses
#define CIM_VALUE_TYPE(T, ARGUMENT)                                                                                    \
    CIMValue::CIMValue(ARGUMENT x) : impl_(CIMValueImpl::of(x)) {}                                                     \
    void CIMValue::get(T& x) const {                                                                                   \
        x = impl_->get<T>();                                                                                           \
    }                                                                                                                  \
    T CIMValue::to##T() const {                                                                                        \
        return impl_->get<T>();                                                                                        \
    }
#define CIM_VALUE_NUMBER(T)                                                                                            \
    CIM_VALUE_TYPE(T, T)                                                                                               \
    CIM_VALUE_TYPE(T##Array, const T##Array&)
#define CIM_VALUE_CLASS(T)                                                                                             \
    CIM_VALUE_TYPE(T, const T&)                                                                                        \
    CIM_VALUE_TYPE(T##Array, const T##Array&)

CIM_VALUE_NUMBER(Bool)
CIM_VALUE_NUMBER(UInt8)
CIM_VALUE_NUMBER(Int8)
CIM_VALUE_NUMBER(UInt16)
CIM_VALUE_NUMBER(Int16)
CIM_VALUE_NUMBER(UInt32)
CIM_VALUE_NUMBER(Int32)
CIM_VALUE_NUMBER(UInt64)
CIM_VALUE_NUMBER(Int64)
CIM_VALUE_NUMBER(Real32)
CIM_VALUE_NUMBER(Real64)
CIM_VALUE_CLASS(Char16)
CIM_VALUE_CLASS(CIMDateTime)
CIM_VALUE_CLASS(CIMObjectPath)
CIM_VALUE_CLASS(CIMClass)
CIM_VALUE_CLASS(CIMInstance)
CIM_VALUE_TYPE(StringArray, const StringArray&)

// NOLINTEND(bugprone-macro-parentheses)
#undef CIM_VALUE_CLASS
#undef CIM_VALUE_NUMBER
#undef CIM_VALUE_TYPE

// Strings have toString() for the text of any value.
CIMValue::CIMValue(const String& x) : impl_(CIMValueImpl::of(x)) {}
void CIMValue::get(String& x) const {
    x = impl_->get<String>();
}

void CIMValue::setNull() {
    impl_ = nullptr;
}

CIMValue& CIMValue::set(const CIMValue& other) {
    return *this = other;
}

CIMDataType::Type CIMValue::getType() const {
    return impl_->type();
}

CIMDataType CIMValue::getCIMDataType() const {
    return impl_->isArray() ? CIMDataType(impl_->type(), -1) : CIMDataType(impl_->type());
}

bool CIMValue::isArray() const {
    return impl_->isArray();
}

namespace {

struct CountElements {
    template <class T>
    size_t operator()(const T&) const {
        return 1;
    }
    template <class T>
    size_t operator()(const Array<T>& array) const {
        return array.size();
    }
};

} // namespace

UInt32 CIMValue::getArraySize() const {
    return static_cast<UInt32>(std::visit(CountElements(), impl_->storage));
}

bool CIMValue::isNumericType() const {
    return CIMDataType::isNumericType(impl_->type());
}

bool CIMValue::sameType(const CIMValue& other) const {
    return impl_->storage.index() == other.impl_->storage.index();
}

namespace {

/// By value, also where == compares names only.
template <class T>
bool sameValue(const T& x, const T& y) {
    return x == y;
}
bool sameValue(const CIMInstance& x, const CIMInstance& y) {
    return !(x < y) && !(y < x);
}
bool sameValue(const CIMInstanceArray& x, const CIMInstanceArray& y) {
    return !(x < y) && !(y < x);
}

} // namespace

bool CIMValue::equal(const CIMValue& other) const {
    if (!*this || !other) {
        return !*this && !other;
    }
    const CIMValueStorage& x = CIMValueAccess::storage(*this);
    const CIMValueStorage& y = CIMValueAccess::storage(other);
    return x.index() == y.index() && std::visit(
                                         [&y](const auto& value) {
                                             typedef std::decay_t<decltype(value)> T;
                                             return sameValue(value, std::get<T>(y));
                                         },
                                         x);
}

bool operator<(const CIMValue& x, const CIMValue& y) {
    if (!x || !y) {
        return !x && !!y;
    }
    const CIMValueStorage& a = CIMValueAccess::storage(x);
    const CIMValueStorage& b = CIMValueAccess::storage(y);
    return a.index() == b.index() && a < b;
}

} // namespace OpenWBEM
