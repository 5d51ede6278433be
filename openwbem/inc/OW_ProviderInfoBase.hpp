// What a provider reports about the classes that it serves.

#pragma once

#include "OW_Array.hpp"
#include "OW_String.hpp"
#include "OW_config.h"

namespace OpenWBEM {

/// A class, in the given namespaces or, without any, in all.
struct OW_PROVIFC_API InstClassInfo {
    explicit InstClassInfo(const String& className_) : className(className_) {}
    InstClassInfo(const String& className_, const StringArray& namespaces_)
        : className(className_), namespaces(namespaces_) {}

    String className;
    StringArray namespaces;
};

/// Collects the classes of one provider. A subclass of a reported class is not served unless it is reported too.
template <class ClassInfoType>
class ProviderInfoBase {
  public:
    typedef ClassInfoType ClassInfo;
    typedef Array<ClassInfo> ClassInfoArray;

    /// Adds the class in all namespaces.
    void addInstrumentedClass(const String& className) { m_classInfo.push_back(ClassInfo(className)); }
    void addInstrumentedClass(const ClassInfo& classInfo) { m_classInfo.push_back(classInfo); }
    const ClassInfoArray& getClassInfo() const { return m_classInfo; }
    /// The provider's id.
    void setProviderName(const String& name) { m_name = name; }
    String getProviderName() const { return m_name; }

  private:
    ClassInfoArray m_classInfo;
    String m_name;
};

} // namespace OpenWBEM
