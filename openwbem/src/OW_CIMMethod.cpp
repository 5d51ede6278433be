#include "OW_CIMMethod.hpp"

#include "OW_CIMDataType.hpp"
#include "OW_CIMModel.hpp"
#include "OW_CIMParameter.hpp"
#include "OW_CIMQualifier.hpp"
#include "OW_CIMStream.hpp"
#include "OW_CIMValue.hpp"

namespace OpenWBEM {

struct CIMMethod::Data : public ModelData<CIMMethod::Data> {
    CIMName name;
    CIMDataType returnType;
    CIMQualifierArray qualifiers;
    CIMParameterArray parameters;
    CIMName originClass;
    CIMName overridingMethod;
    bool propagated = false;

    template <class Self>
    static auto fields(Self& self) {
        return std::tie(self.name, self.returnType, self.qualifiers, self.parameters, self.originClass,
                        self.overridingMethod, self.propagated);
    }
};

const CIMName& CIMAccess::name(const CIMMethod& method) {
    return method.data_->name;
}

CIMMethod::CIMMethod() : data_(sharedDefault<Data>()) {}
CIMMethod::CIMMethod(CIMNULL_t) {}
CIMMethod::CIMMethod(const CIMName& name) : CIMMethod() {
    data_->name = name;
}
CIMMethod::CIMMethod(const char* name) : CIMMethod(CIMName(name)) {}
CIMMethod::CIMMethod(const CIMMethod& other) = default;
CIMMethod::~CIMMethod() = default;
CIMMethod& CIMMethod::operator=(const CIMMethod& other) = default;

void CIMMethod::setNull() {
    data_ = nullptr;
}

String CIMMethod::getName() const {
    return data_->name.toString();
}

void CIMMethod::setName(const CIMName& name) {
    data_->name = name;
}

CIMQualifierArray CIMMethod::getQualifiers() const {
    return data_->qualifiers;
}

CIMQualifier CIMMethod::getQualifier(const CIMName& name) const {
    return elementNamed(data_->qualifiers, name);
}

CIMMethod& CIMMethod::addQualifier(const CIMQualifier& qualifier) {
    addElement(data_->qualifiers, qualifier, "Qualifier");
    return *this;
}

CIMMethod& CIMMethod::setQualifiers(const CIMQualifierArray& qualifiers) {
    data_->qualifiers = qualifiers;
    return *this;
}

String CIMMethod::getOriginClass() const {
    return data_->originClass.toString();
}

CIMMethod& CIMMethod::setOriginClass(const CIMName& originClass) {
    data_->originClass = originClass;
    return *this;
}

CIMMethod& CIMMethod::addParameter(const CIMParameter& parameter) {
    data_->parameters.push_back(parameter);
    return *this;
}

CIMMethod& CIMMethod::setParameters(const CIMParameterArray& parameters) {
    data_->parameters = parameters;
    return *this;
}

CIMParameterArray CIMMethod::getParameters() const {
    return data_->parameters;
}

CIMParameterArray CIMMethod::getINParameters() const {
    static const CIMName& in = *new CIMName(CIMQualifier::CIM_QUAL_IN);
    CIMParameterArray found;
    for (const CIMParameter& parameter : data_->parameters) {
        if (!parameter.getQualifier(in) || parameter.hasTrueQualifier(in)) {
            found.push_back(parameter);
        }
    }
    return found;
}

CIMParameterArray CIMMethod::getOUTParameters() const {
    static const CIMName& out = *new CIMName(CIMQualifier::CIM_QUAL_OUT);
    CIMParameterArray found;
    for (const CIMParameter& parameter : data_->parameters) {
        if (parameter.hasTrueQualifier(out)) {
            found.push_back(parameter);
        }
    }
    return found;
}

CIMMethod& CIMMethod::setReturnType(const CIMDataType& returnType) {
    data_->returnType = returnType;
    return *this;
}

CIMDataType CIMMethod::getReturnType() const {
    return data_->returnType;
}

Int32 CIMMethod::getReturnDataSize() const {
    return data_->returnType.getSize();
}

CIMMethod& CIMMethod::setOverridingMethod(const CIMName& method) {
    data_->overridingMethod = method;
    return *this;
}

String CIMMethod::getOverridingMethod() const {
    return data_->overridingMethod.toString();
}

CIMMethod& CIMMethod::setPropagated(bool propagated) {
    data_->propagated = propagated;
    return *this;
}

bool CIMMethod::getPropagated() const {
    return data_->propagated;
}

CIMMethod CIMMethod::clone(WBEMFlags::ELocalOnlyFlag localOnly, WBEMFlags::EIncludeQualifiersFlag includeQualifiers,
                           WBEMFlags::EIncludeClassOriginFlag includeClassOrigin) const {
    if (getPropagated() && localOnly) { // in this order a null method throws
        return CIMMethod(CIMNULL);
    }
    CIMMethod copy(*this);
    if (!includeQualifiers) {
        copy.setQualifiers(CIMQualifierArray());
        CIMParameterArray plain = getParameters();
        for (CIMParameter& parameter : plain) {
            parameter.setQualifiers(CIMQualifierArray());
        }
        copy.setParameters(plain);
    }
    return includeClassOrigin ? copy : copy.setOriginClass(CIMName());
}

String CIMMethod::toString() const {
    return "CIMMethod NAME = " + getName();
}

String CIMMethod::toMOF() const {
    const Data& data = *data_;
    StringArray parameters;
    for (const CIMParameter& parameter : data.parameters) {
        parameters.push_back(parameter.toMOF());
    }
    return qualifiersToMOF(data.qualifiers) + data.returnType.toMOF() + " " + data.name.toString() + "(" +
           joined(parameters, ",") + ");\n";
}

void CIMMethod::readObject(std::istream& istrm) {
    data_ = CIMStream::readData<Data>(istrm, "M").release();
}

void CIMMethod::writeObject(std::ostream& ostrm) const {
    CIMStream::writeData(ostrm, "M", *data_);
}

bool operator<(const CIMMethod& x, const CIMMethod& y) {
    return sortsBefore(x.data_, y.data_);
}

} // namespace OpenWBEM
