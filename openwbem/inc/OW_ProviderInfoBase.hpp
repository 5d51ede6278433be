// What a provider reports about the classes that it serves.

#pragma once

#include "OW_Array.hpp"
#include "OW_String.hpp"
#include "OW_config.h"

namespace OpenWBEM {

/// A class in the given namespaces (none given: all).
struct OW_PROVIFC_API InstClassInfo {
    explicit InstClassInfo(const String& name) : className(name) {}
    InstClassInfo(const String& name, const StringArray& inNamespaces) : className(name), namespaces(inNamespaces) {}

    String className;
    StringArray namespaces;
};

/// Collects the classes of one provider. A subclass of a reported class is not served unless it is reported too.
template <class ClassInfoType>
class ProviderInfoBase {
  public:
    typedef ClassInfoType ClassInfo;
    typedef Array<ClassInfo> ClassInfoArray;

    ProviderInfoBase() = default;
    ProviderInfoBase(const ProviderInfoBase&) = default;
    ProviderInfoBase& operator=(const ProviderInfoBase&) = default;
    virtual ~ProviderInfoBase() {}

    /// Adds the class in all namespaces.
    void addInstrumentedClass(const String& className) { classInfo_.push_back(ClassInfo(className)); }
    void addInstrumentedClass(const ClassInfo& classInfo) { classInfo_.push_back(classInfo); }
    const ClassInfoArray& getClassInfo() const { return classInfo_; }
    /// The provider's id.
    void setProviderName(const String& name) { name_ = name; }
    String getProviderName() const { return name_; }

  private:
    ClassInfoArray classInfo_;
    String name_;
};

} // namespace OpenWBEM
