#include "OW_OperationContext.hpp"

#include "OW_ExceptionIds.hpp"
#include "OW_UserInfo.hpp"

namespace OpenWBEM {

OW_DEFINE_EXCEPTION_WITH_ID(ContextDataNotFound)

namespace {
class StringData : public OperationContext::Data {
  public:
    explicit StringData(const String& text) : text_(text) {}
    const String& text() const { return text_; }

  private:
    String text_;
};

IntrusiveReference<StringData> asText(const OperationContext::DataRef& data) {
    return data.cast_to<StringData>();
}
} // namespace

const char* const OperationContext::USER_NAME = "USER_NAME";
const char* const OperationContext::USER_PASSWD = "USER_PASSWD";
const char* const OperationContext::HTTP_PATH = "HTTP_PATH";
const char* const OperationContext::CURUSER_UIDKEY = "CURUSER_UIDKEY";
const char* const OperationContext::BYPASS_LOCKERKEY = "BYPASS_LOCKER";

OperationContext::Data::~Data() = default;
OperationContext::OperationContext() = default;
OperationContext::~OperationContext() = default;

void OperationContext::setData(const String& key, const DataRef& data) {
    data_[key] = data;
}

OperationContext::DataRef OperationContext::getData(const String& key) const {
    const auto found = data_.find(key);
    return found == data_.end() ? DataRef() : found->second;
}

void OperationContext::removeData(const String& key) {
    data_.erase(key);
}

bool OperationContext::keyHasData(const String& key) const {
    return data_.count(key) != 0;
}

void OperationContext::setStringData(const String& key, const String& str) {
    data_[key] = new StringData(str);
}

String OperationContext::getStringData(const String& key) const {
    const auto data = asText(getData(key));
    if (!data) {
        OW_THROW(ContextDataNotFoundException, key.c_str());
    }
    return data->text();
}

String OperationContext::getStringDataWithDefault(const String& key, const String& def) const {
    const auto data = asText(getData(key));
    return data ? data->text() : def;
}

UserInfo OperationContext::getUserInfo() const {
    const auto name = asText(getData(USER_NAME));
    return name ? UserInfo(name->text()) : UserInfo();
}

} // namespace OpenWBEM
