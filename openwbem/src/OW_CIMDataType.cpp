#include "OW_CIMDataType.hpp"

#include "OW_CIMModel.hpp"
#include "OW_CIMStream.hpp"
#include "OW_CIMValue.hpp"

#include <array>

namespace OpenWBEM {

struct CIMDataType::Data : public ModelData<CIMDataType::Data> {
    Int32 type = CIMDataType::CIMNULL; // a Type
    Int32 size = 1;                    // -1 for any size
    bool array = false;
    CIMName refClassName;

    template <class Self>
    static auto fields(Self& self) {
        return std::tie(self.type, self.array, self.size, self.refClassName);
    }
    static COWIntrusiveReference<Data> scalar(Type type);
    static COWIntrusiveReference<Data> make(Type type) {
        COWIntrusiveReference<Data> data(new Data);
        data->type = type;
        return data;
    }
    void setSize(Int32 newSize) {
        array = true;
        size = newSize < 1 ? -1 : newSize;
    }
};

/// Every value and property has a type, nearly always a plain scalar one: those share their data.
COWIntrusiveReference<CIMDataType::Data> CIMDataType::Data::scalar(Type type) {
    typedef std::array<COWIntrusiveReference<Data>, MAXDATATYPE> Table;
    static const Table& table = *[] {
        auto* made = new Table;
        for (size_t i = 0; i < made->size(); ++i) {
            (*made)[i] = make(static_cast<Type>(i));
        }
        return made;
    }();
    const size_t index = static_cast<size_t>(type);
    return index < table.size() ? table[index] : make(type);
}

CIMDataType::CIMDataType() : data_(Data::scalar(CIMNULL)) {}
CIMDataType::CIMDataType(CIMNULL_t) {}
CIMDataType::CIMDataType(Type type) : data_(Data::scalar(type)) {}
CIMDataType::CIMDataType(Type type, Int32 size) : data_(Data::scalar(type)) {
    data_->setSize(size);
}
CIMDataType::CIMDataType(const CIMName& refClassName) : data_(Data::scalar(REFERENCE)) {
    data_->refClassName = refClassName;
}
CIMDataType::CIMDataType(const CIMDataType& other) = default;
CIMDataType::~CIMDataType() = default;
CIMDataType& CIMDataType::operator=(const CIMDataType& other) = default;

void CIMDataType::setNull() {
    data_ = nullptr;
}

bool CIMDataType::namesType() const {
    const Data* data = data_.getPtr();
    return data && data->type != CIMNULL && data->type != INVALID;
}

CIMDataType::Type CIMDataType::getType() const {
    return static_cast<Type>(data_->type);
}

Int32 CIMDataType::getSize() const {
    return data_->size;
}

String CIMDataType::getRefClassName() const {
    return data_->refClassName.toString();
}

bool CIMDataType::isArrayType() const {
    return data_->array;
}

bool CIMDataType::isNumericType() const {
    return isNumericType(getType());
}

bool CIMDataType::isNumericType(Type type) {
    return (type >= UINT8 && type <= SINT64) || type == REAL32 || type == REAL64;
}

bool CIMDataType::isReferenceType() const {
    return data_->type == REFERENCE;
}

bool CIMDataType::setToArrayType(Int32 size) {
    if (isArrayType() || !namesType()) { // in this order a null type throws
        return false;
    }
    data_->setSize(size);
    return true;
}

bool CIMDataType::syncWithValue(const CIMValue& value) {
    if (!value) {
        return true;
    }
    if (getType() == value.getType() && isArrayType() == value.isArray()) {
        return true;
    }
    *this = value.getCIMDataType();
    return false;
}

namespace {

struct TypeName {
    const char* name;
    CIMDataType::Type type;
};

const TypeName kTypeNames[] = {
    {"uint8", CIMDataType::UINT8},          {"sint8", CIMDataType::SINT8},
    {"uint16", CIMDataType::UINT16},        {"sint16", CIMDataType::SINT16},
    {"uint32", CIMDataType::UINT32},        {"sint32", CIMDataType::SINT32},
    {"uint64", CIMDataType::UINT64},        {"sint64", CIMDataType::SINT64},
    {"real32", CIMDataType::REAL32},        {"real64", CIMDataType::REAL64},
    {"char16", CIMDataType::CHAR16},        {"string", CIMDataType::STRING},
    {"boolean", CIMDataType::BOOLEAN},      {"datetime", CIMDataType::DATETIME},
    {"REF", CIMDataType::REFERENCE},        {"reference", CIMDataType::REFERENCE},
    {"string", CIMDataType::EMBEDDEDCLASS}, {"string", CIMDataType::EMBEDDEDINSTANCE},
};

} // namespace

CIMDataType::Type CIMDataType::strToSimpleType(const String& name) {
    for (const TypeName& known : kTypeNames) {
        if (name.equalsIgnoreCase(known.name)) {
            return known.type;
        }
    }
    return INVALID;
}

CIMDataType CIMDataType::getDataType(const String& name) {
    if (name.empty()) {
        return CIMDataType();
    }
    const Type type = strToSimpleType(name);
    return type == INVALID ? CIMDataType(OpenWBEM::CIMNULL) : CIMDataType(type);
}

bool CIMDataType::equals(const CIMDataType& other) const {
    return data_->type == other.data_->type && data_->array == other.data_->array;
}

String CIMDataType::toString() const {
    for (const TypeName& known : kTypeNames) {
        if (known.type == data_->type) {
            return known.name;
        }
    }
    return "** INVALID DATA TYPE IN CIMDATATYPE - toString **";
}

String CIMDataType::toMOF() const {
    return isReferenceType() ? getRefClassName() + " REF" : toString();
}

String CIMDataType::getArrayMOF() const {
    if (!isArrayType()) {
        return "";
    }
    return getSize() < 1 ? String("[]") : "[" + String(getSize()) + "]";
}

void CIMDataType::readObject(std::istream& istrm) {
    auto data = CIMStream::readData<Data>(istrm, "T");
    if ((data->type < CIMNULL || data->type >= MAXDATATYPE) && data->type != INVALID) {
        const String message = "The binary form of a data type holds the unknown type " + String(data->type);
        OW_THROW(CIMStreamException, message.c_str());
    }
    data_ = data.release();
}

void CIMDataType::writeObject(std::ostream& ostrm) const {
    CIMStream::writeData(ostrm, "T", *data_);
}

bool operator==(const CIMDataType& x, const CIMDataType& y) {
    return !(x < y) && !(y < x);
}

bool operator<(const CIMDataType& x, const CIMDataType& y) {
    return x.data_.getPtr() != y.data_.getPtr() && sortsBefore(x.data_, y.data_);
}

} // namespace OpenWBEM
