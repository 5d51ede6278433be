// Helpers for texts: the characters of XML 1.0, percent-encoding, OpenWBEM's strings to the standard library's and
// back.
#pragma once

#include "OW_CIMAccess.hpp"
#include "OW_CIMName.hpp"
#include "OW_String.hpp"

#include <string>
#include <string_view>

namespace cimserver::cimxml {

/// True for a character that an XML document may hold.
bool isXmlCharacter(char32_t c);

/// Replaces %XX by the byte it stands for; a % without two hexadecimal digits stays.
std::string percentDecoded(std::string_view text);

inline std::string_view view(const OpenWBEM::String& text) {
    return {text.c_str(), text.length()};
}
inline std::string_view view(const OpenWBEM::CIMName& name) {
    return view(OpenWBEM::CIMAccess::text(name));
}
inline std::string toStd(const OpenWBEM::String& text) {
    return std::string(view(text));
}
inline OpenWBEM::String toCim(std::string_view text) {
    return OpenWBEM::String(text.data(), text.size());
}

} // namespace cimserver::cimxml
