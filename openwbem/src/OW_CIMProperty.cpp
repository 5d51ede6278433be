#include "OW_CIMProperty.hpp"

#include "OW_CIMModel.hpp"
#include "OW_CIMQualifier.hpp"
#include "OW_CIMStream.hpp"
#include "OW_CIMValue.hpp"
#include "OW_CIMValueCast.hpp"
#include "OW_NULLValueException.hpp"
#include "OW_NoSuchQualifierException.hpp"

namespace OpenWBEM {

const char* const CIMProperty::NAME_PROPERTY = "Name";

struct CIMProperty::Data : public ModelData<CIMProperty::Data> {
    CIMName name;
    CIMDataType dataType;
    CIMValue value = CIMValue(CIMNULL);
    CIMQualifierArray qualifiers;
    CIMName originClass;
    CIMName overridingProperty;
    Int32 size = -1;
    bool propagated = false;

    Data() = default;
    Data(const CIMName& n, const CIMDataType& type) : name(n), dataType(type) {}
    Data(const CIMName& n, const CIMValue& v) : name(n), dataType(v.getCIMDataType()), value(v) {}

    template <class Self>
    static auto fields(Self& self) {
        return std::tie(self.name, self.dataType, self.value, self.qualifiers, self.originClass,
                        self.overridingProperty, self.size, self.propagated);
    }
};

const CIMName& CIMAccess::name(const CIMProperty& property) {
    return property.data_->name;
}
const CIMDataType& CIMAccess::dataType(const CIMProperty& property) {
    return property.data_->dataType;
}
const CIMValue& CIMAccess::value(const CIMProperty& property) {
    return property.data_->value;
}
const CIMQualifierArray& CIMAccess::qualifiers(const CIMProperty& property) {
    return property.data_->qualifiers;
}
const CIMProperty* CIMAccess::find(const CIMPropertyArray& properties, const CIMName& name) {
    const size_t i = indexOfName(properties, name);
    return i < properties.size() ? &properties[i] : nullptr;
}
const CIMProperty* CIMAccess::find(const CIMPropertyArray& properties, const char* name) {
    const auto found = std::find_if(properties.begin(), properties.end(), [name](const CIMProperty& one) {
        return text(CIMAccess::name(one)).equalsIgnoreCase(name);
    });
    return found != properties.end() ? &*found : nullptr;
}

CIMProperty::CIMProperty() : data_(sharedDefault<Data>()) {}
CIMProperty::CIMProperty(CIMNULL_t) {}
CIMProperty::CIMProperty(const CIMName& name) : CIMProperty(name, CIMDataType()) {}
CIMProperty::CIMProperty(const char* name) : CIMProperty(CIMName(name)) {}
CIMProperty::CIMProperty(const CIMName& name, const CIMValue& value) : data_(new Data(name, value)) {}
CIMProperty::CIMProperty(const CIMName& name, const CIMDataType& dataType) : data_(new Data(name, dataType)) {}
CIMProperty::CIMProperty(const CIMProperty& other) = default;
CIMProperty::~CIMProperty() = default;
CIMProperty& CIMProperty::operator=(const CIMProperty& other) = default;

void CIMProperty::setNull() {
    data_ = nullptr;
}

String CIMProperty::getName() const {
    return data_->name.toString();
}

void CIMProperty::setName(const CIMName& name) {
    data_->name = name;
}

namespace {

bool isEmbeddedObject(const CIMValue& value) {
    return value.getType() == CIMDataType::EMBEDDEDCLASS || value.getType() == CIMDataType::EMBEDDEDINSTANCE;
}

/// The value as a property of that type holds it.
CIMValue valueFor(const CIMValue& value, const CIMDataType& dataType) {
    return !value || isEmbeddedObject(value) ? value : CIMValueCast::castValueToDataType(value, dataType);
}

} // namespace

CIMProperty& CIMProperty::setValue(const CIMValue& value) {
    const CIMDataType dataType = getDataType();
    data_->value = dataType ? valueFor(value, dataType) : value;
    return *this;
}

CIMValue CIMProperty::getValue() const {
    return data_->value;
}

CIMValue CIMProperty::getValueT() const {
    const CIMValue value = getValue();
    if (!value) {
        OW_THROW(NULLValueException, getName().c_str());
    }
    return value;
}

CIMProperty& CIMProperty::setDataType(const CIMDataType& dataType) {
    const CIMValue value = valueFor(getValue(), dataType);
    data_->dataType = dataType;
    data_->value = value;
    return *this;
}

CIMProperty& CIMProperty::setDataType(const CIMDataType::Type& dataType) {
    return setDataType(CIMDataType(dataType));
}

CIMDataType CIMProperty::getDataType() const {
    return data_->dataType;
}

Int32 CIMProperty::getSize() const {
    return data_->size;
}

CIMProperty& CIMProperty::setDataSize(Int32 size) {
    data_->size = size;
    return *this;
}

CIMQualifierArray CIMProperty::getQualifiers() const {
    return data_->qualifiers;
}

CIMProperty& CIMProperty::setQualifiers(const CIMQualifierArray& qualifiers) {
    data_->qualifiers = qualifiers;
    return *this;
}

CIMProperty& CIMProperty::clearQualifiers() {
    if (!getQualifiers().empty()) {
        data_->qualifiers.clear();
    }
    return *this;
}

CIMProperty& CIMProperty::clearNonKeyQualifiers() {
    CIMQualifierArray kept;
    const CIMQualifierArray all = getQualifiers();
    for (const CIMQualifier& qualifier : all) {
        if (qualifier.isKeyQualifier()) {
            kept.push_back(qualifier);
        }
    }
    return setQualifiers(kept);
}

CIMQualifier CIMProperty::getQualifier(const CIMName& name) const {
    return elementNamed(data_->qualifiers, name);
}

CIMQualifier CIMProperty::getQualifierT(const CIMName& name) const {
    const CIMQualifier qualifier = getQualifier(name);
    if (!qualifier) {
        OW_THROW(NoSuchQualifierException, name.toString().c_str());
    }
    return qualifier;
}

CIMProperty& CIMProperty::setQualifier(const CIMQualifier& qualifier) {
    setElement(data_->qualifiers, qualifier);
    return *this;
}

CIMProperty& CIMProperty::addQualifier(const CIMQualifier& qualifier) {
    addElement(data_->qualifiers, qualifier, "Qualifier");
    return *this;
}

bool CIMProperty::removeQualifier(const CIMName& name) {
    return removeElement(data_->qualifiers, name);
}

bool CIMProperty::hasTrueQualifier(const CIMName& name) const {
    return hasTrueElement(data_->qualifiers, name);
}

bool CIMProperty::isKey() const {
    static const CIMName& key = *new CIMName(CIMQualifier::CIM_QUAL_KEY);
    const Data& data = *data_;
    return (data.dataType && data.dataType.isReferenceType()) ||
           (!data.qualifiers.empty() && hasTrueElement(data.qualifiers, key));
}

bool CIMProperty::isReference() const {
    return data_->dataType && data_->dataType.isReferenceType();
}

String CIMProperty::getOriginClass() const {
    return data_->originClass.toString();
}

CIMProperty& CIMProperty::setOriginClass(const CIMName& originClass) {
    data_->originClass = originClass;
    return *this;
}

String CIMProperty::getOverridingProperty() const {
    return data_->overridingProperty.toString();
}

CIMProperty& CIMProperty::setOverridingProperty(const CIMName& property) {
    data_->overridingProperty = property;
    return *this;
}

bool CIMProperty::getPropagated() const {
    return data_->propagated;
}

CIMProperty& CIMProperty::setPropagated(bool propagated) {
    data_->propagated = propagated;
    return *this;
}

CIMProperty CIMProperty::clone() const {
    static_cast<void>(*data_); // a null property throws
    return *this;
}

CIMProperty CIMProperty::clone(WBEMFlags::EIncludeQualifiersFlag includeQualifiers,
                               WBEMFlags::EIncludeClassOriginFlag includeClassOrigin) const {
    CIMProperty copy = clone();
    if (!includeQualifiers) {
        copy.clearQualifiers();
    }
    if (!includeClassOrigin && !getOriginClass().empty()) {
        copy.setOriginClass(CIMName());
    }
    return copy;
}

CIMProperty CIMProperty::filter(WBEMFlags::ELocalOnlyFlag localOnly,
                                WBEMFlags::EIncludeQualifiersFlag includeQualifiers) const {
    if (localOnly && getPropagated()) {
        return CIMProperty(CIMNULL);
    }
    return clone(includeQualifiers, WBEMFlags::E_INCLUDE_CLASS_ORIGIN);
}

String CIMProperty::toString() const {
    const Data& data = *data_;
    return data.dataType.toString() + ":" + data.name.toString() + "=" +
           (data.value ? data.value.toString() : String("null"));
}

String CIMProperty::toMOF() const {
    const Data& data = *data_;
    String text;
    if (!data.qualifiers.empty()) {
        text = "  " + qualifiersToMOF(data.qualifiers) + "\n";
    }
    text += "  " + data.dataType.toMOF() + " " + data.name.toString() + data.dataType.getArrayMOF();
    return data.value ? text + "=" + data.value.toMOF() + ";\n" : text + ";\n";
}

void CIMProperty::readObject(std::istream& istrm) {
    data_ = CIMStream::readData<Data>(istrm, "P").release();
}

void CIMProperty::writeObject(std::ostream& ostrm) const {
    CIMStream::writeData(ostrm, "P", *data_);
}

bool operator<(const CIMProperty& x, const CIMProperty& y) {
    return sortsBefore(x.data_, y.data_);
}

} // namespace OpenWBEM
