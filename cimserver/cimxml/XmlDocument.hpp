// A request's XML: checked for well-formedness and size, then read into a tree.
#pragma once

#include "cimserver/cimxml/WellFormedness.hpp"

#include <pugixml.hpp>

#include <string>
#include <string_view>

namespace cimserver::cimxml {

/// The tree of a well-formed UTF-8 document without an internal DTD, so that only XML's five predefined entities can
/// occur. Nodes point into the object and live as long as it.
class XmlDocument {
  public:
    /// Throws HttpError request-not-well-formed with line and column of the fault.
    XmlDocument(std::string_view text, const XmlLimits& limits);

    pugi::xml_node root() const { return document_.document_element(); }

  private:
    pugi::xml_document document_;
};

/// The node itself or the first element after it; null when there is none.
pugi::xml_node elementFrom(pugi::xml_node node);
/// The first element inside; null when there is none.
inline pugi::xml_node firstElement(pugi::xml_node parent) {
    return elementFrom(parent.first_child());
}
inline pugi::xml_node nextElement(pugi::xml_node element) {
    return elementFrom(element.next_sibling());
}
/// The last element inside; null when there is none.
pugi::xml_node lastElement(pugi::xml_node parent);

/// The character data of an element, pieces joined, blanks kept.
std::string textOf(pugi::xml_node element);

} // namespace cimserver::cimxml
