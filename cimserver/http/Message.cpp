#include "cimserver/http/Message.hpp"

#include "cimserver/common/Text.hpp"

namespace cimserver::http {

const std::string* Fields::find(std::string_view name) const {
    for (const auto& field : fields_) {
        if (equalsIgnoringCase(field.first, name)) {
            return &field.second;
        }
    }
    return nullptr;
}

} // namespace cimserver::http
