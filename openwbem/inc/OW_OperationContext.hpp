// Data that goes along with one operation of a client.

#pragma once

#include "OW_CommonFwd.hpp"
#include "OW_Exception.hpp"
#include "OW_IntrusiveCountableBase.hpp"
#include "OW_IntrusiveReference.hpp"
#include "OW_String.hpp"
#include "OW_config.h"
#include <map>

namespace OpenWBEM {

class UserInfo;

/// There is no data under the key, or it is not a text; the message is the key.
OW_DECLARE_APIEXCEPTION(ContextDataNotFound, OW_COMMON_API)

/// Keeps data under keys for the duration of one operation. Belongs to the thread that serves the operation.
class OW_COMMON_API OperationContext {
  public:
    /// Base of what can be kept.
    class OW_VISIBILITY_DEFAULT Data : public IntrusiveCountableBase {
      public:
        ~Data() override;
    };
    typedef IntrusiveReference<Data> DataRef;

    /// Keys that the object manager uses.
    static const char* const USER_NAME;
    static const char* const USER_PASSWD;
    static const char* const HTTP_PATH;
    static const char* const CURUSER_UIDKEY;
    static const char* const BYPASS_LOCKERKEY;

    OperationContext();
    ~OperationContext();

    /// Keeps data under the key, replacing what was there.
    void setData(const String& key, const DataRef& data);
    /// What is kept under the key; null if there is nothing.
    DataRef getData(const String& key) const;
    void removeData(const String& key);
    bool keyHasData(const String& key) const;
    /// The same for texts. getStringData() throws ContextDataNotFoundException when there is none.
    void setStringData(const String& key, const String& str);
    String getStringData(const String& key) const;
    String getStringDataWithDefault(const String& key, const String& def = String()) const;
    /// The user named under USER_NAME; without one the object manager itself.
    UserInfo getUserInfo() const;

  private:
    OperationContext(const OperationContext&);
    OperationContext& operator=(const OperationContext&);

    std::map<String, DataRef> data_;
};

} // namespace OpenWBEM
