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

const CIMPropertyArray& CIMAccess::keys(const CIMObjectPath& path) {
    return path.data_->keys;
}

CIMObjectPath::CIMObjectPath() : data_(sharedDefault<Data>()) {}
CIMObjectPath::CIMObjectPath(CIMNULL_t) {}
CIMObjectPath::CIMObjectPath(const CIMName& className) : CIMObjectPath() {
    data_->className = className;
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
    data_ = nullptr;
}

CIMPropertyArray CIMObjectPath::getKeys() const {
    return data_->keys;
}

CIMProperty CIMObjectPath::getKey(const CIMName& name) const {
    return elementNamed(data_->keys, name);
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
    data_->keys = plain;
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
    setElement(data_->keys, key);
    return *this;
}

CIMObjectPath& CIMObjectPath::addKey(const CIMName& name, const CIMValue& value) {
    if (value) {
        data_->keys.push_back(CIMProperty(name, value));
    }
    return *this;
}

CIMObjectPath& CIMObjectPath::addKey(const CIMProperty& key) {
    CIMProperty plain(key);
    data_->keys.push_back(plain.clearQualifiers());
    return *this;
}

String CIMObjectPath::getClassName() const {
    return data_->className.toString();
}

CIMObjectPath& CIMObjectPath::setClassName(const CIMName& className) {
    data_->className = className;
    return *this;
}

String CIMObjectPath::getObjectName() const {
    return getClassName();
}

CIMObjectPath& CIMObjectPath::setObjectName(const CIMName& className) {
    return setClassName(className);
}

String CIMObjectPath::getNameSpace() const {
    return data_->nameSpace.getNameSpace();
}

CIMObjectPath& CIMObjectPath::setNameSpace(const String& ns) {
    if (!getNameSpace().equals(ns)) {
        data_->nameSpace.setNameSpace(ns);
    }
    return *this;
}

CIMNameSpace CIMObjectPath::getFullNameSpace() const {
    return data_->nameSpace;
}

void CIMObjectPath::setFullNameSpace(const CIMNameSpace& ns) {
    data_->nameSpace = ns;
}

String CIMObjectPath::getHost() const {
    return data_->nameSpace.getHost();
}

CIMObjectPath& CIMObjectPath::setHost(const String& host) {
    data_->nameSpace.setHost(host);
    return *this;
}

CIMUrl CIMObjectPath::getNameSpaceUrl() const {
    return data_->nameSpace.getHostUrl();
}

bool CIMObjectPath::isClassPath() const {
    return data_->keys.empty();
}

bool CIMObjectPath::isInstancePath() const {
    return !isClassPath();
}

namespace {

bool isSameKey(const CIMProperty& x, const CIMProperty& y) {
    return CIMAccess::name(x) == CIMAccess::name(y) && x.getValue() == y.getValue();
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
        const CIMProperty other = elementNamed(y, CIMAccess::name(x[i]));
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
    return data_->className == other.data_->className && getNameSpace().equalsIgnoreCase(other.getNameSpace()) &&
           sameKeys(data_->keys, other.data_->keys);
}

namespace {

/// Same name, spelled alike, and same type.
bool isDeclaredAs(const CIMProperty& key, const CIMProperty& declared) {
    return CIMAccess::text(CIMAccess::name(key)).equals(CIMAccess::text(CIMAccess::name(declared))) &&
           CIMAccess::dataType(key) == CIMAccess::dataType(declared);
}

} // namespace

CIMObjectPath& CIMObjectPath::syncWithClass(const CIMClass& cimClass) {
    const CIMPropertyArray given = getKeys();
    const CIMPropertyArray& classKeys = CIMAccess::keys(cimClass);
    if (isClassPath() || std::equal(given.begin(), given.end(), classKeys.begin(), classKeys.end(), isDeclaredAs)) {
        return *this;
    }
    CIMPropertyArray keys;
    for (const CIMProperty& key : given) {
        const CIMProperty declared = cimClass.getProperty(CIMAccess::name(key));
        if (!declared) {
            continue;
        }
        CIMProperty fitted = key;
        if (!isDeclaredAs(key, declared) && declared.isKey()) {
            fitted.setName(CIMAccess::name(declared));
            fitted.setDataType(declared.getDataType());
        }
        keys.push_back(fitted);
    }
    for (const CIMProperty& classKey : classKeys) {
        if (indexOfName(keys, CIMAccess::name(classKey)) == keys.size()) {
            keys.push_back(classKey);
        }
    }
    return setKeys(keys);
}

void CIMObjectPath::readObject(std::istream& istrm) {
    data_ = CIMStream::readData<Data>(istrm, "O").release();
}

void CIMObjectPath::writeObject(std::ostream& ostrm) const {
    CIMStream::writeData(ostrm, "O", *data_);
}

bool operator<(const CIMObjectPath& x, const CIMObjectPath& y) {
    if (!x || !y) {
        return !x && !!y;
    }
    const int order = x.getNameSpace().compareToIgnoreCase(y.getNameSpace());
    if (order != 0) {
        return order < 0;
    }
    return std::tie(x.data_->className, x.data_->keys) < std::tie(y.data_->className, y.data_->keys);
}

} // namespace OpenWBEM
