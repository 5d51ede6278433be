#pragma once
#include "OW_config.h"

#include "OW_CIMElement.hpp"
#include "OW_CIMFwd.hpp"
#include "OW_CIMNULL.hpp"
#include "OW_CIMName.hpp"
#include "OW_COWIntrusiveReference.hpp"
#include "OW_WBEMFlags.hpp"

namespace OpenWBEM {

/// A method that a class declares: name, return type, parameters in order, qualifiers and origin.
class OW_COMMON_API CIMMethod : public CIMElement {
    struct Data;
    typedef SafeBool<CIMMethod>::type safe_bool;

  public:
    CIMMethod();
    explicit CIMMethod(CIMNULL_t);
    explicit CIMMethod(const CIMName& name);
    explicit CIMMethod(const char* name);
    CIMMethod(const CIMMethod& other);
    ~CIMMethod() override;
    CIMMethod& operator=(const CIMMethod& other);

    String getName() const override;
    void setName(const CIMName& name) override;

    CIMQualifierArray getQualifiers() const;
    /// A null qualifier if there is none of that name.
    CIMQualifier getQualifier(const CIMName& name) const;
    /// Appends the qualifier. Throws CIMException ALREADY_EXISTS if there is one of that name.
    CIMMethod& addQualifier(const CIMQualifier& qualifier);
    CIMMethod& setQualifiers(const CIMQualifierArray& qualifiers);

    /// The class that first declared the method.
    String getOriginClass() const;
    CIMMethod& setOriginClass(const CIMName& originClass);

    CIMMethod& addParameter(const CIMParameter& parameter);
    CIMMethod& setParameters(const CIMParameterArray& parameters);
    CIMParameterArray getParameters() const;
    /// The input parameters: those whose In qualifier is missing or true.
    CIMParameterArray getINParameters() const;
    /// The output parameters: those with Out(true). A parameter can be both.
    CIMParameterArray getOUTParameters() const;

    CIMMethod& setReturnType(const CIMDataType& returnType);
    CIMDataType getReturnType() const;
    /// The size of the return type: 1 for a scalar, -1 for an array of any size.
    Int32 getReturnDataSize() const;

    CIMMethod& setOverridingMethod(const CIMName& method);
    String getOverridingMethod() const;
    /// Whether the method is inherited unchanged from a superclass.
    CIMMethod& setPropagated(bool propagated = true);
    bool getPropagated() const;

    /// A copy without what the flags exclude; null if only local methods are asked for and this one is propagated.
    CIMMethod clone(WBEMFlags::ELocalOnlyFlag localOnly = WBEMFlags::E_NOT_LOCAL_ONLY,
                    WBEMFlags::EIncludeQualifiersFlag includeQualifiers = WBEMFlags::E_INCLUDE_QUALIFIERS,
                    WBEMFlags::EIncludeClassOriginFlag includeClassOrigin = WBEMFlags::E_INCLUDE_CLASS_ORIGIN) const;

    void setNull() override;
    operator safe_bool() const { return SafeBool<CIMMethod>::of(!!data_); }
    bool operator!() const { return !data_; }

    /// CIMMethod NAME = and the name
    String toString() const override;
    /// The declaration in one line: qualifiers, return type, name and parameters.
    String toMOF() const override;
    void readObject(std::istream& istrm) override;
    void writeObject(std::ostream& ostrm) const override;

    friend class CIMAccess;
    friend OW_COMMON_API bool operator<(const CIMMethod& x, const CIMMethod& y);

  private:
    COWIntrusiveReference<Data> data_;
};

/// Orders by everything an object holds; null sorts first.
OW_COMMON_API bool operator<(const CIMMethod& x, const CIMMethod& y);

} // namespace OpenWBEM
