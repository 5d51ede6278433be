#include "cimserver/http/Redact.hpp"

#include "cimserver/common/Text.hpp"

#include <algorithm>

namespace cimserver::http {
namespace {

constexpr std::string_view Mask = "***";

/// True for a request in which names and ends of elements cannot be told by looking for tags: comments, CDATA sections
/// and processing instructions may hold anything that looks like one, and a NUL is no part of a text in UTF-8. Clients
/// have no use for any of them.
bool hidesItsTags(std::string_view text) {
    return text.find("<!--") != std::string_view::npos || text.find("<![") != std::string_view::npos ||
           text.find("<?", 1) != std::string_view::npos || text.find('\0') != std::string_view::npos;
}

/// A name written with character references could hide anything.
bool looksSecret(std::string_view text) {
    return containsIgnoringCase(text, "password") || text.find("&#") != std::string_view::npos;
}

/// Length of the tag at the text's start, '<' and '>' included; quoted '>' do not end it.
std::size_t tagLength(std::string_view text) {
    char quote = 0;
    for (std::size_t i = 1; i < text.size(); ++i) {
        if (quote != 0) {
            quote = text[i] == quote ? '\0' : quote;
        } else if (text[i] == '"' || text[i] == '\'') {
            quote = text[i];
        } else if (text[i] == '>') {
            return i + 1;
        }
    }
    return text.size();
}

std::string_view elementOf(std::string_view tag) {
    const auto end = tag.find_first_of(" \t\r\n/>", 1);
    return tag.substr(1, std::min(end, tag.size()) - 1);
}

bool isSecret(std::string_view tag, bool valuesToo) {
    const auto element = elementOf(tag);
    if (valuesToo &&
        (element == "IRETURNVALUE" || (element == "IPARAMVALUE" && containsIgnoringCase(tag, "newvalue")))) {
        return true;
    }
    // In any case: what a mistaken client sends is refused, but dumped.
    const bool named = equalsIgnoringCase(element.substr(0, 8), "PROPERTY") ||
                       equalsIgnoringCase(element, "PARAMVALUE") || equalsIgnoringCase(element, "IPARAMVALUE") ||
                       equalsIgnoringCase(element, "KEYBINDING");
    return named && looksSecret(tag.substr(element.size()));
}

/// Where the element's end tag begins in the text behind its start tag; the text's end when there is none.
std::size_t contentLength(std::string_view text, std::string_view element) {
    return std::min(text.find("</" + std::string(element)), text.size());
}

/// An embedded instance is escaped XML inside a value.
std::string_view safeContent(std::string_view text) {
    const bool embedded = text.find("&lt;") != std::string_view::npos || text.find("&#") != std::string_view::npos;
    return embedded && looksSecret(text) ? Mask : text;
}

} // namespace

bool namesSecretProperty(std::string_view request) {
    if (hidesItsTags(request)) {
        return true;
    }
    for (auto at = request.find("<IPARAMVALUE"); at != std::string_view::npos;
         at = request.find("<IPARAMVALUE", at + 1)) {
        const auto rest = request.substr(at);
        const auto tag = rest.substr(0, tagLength(rest));
        const auto content = rest.substr(tag.size(), contentLength(rest.substr(tag.size()), "IPARAMVALUE"));
        const bool mayName = containsIgnoringCase(tag, "propertyname") || tag.find("&#") != std::string_view::npos;
        if (mayName && looksSecret(content)) {
            return true;
        }
    }
    return false;
}

std::string redacted(std::string_view xml, bool valuesToo) {
    if (hidesItsTags(xml)) {
        return std::string(Mask);
    }
    std::string out;
    out.reserve(xml.size());
    while (!xml.empty()) {
        const auto open = std::min(xml.find('<'), xml.size());
        out += safeContent(xml.substr(0, open));
        xml.remove_prefix(open);
        const auto tag = xml.substr(0, tagLength(xml));
        // A tag that never ends is the rest of a malformed text.
        const bool whole = !tag.empty() && tag.back() == '>';
        out += whole || !looksSecret(tag) ? tag : Mask;
        xml.remove_prefix(tag.size());
        if (whole && tag.size() > 1 && tag[tag.size() - 2] != '/' && isSecret(tag, valuesToo)) {
            out += Mask;
            xml.remove_prefix(contentLength(xml, elementOf(tag)));
        }
    }
    return out;
}

} // namespace cimserver::http
