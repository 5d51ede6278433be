// The classes and methods that a method provider serves.

#pragma once

#include "OW_ProviderInfoBase.hpp"
#include "OW_config.h"

namespace OpenWBEM {

class OW_PROVIFC_API MethodProviderInfo {
  public:
    /// The given methods of a class, or all without any, in the given namespaces, or in all without any.
    struct ClassInfo {
        explicit ClassInfo(const String& className_) : className(className_) {}
        ClassInfo(const String& className_, const StringArray& namespaces_, const StringArray& methods_)
            : className(className_), namespaces(namespaces_), methods(methods_) {}

        String className;
        StringArray namespaces;
        StringArray methods;
    };
    typedef Array<ClassInfo> ClassInfoArray;

    /// Adds all methods of the class in all namespaces.
    void addInstrumentedClass(const String& className) { m_info.addInstrumentedClass(className); }
    void addInstrumentedClass(const ClassInfo& classInfo) { m_info.addInstrumentedClass(classInfo); }
    const ClassInfoArray& getClassInfo() const { return m_info.getClassInfo(); }
    /// The provider's id.
    void setProviderName(const String& name) { m_info.setProviderName(name); }
    String getProviderName() const { return m_info.getProviderName(); }

  private:
    ProviderInfoBase<ClassInfo> m_info;
};

} // namespace OpenWBEM
