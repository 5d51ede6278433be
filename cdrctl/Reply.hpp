// Reads the replies of a CIM-XML server, which need not be well-meaning.
#pragma once

#include "cdrctl/Model.hpp"

#include <string>
#include <vector>

namespace cdrctl {

// All throw CimFault for an ERROR, and ConnectError for a text that is not the reply expected.

Object readClass(const std::string& body);
/// Instances with their names.
std::vector<Object> readInstances(const std::string& body);
std::string readReturnValue(const std::string& body);
void requireSuccess(const std::string& body);

} // namespace cdrctl
