// Reading objects of the CIM model in place, for code that looks at every property of every instance.
#pragma once
#include "OW_config.h"

#include "OW_CIMFwd.hpp"
#include "OW_String.hpp"

namespace OpenWBEM {

/// What the getters of an object would copy. A reference is valid until the object is changed or destroyed. Throws as
/// the getters do for a null object.
class OW_COMMON_API CIMAccess {
  public:
    static const String& text(const CIMName& name);
    /// True when the name has only ASCII letters, digits and underscores. May be false for such a name, too.
    static bool isIdentifier(const CIMName& name);

    static const CIMName& name(const CIMProperty& property);
    static const CIMName& name(const CIMQualifier& qualifier);
    static const CIMName& name(const CIMMethod& method);

    static const CIMDataType& dataType(const CIMProperty& property);
    static const CIMValue& value(const CIMProperty& property);
    static const CIMQualifierArray& qualifiers(const CIMProperty& property);

    static const CIMPropertyArray& properties(const CIMInstance& instance);
    static const CIMPropertyArray& properties(const CIMClass& cimClass);
    static const CIMPropertyArray& keys(const CIMInstance& instance);
    static const CIMPropertyArray& keys(const CIMClass& cimClass);
    static const CIMPropertyArray& keys(const CIMObjectPath& path);

    /// The property of that name; null if there is none.
    static const CIMProperty* find(const CIMPropertyArray& properties, const CIMName& name);
    static const CIMProperty* find(const CIMPropertyArray& properties, const char* name);
};

} // namespace OpenWBEM
