#include "cimserver/cimxml/XmlDocument.hpp"

#include "cimserver/cimxml/Errors.hpp"

namespace cimserver::cimxml {

XmlDocument::XmlDocument(std::string_view text, const XmlLimits& limits) {
    requireWellFormed(text, limits);
    const auto options = pugi::parse_default | pugi::parse_ws_pcdata;
    const auto result = document_.load_buffer(text.data(), text.size(), options, pugi::encoding_utf8);
    if (!result) {
        throw notWellFormed(result.description());
    }
}

pugi::xml_node elementFrom(pugi::xml_node node) {
    while (node && node.type() != pugi::node_element) {
        node = node.next_sibling();
    }
    return node;
}

pugi::xml_node lastElement(pugi::xml_node parent) {
    pugi::xml_node child = parent.last_child();
    while (child && child.type() != pugi::node_element) {
        child = child.previous_sibling();
    }
    return child;
}

std::string textOf(pugi::xml_node element) {
    std::string text;
    for (pugi::xml_node child = element.first_child(); child; child = child.next_sibling()) {
        if (child.type() == pugi::node_pcdata || child.type() == pugi::node_cdata) {
            text += child.value();
        }
    }
    return text;
}

} // namespace cimserver::cimxml
