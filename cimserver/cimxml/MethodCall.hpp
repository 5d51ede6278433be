// Calls of methods that classes declare.
#pragma once

#include "Audit.hpp"
#include "RequestMessage.hpp"
#include "XmlWriter.hpp"

#include "cimserver/operations/Cimom.hpp"

namespace cimserver::cimxml {

/// Converts the parameters by the method's declaration, invokes it and writes the content of METHODRESPONSE. Throws
/// OperationError, or what Cimom throws.
void callMethod(operations::Cimom& cimom, const operations::RequestContext& context, const RequestMessage& message,
                AuditRecord& audit, XmlWriter& reply);

} // namespace cimserver::cimxml
