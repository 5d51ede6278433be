// Result handlers that collect the results.

#pragma once

#include "OW_Array.hpp"
#include "OW_Enumeration.hpp"
#include "OW_ResultHandlerIFC.hpp"
#include "OW_StringEnumeration.hpp"
#include "OW_config.h"

namespace OpenWBEM {

/// Appends each result to an Array, which must outlive the handler.
template <typename T>
class OW_VISIBILITY_DEFAULT ResultArrayBuilder : public ResultHandlerIFC<T> {
  public:
    explicit ResultArrayBuilder(Array<T>& array) : array_(array) {}

  protected:
    void doHandle(const T& t) override { array_.push_back(t); }

  private:
    Array<T>& array_;
};

/// Adds each result to an Enumeration, which must outlive the handler.
template <typename T>
class OW_VISIBILITY_DEFAULT ResultEnumBuilder : public ResultHandlerIFC<T> {
  public:
    explicit ResultEnumBuilder(Enumeration<T>& enumeration) : enumeration_(enumeration) {}

  protected:
    void doHandle(const T& t) override { enumeration_.addElement(t); }

  private:
    Enumeration<T>& enumeration_;
};

typedef ResultArrayBuilder<CIMClass> CIMClassArrayBuilder;
typedef ResultArrayBuilder<CIMInstance> CIMInstanceArrayBuilder;
typedef ResultArrayBuilder<CIMObjectPath> CIMObjectPathArrayBuilder;
typedef ResultArrayBuilder<CIMQualifierType> CIMQualifierTypeArrayBuilder;
typedef ResultArrayBuilder<String> StringArrayBuilder;

typedef ResultEnumBuilder<CIMClass> CIMClassEnumBuilder;
typedef ResultEnumBuilder<CIMInstance> CIMInstanceEnumBuilder;
typedef ResultEnumBuilder<CIMObjectPath> CIMObjectPathEnumBuilder;
typedef ResultEnumBuilder<CIMQualifierType> CIMQualifierTypeEnumBuilder;
typedef ResultEnumBuilder<String> StringEnumBuilder;

} // namespace OpenWBEM
