// The namespace root/interop, by which clients find out what the server offers.
#pragma once

#include "cimserver/provider/ProviderHost.hpp"
#include "cimserver/schema/Repository.hpp"

namespace cimserver::cimom {

/// Adds the namespace root/interop (alias interop) with the classes CIM_Namespace, one instance for each namespace and
/// alias, and CIM_ObjectManager, one instance, with the provider of both, and the classes of profiles, without
/// instances. Call it before compiling another schema, so that a schema for "interop" finds the alias. The repository
/// must outlive the host.
void addInterop(schema::Repository& repository, provider::ProviderHost& host);

} // namespace cimserver::cimom
