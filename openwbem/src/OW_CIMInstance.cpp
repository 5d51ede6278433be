#include "OW_CIMInstance.hpp"

#include "OW_CIMModel.hpp"
#include "OW_CIMProperty.hpp"
#include "OW_CIMQualifier.hpp"
#include "OW_CIMStream.hpp"
#include "OW_CIMValue.hpp"
#include "OW_NoSuchPropertyException.hpp"

namespace OpenWBEM {

struct CIMInstance::Data : public ModelData<CIMInstance::Data> {
    CIMName className;
    CIMPropertyArray properties;
    CIMPropertyArray keys;
    CIMQualifierArray qualifiers;
    String language;

    template <class Self>
    static auto fields(Self& self) {
        return std::tie(self.className, self.properties, self.keys, self.qualifiers, self.language);
    }
    void rebuildKeys();
};

void CIMInstance::Data::rebuildKeys() {
    CIMPropertyArray rebuilt;
    const CIMPropertyArray all = properties;
    for (const CIMProperty& property : all) {
        if (property.isKey()) {
            rebuilt.push_back(property);
        }
    }
    keys = rebuilt;
}

CIMInstance::CIMInstance() : m_pdata(sharedDefault<Data>()) {}
CIMInstance::CIMInstance(CIMNULL_t) {}
CIMInstance::CIMInstance(const CIMName& className) : CIMInstance() {
    m_pdata->className = className;
}
CIMInstance::CIMInstance(const char* className) : CIMInstance(CIMName(className)) {}
CIMInstance::CIMInstance(const CIMInstance& other) = default;
CIMInstance::~CIMInstance() = default;
CIMInstance& CIMInstance::operator=(const CIMInstance& other) = default;

void CIMInstance::setNull() {
    m_pdata = nullptr;
}

String CIMInstance::getClassName() const {
    return m_pdata->className.toString();
}

CIMInstance& CIMInstance::setClassName(const CIMName& className) {
    m_pdata->className = className;
    return *this;
}

String CIMInstance::getName() const {
    return getClassName();
}

void CIMInstance::setName(const CIMName& className) {
    setClassName(className);
}

CIMPropertyArray CIMInstance::getProperties(Int32 valueDataType) const {
    if (valueDataType == CIMDataType::INVALID) {
        return m_pdata->properties;
    }
    CIMPropertyArray ofType;
    for (const CIMProperty& property : m_pdata->properties) {
        if (property.getDataType() && property.getDataType().getType() == valueDataType) {
            ofType.push_back(property);
        }
    }
    return ofType;
}

CIMInstance& CIMInstance::setProperties(const CIMPropertyArray& properties) {
    m_pdata->properties = properties;
    m_pdata->rebuildKeys();
    return *this;
}

CIMProperty CIMInstance::getProperty(const CIMName& name) const {
    return elementNamed(m_pdata->properties, name);
}

CIMProperty CIMInstance::getProperty(const CIMName& name, const CIMName& originClass) const {
    return elementNamed(m_pdata->properties, name, originClass);
}

CIMProperty CIMInstance::getPropertyT(const CIMName& name) const {
    const CIMProperty property = getProperty(name);
    if (!property) {
        OW_THROW_ERR(NoSuchPropertyException, name.toString().c_str(), E_INSTANCE_HAS_NO_SUCH_PROPERTY);
    }
    return property;
}

CIMValue CIMInstance::getPropertyValue(const CIMName& name) const {
    const CIMProperty property = getProperty(name);
    return property ? property.getValue() : CIMValue(CIMNULL);
}

bool CIMInstance::propertyHasValue(const CIMName& name) const {
    return !!getPropertyValue(name);
}

CIMInstance& CIMInstance::setProperty(const CIMName& name, const CIMValue& value) {
    CIMProperty property = getProperty(name);
    if (property) {
        return setProperty(property.setValue(value));
    }
    m_pdata->properties.push_back(value ? CIMProperty(name, value) : CIMProperty(name));
    return *this;
}

CIMInstance& CIMInstance::setProperty(const CIMProperty& property) {
    if (!property) {
        return *this;
    }
    CIMPropertyArray& properties = m_pdata->properties;
    const size_t i = indexOfName(properties, CIMNameAccess::of(property));
    bool concernsKeys = property.isKey();
    if (i < properties.size()) {
        concernsKeys = concernsKeys || properties[i].isKey();
        properties[i] = property;
    } else {
        properties.push_back(property);
    }
    if (concernsKeys) {
        m_pdata->rebuildKeys();
    }
    return *this;
}

CIMInstance& CIMInstance::updatePropertyValue(const CIMName& name, const CIMValue& value) {
    return updatePropertyValue(CIMProperty(name, value));
}

CIMInstance& CIMInstance::updatePropertyValue(const CIMProperty& property) {
    CIMProperty present = getProperty(CIMNameAccess::of(property));
    return present ? setProperty(present.setValue(property.getValue())) : *this;
}

CIMInstance& CIMInstance::updatePropertyValues(const CIMPropertyArray& properties) {
    for (const CIMProperty& property : properties) {
        updatePropertyValue(property);
    }
    return *this;
}

CIMInstance& CIMInstance::removeProperty(const CIMName& name) {
    removeElement(m_pdata->properties, name);
    return *this;
}

CIMPropertyArray CIMInstance::getKeyValuePairs() const {
    return m_pdata->keys;
}

CIMInstance& CIMInstance::setKeys(const CIMPropertyArray& keys) {
    m_pdata->keys = keys;
    return *this;
}

CIMQualifierArray CIMInstance::getQualifiers() const {
    return m_pdata->qualifiers;
}

CIMQualifier CIMInstance::getQualifier(const CIMName& name) const {
    return elementNamed(m_pdata->qualifiers, name);
}

CIMInstance& CIMInstance::removeQualifier(const CIMName& name) {
    removeElement(m_pdata->qualifiers, name);
    return *this;
}

CIMInstance& CIMInstance::setQualifiers(const CIMQualifierArray& qualifiers) {
    m_pdata->qualifiers = qualifiers;
    return *this;
}

CIMInstance& CIMInstance::setQualifier(const CIMQualifier& qualifier) {
    setElement(m_pdata->qualifiers, qualifier);
    return *this;
}

String CIMInstance::getLanguage() const {
    return m_pdata->language;
}

CIMInstance& CIMInstance::setLanguage(const String& language) {
    m_pdata->language = language;
    return *this;
}

bool CIMInstance::propertiesAreEqualTo(const CIMInstance& other) const {
    const CIMPropertyArray& mine = m_pdata->properties;
    const CIMPropertyArray& others = other.m_pdata->properties;
    if (mine.size() != others.size()) {
        return false;
    }
    for (const CIMProperty& property : mine) {
        const CIMProperty counterpart = elementNamed(others, CIMNameAccess::of(property));
        if (!counterpart || counterpart.getDataType() != property.getDataType() ||
            counterpart.getValue() != property.getValue()) {
            return false;
        }
    }
    return true;
}

String CIMInstance::toString() const {
    static const CIMName& invisible = *new CIMName(CIMQualifier::CIM_QUAL_INVISIBLE);
    std::string text = ("instance of " + getClassName() + " {\n").c_str();
    for (const CIMProperty& property : m_pdata->properties) {
        if (property.hasTrueQualifier(invisible)) {
            continue;
        }
        const CIMValue value = property.getValue();
        text += (property.getName() + " = " + (value ? value.toString() : String("null")) + ";\n").c_str();
    }
    return (text + "}\n").c_str();
}

String CIMInstance::toMOF() const {
    std::string text = qualifiersToMOF(m_pdata->qualifiers, "");
    text += ("INSTANCE OF " + getClassName() + "\n{\n").c_str();
    for (const CIMProperty& property : m_pdata->properties) {
        const CIMValue value = property.getValue();
        text += ("  " + property.getName() + "=" + (value ? value.toMOF() : String("NULL")) + ";\n").c_str();
    }
    return (text + "};\n").c_str();
}

void CIMInstance::readObject(std::istream& istrm) {
    m_pdata = CIMStream::readData<Data>(istrm, "I").release();
}

void CIMInstance::writeObject(std::ostream& ostrm) const {
    CIMStream::writeData(ostrm, "I", *m_pdata);
}

bool operator<(const CIMInstance& x, const CIMInstance& y) {
    return sortsBefore(x.m_pdata, y.m_pdata);
}

} // namespace OpenWBEM
