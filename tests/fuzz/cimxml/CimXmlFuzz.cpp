// Feeds arbitrary bodies to the CIM-XML side, over a real object manager and provider. Whatever comes in, what goes out
// must be an HTTP refusal or a reply that obeys the grammar.
#include "../Require.hpp"

#include "cimserver/cimxml/Errors.hpp"
#include "cimserver/cimxml/Grammar.hpp"
#include "cimserver/cimxml/RequestMessage.hpp"
#include "cimserver/common/Log.hpp"
#include "tests/wire/Server.hpp"

namespace {

using namespace cimserver;

/// Neither the provider's prints nor the log are of interest here.
wire::Server quietServer() {
    require(std::freopen("/dev/null", "w", stdout) != nullptr, "output can be dropped");
    log::configure({"/dev/null"});
    return wire::Server();
}

/// CIMObject as the message would have it, so that the comparison does not end every run.
std::string objectOf(const cimxml::RequestMessage& message) {
    std::string object = message.nameSpace();
    if (message.isMethodCall()) {
        const pugi::xml_node target = message.target();
        object += std::string(":") + target.attribute("NAME").value() + target.attribute("CLASSNAME").value();
        char separator = '.';
        for (const pugi::xml_node key : target.children("KEYBINDING")) {
            object += separator + std::string(key.attribute("NAME").value()) + "=" + key.child_value("KEYVALUE");
            separator = ',';
        }
    }
    return object;
}

http::Request requestOf(std::string body) {
    http::Request request;
    request.method = "POST";
    request.fields.add("CIMOperation", "MethodCall");
    try {
        const cimxml::RequestMessage message(body, {});
        request.fields.add("CIMMethod", std::string(message.name()));
        request.fields.add("CIMObject", objectOf(message));
    } catch (const cimxml::HttpError&) {
        // The dispatcher refuses it in the same way.
    }
    request.body = std::move(body);
    return request;
}

void requireProper(const http::Response& response) {
    if (response.status != 200) {
        return require(response.status == 400 || response.status == 501, "a refusal is of the two of the grammar");
    }
    pugi::xml_document reply;
    require(reply.load_string(response.body.c_str()), "a reply is XML");
    cimxml::checkGrammar(reply.document_element(), cimxml::Strictness::Strict);
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    static wire::Server server = quietServer();
    requireProper(server.handle(requestOf(std::string(textOf(data, size)))));
    return 0;
}
