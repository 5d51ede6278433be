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

CIMParamValue::CIMParamValue() : data_(sharedDefault<Data>()) {}
CIMParamValue::CIMParamValue(CIMNULL_t) {}
CIMParamValue::CIMParamValue(const CIMName& name, const CIMValue& value) : CIMParamValue(name) {
    data_->value = value;
}
CIMParamValue::CIMParamValue(const CIMName& name) : CIMParamValue() {
    data_->name = name;
}
CIMParamValue::CIMParamValue(const CIMParamValue& other) = default;
CIMParamValue::~CIMParamValue() = default;
CIMParamValue& CIMParamValue::operator=(const CIMParamValue& other) = default;

void CIMParamValue::setNull() {
    data_ = nullptr;
}

String CIMParamValue::getName() const {
    return data_->name.toString();
}

CIMParamValue& CIMParamValue::setName(const CIMName& name) {
    data_->name = name;
    return *this;
}

CIMValue CIMParamValue::getValue() const {
    return data_->value;
}

CIMParamValue& CIMParamValue::setValue(const CIMValue& value) {
    data_->value = value;
    return *this;
}

String CIMParamValue::toString() const {
    return "CIMParamValue(" + getName() + "): " + data_->value.toString();
}

String CIMParamValue::toMOF() const {
    return toString();
}

void CIMParamValue::readObject(std::istream& istrm) {
    data_ = CIMStream::readData<Data>(istrm, "v").release();
}

void CIMParamValue::writeObject(std::ostream& ostrm) const {
    CIMStream::writeData(ostrm, "v", *data_);
}

bool operator<(const CIMParamValue& x, const CIMParamValue& y) {
    return sortsBefore(x.data_, y.data_);
}

} // namespace OpenWBEM
