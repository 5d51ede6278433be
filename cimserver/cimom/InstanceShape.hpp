// Makes what a provider delivers fit for clients, and finds what a modification changes.
#pragma once

#include "OW_CIM.hpp"
#include "OW_WBEMFlags.hpp"

namespace cimserver::cimom {

/// True when the list (null: any) names the property, ignoring case.
bool isWanted(const OpenWBEM::StringArray* propertyList, const OpenWBEM::String& name);

/// The provider's instance with
/// - the properties of the class that the provider left out, as NULL,
/// - of all properties those that the list names (null: all),
/// - a key list with a value for each key of the class: the provider's list, its properties or `path`, the first that
///   has it.
/// Its values and qualifiers stay as they are. Throws CimError Failed for a property without any type. A key that
/// cannot be found is left out.
OpenWBEM::CIMInstance shaped(const OpenWBEM::CIMInstance& delivered, const OpenWBEM::CIMClass& cimClass,
                             const OpenWBEM::StringArray* propertyList, const OpenWBEM::CIMObjectPath& path);

/// The same with all keys; throws as requireKeys.
OpenWBEM::CIMInstance shapedWithKeys(const OpenWBEM::CIMInstance& delivered, const OpenWBEM::CIMClass& cimClass,
                                     const OpenWBEM::StringArray* propertyList);

/// Returns the provider's instance; throws CimError Failed when it is none.
const OpenWBEM::CIMInstance& requireInstance(const OpenWBEM::CIMInstance& delivered);

/// Throws CimError Failed when the instance's (or the path's) keys lack one of the class: nobody could address it.
void requireKeys(const OpenWBEM::CIMPropertyArray& keys, const OpenWBEM::CIMClass& cimClass);

/// What a provider is handed by a modification.
struct Modification {
    OpenWBEM::CIMInstance instance;
    OpenWBEM::CIMPropertyArray changes; ///< the properties in it that are to change
    OpenWBEM::StringArray names;        ///< of those

    bool empty() const { return names.empty(); }
};

/// The instance holds the key properties, by which providers find their object, and then the changes: the properties of
/// `modified`, in their order, whose value differs from `previous` (with `all` also the others), or, given a list,
/// those it names and after them those it names that `modified` lacks, with their default. Each is the class's property
/// with the new value. Throws CimError InvalidParameter when `modified` has another key than `path`.
Modification modificationOf(const OpenWBEM::CIMInstance& modified, const OpenWBEM::CIMInstance& previous,
                            const OpenWBEM::CIMClass& cimClass, const OpenWBEM::CIMObjectPath& path,
                            const OpenWBEM::StringArray* propertyList, bool all);

} // namespace cimserver::cimom
