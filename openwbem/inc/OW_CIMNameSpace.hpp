#pragma once
#include "OW_config.h"

#include "OW_CIMBase.hpp"
#include "OW_CIMFwd.hpp"
#include "OW_CIMNULL.hpp"
#include "OW_CIMUrl.hpp"
#include "OW_COWIntrusiveReference.hpp"
#include "OW_String.hpp"

namespace OpenWBEM {

/// A namespace and the object manager it is in. A new one is empty, in the local manager.
class OW_COMMON_API CIMNameSpace : public CIMBase {
    struct Data;
    typedef SafeBool<CIMNameSpace>::type safe_bool;

  public:
    CIMNameSpace();
    explicit CIMNameSpace(CIMNULL_t);
    /// Blanks around the name and '/' at its front are removed, as by setNameSpace().
    CIMNameSpace(const CIMUrl& url, const String& nameSpace);
    explicit CIMNameSpace(const String& nameSpace);
    explicit CIMNameSpace(const char* nameSpace);
    CIMNameSpace(const CIMNameSpace& other);
    ~CIMNameSpace() override;
    CIMNameSpace& operator=(const CIMNameSpace& other);

    String getNameSpace() const;
    String getHost() const;
    String getProtocol() const;
    String getFileName() const;
    Int32 getPortNumber() const;
    CIMUrl getHostUrl() const;
    bool isLocal() const;

    /// Removes blanks around the name and every '/' at its front.
    CIMNameSpace& setNameSpace(const String& nameSpace);
    CIMNameSpace& setHost(const String& host);
    CIMNameSpace& setProtocol(const String& protocol);
    CIMNameSpace& setHostUrl(const CIMUrl& url);

    void setNull() override;
    operator safe_bool() const { return SafeBool<CIMNameSpace>::of(!!data_); }
    bool operator!() const { return !data_; }

    /// The namespace alone.
    String toString() const override;
    /// A constant: MOF cannot express it.
    String toMOF() const override;
    void readObject(std::istream& istrm) override;
    void writeObject(std::ostream& ostrm) const override;
    friend OW_COMMON_API bool operator==(const CIMNameSpace& x, const CIMNameSpace& y);
    friend bool operator!=(const CIMNameSpace& x, const CIMNameSpace& y) { return !(x == y); }

  private:
    COWIntrusiveReference<Data> data_;
};

/// Same namespace, ignoring case, and same object manager. Null equals null only.
OW_COMMON_API bool operator==(const CIMNameSpace& x, const CIMNameSpace& y);

} // namespace OpenWBEM
