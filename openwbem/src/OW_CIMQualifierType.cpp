#include "OW_CIMQualifierType.hpp"

#include "OW_CIMFlavor.hpp"
#include "OW_CIMModel.hpp"
#include "OW_CIMScope.hpp"
#include "OW_CIMStream.hpp"
#include "OW_CIMValue.hpp"
#include "OW_CIMValueCast.hpp"

namespace OpenWBEM {

struct CIMQualifierType::Data : public ModelData<CIMQualifierType::Data> {
    CIMName name;
    CIMDataType dataType;
    CIMValue defaultValue = CIMValue(CIMNULL);
    CIMScopeArray scopes;
    CIMFlavorArray flavors;

    Data() {
        flavors.push_back(CIMFlavor::ENABLEOVERRIDE);
        flavors.push_back(CIMFlavor::TOSUBCLASS);
    }
    template <class Self>
    static auto fields(Self& self) {
        return std::tie(self.name, self.dataType, self.defaultValue, self.scopes, self.flavors);
    }
};

CIMQualifierType::CIMQualifierType() : m_pdata(sharedDefault<Data>()) {}
CIMQualifierType::CIMQualifierType(CIMNULL_t) {}
CIMQualifierType::CIMQualifierType(const CIMName& name) : CIMQualifierType() {
    m_pdata->name = name;
}
CIMQualifierType::CIMQualifierType(const char* name) : CIMQualifierType(CIMName(name)) {}
CIMQualifierType::CIMQualifierType(const CIMQualifierType& other) = default;
CIMQualifierType::~CIMQualifierType() = default;
CIMQualifierType& CIMQualifierType::operator=(const CIMQualifierType& other) = default;

void CIMQualifierType::setNull() {
    m_pdata = nullptr;
}

String CIMQualifierType::getName() const {
    return m_pdata->name.toString();
}

void CIMQualifierType::setName(const CIMName& name) {
    m_pdata->name = name;
}

CIMQualifierType& CIMQualifierType::setDataType(const CIMDataType& dataType) {
    const CIMValue value = CIMValueCast::castValueToDataType(getDefaultValue(), dataType);
    m_pdata->dataType = dataType;
    m_pdata->defaultValue = value;
    return *this;
}

CIMQualifierType& CIMQualifierType::setDataType(const CIMDataType::Type& dataType) {
    return setDataType(CIMDataType(dataType));
}

CIMDataType CIMQualifierType::getDataType() const {
    return m_pdata->dataType;
}

Int32 CIMQualifierType::getDataSize() const {
    return m_pdata->dataType.getSize();
}

CIMQualifierType& CIMQualifierType::setDefaultValue(const CIMValue& value) {
    m_pdata->defaultValue = CIMValueCast::castValueToDataType(value, getDataType());
    return *this;
}

CIMValue CIMQualifierType::getDefaultValue() const {
    return m_pdata->defaultValue;
}

bool CIMQualifierType::hasDefaultValue() const {
    return !!m_pdata->defaultValue;
}

bool CIMQualifierType::isDefaultValueArray() const {
    return m_pdata->dataType.isArrayType();
}

CIMQualifierType& CIMQualifierType::addScope(const CIMScope& scope) {
    if (hasScope(scope)) {
        return *this;
    }
    if (scope == CIMScope::ANY) {
        m_pdata->scopes.clear();
    }
    m_pdata->scopes.push_back(scope);
    return *this;
}

const CIMScopeArray& CIMQualifierType::getScope() const {
    return m_pdata->scopes;
}

bool CIMQualifierType::hasScope(const CIMScope& scope) const {
    for (const CIMScope& present : m_pdata->scopes) {
        if (present == scope || present == CIMScope::ANY) {
            return true;
        }
    }
    return false;
}

CIMQualifierType& CIMQualifierType::addFlavor(const CIMFlavor& flavor) {
    addFlavorTo(m_pdata->flavors, flavor);
    return *this;
}

CIMQualifierType& CIMQualifierType::removeFlavor(const Int32 flavor) {
    removeFlavorFrom(m_pdata->flavors, flavor);
    return *this;
}

bool CIMQualifierType::hasFlavor(const CIMFlavor& flavor) const {
    return containsFlavor(m_pdata->flavors, flavor);
}

CIMFlavorArray CIMQualifierType::getFlavors() const {
    return m_pdata->flavors;
}

String CIMQualifierType::toString() const {
    return toMOF();
}

namespace {

/// ", what(first, second)", or nothing if there is none.
String listToMOF(const char* what, const StringArray& entries) {
    String text;
    for (const String& entry : entries) {
        text += text.empty() ? ", " + String(what) + "(" : String(", ");
        text += entry;
    }
    return text.empty() ? text : text + ")";
}

bool goesWithoutSaying(const CIMFlavor& flavor) {
    return flavor.getFlavor() == CIMFlavor::ENABLEOVERRIDE || flavor.getFlavor() == CIMFlavor::TOSUBCLASS;
}

} // namespace

String CIMQualifierType::toMOF() const {
    const Data& data = *m_pdata;
    String text = "Qualifier " + data.name.toString() + " : " + data.dataType.toMOF() + data.dataType.getArrayMOF();
    if (data.defaultValue) {
        text += " = " + data.defaultValue.toMOF();
    }
    StringArray scopes;
    for (const CIMScope& scope : data.scopes) {
        scopes.push_back(scope.toMOF());
    }
    StringArray flavors;
    for (const CIMFlavor& flavor : data.flavors) {
        if (!goesWithoutSaying(flavor)) {
            flavors.push_back(flavor.toMOF());
        }
    }
    return text + listToMOF("Scope", scopes) + listToMOF("Flavor", flavors) + ";\n";
}

void CIMQualifierType::readObject(std::istream& istrm) {
    m_pdata = CIMStream::readData<Data>(istrm, "R").release();
}

void CIMQualifierType::writeObject(std::ostream& ostrm) const {
    CIMStream::writeData(ostrm, "R", *m_pdata);
}

bool operator<(const CIMQualifierType& x, const CIMQualifierType& y) {
    return sortsBefore(x.m_pdata, y.m_pdata);
}

} // namespace OpenWBEM
