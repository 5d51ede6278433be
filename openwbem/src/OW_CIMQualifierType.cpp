#include "OW_CIMQualifierType.hpp"

#include "OW_CIMFlavor.hpp"
#include "OW_CIMModel.hpp"
#include "OW_CIMScope.hpp"
#include "OW_CIMStream.hpp"
#include "OW_CIMValue.hpp"
#include "OW_CIMValueCast.hpp"

#include <algorithm>

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

CIMQualifierType::CIMQualifierType() : data_(sharedDefault<Data>()) {}
CIMQualifierType::CIMQualifierType(CIMNULL_t) {}
CIMQualifierType::CIMQualifierType(const CIMName& name) : CIMQualifierType() {
    data_->name = name;
}
CIMQualifierType::CIMQualifierType(const char* name) : CIMQualifierType(CIMName(name)) {}
CIMQualifierType::CIMQualifierType(const CIMQualifierType& other) = default;
CIMQualifierType::~CIMQualifierType() = default;
CIMQualifierType& CIMQualifierType::operator=(const CIMQualifierType& other) = default;

void CIMQualifierType::setNull() {
    data_ = nullptr;
}

String CIMQualifierType::getName() const {
    return data_->name.toString();
}

void CIMQualifierType::setName(const CIMName& name) {
    data_->name = name;
}

CIMQualifierType& CIMQualifierType::setDataType(const CIMDataType& dataType) {
    const CIMValue value = CIMValueCast::castValueToDataType(getDefaultValue(), dataType);
    data_->dataType = dataType;
    data_->defaultValue = value;
    return *this;
}

CIMQualifierType& CIMQualifierType::setDataType(const CIMDataType::Type& dataType) {
    return setDataType(CIMDataType(dataType));
}

CIMDataType CIMQualifierType::getDataType() const {
    return data_->dataType;
}

Int32 CIMQualifierType::getDataSize() const {
    return data_->dataType.getSize();
}

CIMQualifierType& CIMQualifierType::setDefaultValue(const CIMValue& value) {
    data_->defaultValue = CIMValueCast::castValueToDataType(value, getDataType());
    return *this;
}

CIMValue CIMQualifierType::getDefaultValue() const {
    return data_->defaultValue;
}

bool CIMQualifierType::hasDefaultValue() const {
    return !!data_->defaultValue;
}

bool CIMQualifierType::isDefaultValueArray() const {
    return data_->dataType.isArrayType();
}

CIMQualifierType& CIMQualifierType::addScope(const CIMScope& scope) {
    if (hasScope(scope)) {
        return *this;
    }
    if (scope == CIMScope::ANY) {
        data_->scopes.clear();
    }
    CIMScopeArray& scopes = data_->scopes;
    scopes.push_back(scope);
    std::sort(scopes.begin(), scopes.end());
    return *this;
}

const CIMScopeArray& CIMQualifierType::getScope() const {
    return data_->scopes;
}

bool CIMQualifierType::hasScope(const CIMScope& scope) const {
    for (const CIMScope& present : data_->scopes) {
        if (present == scope || present == CIMScope::ANY) {
            return true;
        }
    }
    return false;
}

CIMQualifierType& CIMQualifierType::addFlavor(const CIMFlavor& flavor) {
    addFlavorTo(data_->flavors, flavor);
    return *this;
}

CIMQualifierType& CIMQualifierType::removeFlavor(const Int32 flavor) {
    removeFlavorFrom(data_->flavors, flavor);
    return *this;
}

bool CIMQualifierType::hasFlavor(const CIMFlavor& flavor) const {
    return containsFlavor(data_->flavors, flavor);
}

CIMFlavorArray CIMQualifierType::getFlavors() const {
    return data_->flavors;
}

String CIMQualifierType::toString() const {
    return toMOF();
}

namespace {

/// ", what(first,second)", or nothing if there is none.
String listToMOF(const char* what, const StringArray& entries) {
    return entries.empty() ? String() : ", " + String(what) + "(" + joined(entries, ",") + ")";
}

bool isDefaultFlavor(const CIMFlavor& flavor) {
    return flavor.getFlavor() == CIMFlavor::ENABLEOVERRIDE || flavor.getFlavor() == CIMFlavor::TOSUBCLASS;
}

} // namespace

String CIMQualifierType::toMOF() const {
    const Data& data = *data_;
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
        if (!isDefaultFlavor(flavor)) {
            flavors.push_back(flavor.toMOF());
        }
    }
    return text + listToMOF("Scope", scopes) + listToMOF("Flavor", flavors) + ";\n";
}

void CIMQualifierType::readObject(std::istream& istrm) {
    data_ = CIMStream::readData<Data>(istrm, "R").release();
}

void CIMQualifierType::writeObject(std::ostream& ostrm) const {
    CIMStream::writeData(ostrm, "R", *data_);
}

bool operator<(const CIMQualifierType& x, const CIMQualifierType& y) {
    return sortsBefore(x.data_, y.data_);
}

} // namespace OpenWBEM
