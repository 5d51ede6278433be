#include "OW_CIMClass.hpp"

#include "OW_CIMInstance.hpp"
#include "OW_CIMMethod.hpp"
#include "OW_CIMModel.hpp"
#include "OW_CIMProperty.hpp"
#include "OW_CIMQualifier.hpp"
#include "OW_CIMStream.hpp"
#include "OW_CIMValue.hpp"

namespace OpenWBEM {

const char* const CIMClass::NAMESPACECLASS = "__Namespace";

struct CIMClass::Data : public ModelData<CIMClass::Data> {
    CIMName name;
    CIMName superClass;
    CIMQualifierArray qualifiers;
    CIMPropertyArray properties;
    CIMMethodArray methods;
    bool association = false;
    bool keyed = false;

    template <class Self>
    static auto fields(Self& self) {
        return std::tie(self.name, self.superClass, self.qualifiers, self.properties, self.methods, self.association,
                        self.keyed);
    }
    void note(const CIMProperty& property) { keyed = keyed || property.isKey(); }
    void note(const CIMQualifier& qualifier) {
        if (qualifier && qualifier.isAssociationQualifier()) {
            association = !qualifier.hasValue() || qualifier.getValue() != CIMValue(false);
        }
    }
};

CIMClass::CIMClass() : m_pdata(sharedDefault<Data>()) {}
CIMClass::CIMClass(CIMNULL_t) {}
CIMClass::CIMClass(const CIMName& name) : CIMClass() {
    m_pdata->name = name;
}
CIMClass::CIMClass(const char* name) : CIMClass(CIMName(name)) {}
CIMClass::CIMClass(const CIMClass& other) = default;
CIMClass::~CIMClass() = default;
CIMClass& CIMClass::operator=(const CIMClass& other) = default;

void CIMClass::setNull() {
    m_pdata = nullptr;
}

String CIMClass::getName() const {
    return m_pdata->name.toString();
}

void CIMClass::setName(const CIMName& name) {
    m_pdata->name = name;
}

String CIMClass::getSuperClass() const {
    return m_pdata->superClass.toString();
}

CIMClass& CIMClass::setSuperClass(const CIMName& superClass) {
    m_pdata->superClass = superClass;
    return *this;
}

String CIMClass::getKeyClass() const {
    const CIMPropertyArray keys = getKeys();
    return keys.empty() ? String() : keys.front().getOriginClass();
}

CIMPropertyArray CIMClass::getAllProperties() const {
    return m_pdata->properties;
}

CIMPropertyArray CIMClass::getProperties() const {
    CIMPropertyArray own;
    for (const CIMProperty& property : m_pdata->properties) {
        if (property.getOverridingProperty().empty()) {
            own.push_back(property);
        }
    }
    return own;
}

CIMPropertyArray CIMClass::getKeys() const {
    CIMPropertyArray keys;
    for (const CIMProperty& property : m_pdata->properties) {
        if (property.isKey()) {
            keys.push_back(property);
        }
    }
    return keys;
}

CIMProperty CIMClass::getProperty(const CIMName& name) const {
    return elementNamed(m_pdata->properties, name);
}

CIMProperty CIMClass::getProperty(const CIMName& name, const CIMName& originClass) const {
    return elementNamed(m_pdata->properties, name, originClass);
}

CIMMethod CIMClass::getMethod(const CIMName& name) const {
    return elementNamed(m_pdata->methods, name);
}

CIMMethod CIMClass::getMethod(const CIMName& name, const CIMName& originClass) const {
    return elementNamed(m_pdata->methods, name, originClass);
}

CIMMethodArray CIMClass::getAllMethods() const {
    return m_pdata->methods;
}

CIMMethodArray CIMClass::getMethods() const {
    CIMMethodArray own;
    for (const CIMMethod& method : m_pdata->methods) {
        if (method.getOverridingMethod().empty()) {
            own.push_back(method);
        }
    }
    return own;
}

CIMQualifierArray CIMClass::getQualifiers() const {
    return m_pdata->qualifiers;
}

CIMQualifier CIMClass::getQualifier(const CIMName& name) const {
    return elementNamed(m_pdata->qualifiers, name);
}

bool CIMClass::isKeyed() const {
    return m_pdata->keyed;
}

CIMClass& CIMClass::setIsKeyed(bool keyed) {
    m_pdata->keyed = keyed;
    return *this;
}

bool CIMClass::isAssociation() const {
    return m_pdata->association;
}

CIMClass& CIMClass::setIsAssociation(bool association) {
    m_pdata->association = association;
    return *this;
}

UInt32 CIMClass::numberOfProperties() const {
    return static_cast<UInt32>(m_pdata->properties.size());
}

UInt32 CIMClass::numberOfQualifiers() const {
    return static_cast<UInt32>(m_pdata->qualifiers.size());
}

CIMClass& CIMClass::addProperty(const CIMProperty& property) {
    addElement(m_pdata->properties, property, "Property");
    m_pdata->note(property);
    return *this;
}

CIMClass& CIMClass::setProperties(const CIMPropertyArray& properties) {
    m_pdata->properties = properties;
    for (const CIMProperty& property : properties) {
        m_pdata->note(property);
    }
    return *this;
}

CIMClass& CIMClass::setProperty(const CIMProperty& property) {
    setElement(m_pdata->properties, property);
    if (property) {
        m_pdata->note(property);
    }
    return *this;
}

bool CIMClass::removeProperty(const CIMName& name) {
    return removeElement(m_pdata->properties, name);
}

CIMClass& CIMClass::addQualifier(const CIMQualifier& qualifier) {
    addElement(m_pdata->qualifiers, qualifier, "Qualifier");
    m_pdata->note(qualifier);
    return *this;
}

CIMClass& CIMClass::setQualifier(const CIMQualifier& qualifier) {
    setElement(m_pdata->qualifiers, qualifier);
    m_pdata->note(qualifier);
    return *this;
}

CIMClass& CIMClass::setQualifiers(const CIMQualifierArray& qualifiers) {
    m_pdata->qualifiers = qualifiers;
    for (const CIMQualifier& qualifier : qualifiers) {
        m_pdata->note(qualifier);
    }
    return *this;
}

bool CIMClass::hasQualifier(const CIMQualifier& qualifier) const {
    return !!getQualifier(CIMNameAccess::of(qualifier));
}

bool CIMClass::removeQualifier(const CIMQualifier& qualifier) {
    return removeQualifier(CIMNameAccess::of(qualifier));
}

bool CIMClass::removeQualifier(const CIMName& name) {
    return removeElement(m_pdata->qualifiers, name);
}

CIMClass& CIMClass::addMethod(const CIMMethod& method) {
    addElement(m_pdata->methods, method, "Method");
    return *this;
}

CIMClass& CIMClass::setMethods(const CIMMethodArray& methods) {
    m_pdata->methods = methods;
    return *this;
}

CIMClass& CIMClass::setMethod(const CIMMethod& method) {
    setElement(m_pdata->methods, method);
    return *this;
}

CIMInstance CIMClass::newInstance() const {
    return CIMInstance(m_pdata->name).setProperties(m_pdata->properties);
}

void CIMClass::readObject(std::istream& istrm) {
    m_pdata = CIMStream::readData<Data>(istrm, "C").release();
}

void CIMClass::writeObject(std::ostream& ostrm) const {
    CIMStream::writeData(ostrm, "C", *m_pdata);
}

bool operator<(const CIMClass& x, const CIMClass& y) {
    return sortsBefore(x.m_pdata, y.m_pdata);
}

} // namespace OpenWBEM
