#include "cimserver/cimxml/RequestMessage.hpp"

#include "cimserver/cimxml/Errors.hpp"
#include "cimserver/cimxml/Grammar.hpp"
#include "cimserver/cimxml/WellFormedness.hpp"
#include "cimserver/common/Text.hpp"

#include <algorithm>

namespace cimserver::cimxml {
namespace {

constexpr std::size_t kLongestId = 1024;
/// The newest minor version of the DTD that replies conform to.
constexpr char kNewestDtdMinor = '4';

void requireVersion(pugi::xml_node element, const char* attribute, char major, const char* cimError) {
    const pugi::xml_attribute given = element.attribute(attribute);
    if (given && !hasMajorVersion(given.value(), major)) {
        throw HttpError(501, cimError, std::string(attribute) + " " + quote(given.value()) + " is not supported");
    }
}

void requireSingleRequest(pugi::xml_node message) {
    if (message.child("MULTIREQ") || message.child("MULTIEXPREQ")) {
        throw HttpError(501, "multiple-requests-unsupported", "one request at a time");
    }
    if (message.child("SIMPLEEXPREQ")) {
        throw HttpError(400, "unsupported-operation", "indications are not received here");
    }
}

void requireValid(pugi::xml_node cim) {
    try {
        if (std::string_view(cim.name()) != "CIM") {
            throw GrammarError(GrammarError::Kind::Broken, "the document is a " + quote(cim.name()) + ", not a CIM");
        }
        checkGrammar(cim, Strictness::Loose);
    } catch (const GrammarError& error) {
        throw error.kind() == GrammarError::Kind::Unknown ? notValid(error.what()) : notLooselyValid(error.what());
    }
}

/// The request's own version if replies conform to it, else the newest that they conform to.
std::string dtdVersionFor(std::string_view asked) {
    const bool known = asked.size() == 3 && asked.back() <= kNewestDtdMinor;
    return known ? std::string(asked) : std::string("2.") + kNewestDtdMinor;
}

} // namespace

bool hasMajorVersion(std::string_view version, char major) {
    const bool shaped = version.size() >= 3 && version.size() <= 12 && version[1] == '.' && version.back() != '.';
    return shaped && version[0] == major &&
           std::all_of(version.begin() + 2, version.end(), [](char c) { return (c >= '0' && c <= '9') || c == '.'; });
}

std::string nameSpaceOf(pugi::xml_node localNameSpacePath) {
    std::string name;
    for (const pugi::xml_node part : localNameSpacePath.children("NAMESPACE")) {
        name += name.empty() ? "" : "/";
        name += part.attribute("NAME").value();
    }
    return name;
}

RequestMessage::RequestMessage(std::string_view body, const XmlLimits& limits) : document_(body, limits) {
    const pugi::xml_node cim = document_.root();
    const pugi::xml_node message = cim.child("MESSAGE");
    requireVersion(cim, "CIMVERSION", '2', "unsupported-cim-version");
    requireVersion(cim, "DTDVERSION", '2', "unsupported-dtd-version");
    requireVersion(message, "PROTOCOLVERSION", '1', "unsupported-protocol-version");
    requireSingleRequest(message);
    requireValid(cim);
    readFrame(cim);
    const pugi::xml_node request = message.child("SIMPLEREQ");
    if (!request) {
        throw HttpError(400, "unsupported-operation", "the message is not a request");
    }
    call_ = lastElement(request);
    name_ = call_.attribute("NAME").value();
    pugi::xml_node path = call_;
    if (isMethodCall()) {
        path = call_.child("LOCALINSTANCEPATH") ? call_.child("LOCALINSTANCEPATH") : call_.child("LOCALCLASSPATH");
        target_ = path.child("INSTANCENAME") ? path.child("INSTANCENAME") : path.child("CLASSNAME");
    }
    nameSpace_ = nameSpaceOf(path.child("LOCALNAMESPACEPATH"));
}

void RequestMessage::readFrame(pugi::xml_node cim) {
    const pugi::xml_node message = cim.child("MESSAGE");
    frame_.id = message.attribute("ID").value();
    if (frame_.id.size() > kLongestId) {
        throw notLooselyValid("the message ID has more than " + std::to_string(kLongestId) + " bytes");
    }
    frame_.protocolVersion = message.attribute("PROTOCOLVERSION").value();
    frame_.cimVersion = cim.attribute("CIMVERSION").value();
    frame_.dtdVersion = dtdVersionFor(cim.attribute("DTDVERSION").value());
}

} // namespace cimserver::cimxml
