#include "cimserver/cimxml/Audit.hpp"

#include "cimserver/cim/CimError.hpp"
#include "cimserver/cimxml/Characters.hpp"
#include "cimserver/common/Log.hpp"
#include "cimserver/common/Text.hpp"

namespace cimserver::cimxml {

using namespace OpenWBEM;

namespace {

constexpr std::size_t kLongestValue = 200;

std::string shown(std::string_view text) {
    return std::string(text.substr(0, kLongestValue)) + (text.size() > kLongestValue ? "..." : "");
}

} // namespace

AuditRecord::AuditRecord(const cimom::RequestContext& context, std::string_view operation, std::string_view nameSpace)
    : head_("user=" + (context.user.empty() ? std::string("-") : context.user) + " peer=" + context.peer + " " +
            shown(operation)),
      target_(shown(nameSpace)) {}

void AuditRecord::target(const CIMObjectPath& path) {
    target_ = toStd(path.getNameSpace()) + ":" + shown(toStd(path.modelPath()));
}

void AuditRecord::value(const String& name, const CIMValue& value) {
    const std::string_view spelled = view(name);
    values_ += values_.empty() ? " " : ", ";
    values_ += shown(spelled) + "=";
    const std::string text = value ? toStd(value.toString()) : "NULL";
    // The value too: an embedded instance has properties of its own.
    const bool secret = containsIgnoringCase(spelled, "password") || containsIgnoringCase(text, "password");
    values_ += secret ? "***" : shown(text);
}

void AuditRecord::write(const Outcome& outcome) const {
    const bool done = outcome.code == 0;
    const std::string result = done ? "ok" : "error " + std::to_string(outcome.code) + " " + outcome.description;
    log::audit(head_ + " " + target_ + values_ + " -> " + shown(result));
}

} // namespace cimserver::cimxml
