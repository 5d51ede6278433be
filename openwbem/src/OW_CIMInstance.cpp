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

const CIMPropertyArray& CIMAccess::properties(const CIMInstance& instance) {
    return instance.data_->properties;
}
const CIMPropertyArray& CIMAccess::keys(const CIMInstance& instance) {
    return instance.data_->keys;
}

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

CIMInstance::CIMInstance() : data_(sharedDefault<Data>()) {}
CIMInstance::CIMInstance(CIMNULL_t) {}
CIMInstance::CIMInstance(const CIMName& className) : CIMInstance() {
    data_->className = className;
}
CIMInstance::CIMInstance(const char* className) : CIMInstance(CIMName(className)) {}
CIMInstance::CIMInstance(const CIMInstance& other) = default;
CIMInstance::~CIMInstance() = default;
CIMInstance& CIMInstance::operator=(const CIMInstance& other) = default;

void CIMInstance::setNull() {
    data_ = nullptr;
}

String CIMInstance::getClassName() const {
    return data_->className.toString();
}

CIMInstance& CIMInstance::setClassName(const CIMName& className) {
    data_->className = className;
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
        return data_->properties;
    }
    CIMPropertyArray ofType;
    for (const CIMProperty& property : data_->properties) {
        if (property.getDataType() && property.getDataType().getType() == valueDataType) {
            ofType.push_back(property);
        }
    }
    return ofType;
}

CIMInstance& CIMInstance::setProperties(const CIMPropertyArray& properties) {
    data_->properties = properties;
    data_->rebuildKeys();
    return *this;
}

CIMProperty CIMInstance::getProperty(const CIMName& name) const {
    return elementNamed(data_->properties, name);
}

CIMProperty CIMInstance::getProperty(const CIMName& name, const CIMName& originClass) const {
    return elementNamed(data_->properties, name, originClass);
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
    data_->properties.push_back(value ? CIMProperty(name, value) : CIMProperty(name));
    return *this;
}

CIMInstance& CIMInstance::setProperty(const CIMProperty& property) {
    if (!property) {
        return *this;
    }
    CIMPropertyArray& properties = data_->properties;
    const size_t i = indexOfName(properties, CIMAccess::name(property));
    bool concernsKeys = property.isKey();
    if (i < properties.size()) {
        concernsKeys = concernsKeys || properties[i].isKey();
        properties[i] = property;
    } else {
        properties.push_back(property);
    }
    if (concernsKeys) {
        data_->rebuildKeys();
    }
    return *this;
}

CIMInstance& CIMInstance::updatePropertyValue(const CIMName& name, const CIMValue& value) {
    return updatePropertyValue(CIMProperty(name, value));
}

CIMInstance& CIMInstance::updatePropertyValue(const CIMProperty& property) {
    CIMProperty present = getProperty(CIMAccess::name(property));
    return present ? setProperty(present.setValue(property.getValue())) : *this;
}

CIMInstance& CIMInstance::updatePropertyValues(const CIMPropertyArray& properties) {
    for (const CIMProperty& property : properties) {
        updatePropertyValue(property);
    }
    return *this;
}

CIMInstance& CIMInstance::removeProperty(const CIMName& name) {
    const CIMProperty removed = getProperty(name);
    removeElement(data_->properties, name);
    if (removed && removed.isKey()) {
        data_->rebuildKeys();
    }
    return *this;
}

CIMPropertyArray CIMInstance::getKeyValuePairs() const {
    return data_->keys;
}

CIMInstance& CIMInstance::setKeys(const CIMPropertyArray& keys) {
    data_->keys = keys;
    return *this;
}

CIMQualifierArray CIMInstance::getQualifiers() const {
    return data_->qualifiers;
}

CIMQualifier CIMInstance::getQualifier(const CIMName& name) const {
    return elementNamed(data_->qualifiers, name);
}

CIMInstance& CIMInstance::removeQualifier(const CIMName& name) {
    removeElement(data_->qualifiers, name);
    return *this;
}

CIMInstance& CIMInstance::setQualifiers(const CIMQualifierArray& qualifiers) {
    data_->qualifiers = qualifiers;
    return *this;
}

CIMInstance& CIMInstance::setQualifier(const CIMQualifier& qualifier) {
    setElement(data_->qualifiers, qualifier);
    return *this;
}

String CIMInstance::getLanguage() const {
    return data_->language;
}

CIMInstance& CIMInstance::setLanguage(const String& language) {
    data_->language = language;
    return *this;
}

bool CIMInstance::propertiesAreEqualTo(const CIMInstance& other) const {
    const CIMPropertyArray& mine = data_->properties;
    const CIMPropertyArray& others = other.data_->properties;
    if (mine.size() != others.size()) {
        return false;
    }
    for (const CIMProperty& property : mine) {
        const CIMProperty counterpart = elementNamed(others, CIMAccess::name(property));
        if (!counterpart || counterpart.getDataType() != property.getDataType() ||
            counterpart.getValue() != property.getValue()) {
            return false;
        }
    }
    return true;
}

namespace {

bool isInvisible(const CIMProperty& property) {
    static const CIMName& invisible = *new CIMName(CIMQualifier::CIM_QUAL_INVISIBLE);
    return property.hasTrueQualifier(invisible);
}

/// A property's line of MOF, with its qualifiers on one of their own if it has a value.
String propertyToMOF(const CIMProperty& property) {
    const CIMValue value = property.getValue();
    const String name = "  " + property.getName();
    if (!value) {
        return name + "=NULL;\n";
    }
    const CIMQualifierArray qualifiers = property.getQualifiers();
    const String qualifierLine = qualifiers.empty() ? String() : "  " + qualifiersToMOF(qualifiers) + "\n";
    return qualifierLine + name + "=" + value.toMOF() + ";\n";
}

} // namespace

String CIMInstance::toString() const {
    StringArray texts(1, "instance of " + getClassName() + " {\n");
    for (const CIMProperty& property : data_->properties) {
        if (!isInvisible(property)) {
            const CIMValue value = property.getValue();
            texts.push_back(property.getName() + " = " + (value ? value.toString() : String("null")) + ";\n");
        }
    }
    return joined(texts, "") + "}\n";
}

String CIMInstance::toMOF() const {
    StringArray texts;
    if (!data_->qualifiers.empty()) {
        texts.push_back("[\n" + qualifiersToMOF(data_->qualifiers).substring(1) + "\n");
    }
    texts.push_back("INSTANCE OF " + getClassName() + "\n{\n");
    for (const CIMProperty& property : data_->properties) {
        if (!isInvisible(property)) {
            texts.push_back(propertyToMOF(property));
        }
    }
    return joined(texts, "") + "};\n";
}

void CIMInstance::readObject(std::istream& istrm) {
    data_ = CIMStream::readData<Data>(istrm, "I").release();
}

void CIMInstance::writeObject(std::ostream& ostrm) const {
    CIMStream::writeData(ostrm, "I", *data_);
}

bool operator<(const CIMInstance& x, const CIMInstance& y) {
    return sortsBefore(x.data_, y.data_);
}

} // namespace OpenWBEM
