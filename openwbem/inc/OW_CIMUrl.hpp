#pragma once
#include "OW_config.h"

#include "OW_CIMBase.hpp"
#include "OW_CIMFwd.hpp"
#include "OW_CIMNULL.hpp"
#include "OW_COWIntrusiveReference.hpp"
#include "OW_String.hpp"

namespace OpenWBEM {

/// Where a CIM object manager is: protocol, host, port and file. A new one is the local host, 127.0.0.1.
class OW_COMMON_API CIMUrl : public CIMBase {
    struct Data;
    typedef SafeBool<CIMUrl>::type safe_bool;

  public:
    CIMUrl();
    explicit CIMUrl(CIMNULL_t);
    /// Takes [protocol://]host[:port][/file] apart; an IPv6 address is written in brackets. Throws CIMException
    /// INVALID_PARAMETER if the port is not a number from 1 to 65535.
    explicit CIMUrl(const String& url);
    explicit CIMUrl(const char* url);
    CIMUrl(const CIMUrl& other);
    ~CIMUrl() override;
    CIMUrl& operator=(const CIMUrl& other);

    String getProtocol() const;
    String getHost() const;
    /// The port, 0 if none was given.
    Int32 getPortNumber() const;
    String getFileName() const;
    /// True if the host is this computer: no name, localhost, 127.0.0.1 or ::1.
    bool isLocal() const;

    CIMUrl& setProtocol(const String& protocol);
    CIMUrl& setHost(const String& host);
    /// 0 means none.
    CIMUrl& setPortNumber(Int32 port);
    CIMUrl& setFileName(const String& file);

    bool equals(const CIMUrl& other) const;

    void setNull() override;
    operator safe_bool() const { return SafeBool<CIMUrl>::of(!!m_pdata); }
    bool operator!() const { return !m_pdata; }

    /// protocol://host[:port][/file]
    String toString() const override;
    String toMOF() const override;
    void readObject(std::istream& istrm) override;
    void writeObject(std::ostream& ostrm) const override;

  private:
    COWIntrusiveReference<Data> m_pdata;
};

/// Hosts and protocols compare in any case of letters. Null equals null only.
OW_COMMON_API bool operator==(const CIMUrl& x, const CIMUrl& y);
inline bool operator!=(const CIMUrl& x, const CIMUrl& y) {
    return !(x == y);
}

} // namespace OpenWBEM
