// The flags of CIM operations. The "no" value of each two-valued flag is 0.

#pragma once

#include "OW_config.h"

namespace OpenWBEM {

namespace WBEMFlags {

/// Whether subclasses and what they add are wanted too.
enum EDeepFlag { E_SHALLOW, E_DEEP };

/// Whether only what the class itself declares or overrides is wanted.
enum ELocalOnlyFlag { E_NOT_LOCAL_ONLY, E_LOCAL_ONLY };

enum EIncludeQualifiersFlag { E_EXCLUDE_QUALIFIERS, E_INCLUDE_QUALIFIERS };

/// Whether an element carries the name of the class that introduced it.
enum EIncludeClassOriginFlag { E_EXCLUDE_CLASS_ORIGIN, E_INCLUDE_CLASS_ORIGIN };

enum EEnumSubclassesFlag { E_DONT_ENUM_SUBCLASSES, E_ENUM_SUBCLASSES };

enum EOperationResultFlag { E_FAILED, E_SUCCESS };

/// The kinds of operations.
enum EOperationFlag {
    E_CREATE_NAMESPACE,
    E_DELETE_NAMESPACE,
    E_ENUM_NAMESPACE,
    E_GET_QUALIFIER_TYPE,
    E_ENUM_QUALIFIER_TYPES,
    E_DELETE_QUALIFIER_TYPE,
    E_SET_QUALIFIER_TYPE,
    E_GET_CLASS,
    E_DELETE_CLASS,
    E_CREATE_CLASS,
    E_MODIFY_CLASS,
    E_ENUM_CLASSES,
    E_ENUM_CLASS_NAMES,
    E_ENUM_INSTANCES,
    E_ENUM_INSTANCE_NAMES,
    E_GET_INSTANCE,
    E_DELETE_INSTANCE,
    E_CREATE_INSTANCE,
    E_MODIFY_INSTANCE,
    E_SET_PROPERTY,
    E_GET_PROPERTY,
    E_INVOKE_METHOD,
    E_ASSOCIATOR_NAMES,
    E_ASSOCIATORS,
    E_ASSOCIATORS_CLASSES,
    E_REFERENCE_NAMES,
    E_REFERENCES,
    E_REFERENCES_CLASSES,
    E_EXEC_QUERY,
    E_EXPORT_INDICATION
};

} // namespace WBEMFlags

} // namespace OpenWBEM
