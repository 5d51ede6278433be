#include "OW_CIMParameter.hpp"

#include "OW_CIMDataType.hpp"
#include "OW_CIMModel.hpp"
#include "OW_CIMQualifier.hpp"
#include "OW_CIMStream.hpp"

namespace OpenWBEM {

struct CIMParameter::Data : public ModelData<CIMParameter::Data> {
    CIMName name;
    CIMDataType dataType;
    CIMQualifierArray qualifiers;

    template <class Self>
    static auto fields(Self& self) {
        return std::tie(self.name, self.dataType, self.qualifiers);
    }
};

CIMParameter::CIMParameter() : data_(sharedDefault<Data>()) {}
CIMParameter::CIMParameter(CIMNULL_t) {}
CIMParameter::CIMParameter(const CIMName& name) : CIMParameter() {
    data_->name = name;
}
CIMParameter::CIMParameter(const char* name) : CIMParameter(CIMName(name)) {}
CIMParameter::CIMParameter(const CIMParameter& other) = default;
CIMParameter::~CIMParameter() = default;
CIMParameter& CIMParameter::operator=(const CIMParameter& other) = default;

void CIMParameter::setNull() {
    data_ = nullptr;
}

String CIMParameter::getName() const {
    return data_->name.toString();
}

void CIMParameter::setName(const CIMName& name) {
    data_->name = name;
}

CIMQualifierArray CIMParameter::getQualifiers() const {
    return data_->qualifiers;
}

CIMParameter& CIMParameter::setQualifiers(const CIMQualifierArray& qualifiers) {
    data_->qualifiers = qualifiers;
    return *this;
}

CIMQualifier CIMParameter::getQualifier(const CIMName& name) const {
    return elementNamed(data_->qualifiers, name);
}

bool CIMParameter::hasTrueQualifier(const CIMName& name) const {
    return hasTrueElement(data_->qualifiers, name);
}

CIMParameter& CIMParameter::setDataType(const CIMDataType& dataType) {
    data_->dataType = dataType;
    return *this;
}

CIMDataType CIMParameter::getType() const {
    return data_->dataType;
}

Int32 CIMParameter::getDataSize() const {
    return data_->dataType.getSize();
}

String CIMParameter::toString() const {
    return "CIMParameter(" + getName() + ")";
}

String CIMParameter::toMOF() const {
    const Data& data = *data_;
    return qualifiersToMOF(data.qualifiers) + data.dataType.toMOF() + " " + data.name.toString() +
           data.dataType.getArrayMOF();
}

void CIMParameter::readObject(std::istream& istrm) {
    data_ = CIMStream::readData<Data>(istrm, "p").release();
}

void CIMParameter::writeObject(std::ostream& ostrm) const {
    CIMStream::writeData(ostrm, "p", *data_);
}

bool operator<(const CIMParameter& x, const CIMParameter& y) {
    return sortsBefore(x.data_, y.data_);
}

} // namespace OpenWBEM
