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

CIMParameter::CIMParameter() : m_pdata(sharedDefault<Data>()) {}
CIMParameter::CIMParameter(CIMNULL_t) {}
CIMParameter::CIMParameter(const CIMName& name) : CIMParameter() {
    m_pdata->name = name;
}
CIMParameter::CIMParameter(const char* name) : CIMParameter(CIMName(name)) {}
CIMParameter::CIMParameter(const CIMParameter& other) = default;
CIMParameter::~CIMParameter() = default;
CIMParameter& CIMParameter::operator=(const CIMParameter& other) = default;

void CIMParameter::setNull() {
    m_pdata = nullptr;
}

String CIMParameter::getName() const {
    return m_pdata->name.toString();
}

void CIMParameter::setName(const CIMName& name) {
    m_pdata->name = name;
}

CIMQualifierArray CIMParameter::getQualifiers() const {
    return m_pdata->qualifiers;
}

CIMParameter& CIMParameter::setQualifiers(const CIMQualifierArray& qualifiers) {
    m_pdata->qualifiers = qualifiers;
    return *this;
}

CIMQualifier CIMParameter::getQualifier(const CIMName& name) const {
    return elementNamed(m_pdata->qualifiers, name);
}

bool CIMParameter::hasTrueQualifier(const CIMName& name) const {
    return hasTrueElement(m_pdata->qualifiers, name);
}

CIMParameter& CIMParameter::setDataType(const CIMDataType& dataType) {
    m_pdata->dataType = dataType;
    return *this;
}

CIMDataType CIMParameter::getType() const {
    return m_pdata->dataType;
}

Int32 CIMParameter::getDataSize() const {
    return m_pdata->dataType.getSize();
}

String CIMParameter::toString() const {
    return toMOF();
}

String CIMParameter::toMOF() const {
    const Data& data = *m_pdata;
    const String qualifiers = qualifiersToMOF(data.qualifiers, "    ").c_str();
    return qualifiers + "    " + data.dataType.toMOF() + " " + data.name.toString() + data.dataType.getArrayMOF();
}

void CIMParameter::readObject(std::istream& istrm) {
    m_pdata = CIMStream::readData<Data>(istrm, "p").release();
}

void CIMParameter::writeObject(std::ostream& ostrm) const {
    CIMStream::writeData(ostrm, "p", *m_pdata);
}

bool operator<(const CIMParameter& x, const CIMParameter& y) {
    return sortsBefore(x.m_pdata, y.m_pdata);
}

} // namespace OpenWBEM
