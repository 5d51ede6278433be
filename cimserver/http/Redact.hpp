// Takes secrets out of CIM-XML texts before they are written to a dump.
#pragma once

#include <string>
#include <string_view>

namespace cimserver::http {

/// True when a GetProperty or SetProperty request names a secret property: then the value stands apart from the name,
/// in the request's NewValue and in the reply's IRETURNVALUE.
bool namesSecretProperty(std::string_view request);

/// The text with the contents of every property, parameter and key whose name contains "password" (in any case)
/// replaced by "***"; with `valuesToo` those of NewValue and IRETURNVALUE as well. Works on malformed texts, rather
/// taking out too much than too little.
std::string redacted(std::string_view xml, bool valuesToo);

} // namespace cimserver::http
