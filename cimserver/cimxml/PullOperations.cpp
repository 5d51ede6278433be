// The operations that deliver an enumeration in pieces. The provider is asked once, when the enumeration is opened.
#include "cimserver/cim/CimError.hpp"
#include "cimserver/cim/Sink.hpp"
#include "cimserver/cimxml/Characters.hpp"
#include "cimserver/cimxml/Enumerations.hpp"
#include "cimserver/cimxml/NameWriter.hpp"
#include "cimserver/cimxml/ObjectWriter.hpp"
#include "cimserver/cimxml/OperationTable.hpp"
#include "cimserver/cimxml/RequestedSelection.hpp"
#include "cimserver/cimxml/XmlWriter.hpp"
#include "cimserver/common/Text.hpp"
#include "cimserver/schema/Repository.hpp"

namespace cimserver::cimxml {

using namespace OpenWBEM;

namespace {

constexpr std::chrono::seconds kUsualLifetime{60};
constexpr const char* kWithPath = "VALUE.INSTANCEWITHPATH";
constexpr const char* kPathOnly = "INSTANCEPATH";

/// With the namespace's own spelling, so that a pull may use an alias.
EnumerationOwner ownerOf(const OperationCall& call, const char* element) {
    return {call.context.user, toStd(call.services.cimom.repository().canonicalNamespace(call.nameSpace)), element};
}

std::chrono::seconds lifetimeOf(const OperationCall& call) {
    const auto asked = call.arguments.number("OperationTimeout");
    if (!asked) {
        return std::min(kUsualLifetime, call.services.longestEnumeration);
    }
    const std::chrono::seconds lifetime(*asked);
    if (lifetime.count() == 0 || lifetime > call.services.longestEnumeration) {
        throw CimError(Status::InvalidOperationTimeout, "OperationTimeout must be 1 to " +
                                                            std::to_string(call.services.longestEnumeration.count()) +
                                                            " seconds");
    }
    return lifetime;
}

void requirePlainEnumeration(const OperationCall& call) {
    if (call.arguments.has("FilterQueryLanguage") || call.arguments.has("FilterQuery")) {
        throw CimError(Status::QueryLanguageNotSupported,
                       "FilterQueryLanguage " + quote(view(call.arguments.text("FilterQueryLanguage"))));
    }
    if (call.arguments.flag("ContinueOnError")) {
        throw CimError(Status::ContinuationOnErrorNotSupported, "ContinueOnError");
    }
}

void writeResult(OperationCall& call, const std::string& elements, bool last, const std::string& id) {
    {
        const Element result(call.reply, "IRETURNVALUE");
        call.reply.raw(elements);
    }
    writeParamValue(call.reply, "EndOfSequence", CIMValue(last));
    if (!last) {
        writeParamValue(call.reply, "EnumerationContext", CIMValue(toCim(id)));
    }
}

/// Delivers the first of the elements and keeps the others.
void openWith(OperationCall& call, const char* element, std::vector<std::string> elements) {
    const std::size_t first =
        std::min<std::size_t>(call.arguments.number("MaxObjectCount").value_or(0), elements.size());
    std::string delivered;
    for (std::size_t i = 0; i < first; ++i) {
        delivered += elements[i];
    }
    elements.erase(elements.begin(), elements.begin() + static_cast<std::ptrdiff_t>(first));
    const bool last = elements.empty();
    const std::string id =
        last ? std::string()
             : call.services.enumerations.open(ownerOf(call, element), std::move(elements), lifetimeOf(call));
    writeResult(call, delivered, last, id);
}

void pullFrom(OperationCall& call, const char* element) {
    const std::string id = toStd(call.arguments.text("EnumerationContext"));
    std::string elements;
    const bool last = call.services.enumerations.pull(id, ownerOf(call, element),
                                                      call.arguments.number("MaxObjectCount").value_or(0), elements);
    writeResult(call, elements, last, id);
}

} // namespace

void openEnumerateInstances(OperationCall& call) {
    requirePlainEnumeration(call);
    static_cast<void>(lifetimeOf(call));
    const RequestedSelection selection(call.arguments);
    std::vector<std::string> elements;
    Sink<CIMInstance> sink([&](const CIMInstance& one) {
        XmlWriter writer;
        {
            const Element object(writer, kWithPath);
            writeInstancePath(writer, nameOfInstance(one, call.nameSpace), call.services.hostName, call.nameSpace);
            writeFound(call, writer, one, selection.classOrigin());
        }
        elements.push_back(writer.take());
    });
    call.services.cimom.enumInstances(call.context, call.nameSpace, call.arguments.className("ClassName"),
                                      selection.get(), sink);
    openWith(call, kWithPath, std::move(elements));
}

void openEnumerateInstancePaths(OperationCall& call) {
    requirePlainEnumeration(call);
    static_cast<void>(lifetimeOf(call));
    std::vector<std::string> elements;
    Sink<CIMObjectPath> sink([&](const CIMObjectPath& one) {
        XmlWriter writer;
        writeInstancePath(writer, one, call.services.hostName, call.nameSpace);
        elements.push_back(writer.take());
    });
    call.services.cimom.enumInstanceNames(call.context, call.nameSpace, call.arguments.className("ClassName"), sink);
    openWith(call, kPathOnly, std::move(elements));
}

void pullInstancesWithPath(OperationCall& call) {
    pullFrom(call, kWithPath);
}

void pullInstancePaths(OperationCall& call) {
    pullFrom(call, kPathOnly);
}

void closeEnumeration(OperationCall& call) {
    const std::string id = toStd(call.arguments.text("EnumerationContext"));
    const EnumerationOwner owner = ownerOf(call, "");
    call.services.enumerations.close(id, owner.user, owner.nameSpace);
}

} // namespace cimserver::cimxml
