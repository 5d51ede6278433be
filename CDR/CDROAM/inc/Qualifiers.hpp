// The qualifiers that getters put on their properties.
#pragma once

#include "ManagedObject.hpp"

namespace cdroam {

/// Appends "Applicable" with the value given. Returns the value.
bool appendApplicable(QualifierArray& qualifiers, bool applicable);

/// Appends "ValidValueMap": the numbers from 0 to `last` are valid.
void appendValidValueMap(QualifierArray& qualifiers, unsigned int last);

} // namespace cdroam
