// Any text as XML: accepted only if Expat, a strict parser, accepts it too, and what is accepted becomes a tree.
#include "../Require.hpp"

#include "cimserver/cimxml/Errors.hpp"
#include "cimserver/cimxml/XmlDocument.hpp"

#include <expat.h>

#include <memory>

namespace {

using namespace cimserver::cimxml;

bool isAccepted(std::string_view text) {
    const XmlLimits limits{1000, 100000, 1000};
    try {
        requireWellFormed(text, limits);
    } catch (const HttpError&) {
        return false;
    }
    require(XmlDocument(text, limits).root(), "what is well-formed has a root");
    return true;
}

bool isWellFormed(std::string_view text) {
    const std::unique_ptr<XML_ParserStruct, decltype(&XML_ParserFree)> parser(XML_ParserCreate("UTF-8"),
                                                                              XML_ParserFree);
    return XML_Parse(parser.get(), text.data(), static_cast<int>(text.size()), XML_TRUE) == XML_STATUS_OK;
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string_view text = textOf(data, size);
    // The other way round there are exceptions: declarations, names beyond ASCII and other encodings are refused.
    require(!isAccepted(text) || isWellFormed(text), "only well-formed documents are accepted");
    return 0;
}
