#pragma once
#include "OW_config.h"

#include "OW_CIMBase.hpp"
#include "OW_CIMNULL.hpp"
#include "OW_COWIntrusiveReference.hpp"
#include "OW_CommonFwd.hpp"
#include "OW_Types.hpp"

namespace OpenWBEM {

/// Where a CIM object manager is: protocol, host, port and file. A new one is http://127.0.0.1:5988/cimom.
class OW_COMMON_API CIMUrl : public CIMBase {
    struct Data;
    typedef SafeBool<CIMUrl>::type safe_bool;

  public:
    CIMUrl();
    explicit CIMUrl(CIMNULL_t);
    /// Parses [protocol://][user:password@]host[:port][/file[#reference]]; user and password are dropped. Missing parts
    /// are as in a new one, and so is a port that is not a number above 0. An empty text has no parts at all.
    explicit CIMUrl(const String& url);
    /// The file is stored unchanged and has no reference.
    CIMUrl(const String& protocol, const String& host, const String& file, Int32 port = 0);
    /// Like CIMUrl(url), with host, port and file of the context if that has the same protocol.
    CIMUrl(const CIMUrl& context, const String& url);
    CIMUrl(const CIMUrl& other);
    ~CIMUrl() override;
    CIMUrl& operator=(const CIMUrl& other);

    String getProtocol() const;
    String getHost() const;
    Int32 getPort() const;
    String getFile() const;
    /// What follows '#' in the file.
    String getRef() const;
    /// Same as toString().
    String getSpec() const;
    /// True if the host is this computer: 127.0.0.1 or none. "localhost" is stored as 127.0.0.1.
    bool isLocal() const;

    CIMUrl& setProtocol(const String& protocol);
    CIMUrl& setHost(const String& host);

    /// True if both have the same protocol, host, port and file.
    bool sameFile(const CIMUrl& other) const;
    /// The same and the same reference. Null equals null only.
    bool equals(const CIMUrl& other) const;
    bool operator==(const CIMUrl& other) const { return equals(other); }
    bool operator!=(const CIMUrl& other) const { return !equals(other); }
    friend OW_COMMON_API bool operator<(const CIMUrl& x, const CIMUrl& y);

    void setNull() override;
    operator safe_bool() const { return SafeBool<CIMUrl>::of(!!data_); }
    bool operator!() const { return !data_; }

    /// protocol://host:port/file[#reference]
    String toString() const override;
    /// A constant: MOF has no URLs.
    String toMOF() const override;
    void readObject(std::istream& istrm) override;
    void writeObject(std::ostream& ostrm) const override;

  private:
    COWIntrusiveReference<Data> data_;
};

/// By text; null sorts first.
OW_COMMON_API bool operator<(const CIMUrl& x, const CIMUrl& y);

} // namespace OpenWBEM
