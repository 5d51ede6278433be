// Expat checks the text strictly, pugixml builds the tree: text that passes the first means the same to the second.
#include "cimserver/cimxml/XmlDocument.hpp"

#include "cimserver/cimxml/Errors.hpp"
#include "cimserver/common/Text.hpp"

#include <expat.h>

#include <algorithm>
#include <iterator>
#include <limits>
#include <memory>

namespace cimserver::cimxml {
namespace {

struct ParserDeleter {
    void operator()(XML_Parser parser) const { XML_ParserFree(parser); }
};

/// True when the text begins with a reference that needs no declaration: &amp; and its like, or a character by number.
bool isOwnReference(std::string_view text) {
    constexpr std::string_view kKnown[] = {"&amp;", "&lt;", "&gt;", "&quot;", "&apos;", "&#"};
    return std::any_of(std::begin(kKnown), std::end(kKnown),
                       [&](std::string_view one) { return text.substr(0, one.size()) == one; });
}

/// Checks the text in one pass, up to the first fault.
class WellFormedness {
  public:
    explicit WellFormedness(const XmlLimits& limits) : limits_(limits), parser_(XML_ParserCreate("UTF-8")) {
        if (!parser_) {
            throw std::bad_alloc();
        }
        XML_SetUserData(parser_.get(), this);
        XML_SetXmlDeclHandler(parser_.get(), declaration);
        XML_SetStartDoctypeDeclHandler(parser_.get(), doctype);
        XML_SetElementHandler(parser_.get(), start, end);
    }

    void check(std::string_view text) {
        if (text.size() > static_cast<std::size_t>(std::numeric_limits<int>::max())) {
            throw notWellFormed("the document is too long");
        }
        // UTF-16 has NUL bytes; one of the parsers would read it and the other not.
        if (text.find('\0') != std::string_view::npos) {
            throw notWellFormed("a NUL byte; only utf-8 is supported");
        }
        const auto length = static_cast<int>(text.size());
        if (XML_Parse(parser_.get(), text.data(), length, XML_TRUE) != XML_STATUS_OK) {
            throw notWellFormed(where() + (complaint_.empty() ? reason() : complaint_));
        }
        if (hasDoctype_) {
            requireOwnReferences(text);
        }
    }

  private:
    std::string where() const {
        return "line " + std::to_string(XML_GetCurrentLineNumber(parser_.get())) + ", column " +
               std::to_string(XML_GetCurrentColumnNumber(parser_.get()) + 1) + ": ";
    }
    std::string reason() const { return XML_ErrorString(XML_GetErrorCode(parser_.get())); }

    /// With an external document type, which it does not read, the parser accepts any entity as possibly declared
    /// there.
    static void requireOwnReferences(std::string_view text) {
        for (std::size_t at = text.find('&'); at != std::string_view::npos; at = text.find('&', at + 1)) {
            if (!isOwnReference(text.substr(at, 6))) {
                throw notWellFormed("undefined entity at byte " + std::to_string(at + 1));
            }
        }
    }

    void stop(std::string complaint) {
        complaint_ = std::move(complaint);
        XML_StopParser(parser_.get(), XML_FALSE);
    }

    static WellFormedness& of(void* self) { return *static_cast<WellFormedness*>(self); }

    static void declaration(void* self, const XML_Char* /*version*/, const XML_Char* encoding, int /*standalone*/) {
        if (encoding != nullptr && !equalsIgnoringCase(encoding, "utf-8") &&
            !equalsIgnoringCase(encoding, "us-ascii")) {
            of(self).stop("encoding " + quote(encoding) + " is not supported, only utf-8");
        }
    }

    static void doctype(void* self, const XML_Char* /*name*/, const XML_Char* /*system*/, const XML_Char* /*publicId*/,
                        int hasInternalSubset) {
        of(self).hasDoctype_ = true;
        if (hasInternalSubset != 0) {
            of(self).stop("a document type with declarations is not supported");
        }
    }

    static void start(void* self, const XML_Char* name, const XML_Char** attributes) {
        of(self).startElement(name, attributes);
    }
    static void end(void* self, const XML_Char* /*name*/) { --of(self).depth_; }

    void startElement(const XML_Char* name, const XML_Char** attributes) {
        std::size_t count = 0;
        while (attributes[2 * count] != nullptr) {
            ++count;
        }
        if (++depth_ > limits_.depth) {
            stop("elements are nested more than " + std::to_string(limits_.depth) + " deep");
        } else if (++elements_ > limits_.elements) {
            stop("more than " + std::to_string(limits_.elements) + " elements");
        } else if (count > limits_.attributes) {
            stop("more than " + std::to_string(limits_.attributes) + " attributes in " + quote(name));
        }
    }

    const XmlLimits& limits_;
    std::unique_ptr<XML_ParserStruct, ParserDeleter> parser_;
    std::size_t depth_ = 0;
    std::size_t elements_ = 0;
    bool hasDoctype_ = false;
    std::string complaint_;
};

} // namespace

XmlDocument::XmlDocument(std::string_view text, const XmlLimits& limits) {
    WellFormedness(limits).check(text);
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
    for (const pugi::xml_node child : element.children()) {
        if (child.type() == pugi::node_pcdata || child.type() == pugi::node_cdata) {
            text += child.value();
        }
    }
    return text;
}

} // namespace cimserver::cimxml
