// The operations of the protocol: a table with the name, the parameters and the function of each.
#pragma once

#include "cimserver/cimom/Cimom.hpp"
#include "cimserver/cimxml/Arguments.hpp"
#include "cimserver/cimxml/Audit.hpp"
#include "cimserver/cimxml/Enumerations.hpp"
#include "cimserver/cimxml/ObjectReader.hpp"
#include "cimserver/cimxml/RequestMessage.hpp"
#include "cimserver/cimxml/XmlWriter.hpp"

#include <string>
#include <string_view>
#include <vector>

namespace cimserver::cimxml {

/// What all operations use, for the lifetime of the server.
struct Services {
    cimom::Cimom& cimom;
    Enumerations& enumerations;
    const std::string& hostName; ///< in the paths of replies
    std::chrono::seconds longestEnumeration;
    bool hideSecrets; ///< from users who may not write
};

/// One operation at work. The content of the reply's IMETHODRESPONSE or METHODRESPONSE goes to `reply`.
struct OperationCall {
    const Services& services;
    const cimom::RequestContext& context;
    const OpenWBEM::String& nameSpace;
    const RequestMessage& message;
    const Arguments& arguments;
    const ObjectReader& reader;
    AuditRecord& audit;
    XmlWriter& reply;
};

/// INSTANCE in `writer`, with the values that the user of the call may see.
void writeFound(const OperationCall& call, XmlWriter& writer, const OpenWBEM::CIMInstance& instance, bool classOrigin);

struct Operation {
    std::string_view name;
    bool modifies;
    void (*run)(OperationCall&); ///< throws CIMException
    std::vector<Parameter> parameters;
};

/// The operation that the message asks for: one of the table, by its name in any case, or the call of a method. Null
/// for an unknown operation.
const Operation* findOperation(const RequestMessage& message);

void getClass(OperationCall& call);
void enumerateClasses(OperationCall& call);
void enumerateClassNames(OperationCall& call);
void getQualifier(OperationCall& call);
void enumerateQualifiers(OperationCall& call);

void getInstance(OperationCall& call);
void enumerateInstances(OperationCall& call);
void enumerateInstanceNames(OperationCall& call);
void modifyInstance(OperationCall& call);
void createInstance(OperationCall& call);
void deleteInstance(OperationCall& call);
void getProperty(OperationCall& call);
void setProperty(OperationCall& call);

void associators(OperationCall& call);
void associatorNames(OperationCall& call);
void references(OperationCall& call);
void referenceNames(OperationCall& call);

void openEnumerateInstances(OperationCall& call);
void openEnumerateInstancePaths(OperationCall& call);
void pullInstancesWithPath(OperationCall& call);
void pullInstancePaths(OperationCall& call);
void closeEnumeration(OperationCall& call);

void callMethod(OperationCall& call);

} // namespace cimserver::cimxml
