#include "OW_CIMObjectPath.hpp"

#include "OW_CIMClass.hpp"
#include "OW_CIMInstance.hpp"
#include "OW_CIMModel.hpp"
#include "OW_CIMNameSpace.hpp"
#include "OW_CIMProperty.hpp"
#include "OW_CIMQualifier.hpp"
#include "OW_CIMStream.hpp"
#include "OW_CIMUrl.hpp"
#include "OW_CIMValue.hpp"
#include "OW_NoSuchPropertyException.hpp"

namespace OpenWBEM {

struct CIMObjectPath::Data : public ModelData<CIMObjectPath::Data> {
    CIMNameSpace nameSpace;
    CIMName className;
    CIMPropertyArray keys;

    template <class Self>
    static auto fields(Self& self) {
        return std::tie(self.nameSpace, self.className, self.keys);
    }
};

CIMObjectPath::CIMObjectPath() : m_pdata(sharedDefault<Data>()) {}
CIMObjectPath::CIMObjectPath(CIMNULL_t) {}
CIMObjectPath::CIMObjectPath(const CIMName& className) : CIMObjectPath() {
    m_pdata->className = className;
}
CIMObjectPath::CIMObjectPath(const char* className) : CIMObjectPath(CIMName(className)) {}
CIMObjectPath::CIMObjectPath(const CIMName& className, const String& ns) : CIMObjectPath(className) {
    setNameSpace(ns);
}
CIMObjectPath::CIMObjectPath(const CIMName& className, const CIMPropertyArray& keys) : CIMObjectPath(className) {
    setKeys(keys);
}
CIMObjectPath::CIMObjectPath(const String& ns, const CIMInstance& instance)
    : CIMObjectPath(CIMName(instance.getClassName()), ns) {
    setKeys(instance);
}
CIMObjectPath::CIMObjectPath(const CIMObjectPath& other) = default;
CIMObjectPath::~CIMObjectPath() = default;
CIMObjectPath& CIMObjectPath::operator=(const CIMObjectPath& other) = default;

void CIMObjectPath::setNull() {
    m_pdata = nullptr;
}

CIMPropertyArray CIMObjectPath::getKeys() const {
    return m_pdata->keys;
}

CIMProperty CIMObjectPath::getKey(const CIMName& name) const {
    return elementNamed(m_pdata->keys, name);
}

CIMProperty CIMObjectPath::getKeyT(const CIMName& name) const {
    const CIMProperty key = getKey(name);
    if (!key) {
        OW_THROW(NoSuchPropertyException, name.toString().c_str());
    }
    return key;
}

CIMValue CIMObjectPath::getKeyValue(const CIMName& name) const {
    const CIMProperty key = getKey(name);
    return key ? key.getValue() : CIMValue(CIMNULL);
}

bool CIMObjectPath::keyHasValue(const CIMName& name) const {
    return !!getKeyValue(name);
}

CIMObjectPath& CIMObjectPath::setKeys(const CIMPropertyArray& keys) {
    CIMPropertyArray plain = keys;
    for (size_t i = 0; i < keys.size(); ++i) {
        if (keys[i] && !keys[i].getQualifiers().empty()) {
            plain[i].clearQualifiers();
        }
    }
    m_pdata->keys = plain;
    return *this;
}

CIMObjectPath& CIMObjectPath::setKeys(const CIMInstance& instance) {
    return setKeys(instance.getKeyValuePairs());
}

CIMObjectPath& CIMObjectPath::setKeyValue(const CIMName& name, const CIMValue& value) {
    CIMProperty key = getKey(name);
    if (key) {
        key.setValue(value);
    } else {
        key = CIMProperty(name, value);
    }
    setElement(m_pdata->keys, key);
    return *this;
}

CIMObjectPath& CIMObjectPath::addKey(const CIMName& name, const CIMValue& value) {
    if (value) {
        m_pdata->keys.push_back(CIMProperty(name, value));
    }
    return *this;
}

CIMObjectPath& CIMObjectPath::addKey(const CIMProperty& key) {
    m_pdata->keys.push_back(key);
    return *this;
}

String CIMObjectPath::getClassName() const {
    return m_pdata->className.toString();
}

CIMObjectPath& CIMObjectPath::setClassName(const CIMName& className) {
    m_pdata->className = className;
    return *this;
}

String CIMObjectPath::getObjectName() const {
    return getClassName();
}

CIMObjectPath& CIMObjectPath::setObjectName(const CIMName& className) {
    return setClassName(className);
}

String CIMObjectPath::getNameSpace() const {
    return m_pdata->nameSpace.getNameSpace();
}

CIMObjectPath& CIMObjectPath::setNameSpace(const String& ns) {
    m_pdata->nameSpace.setNameSpace(ns);
    return *this;
}

CIMNameSpace CIMObjectPath::getFullNameSpace() const {
    return m_pdata->nameSpace;
}

void CIMObjectPath::setFullNameSpace(const CIMNameSpace& ns) {
    m_pdata->nameSpace = ns;
}

String CIMObjectPath::getHost() const {
    return m_pdata->nameSpace.getHost();
}

CIMObjectPath& CIMObjectPath::setHost(const String& host) {
    m_pdata->nameSpace.setHost(host);
    return *this;
}

CIMUrl CIMObjectPath::getNameSpaceUrl() const {
    return m_pdata->nameSpace.getHostUrl();
}

bool CIMObjectPath::isClassPath() const {
    return m_pdata->keys.empty();
}

bool CIMObjectPath::isInstancePath() const {
    return !isClassPath();
}

namespace {

bool isSameKey(const CIMProperty& x, const CIMProperty& y) {
    return CIMNameAccess::of(x) == CIMNameAccess::of(y) && x.getValue() == y.getValue();
}

/// Same keys in any order. They nearly always come in the same one.
bool sameKeys(const CIMPropertyArray& x, const CIMPropertyArray& y) {
    if (x.size() != y.size()) {
        return false;
    }
    for (size_t i = 0; i < x.size(); ++i) {
        if (isSameKey(x[i], y[i])) {
            continue;
        }
        const CIMProperty other = elementNamed(y, CIMNameAccess::of(x[i]));
        if (!other || !isSameKey(x[i], other)) {
            return false;
        }
    }
    return true;
}

} // namespace

bool CIMObjectPath::equals(const CIMObjectPath& other) const {
    if (!*this || !other) {
        return !*this && !other;
    }
    return m_pdata->className == other.m_pdata->className && getNameSpace().equalsIgnoreCase(other.getNameSpace()) &&
           sameKeys(m_pdata->keys, other.m_pdata->keys);
}

CIMObjectPath& CIMObjectPath::syncWithClass(const CIMClass& cimClass) {
    if (isClassPath()) {
        return *this;
    }
    const CIMPropertyArray given = getKeys();
    const CIMPropertyArray classKeys = cimClass.getKeys();
    CIMPropertyArray keys;
    for (const CIMProperty& key : given) {
        const CIMProperty declared = cimClass.getProperty(CIMNameAccess::of(key));
        if (!declared) {
            continue;
        }
        CIMProperty fitted = key;
        if (declared.isKey()) {
            fitted.setName(CIMNameAccess::of(declared));
            fitted.setDataType(declared.getDataType());
        }
        keys.push_back(fitted);
    }
    for (const CIMProperty& classKey : classKeys) {
        if (indexOfName(keys, CIMNameAccess::of(classKey)) == keys.size()) {
            keys.push_back(classKey);
        }
    }
    return setKeys(keys);
}

void CIMObjectPath::readObject(std::istream& istrm) {
    m_pdata = CIMStream::readData<Data>(istrm, "O").release();
}

void CIMObjectPath::writeObject(std::ostream& ostrm) const {
    CIMStream::writeData(ostrm, "O", *m_pdata);
}

bool operator<(const CIMObjectPath& x, const CIMObjectPath& y) {
    if (!x || !y) {
        return !x && !!y;
    }
    const int order = x.getNameSpace().compareToIgnoreCase(y.getNameSpace());
    if (order != 0) {
        return order < 0;
    }
    return std::tie(x.m_pdata->className, x.m_pdata->keys) < std::tie(y.m_pdata->className, y.m_pdata->keys);
}

} // namespace OpenWBEM
