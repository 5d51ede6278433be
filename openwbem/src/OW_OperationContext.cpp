#include "OW_OperationContext.hpp"

namespace OpenWBEM {

OW_DEFINE_EXCEPTION(ContextDataNotFound)

namespace {
class StringData : public OperationContext::Data {
  public:
    explicit StringData(const String& text) : m_text(text) {}
    const String& text() const { return m_text; }

  private:
    String m_text;
};

IntrusiveReference<StringData> asText(const OperationContext::DataRef& data) {
    return data.cast_to<StringData>();
}
} // namespace

OperationContext::Data::~Data() = default;
OperationContext::OperationContext() = default;
OperationContext::~OperationContext() = default;

void OperationContext::setData(const String& key, const DataRef& data) {
    m_data[key] = data;
}

OperationContext::DataRef OperationContext::getData(const String& key) const {
    const auto found = m_data.find(key);
    return found == m_data.end() ? DataRef() : found->second;
}

void OperationContext::removeData(const String& key) {
    m_data.erase(key);
}

bool OperationContext::keyHasData(const String& key) const {
    return m_data.count(key) != 0;
}

void OperationContext::setStringData(const String& key, const String& str) {
    m_data[key] = new StringData(str);
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

} // namespace OpenWBEM
