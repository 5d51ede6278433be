#include "Qualifiers.hpp"

#include "OW_Bool.hpp"
#include "OW_CIMDataType.hpp"
#include "OW_CIMQualifierType.hpp"
#include "OW_CIMValue.hpp"

#include <array>
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

CIMQualifier makeApplicable(bool applicable) {
    return makeQualifier("boolean", CIMDataType::BOOLEAN, "Applicable", CIMValue(OpenWBEM::Bool(applicable)));
}

CIMQualifier makeValidValueMap(unsigned int last) {
    std::vector<OpenWBEM::UInt32> numbers(last + 1);
    std::iota(numbers.begin(), numbers.end(), OpenWBEM::UInt32(0));
    const OpenWBEM::UInt32Array values(numbers.begin(), numbers.end());
    // A qualifier of type "string" with numbers as its value is deliberate: clients know it like this.
    return makeQualifier("string", CIMDataType::STRING, "ValidValueMap", CIMValue(values));
}

} // namespace

bool appendApplicable(QualifierArray& qualifiers, bool applicable) {
    static const CIMQualifier yes = makeApplicable(true);
    static const CIMQualifier no = makeApplicable(false);
    qualifiers.push_back(applicable ? yes : no);
    return applicable;
}

void appendValidValueMap(QualifierArray& qualifiers, unsigned int last) {
    static const std::array<CIMQualifier, 4> kFirst{makeValidValueMap(0), makeValidValueMap(1), makeValidValueMap(2),
                                                    makeValidValueMap(3)};
    qualifiers.push_back(last < kFirst.size() ? kFirst[last] : makeValidValueMap(last));
}

} // namespace cdroam
