// The texts of values: toString(), toMOF() and the way back.

#include "OW_CIMValueImpl.hpp"

namespace OpenWBEM {

namespace {

template <class T>
std::enable_if_t<std::is_integral<T>::value, String> textOf(const T& number) {
    typedef std::conditional_t<std::is_signed<T>::value, Int64, UInt64> Widest;
    return String(static_cast<Widest>(number));
}
template <class T>
std::enable_if_t<std::is_floating_point<T>::value, String> textOf(const T& number) {
    return String(static_cast<Real64>(number));
}
String textOf(const String& text) {
    return text;
}
String textOf(const Char16& character) {
    return String(static_cast<char>(character.getValue() & 0xFF));
}
template <class T>
std::enable_if_t<std::is_class<T>::value, String> textOf(const T& object) {
    return object.toString();
}

struct CollectTexts {
    template <class T>
    StringArray operator()(const T& value) const {
        return StringArray(1, textOf(value));
    }
    template <class T>
    StringArray operator()(const Array<T>& array) const {
        StringArray texts;
        texts.reserve(array.size());
        for (const T& element : array) {
            texts.push_back(textOf(element));
        }
        return texts;
    }
};

struct ToText {
    template <class T>
    String operator()(const T& value) const {
        return textOf(value);
    }
    template <class T>
    String operator()(const Array<T>& array) const {
        return joined(CollectTexts()(array), ",");
    }
};

template <class T>
String mofOf(const T& value) {
    constexpr bool kIsBare =
        std::is_arithmetic<T>::value || std::is_same<T, Bool>::value || std::is_same<T, Char16>::value;
    return kIsBare ? textOf(value) : quoteForMOF(textOf(value));
}

struct ToMOF {
    template <class T>
    String operator()(const T& value) const {
        return mofOf(value);
    }
    String operator()(const CIMObjectPath& path) const { return path.toMOF(); }
    template <class T>
    String operator()(const Array<T>& array) const {
        StringArray texts;
        texts.reserve(array.size());
        for (const T& element : array) {
            texts.push_back(mofOf(element));
        }
        return "{" + joined(texts, ",") + "}";
    }
    // Deliberately neither quoted nor escaped.
    String operator()(const CIMObjectPathArray& paths) const { return "{" + ToText()(paths) + "}"; }
};

void parse(const String& text, Bool& x) {
    x = Bool(text.toBool());
}
void parse(const String& text, Char16& x) {
    x = Char16(text);
}
void parse(const String& text, UInt8& x) {
    x = text.toUInt8();
}
void parse(const String& text, Int8& x) {
    x = text.toInt8();
}
void parse(const String& text, UInt16& x) {
    x = text.toUInt16();
}
void parse(const String& text, Int16& x) {
    x = text.toInt16();
}
void parse(const String& text, UInt32& x) {
    x = text.toUInt32();
}
void parse(const String& text, Int32& x) {
    x = text.toInt32();
}
void parse(const String& text, UInt64& x) {
    x = text.toUInt64();
}
void parse(const String& text, Int64& x) {
    x = text.toInt64();
}
void parse(const String& text, Real32& x) {
    x = text.toReal32();
}
void parse(const String& text, Real64& x) {
    x = text.toReal64();
}
void parse(const String& text, String& x) {
    x = text;
}
void parse(const String& text, CIMDateTime& x) {
    x = CIMDateTime(text);
}
void parse(const String& text, CIMObjectPath& x) {
    x = CIMObjectPath::parse(text);
}
[[noreturn]] void throwNoText() {
    OW_THROWCIMMSG(CIMException::FAILED, "An embedded object is not made from a plain text");
}
void parse(const String&, CIMClass&) {
    throwNoText();
}
void parse(const String&, CIMInstance&) {
    throwNoText();
}

struct FromTexts {
    const StringArray& texts;

    template <class T>
    void operator()(T& value) const {
        parse(texts.front(), value);
    }
    template <class T>
    void operator()(Array<T>& array) const {
        array.reserve(texts.size());
        for (const String& text : texts) {
            T element = T();
            parse(text, element);
            array.push_back(element);
        }
    }
};

} // namespace

StringArray textsOf(const CIMValueStorage& storage) {
    return std::visit(CollectTexts(), storage);
}

void parseTexts(const StringArray& texts, CIMValueStorage& storage) {
    std::visit(FromTexts{texts}, storage);
}

String CIMValue::toString() const {
    return impl_ ? std::visit(ToText(), CIMValueAccess::storage(*this)) : String("(null)");
}

String CIMValue::toMOF() const {
    return std::visit(ToMOF(), CIMValueAccess::storage(*this));
}

CIMValue CIMValue::createSimpleValue(const String& cimtype, const String& value) {
    const CIMDataType::Type type = CIMDataType::strToSimpleType(cimtype);
    const size_t kind = kindOf(type);
    if (kind == kScalarKinds || (type == CIMDataType::REFERENCE && value.empty())) {
        return CIMValue(CIMNULL);
    }
    CIMValueStorage storage = makeAlternative(kind);
    parseTexts(StringArray(1, value), storage);
    return CIMValueAccess::make(std::move(storage));
}

} // namespace OpenWBEM
