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

    template <class Self>
    static auto fields(Self& self) {
        return std::tie(self.name, self.dataType, self.value, self.qualifiers, self.originClass,
                        self.overridingProperty, self.size, self.propagated);
    }
};

const CIMName& CIMNameAccess::of(const CIMProperty& property) {
    return property.m_pdata->name;
}

CIMProperty::CIMProperty() : m_pdata(sharedDefault<Data>()) {}
CIMProperty::CIMProperty(CIMNULL_t) {}
CIMProperty::CIMProperty(const CIMName& name) : CIMProperty() {
    m_pdata->name = name;
}
CIMProperty::CIMProperty(const char* name) : CIMProperty(CIMName(name)) {}
CIMProperty::CIMProperty(const CIMName& name, const CIMValue& value) : CIMProperty(name, value.getCIMDataType()) {
    m_pdata->value = value;
}
CIMProperty::CIMProperty(const CIMName& name, const CIMDataType& dataType) : CIMProperty(name) {
    m_pdata->dataType = dataType;
}
CIMProperty::CIMProperty(const CIMProperty& other) = default;
CIMProperty::~CIMProperty() = default;
CIMProperty& CIMProperty::operator=(const CIMProperty& other) = default;

void CIMProperty::setNull() {
    m_pdata = nullptr;
}

String CIMProperty::getName() const {
    return m_pdata->name.toString();
}

void CIMProperty::setName(const CIMName& name) {
    m_pdata->name = name;
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
    m_pdata->value = dataType ? valueFor(value, dataType) : value;
    return *this;
}

CIMValue CIMProperty::getValue() const {
    return m_pdata->value;
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
    m_pdata->dataType = dataType;
    m_pdata->value = value;
    return *this;
}

CIMProperty& CIMProperty::setDataType(const CIMDataType::Type& dataType) {
    return setDataType(CIMDataType(dataType));
}

CIMDataType CIMProperty::getDataType() const {
    return m_pdata->dataType;
}

Int32 CIMProperty::getSize() const {
    return m_pdata->size;
}

CIMProperty& CIMProperty::setDataSize(Int32 size) {
    m_pdata->size = size;
    return *this;
}

CIMQualifierArray CIMProperty::getQualifiers() const {
    return m_pdata->qualifiers;
}

CIMProperty& CIMProperty::setQualifiers(const CIMQualifierArray& qualifiers) {
    m_pdata->qualifiers = qualifiers;
    return *this;
}

CIMProperty& CIMProperty::clearQualifiers() {
    if (!getQualifiers().empty()) {
        m_pdata->qualifiers.clear();
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
    return elementNamed(m_pdata->qualifiers, name);
}

CIMQualifier CIMProperty::getQualifierT(const CIMName& name) const {
    const CIMQualifier qualifier = getQualifier(name);
    if (!qualifier) {
        OW_THROW(NoSuchQualifierException, name.toString().c_str());
    }
    return qualifier;
}

CIMProperty& CIMProperty::setQualifier(const CIMQualifier& qualifier) {
    setElement(m_pdata->qualifiers, qualifier);
    return *this;
}

CIMProperty& CIMProperty::addQualifier(const CIMQualifier& qualifier) {
    addElement(m_pdata->qualifiers, qualifier, "Qualifier");
    return *this;
}

bool CIMProperty::removeQualifier(const CIMName& name) {
    return removeElement(m_pdata->qualifiers, name);
}

bool CIMProperty::hasTrueQualifier(const CIMName& name) const {
    return hasTrueElement(m_pdata->qualifiers, name);
}

bool CIMProperty::isKey() const {
    static const CIMName& key = *new CIMName(CIMQualifier::CIM_QUAL_KEY);
    return isReference() || hasTrueQualifier(key);
}

bool CIMProperty::isReference() const {
    return m_pdata->dataType && m_pdata->dataType.isReferenceType();
}

String CIMProperty::getOriginClass() const {
    return m_pdata->originClass.toString();
}

CIMProperty& CIMProperty::setOriginClass(const CIMName& originClass) {
    m_pdata->originClass = originClass;
    return *this;
}

String CIMProperty::getOverridingProperty() const {
    return m_pdata->overridingProperty.toString();
}

CIMProperty& CIMProperty::setOverridingProperty(const CIMName& property) {
    m_pdata->overridingProperty = property;
    return *this;
}

bool CIMProperty::getPropagated() const {
    return m_pdata->propagated;
}

CIMProperty& CIMProperty::setPropagated(bool propagated) {
    m_pdata->propagated = propagated;
    return *this;
}

CIMProperty CIMProperty::clone() const {
    return *this;
}

CIMProperty CIMProperty::clone(WBEMFlags::EIncludeQualifiersFlag includeQualifiers,
                               WBEMFlags::EIncludeClassOriginFlag includeClassOrigin) const {
    CIMProperty copy(*this);
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
    const Data& data = *m_pdata;
    return data.dataType.toString() + ":" + data.name.toString() + "=" +
           (data.value ? data.value.toString() : String("null"));
}

String CIMProperty::toMOF() const {
    const Data& data = *m_pdata;
    String text = qualifiersToMOF(data.qualifiers, "  ").c_str();
    text += "  " + data.dataType.toMOF() + " " + data.name.toString() + data.dataType.getArrayMOF();
    return data.value ? text + " = " + data.value.toMOF() + ";\n" : text + ";\n";
}

void CIMProperty::readObject(std::istream& istrm) {
    m_pdata = CIMStream::readData<Data>(istrm, "P").release();
}

void CIMProperty::writeObject(std::ostream& ostrm) const {
    CIMStream::writeData(ostrm, "P", *m_pdata);
}

bool operator<(const CIMProperty& x, const CIMProperty& y) {
    return sortsBefore(x.m_pdata, y.m_pdata);
}

} // namespace OpenWBEM
