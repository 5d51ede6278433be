#include "OW_CIMQualifier.hpp"

#include "OW_CIMFlavor.hpp"
#include "OW_CIMModel.hpp"
#include "OW_CIMQualifierType.hpp"
#include "OW_CIMStream.hpp"
#include "OW_CIMValue.hpp"
#include "OW_NULLValueException.hpp"

namespace OpenWBEM {

const char* const CIMQualifier::CIM_QUAL_ASSOCIATION = "Association";
const char* const CIMQualifier::CIM_QUAL_ABSTRACT = "Abstract";
const char* const CIMQualifier::CIM_QUAL_AGGREGATE = "Aggregate";
const char* const CIMQualifier::CIM_QUAL_AGGREGATION = "Aggregation";
const char* const CIMQualifier::CIM_QUAL_ALIAS = "Alias";
const char* const CIMQualifier::CIM_QUAL_ARRAYTYPE = "ArrayType";
const char* const CIMQualifier::CIM_QUAL_BITMAP = "BitMap";
const char* const CIMQualifier::CIM_QUAL_BITVALUES = "BitValues";
const char* const CIMQualifier::CIM_QUAL_COMPOSITION = "Composition";
const char* const CIMQualifier::CIM_QUAL_COUNTER = "Counter";
const char* const CIMQualifier::CIM_QUAL_DELETE = "Delete";
const char* const CIMQualifier::CIM_QUAL_DEPRECATED = "Deprecated";
const char* const CIMQualifier::CIM_QUAL_DESCRIPTION = "Description";
const char* const CIMQualifier::CIM_QUAL_DISPLAYNAME = "DisplayName";
const char* const CIMQualifier::CIM_QUAL_DN = "DN";
const char* const CIMQualifier::CIM_QUAL_EMBEDDEDOBJECT = "EmbeddedObject";
const char* const CIMQualifier::CIM_QUAL_EXCEPTION = "Exception";
const char* const CIMQualifier::CIM_QUAL_EXPENSIVE = "Expensive";
const char* const CIMQualifier::CIM_QUAL_EXPERIMENTAL = "Experimental";
const char* const CIMQualifier::CIM_QUAL_GAUGE = "Gauge";
const char* const CIMQualifier::CIM_QUAL_IFDELETED = "Ifdeleted";
const char* const CIMQualifier::CIM_QUAL_IN = "In";
const char* const CIMQualifier::CIM_QUAL_INDICATION = "Indication";
const char* const CIMQualifier::CIM_QUAL_INVISIBLE = "Invisible";
const char* const CIMQualifier::CIM_QUAL_KEY = "Key";
const char* const CIMQualifier::CIM_QUAL_LARGE = "Large";
const char* const CIMQualifier::CIM_QUAL_MAPPINGSTRINGS = "MappingStrings";
const char* const CIMQualifier::CIM_QUAL_MAX = "Max";
const char* const CIMQualifier::CIM_QUAL_MAXLEN = "MaxLen";
const char* const CIMQualifier::CIM_QUAL_MAXVALUE = "MaxValue";
const char* const CIMQualifier::CIM_QUAL_MIN = "Min";
const char* const CIMQualifier::CIM_QUAL_MINLEN = "MinLen";
const char* const CIMQualifier::CIM_QUAL_MINVALUE = "MinValue";
const char* const CIMQualifier::CIM_QUAL_MODELCORRESPONDENCE = "ModelCorrespondence";
const char* const CIMQualifier::CIM_QUAL_NONLOCAL = "Nonlocal";
const char* const CIMQualifier::CIM_QUAL_NONLOCALTYPE = "NonlocalType";
const char* const CIMQualifier::CIM_QUAL_NULLVALUE = "NullValue";
const char* const CIMQualifier::CIM_QUAL_OCTETSTRING = "Octetstring";
const char* const CIMQualifier::CIM_QUAL_OUT = "Out";
const char* const CIMQualifier::CIM_QUAL_OVERRIDE = "Override";
const char* const CIMQualifier::CIM_QUAL_PROPAGATED = "Propagated";
const char* const CIMQualifier::CIM_QUAL_PROPERTYUSAGE = "PropertyUsage";
const char* const CIMQualifier::CIM_QUAL_PROVIDER = "Provider";
const char* const CIMQualifier::CIM_QUAL_READ = "Read";
const char* const CIMQualifier::CIM_QUAL_REQUIRED = "Required";
const char* const CIMQualifier::CIM_QUAL_REVISION = "Revision";
const char* const CIMQualifier::CIM_QUAL_SCHEMA = "Schema";
const char* const CIMQualifier::CIM_QUAL_SOURCE = "Source";
const char* const CIMQualifier::CIM_QUAL_SOURCETYPE = "SourceType";
const char* const CIMQualifier::CIM_QUAL_STATIC = "Static";
const char* const CIMQualifier::CIM_QUAL_SYNTAX = "Syntax";
const char* const CIMQualifier::CIM_QUAL_SYNTAXTYPE = "SyntaxType";
const char* const CIMQualifier::CIM_QUAL_TERMINAL = "Terminal";
const char* const CIMQualifier::CIM_QUAL_TRIGGERTYPE = "TriggerType";
const char* const CIMQualifier::CIM_QUAL_UNITS = "Units";
const char* const CIMQualifier::CIM_QUAL_UNKNOWNVALUES = "UnknownValues";
const char* const CIMQualifier::CIM_QUAL_UNSUPPORTEDVALUES = "UnsupportedValues";
const char* const CIMQualifier::CIM_QUAL_VALUEMAP = "ValueMap";
const char* const CIMQualifier::CIM_QUAL_VALUES = "Values";
const char* const CIMQualifier::CIM_QUAL_VERSION = "Version";
const char* const CIMQualifier::CIM_QUAL_WEAK = "Weak";
const char* const CIMQualifier::CIM_QUAL_WRITE = "Write";

struct CIMQualifier::Data : public ModelData<CIMQualifier::Data> {
    CIMName name;
    CIMValue value = CIMValue(CIMNULL);
    CIMFlavorArray flavors;
    CIMQualifierType defaults;
    String language;
    bool propagated = false;

    template <class Self>
    static auto fields(Self& self) {
        return std::tie(self.name, self.value, self.flavors, self.defaults, self.language, self.propagated);
    }
};

const CIMName& CIMAccess::name(const CIMQualifier& qualifier) {
    return qualifier.data_->name;
}

CIMQualifier::CIMQualifier() : data_(sharedDefault<Data>()) {}
CIMQualifier::CIMQualifier(CIMNULL_t) {}
CIMQualifier::CIMQualifier(const CIMName& name) : CIMQualifier() {
    data_->name = name;
}
CIMQualifier::CIMQualifier(const char* name) : CIMQualifier(CIMName(name)) {}
CIMQualifier::CIMQualifier(const CIMQualifierType& declaration) : CIMQualifier(CIMName(declaration.getName())) {
    data_->value = declaration.getDefaultValue();
    data_->flavors = declaration.getFlavors();
    data_->defaults = declaration;
}
CIMQualifier::CIMQualifier(const CIMQualifier& other) = default;
CIMQualifier::~CIMQualifier() = default;
CIMQualifier& CIMQualifier::operator=(const CIMQualifier& other) = default;

void CIMQualifier::setNull() {
    data_ = nullptr;
}

String CIMQualifier::getName() const {
    return data_->name.toString();
}

void CIMQualifier::setName(const CIMName& name) {
    data_->name = name;
}

CIMValue CIMQualifier::getValue() const {
    return data_->value;
}

CIMValue CIMQualifier::getValueT() const {
    if (!data_->value) {
        OW_THROW(NULLValueException, getName().c_str());
    }
    return data_->value;
}

CIMQualifier& CIMQualifier::setValue(const CIMValue& value) {
    data_->value = value;
    return *this;
}

bool CIMQualifier::hasValue() const {
    return !!data_->value;
}

bool CIMQualifier::equals(const CIMQualifier& other) const {
    return data_->name == other.data_->name;
}

bool CIMQualifier::isKeyQualifier() const {
    return data_->name == CIM_QUAL_KEY;
}

bool CIMQualifier::isAssociationQualifier() const {
    return data_->name == CIM_QUAL_ASSOCIATION;
}

CIMQualifier& CIMQualifier::setDefaults(const CIMQualifierType& declaration) {
    data_->defaults = declaration;
    return *this;
}

CIMQualifierType CIMQualifier::getDefaults() const {
    return data_->defaults;
}

bool CIMQualifier::hasFlavor(const CIMFlavor& flavor) const {
    return containsFlavor(data_->flavors, flavor);
}

CIMQualifier& CIMQualifier::addFlavor(const CIMFlavor& flavor) {
    addFlavorTo(data_->flavors, flavor);
    return *this;
}

CIMQualifier& CIMQualifier::removeFlavor(Int32 flavor) {
    removeFlavorFrom(data_->flavors, flavor);
    return *this;
}

CIMFlavorArray CIMQualifier::getFlavor() const {
    return data_->flavors;
}

CIMQualifier& CIMQualifier::setPropagated(bool propagated) {
    data_->propagated = propagated;
    return *this;
}

bool CIMQualifier::getPropagated() const {
    return data_->propagated;
}

CIMQualifier& CIMQualifier::setLanguage(const String& language) {
    data_->language = language;
    return *this;
}

String CIMQualifier::getLanguage() const {
    return data_->language;
}

CIMQualifier CIMQualifier::createKeyQualifier() {
    return CIMQualifier(CIM_QUAL_KEY).setValue(CIMValue(true));
}

String CIMQualifier::nameWithLanguage() const {
    return getLanguage().empty() ? getName() : getName() + "_" + getLanguage();
}

String CIMQualifier::toString() const {
    return "CIMQualifier(" + nameWithLanguage() + ")";
}

String CIMQualifier::toMOF() const {
    const CIMValue& value = data_->value;
    return value ? nameWithLanguage() + "(" + value.toMOF() + ")" : nameWithLanguage();
}

void CIMQualifier::readObject(std::istream& istrm) {
    data_ = CIMStream::readData<Data>(istrm, "Q").release();
}

void CIMQualifier::writeObject(std::ostream& ostrm) const {
    CIMStream::writeData(ostrm, "Q", *data_);
}

bool operator<(const CIMQualifier& x, const CIMQualifier& y) {
    return sortsBefore(x.data_, y.data_);
}

} // namespace OpenWBEM
