#pragma once
#include "OW_config.h"

#include "OW_CIMBase.hpp"
#include "OW_CIMFwd.hpp"
#include "OW_String.hpp"

namespace OpenWBEM {

class CIMAccess;

/// Base of the named classes of the model. All comparisons here compare the names only, ignoring case.
class OW_COMMON_API CIMElement : public CIMBase {
  public:
    CIMElement() {}
    CIMElement(const CIMElement& other) : CIMBase(other) {}
    CIMElement& operator=(const CIMElement&) { return *this; }
    ~CIMElement() override;

    /// The name as it was set; empty if it has none.
    virtual String getName() const = 0;
    virtual void setName(const CIMName& name) = 0;

    /// The name, unless the class says otherwise.
    String toString() const override;

    /// Less than, equal to or greater than 0 when this name sorts before, with or after the other.
    int compare(const CIMElement& other);

    /// True if both have the same name.
    bool equals(const CIMElement& other);
    bool operator==(const CIMElement& other);
    bool operator!=(const CIMElement& other);
};

} // namespace OpenWBEM
