// Completes the instances that providers deliver, and finds what a modification changes.
#pragma once

#include "OW_CIM.hpp"

#include <optional>

namespace cimserver::cimom {

using namespace OpenWBEM; // its types are this folder's vocabulary

/// True when the list (null: any) names the property, ignoring case.
bool isWanted(const StringArray* propertyList, const String& name);

/// True for instances and classes: what a string property or parameter may hold.
bool isEmbedded(const CIMValue& value);

/// The provider's instance with
/// - the properties of the class that the provider left out, as NULL; given `covered`, those of them that it names,
/// - of all properties those that the list names (null: all),
/// - a key list with a value for each key of the class: the provider's list, its properties or `path`, the first that
///   has it.
/// Its values and qualifiers stay as they are. Throws CimError Failed for a property without any type. A key that
/// cannot be found is left out.
CIMInstance shaped(const CIMInstance& delivered, const CIMClass& cimClass, const StringArray* propertyList,
                   const CIMObjectPath& path, const std::optional<StringArray>& covered = std::nullopt);

/// The same with all keys; throws as requireKeys.
CIMInstance shapedWithKeys(const CIMInstance& delivered, const CIMClass& cimClass, const StringArray* propertyList,
                           const std::optional<StringArray>& covered = std::nullopt);

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
/// their default. Embedded instances are the same when their class and their values are. Each change is the class's
/// property with the new value. Throws CimError InvalidParameter when `modified` has another key than `path`.
Modification modificationOf(const CIMInstance& modified, const CIMInstance& previous, const CIMClass& cimClass,
                            const CIMObjectPath& path, const StringArray* propertyList, bool all);

} // namespace cimserver::cimom
