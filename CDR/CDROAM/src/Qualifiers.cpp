#include "Qualifiers.hpp"

#include "OW_Bool.hpp"
#include "OW_CIMDataType.hpp"
#include "OW_CIMQualifierType.hpp"
#include "OW_CIMValue.hpp"

#include <numeric>
#include <vector>

using OpenWBEM::CIMDataType;
using OpenWBEM::CIMQualifier;
using OpenWBEM::CIMQualifierType;
using OpenWBEM::CIMValue;

namespace cdroam {
namespace {

// The qualifier's type is named after the data type, not after the qualifier.
CIMQualifier makeQualifier(const char* typeName, CIMDataType::Type type, const char* name, const CIMValue& value) {
    CIMQualifierType qualifierType(typeName);
    qualifierType.setDataType(CIMDataType(type));
    CIMQualifier qualifier(qualifierType);
    qualifier.setName(name);
    qualifier.setValue(value);
    return qualifier;
}

} // namespace

bool appendApplicable(QualifierArray& qualifiers, bool applicable) {
    qualifiers.push_back(
        makeQualifier("boolean", CIMDataType::BOOLEAN, "Applicable", CIMValue(OpenWBEM::Bool(applicable))));
    return applicable;
}

void appendValidValueMap(QualifierArray& qualifiers, unsigned int last) {
    std::vector<OpenWBEM::UInt32> numbers(last + 1);
    std::iota(numbers.begin(), numbers.end(), OpenWBEM::UInt32(0));
    const OpenWBEM::UInt32Array values(numbers.begin(), numbers.end());
    // A qualifier of type "string" with numbers as its value is deliberate: clients know it like this.
    qualifiers.push_back(makeQualifier("string", CIMDataType::STRING, "ValidValueMap", CIMValue(values)));
}

} // namespace cdroam
