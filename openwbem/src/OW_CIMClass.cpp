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
    CIMPropertyArray keys; ///< those among the properties, not stored

    template <class Self>
    static auto fields(Self& self) {
        return std::tie(self.name, self.superClass, self.qualifiers, self.properties, self.methods, self.association,
                        self.keyed);
    }
    void rebuildKeys();
    void noteProperties() {
        rebuildKeys();
        keyed = keyed || !keys.empty();
    }
    void note(const CIMQualifier& qualifier) {
        if (qualifier && qualifier.isAssociationQualifier()) {
            association = !qualifier.hasValue() || qualifier.getValue() != CIMValue(false);
        }
    }
};

const CIMPropertyArray& CIMAccess::properties(const CIMClass& cimClass) {
    return cimClass.data_->properties;
}
const CIMPropertyArray& CIMAccess::keys(const CIMClass& cimClass) {
    return cimClass.data_->keys;
}

void CIMClass::Data::rebuildKeys() {
    keys.clear();
    const CIMPropertyArray& all = properties;
    for (const CIMProperty& property : all) {
        if (property.isKey()) {
            keys.push_back(property);
        }
    }
}

CIMClass::CIMClass() : data_(sharedDefault<Data>()) {}
CIMClass::CIMClass(CIMNULL_t) {}
CIMClass::CIMClass(const CIMName& name) : CIMClass() {
    data_->name = name;
}
CIMClass::CIMClass(const char* name) : CIMClass(CIMName(name)) {}
CIMClass::CIMClass(const CIMClass& other) = default;
CIMClass::~CIMClass() = default;
CIMClass& CIMClass::operator=(const CIMClass& other) = default;

void CIMClass::setNull() {
    data_ = nullptr;
}

String CIMClass::getName() const {
    return data_->name.toString();
}

void CIMClass::setName(const CIMName& name) {
    data_->name = name;
}

String CIMClass::getSuperClass() const {
    return data_->superClass.toString();
}

CIMClass& CIMClass::setSuperClass(const CIMName& superClass) {
    data_->superClass = superClass;
    return *this;
}

String CIMClass::getKeyClass() const {
    const CIMPropertyArray keys = getKeys();
    return keys.empty() ? String() : keys.front().getOriginClass();
}

CIMPropertyArray CIMClass::getAllProperties() const {
    return data_->properties;
}

CIMPropertyArray CIMClass::getProperties() const {
    CIMPropertyArray own;
    for (const CIMProperty& property : data_->properties) {
        if (property.getOverridingProperty().empty()) {
            own.push_back(property);
        }
    }
    return own;
}

CIMPropertyArray CIMClass::getKeys() const {
    return data_->keys;
}

CIMProperty CIMClass::getProperty(const CIMName& name) const {
    return elementNamed(data_->properties, name);
}

CIMProperty CIMClass::getProperty(const CIMName& name, const CIMName& originClass) const {
    return elementNamed(data_->properties, name, originClass);
}

CIMMethod CIMClass::getMethod(const CIMName& name) const {
    return elementNamed(data_->methods, name);
}

CIMMethod CIMClass::getMethod(const CIMName& name, const CIMName& originClass) const {
    return elementNamed(data_->methods, name, originClass);
}

CIMMethodArray CIMClass::getAllMethods() const {
    return data_->methods;
}

CIMMethodArray CIMClass::getMethods() const {
    CIMMethodArray own;
    for (const CIMMethod& method : data_->methods) {
        if (method.getOverridingMethod().empty()) {
            own.push_back(method);
        }
    }
    return own;
}

CIMQualifierArray CIMClass::getQualifiers() const {
    return data_->qualifiers;
}

CIMQualifier CIMClass::getQualifier(const CIMName& name) const {
    return elementNamed(data_->qualifiers, name);
}

bool CIMClass::isKeyed() const {
    return data_->keyed;
}

CIMClass& CIMClass::setIsKeyed(bool keyed) {
    data_->keyed = keyed;
    return *this;
}

bool CIMClass::isAssociation() const {
    return data_->association;
}

CIMClass& CIMClass::setIsAssociation(bool association) {
    data_->association = association;
    return *this;
}

UInt32 CIMClass::numberOfProperties() const {
    return static_cast<UInt32>(data_->properties.size());
}

UInt32 CIMClass::numberOfQualifiers() const {
    return static_cast<UInt32>(data_->qualifiers.size());
}

CIMClass& CIMClass::addProperty(const CIMProperty& property) {
    addElement(data_->properties, property, "Property");
    data_->noteProperties();
    return *this;
}

CIMClass& CIMClass::setProperties(const CIMPropertyArray& properties) {
    data_->properties = properties;
    data_->noteProperties();
    return *this;
}

CIMClass& CIMClass::setProperty(const CIMProperty& property) {
    if (property) {
        setElement(data_->properties, property);
        data_->noteProperties();
    }
    return *this;
}

bool CIMClass::removeProperty(const CIMName& name) {
    const bool removed = removeElement(data_->properties, name);
    data_->rebuildKeys();
    return removed;
}

CIMClass& CIMClass::addQualifier(const CIMQualifier& qualifier) {
    addElement(data_->qualifiers, qualifier, "Qualifier");
    data_->note(qualifier);
    return *this;
}

CIMClass& CIMClass::setQualifier(const CIMQualifier& qualifier) {
    setElement(data_->qualifiers, qualifier);
    data_->note(qualifier);
    return *this;
}

CIMClass& CIMClass::setQualifiers(const CIMQualifierArray& qualifiers) {
    data_->qualifiers = qualifiers;
    for (const CIMQualifier& qualifier : qualifiers) {
        data_->note(qualifier);
    }
    return *this;
}

bool CIMClass::hasQualifier(const CIMQualifier& qualifier) const {
    return !!getQualifier(CIMAccess::name(qualifier));
}

bool CIMClass::removeQualifier(const CIMQualifier& qualifier) {
    return removeQualifier(CIMAccess::name(qualifier));
}

bool CIMClass::removeQualifier(const CIMName& name) {
    return removeElement(data_->qualifiers, name);
}

CIMClass& CIMClass::addMethod(const CIMMethod& method) {
    addElement(data_->methods, method, "Method");
    return *this;
}

CIMClass& CIMClass::setMethods(const CIMMethodArray& methods) {
    data_->methods = methods;
    return *this;
}

CIMClass& CIMClass::setMethod(const CIMMethod& method) {
    setElement(data_->methods, method);
    return *this;
}

CIMInstance CIMClass::newInstance() const {
    return CIMInstance(data_->name).setProperties(data_->properties);
}

void CIMClass::readObject(std::istream& istrm) {
    data_ = CIMStream::readData<Data>(istrm, "C").release();
    data_->rebuildKeys();
}

void CIMClass::writeObject(std::ostream& ostrm) const {
    CIMStream::writeData(ostrm, "C", *data_);
}

bool operator<(const CIMClass& x, const CIMClass& y) {
    return sortsBefore(x.data_, y.data_);
}

} // namespace OpenWBEM
