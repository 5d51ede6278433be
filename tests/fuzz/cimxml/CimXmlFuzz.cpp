// Feeds arbitrary bodies to the CIM-XML side, over a real object manager and provider. Whatever comes in, what goes out
// must be an HTTP refusal or a reply that obeys the grammar.
#include "cimserver/cimom/Cimom.hpp"
#include "cimserver/cimom/Interop.hpp"
#include "cimserver/cimxml/Dispatcher.hpp"
#include "cimserver/cimxml/Errors.hpp"
#include "cimserver/cimxml/Grammar.hpp"
#include "cimserver/cimxml/RequestMessage.hpp"
#include "cimserver/common/Log.hpp"
#include "cimserver/provider/ProviderHost.hpp"
#include "cimserver/schema/Repository.hpp"

#include <cstdio>
#include <cstdlib>
#include <string_view>

namespace {

using namespace cimserver;

class Server {
  public:
    Server() : host_(settings()), cimom_(filled(), host_, {}), dispatcher_(cimom_, {}) {}

    http::Response handle(const http::Request& request) { return dispatcher_.handle(request); }

  private:
    static provider::HostSettings settings() {
        // Neither the provider's prints nor the log are of interest here.
        if (std::freopen("/dev/null", "w", stdout) == nullptr) {
            std::abort();
        }
        log::Settings quiet;
        quiet.file = "/dev/null";
        log::configure(quiet);
        provider::HostSettings settings;
        settings.folders = {TEST_PROVIDER_FOLDER};
        return settings;
    }
    const schema::Repository& filled() {
        cimom::addInterop(repository_, host_);
        repository_.compileFile(TEST_PROVIDER_MOF, "root/cimv2");
        return repository_;
    }

    schema::Repository repository_;
    provider::ProviderHost host_;
    cimom::Cimom cimom_;
    cimxml::Dispatcher dispatcher_;
};

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
        if (response.status != 400 && response.status != 501) {
            std::abort();
        }
        return;
    }
    pugi::xml_document reply;
    if (!reply.load_string(response.body.c_str())) {
        std::abort();
    }
    cimxml::checkGrammar(reply.document_element(), cimxml::Strictness::Strict);
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    static Server server;
    const std::string_view bytes(reinterpret_cast<const char*>(data), size);
    requireProper(server.handle(requestOf(std::string(bytes))));
    return 0;
}
