// Compares XML as XML: blanks between elements and the order of attributes do not count, * stands for any text.
#pragma once

#include <pugixml.hpp>

#include <string>

namespace wire {

/// Where the actual element first differs from the expected one; empty when it does not.
std::string difference(pugi::xml_node expected, pugi::xml_node actual);

} // namespace wire
