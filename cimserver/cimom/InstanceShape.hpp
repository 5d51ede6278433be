// Completes the instances that providers deliver, and finds what a modification changes.
#pragma once

#include "OW_CIM.hpp"
#include "OW_WBEMFlags.hpp"

namespace cimserver::cimom {

using namespace OpenWBEM; // its types are this folder's vocabulary

/// True when the list (null: any) names the property, ignoring case.
bool isWanted(const StringArray* propertyList, const String& name);

/// The provider's instance with
/// - the class's properties that the provider left out, as NULL,
/// - only the properties that the list names (null: all),
/// - a key list: each key of the class with its value from the provider's list, its properties or `path`, whichever has
///   it first.
/// Values and qualifiers stay unchanged. Throws CimError Failed for a property without a type. A key that cannot be
/// found is left out.
CIMInstance shaped(const CIMInstance& delivered, const CIMClass& cimClass, const StringArray* propertyList,
                   const CIMObjectPath& path);

/// Like shaped, without a path; throws like requireKeys when a key is missing.
CIMInstance shapedWithKeys(const CIMInstance& delivered, const CIMClass& cimClass, const StringArray* propertyList);

/// Returns the provider's instance; throws CimError Failed when it is NULL.
const CIMInstance& requireInstance(const CIMInstance& delivered);

/// Throws CimError Failed when the keys of an instance or a path lack one of the class: nobody could address it.
void requireKeys(const CIMPropertyArray& keys, const CIMClass& cimClass);

/// What a modification passes to the provider.
struct Modification {
    CIMInstance instance;
    CIMPropertyArray changes; ///< the properties in it that are to change
    StringArray names;        ///< the names of the changes

    bool empty() const { return names.empty(); }
};

/// The instance holds the key properties, by which providers find their object, and then the changes. Without a list
/// these are the properties of `modified`, in their order, whose value differs from `previous` (with `all` the others
/// too). With a list they are those of `modified` that it names, and then those it names that `modified` lacks, with
/// their default. Each is the class's property with the new value. Throws CimError InvalidParameter when `modified` has
/// another key than `path`.
Modification modificationOf(const CIMInstance& modified, const CIMInstance& previous, const CIMClass& cimClass,
                            const CIMObjectPath& path, const StringArray* propertyList, bool all);

} // namespace cimserver::cimom
