#include "cimserver/cimxml/Dispatcher.hpp"

#include "cimserver/cim/CimError.hpp"
#include "cimserver/cimxml/Arguments.hpp"
#include "cimserver/cimxml/Audit.hpp"
#include "cimserver/cimxml/Characters.hpp"
#include "cimserver/cimxml/Errors.hpp"
#include "cimserver/cimxml/HttpRules.hpp"
#include "cimserver/cimxml/Masking.hpp"
#include "cimserver/cimxml/ObjectReader.hpp"
#include "cimserver/cimxml/OperationTable.hpp"
#include "cimserver/cimxml/RequestMessage.hpp"
#include "cimserver/cimxml/XmlWriter.hpp"
#include "cimserver/common/Log.hpp"
#include "cimserver/common/Memory.hpp"
#include "cimserver/common/Text.hpp"

namespace cimserver::cimxml {

using namespace OpenWBEM;

namespace {

DispatcherSettings completed(DispatcherSettings settings) {
    if (settings.hostName.empty()) {
        settings.hostName = hostName();
    }
    return settings;
}

http::Response refusal(const HttpError& error) {
    http::Response response;
    response.status = error.status();
    response.fields.add("Content-Type", "text/plain; charset=\"utf-8\"");
    response.body = std::string(error.what()) + "\n";
    return response;
}

/// The reply document around what `write` writes. An operation's name has its proper spelling, a method's that of the
/// request.
template <class Write>
http::Response envelope(const RequestMessage& message, const Operation* operation, MemoryAccount* memory,
                        Write&& write) {
    const MessageFrame& frame = message.frame();
    XmlWriter writer(memory);
    writer.raw("<?xml version=\"1.0\" encoding=\"utf-8\" ?>\n");
    {
        Element cim(writer, "CIM");
        cim.attribute("CIMVERSION", frame.cimVersion).attribute("DTDVERSION", frame.dtdVersion);
        Element response(writer, "MESSAGE");
        response.attribute("ID", frame.id).attribute("PROTOCOLVERSION", frame.protocolVersion);
        const Element simple(writer, "SIMPLERSP");
        Element call(writer, message.isMethodCall() ? "METHODRESPONSE" : "IMETHODRESPONSE");
        const bool known = operation != nullptr && !message.isMethodCall();
        call.attribute("NAME", known ? operation->name : message.name());
        write(writer);
    }
    writer.raw("\n");
    http::Response response;
    response.rest = writer.takeRest();
    response.body = writer.take();
    return response;
}

/// The tree of a request is several times as large as its text.
void accountTree(const http::Request& request) {
    constexpr std::size_t kSmall = 16384;
    constexpr std::size_t kTreeBytesPerByte = 8;
    if (request.memory != nullptr && request.body.size() > kSmall &&
        !request.memory->grow(kTreeBytesPerByte * request.body.size())) {
        throw HttpError(503, "", "no memory for the request");
    }
}

std::string lineFor(const http::Request& request, std::string_view what) {
    return request.peer + ": " + std::string(what);
}

std::string resultOf(const Outcome& outcome) {
    return outcome.code == 0 ? "ok"
                             : "error " + std::to_string(outcome.code) + " " + withoutSecrets(outcome.description);
}

} // namespace

Dispatcher::Dispatcher(cimom::Cimom& cimom, DispatcherSettings settings)
    : cimom_(cimom), settings_(completed(std::move(settings))), enumerations_(settings_.enumerations) {}

http::Response Dispatcher::handle(const http::Request& request) {
    const auto start = std::chrono::steady_clock::now();
    try {
        http::Response response = answer(request);
        const auto taken = std::chrono::steady_clock::now() - start;
        const auto microseconds = std::chrono::duration_cast<std::chrono::microseconds>(taken).count();
        response.fields.add("WBEMServerResponseTime", std::to_string(microseconds));
        return response;
    } catch (const HttpError& error) {
        return refusal(error);
    } catch (const Deferral&) {
        throw;
    } catch (const std::exception& error) {
        log::write(log::Level::Error, "cimxml", error.what());
    } catch (...) {
        log::write(log::Level::Error, "cimxml", "a request failed for an unknown reason");
    }
    http::Response response;
    response.status = 500;
    return response;
}

http::Response Dispatcher::answer(const http::Request& request) {
    if (request.method != "POST" && request.method != "M-POST") {
        throw HttpError(405, "", "method " + quote(request.method) + " is not allowed here");
    }
    const CimHeaders headers(request);
    http::Response response;
    try {
        headers.requireMethodCall();
        accountTree(request);
        const RequestMessage message(request.body, settings_.xml);
        headers.requireAgreement(message);
        response = reply(request, message);
        response.fields.add("Content-Type", "application/xml; charset=\"utf-8\"");
        headers.add(response, "CIMOperation", "MethodResponse");
        response.fields.add("Cache-Control", "no-cache");
    } catch (const HttpError& error) {
        const std::string& kind = error.cimError();
        log::write(log::Level::Info, "cimxml", lineFor(request, (kind.empty() ? "" : kind + ": ") + error.what()));
        response = refusal(error);
        if (!kind.empty()) {
            headers.add(response, "CIMError", kind);
        }
    }
    headers.addExtension(response);
    return response;
}

http::Response Dispatcher::reply(const http::Request& request, const RequestMessage& message) {
    cimom::RequestContext context;
    context.user = request.identity.user;
    context.peer = request.peer;
    context.mayWrite = request.identity.mayWrite;
    context.operationName = message.name();
    const Operation* operation = findOperation(message);
    AuditRecord audit(context, message);
    context.observer = operation != nullptr && operation->modifies ? &audit : nullptr;
    http::Response document;
    const Outcome outcome = outcomeOf([&] {
        document = envelope(message, operation, request.memory,
                            [&](XmlWriter& content) { run(operation, context, message, audit, content); });
    });
    if (operation != nullptr && operation->modifies) {
        audit.write(outcome);
    }
    if (log::enabled(log::Level::Debug)) {
        log::write(log::Level::Debug, "cimxml",
                   lineFor(request, std::string(message.name()) + ": " + resultOf(outcome)));
    }
    if (outcome.code == 0) {
        return document;
    }
    ++errors_;
    const std::string code = std::to_string(outcome.code);
    return envelope(message, operation, nullptr, [&](XmlWriter& content) {
        Element(content, "ERROR")
            .attribute("CODE", code)
            .attribute("DESCRIPTION", outcome.description + hintFor(outcome));
    });
}

/// What the configuration says about a failure by the provider's text, which follows the standard one in brackets;
/// "none" stands for a missing text.
std::string Dispatcher::hintFor(const Outcome& outcome) const {
    const std::string standard = CimError::fromException("").getMessage();
    const auto& text = outcome.description;
    if (outcome.code != static_cast<int>(Status::Failed) || text.compare(0, standard.size(), standard) != 0) {
        return "";
    }
    const auto bracketed = text.substr(standard.size()); // " (101)"
    const auto key = bracketed.size() > 3 ? bracketed.substr(2, bracketed.size() - 3) : bracketed;
    const auto hint = settings_.errorHints.find(key.empty() ? "none" : key);
    return hint == settings_.errorHints.end() ? "" : ": " + hint->second;
}

void Dispatcher::run(const Operation* operation, const cimom::RequestContext& context, const RequestMessage& message,
                     AuditRecord& audit, XmlWriter& content) {
    if (operation == nullptr) {
        throw CimError(Status::NotSupported, message.name());
    }
    const String nameSpace = toCim(message.nameSpace());
    // Before the parameters are checked: a user who may not write is told that first.
    cimom_.admit(context, nameSpace, operation->modifies ? provider::Access::Write : provider::Access::Read);
    const Arguments arguments(message.call(), operation->parameters);
    const ObjectReader reader(cimom_, nameSpace, settings_.xml);
    const Services services{cimom_, enumerations_, settings_.hostName, settings_.longestEnumeration,
                            settings_.hideSecrets};
    OperationCall call{services, context, nameSpace, message, arguments, reader, audit, content};
    operation->run(call);
}

} // namespace cimserver::cimxml
