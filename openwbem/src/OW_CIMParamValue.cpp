#include "OW_CIMParamValue.hpp"

#include "OW_CIMModel.hpp"
#include "OW_CIMStream.hpp"
#include "OW_CIMValue.hpp"

namespace OpenWBEM {

struct CIMParamValue::Data : public ModelData<CIMParamValue::Data> {
    CIMName name;
    CIMValue value = CIMValue(CIMNULL);

    template <class Self>
    static auto fields(Self& self) {
        return std::tie(self.name, self.value);
    }
};

CIMParamValue::CIMParamValue() : m_pdata(sharedDefault<Data>()) {}
CIMParamValue::CIMParamValue(CIMNULL_t) {}
CIMParamValue::CIMParamValue(const CIMName& name, const CIMValue& value) : CIMParamValue(name) {
    m_pdata->value = value;
}
CIMParamValue::CIMParamValue(const CIMName& name) : CIMParamValue() {
    m_pdata->name = name;
}
CIMParamValue::CIMParamValue(const CIMParamValue& other) = default;
CIMParamValue::~CIMParamValue() = default;
CIMParamValue& CIMParamValue::operator=(const CIMParamValue& other) = default;

void CIMParamValue::setNull() {
    m_pdata = nullptr;
}

String CIMParamValue::getName() const {
    return m_pdata->name.toString();
}

CIMParamValue& CIMParamValue::setName(const CIMName& name) {
    m_pdata->name = name;
    return *this;
}

CIMValue CIMParamValue::getValue() const {
    return m_pdata->value;
}

CIMParamValue& CIMParamValue::setValue(const CIMValue& value) {
    m_pdata->value = value;
    return *this;
}

String CIMParamValue::toString() const {
    return "CIMParamValue(" + getName() + "): " + m_pdata->value.toString();
}

String CIMParamValue::toMOF() const {
    return toString();
}

void CIMParamValue::readObject(std::istream& istrm) {
    m_pdata = CIMStream::readData<Data>(istrm, "v").release();
}

void CIMParamValue::writeObject(std::ostream& ostrm) const {
    CIMStream::writeData(ostrm, "v", *m_pdata);
}

bool operator<(const CIMParamValue& x, const CIMParamValue& y) {
    return sortsBefore(x.m_pdata, y.m_pdata);
}

} // namespace OpenWBEM
