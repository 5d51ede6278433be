// The instances that the schema declares ("instance of" in MOF), in the form of a provider: the one of all classes that
// have no other.
#pragma once

#include "cimserver/cim/CimError.hpp"
#include "cimserver/provider/ProviderHost.hpp"
#include "cimserver/schema/Repository.hpp"

#include "OW_CppAssociatorProviderIFC.hpp"

namespace cimserver::cimom {

/// Reads are answered from memory; creations and changes throw CimError NotSupported. `missing` is the code for an
/// instance that is not declared. The repository must outlive the provider.
OpenWBEM::IntrusiveReference<OpenWBEM::CppAssociatorProviderIFC> declaredProvider(const schema::Repository& repository,
                                                                                  Status missing = Status::NotFound);

/// Logs a warning for each class whose declared instances its provider keeps out of sight.
void warnOfHiddenInstances(const schema::Repository& repository, const provider::ProviderHost& host);

} // namespace cimserver::cimom
