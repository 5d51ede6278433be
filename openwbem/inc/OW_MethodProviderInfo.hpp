// The classes and methods that a method provider serves.

#pragma once

#include "OW_ProviderInfoBase.hpp"
#include "OW_config.h"

namespace OpenWBEM {

class OW_PROVIFC_API MethodProviderInfo {
  public:
    /// The given methods of a class (none given: all) in the given namespaces (none given: all).
    struct ClassInfo {
        explicit ClassInfo(const String& name) : className(name) {}
        ClassInfo(const String& name, const StringArray& inNamespaces, const StringArray& onlyMethods)
            : className(name), namespaces(inNamespaces), methods(onlyMethods) {}

        String className;
        StringArray namespaces;
        StringArray methods;
    };
    typedef Array<ClassInfo> ClassInfoArray;

    /// Adds all methods of the class in all namespaces.
    void addInstrumentedClass(const String& className) { info_.addInstrumentedClass(className); }
    void addInstrumentedClass(const ClassInfo& classInfo) { info_.addInstrumentedClass(classInfo); }
    const ClassInfoArray& getClassInfo() const { return info_.getClassInfo(); }
    /// The provider's id.
    void setProviderName(const String& name) { info_.setProviderName(name); }
    String getProviderName() const { return info_.getProviderName(); }

  private:
    ProviderInfoBase<ClassInfo> info_;
};

typedef Array<MethodProviderInfo> MethodProviderInfoArray;

} // namespace OpenWBEM
