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

const CIMName& CIMNameAccess::of(const CIMMethod& method) {
    return method.m_pdata->name;
}

CIMMethod::CIMMethod() : m_pdata(sharedDefault<Data>()) {}
CIMMethod::CIMMethod(CIMNULL_t) {}
CIMMethod::CIMMethod(const CIMName& name) : CIMMethod() {
    m_pdata->name = name;
}
CIMMethod::CIMMethod(const char* name) : CIMMethod(CIMName(name)) {}
CIMMethod::CIMMethod(const CIMMethod& other) = default;
CIMMethod::~CIMMethod() = default;
CIMMethod& CIMMethod::operator=(const CIMMethod& other) = default;

void CIMMethod::setNull() {
    m_pdata = nullptr;
}

String CIMMethod::getName() const {
    return m_pdata->name.toString();
}

void CIMMethod::setName(const CIMName& name) {
    m_pdata->name = name;
}

CIMQualifierArray CIMMethod::getQualifiers() const {
    return m_pdata->qualifiers;
}

CIMQualifier CIMMethod::getQualifier(const CIMName& name) const {
    return elementNamed(m_pdata->qualifiers, name);
}

CIMMethod& CIMMethod::addQualifier(const CIMQualifier& qualifier) {
    addElement(m_pdata->qualifiers, qualifier, "Qualifier");
    return *this;
}

CIMMethod& CIMMethod::setQualifiers(const CIMQualifierArray& qualifiers) {
    m_pdata->qualifiers = qualifiers;
    return *this;
}

String CIMMethod::getOriginClass() const {
    return m_pdata->originClass.toString();
}

CIMMethod& CIMMethod::setOriginClass(const CIMName& originClass) {
    m_pdata->originClass = originClass;
    return *this;
}

CIMMethod& CIMMethod::addParameter(const CIMParameter& parameter) {
    m_pdata->parameters.push_back(parameter);
    return *this;
}

CIMMethod& CIMMethod::setParameters(const CIMParameterArray& parameters) {
    m_pdata->parameters = parameters;
    return *this;
}

CIMParameterArray CIMMethod::getParameters() const {
    return m_pdata->parameters;
}

CIMParameterArray CIMMethod::getINParameters() const {
    static const CIMName& in = *new CIMName(CIMQualifier::CIM_QUAL_IN);
    CIMParameterArray found;
    for (const CIMParameter& parameter : m_pdata->parameters) {
        if (!parameter.getQualifier(in) || parameter.hasTrueQualifier(in)) {
            found.push_back(parameter);
        }
    }
    return found;
}

CIMParameterArray CIMMethod::getOUTParameters() const {
    static const CIMName& out = *new CIMName(CIMQualifier::CIM_QUAL_OUT);
    CIMParameterArray found;
    for (const CIMParameter& parameter : m_pdata->parameters) {
        if (parameter.hasTrueQualifier(out)) {
            found.push_back(parameter);
        }
    }
    return found;
}

CIMMethod& CIMMethod::setReturnType(const CIMDataType& returnType) {
    m_pdata->returnType = returnType;
    return *this;
}

CIMDataType CIMMethod::getReturnType() const {
    return m_pdata->returnType;
}

Int32 CIMMethod::getReturnDataSize() const {
    return m_pdata->returnType.getSize();
}

CIMMethod& CIMMethod::setOverridingMethod(const CIMName& method) {
    m_pdata->overridingMethod = method;
    return *this;
}

String CIMMethod::getOverridingMethod() const {
    return m_pdata->overridingMethod.toString();
}

CIMMethod& CIMMethod::setPropagated(bool propagated) {
    m_pdata->propagated = propagated;
    return *this;
}

bool CIMMethod::getPropagated() const {
    return m_pdata->propagated;
}

CIMMethod CIMMethod::clone(WBEMFlags::ELocalOnlyFlag localOnly, WBEMFlags::EIncludeQualifiersFlag includeQualifiers,
                           WBEMFlags::EIncludeClassOriginFlag includeClassOrigin) const {
    if (localOnly && getPropagated()) {
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
    return toMOF();
}

String CIMMethod::toMOF() const {
    const Data& data = *m_pdata;
    std::string text = qualifiersToMOF(data.qualifiers, "  ");
    text += ("  " + data.returnType.toMOF() + " " + data.name.toString() + "(").c_str();
    const char* separator = "\n";
    for (const CIMParameter& parameter : data.parameters) {
        text += separator;
        text += parameter.toMOF().c_str();
        separator = ",\n";
    }
    return (text + ");\n").c_str();
}

void CIMMethod::readObject(std::istream& istrm) {
    m_pdata = CIMStream::readData<Data>(istrm, "M").release();
}

void CIMMethod::writeObject(std::ostream& ostrm) const {
    CIMStream::writeData(ostrm, "M", *m_pdata);
}

bool operator<(const CIMMethod& x, const CIMMethod& y) {
    return sortsBefore(x.m_pdata, y.m_pdata);
}

} // namespace OpenWBEM
