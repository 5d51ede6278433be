// Interface of a C++ provider for instances that cannot be changed.

#pragma once

#include "OW_CppInstanceProviderIFC.hpp"
#include "OW_config.h"

namespace OpenWBEM {

/// Refuses to create, modify and delete instances with CIMException::FAILED.
class OW_VISIBILITY_DEFAULT OW_CPPPROVIFC_API CppReadOnlyInstanceProviderIFC : public virtual CppInstanceProviderIFC {
#ifndef OW_DISABLE_INSTANCE_MANIPULATION
  private:
    CIMObjectPath createInstance(const ProviderEnvironmentIFCRef& env, const String& ns,
                                 const CIMInstance& cimInstance) override;
    void modifyInstance(const ProviderEnvironmentIFCRef& env, const String& ns, const CIMInstance& modifiedInstance,
                        const CIMInstance& previousInstance, WBEMFlags::EIncludeQualifiersFlag includeQualifiers,
                        const StringArray* propertyList, const CIMClass& theClass) override;
    void deleteInstance(const ProviderEnvironmentIFCRef& env, const String& ns, const CIMObjectPath& cop) override;
#endif
};

} // namespace OpenWBEM
