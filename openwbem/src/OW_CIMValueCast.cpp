#include "OW_CIMValueCast.hpp"

#include "OW_CIMException.hpp"
#include "OW_CIMValueImpl.hpp"
#include "OW_ExceptionIds.hpp"

namespace OpenWBEM {

OW_DEFINE_EXCEPTION_WITH_ID(ValueCast)

namespace CIMValueCast {

namespace {

bool isEmbedded(CIMDataType::Type type) {
    return type == CIMDataType::EMBEDDEDCLASS || type == CIMDataType::EMBEDDEDINSTANCE;
}

/// Types that convert only to and from strings; embedded objects only to them.
bool convertsOnlyToString(CIMDataType::Type type) {
    return type == CIMDataType::DATETIME || type == CIMDataType::REFERENCE || isEmbedded(type);
}

bool canConvert(CIMDataType::Type from, CIMDataType::Type to) {
    if (from == to || to == CIMDataType::STRING) {
        return true;
    }
    if (from == CIMDataType::STRING) {
        return !isEmbedded(to);
    }
    return !convertsOnlyToString(from) && !convertsOnlyToString(to);
}

[[noreturn]] void throwCannot(const CIMValue& value, const CIMDataType& dataType) {
    const String message = "Failed to convert \"" + value.toString() + "\" to " + dataType.toString();
    OW_THROWCIMMSG(CIMException::FAILED, message.c_str());
}

/// The value's texts read as the alternative of that index.
CIMValue convertTexts(const StringArray& texts, size_t index) {
    CIMValueStorage storage = makeAlternative(index);
    try {
        parseTexts(texts, storage);
    } catch (const StringConversionException& e) {
        OW_THROWCIMMSG(CIMException::FAILED, e.getMessage());
    }
    return CIMValueAccess::make(std::move(storage));
}

template <class T>
CIMValueStorage store(const T& value) {
    return CIMValueStorage(std::in_place_type<T>, value);
}

struct FirstElement {
    template <class T>
    CIMValueStorage operator()(const T& value) const {
        return store(value);
    }
    template <class T>
    CIMValueStorage operator()(const Array<T>& array) const {
        return store(array.front());
    }
};

struct ToArray {
    template <class T>
    CIMValueStorage operator()(const T& value) const {
        return store(Array<T>(size_t(1), value));
    }
    template <class T>
    CIMValueStorage operator()(const Array<T>& array) const {
        return store(array);
    }
};

/// The value as an array or as a scalar, of the type it has. Null for the scalar of an empty array.
CIMValue asArrayOrScalar(const CIMValue& value, bool array) {
    if (value.isArray() == array) {
        return value;
    }
    if (value.getArraySize() == 0) {
        return CIMValue(CIMNULL);
    }
    const CIMValueStorage& storage = CIMValueAccess::storage(value);
    return CIMValueAccess::make(array ? std::visit(ToArray(), storage) : std::visit(FirstElement(), storage));
}

} // namespace

CIMValue castValueToDataType(const CIMValue& value, const CIMDataType& dataType) {
    if (!value || !dataType) {
        return CIMValue(CIMNULL);
    }
    const CIMValue shaped = asArrayOrScalar(value, dataType.isArrayType());
    if (!shaped || shaped.getType() == dataType.getType()) {
        return shaped;
    }
    const size_t kind = kindOf(dataType.getType());
    if (kind == kScalarKinds || !canConvert(shaped.getType(), dataType.getType())) {
        throwCannot(shaped, dataType);
    }
    const StringArray texts = textsOf(CIMValueAccess::storage(shaped));
    if (dataType.isReferenceType() && !dataType.isArrayType() && texts.front().empty()) {
        return CIMValue(CIMNULL);
    }
    return convertTexts(texts, dataType.isArrayType() ? kind + kScalarKinds : kind);
}

} // namespace CIMValueCast
} // namespace OpenWBEM
