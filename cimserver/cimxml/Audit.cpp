#include "cimserver/cimxml/Audit.hpp"

#include "cimserver/cim/CimError.hpp"
#include "cimserver/cimxml/Characters.hpp"
#include "cimserver/cimxml/Masking.hpp"
#include "cimserver/cimxml/ValueText.hpp"
#include "cimserver/cimxml/XmlDocument.hpp"
#include "cimserver/common/AuditLog.hpp"
#include "cimserver/common/Log.hpp"
#include "cimserver/common/Text.hpp"

#include <unistd.h>

#include <algorithm>
#include <atomic>
#include <sstream>

namespace cimserver::cimxml {

using namespace OpenWBEM;

namespace {

constexpr std::size_t kLongestText = 1024;
constexpr std::size_t kLongestList = std::size_t{48} * 1024;
constexpr std::size_t kUsualLine = 256;
constexpr std::string_view kMask = "***";

bool isWordCharacter(char c) {
    return (c >= 'A' && c <= 'Z') || (c >= 'a' && c <= 'z') || (c >= '0' && c <= '9') || c == '_' || c == '.';
}

bool isNameCharacter(char c) {
    return isWordCharacter(c) || std::string_view("/:[]%-").find(c) != std::string_view::npos;
}

/// In double quotes, with backslashes before quotes and backslashes. An outcome follows "->", so ">" is escaped, too.
std::string quoted(std::string_view text) {
    if (text.size() <= kLongestText && std::all_of(text.begin(), text.end(), isWordCharacter)) {
        std::string plain;
        plain.reserve(text.size() + 2);
        plain.append(1, '"').append(text).append(1, '"');
        return plain;
    }
    const std::string shown = withoutUserInfo(text); // before an end that gives user and password away is cut off
    std::string result = shown.substr(0, kLongestText);
    for (auto at = result.find_first_of("\"\\"); at != std::string::npos; at = result.find_first_of("\"\\", at + 2)) {
        result.insert(at, 1, '\\');
    }
    result = log::escaped(result);
    for (auto at = result.find('>'); at != std::string::npos; at = result.find('>', at)) {
        result.replace(at, 1, "\\x3e");
    }
    return '"' + result + '"' + (shown.size() > kLongestText ? "..." : "");
}

/// Quoted unless it is as names are.
std::string& appendName(std::string& to, std::string_view text) {
    const bool plain =
        !text.empty() && text.size() <= kLongestText && std::all_of(text.begin(), text.end(), isNameCharacter);
    return plain ? to.append(text) : to.append(quoted(text));
}

std::string named(std::string_view text) {
    std::string name;
    appendName(name, text);
    return name;
}

std::string assigned(std::string_view name, std::string_view asShown, std::string_view text) {
    std::string assignment;
    assignment.reserve(name.size() + 1 + asShown.size());
    appendName(assignment, name).append("=").append(holdsSecret(name) || holdsSecret(text) ? kMask : asShown);
    return assignment;
}

/// Appends an item, unless the list has become too long.
void append(std::string& list, const char* separator, std::string item) {
    if (list.size() >= kLongestList) {
        return;
    }
    if (list.empty()) {
        list = std::move(item);
    } else {
        list.append(separator).append(item);
    }
    list.append(list.size() < kLongestList ? "" : "...");
}

/// NAME="value" of an element with the value inside. A value of a less simple kind is shown as its XML.
std::string assignmentText(pugi::xml_node element, std::string_view name) {
    const pugi::xml_node value = lastElement(element);
    const std::string_view kind = value.name();
    if (!value || kind == "QUALIFIER") {
        return assigned(name, "NULL", "");
    }
    std::ostringstream xml;
    value.print(xml, "", pugi::format_raw);
    const bool simple = kind == "VALUE" || kind == "KEYVALUE";
    const std::string text = simple ? textOf(value) : xml.str();
    return assigned(name, quoted(text), text);
}

/// Class.Key="value" of an INSTANCENAME, and the class of a CLASSNAME or INSTANCE.
std::string objectText(pugi::xml_node element) {
    const std::string_view kind = element.name();
    std::string keys;
    for (pugi::xml_node key = kind == "INSTANCENAME" ? firstElement(element) : pugi::xml_node(); key;
         key = nextElement(key)) {
        const bool binding = std::string_view(key.name()) == "KEYBINDING"; // else it could be a secret
        append(keys, ",", binding ? assignmentText(key, key.attribute("NAME").value()) : std::string(kMask));
    }
    return named(element.attribute(kind == "CLASSNAME" ? "NAME" : "CLASSNAME").value()) + (keys.empty() ? "" : ".") +
           keys;
}

/// What a request that changes something is about.
struct ChangeRequest {
    pugi::xml_node object;   ///< INSTANCENAME, CLASSNAME, or the INSTANCE that is to be created
    pugi::xml_node values;   ///< the parent of the values: an INSTANCE or a METHODCALL
    pugi::xml_node property; ///< SetProperty's parameters
    pugi::xml_node value;
};

ChangeRequest changeRequestIn(const RequestMessage& message) {
    ChangeRequest change;
    if (message.isMethodCall()) {
        return {message.target(), message.call(), {}, {}};
    }
    for (const pugi::xml_node parameter : message.call().children("IPARAMVALUE")) {
        const std::string_view name = parameter.attribute("NAME").value();
        const pugi::xml_node content = lastElement(parameter);
        const std::string_view kind = content.name();
        if (kind == "VALUE.NAMEDINSTANCE") {
            change.object = content.child("INSTANCENAME");
            change.values = content.child("INSTANCE");
        } else if (kind == "INSTANCE") {
            change.object = change.values = content;
        } else if (kind == "INSTANCENAME") {
            change.object = content;
        } else if (equalsIgnoringCase(name, "PropertyName")) {
            change.property = content;
        } else if (equalsIgnoringCase(name, "NewValue")) {
            change.value = parameter;
        }
    }
    return change;
}

/// The values of the request.
std::string sentValues(const ChangeRequest& change) {
    std::string list;
    if (change.property) {
        append(list, ", ", assignmentText(change.value, textOf(change.property)));
    }
    for (pugi::xml_node one = firstElement(change.values); one; one = nextElement(one)) {
        const std::string_view kind = one.name();
        if (kind.substr(0, 8) == "PROPERTY" || kind == "PARAMVALUE") {
            append(list, ", ", assignmentText(one, one.attribute("NAME").value()));
        }
    }
    return list;
}

std::string valueText(const CIMValue& value) {
    if (!value) {
        return "NULL";
    }
    const auto type = value.getType();
    if (type == CIMDataType::REFERENCE || type == CIMDataType::EMBEDDEDCLASS || type == CIMDataType::EMBEDDEDINSTANCE) {
        return quoted(view(value.toString()));
    }
    if (!value.isArray()) {
        TextBuffer buffer;
        const auto text = scalarText(value, buffer);
        return text ? quoted(*text) : "NULL";
    }
    std::string list;
    forEachText(value,
                [&list](std::optional<std::string_view> text) { append(list, ", ", text ? quoted(*text) : "NULL"); });
    return "{" + list + "}";
}

std::string nextId() {
    static std::atomic<unsigned> count{0};
    return std::to_string(::getpid()) + "." + std::to_string(++count);
}

} // namespace

AuditRecord::AuditRecord(const cimom::RequestContext& context, const RequestMessage& message)
    : context_(context), message_(message) {}

void AuditRecord::onModification(const CIMPropertyArray& changes, const CIMInstance& previous) {
    changes_ = changes;
    previous_ = previous;
}

void AuditRecord::target(const CIMObjectPath& path) {
    std::string keys;
    for (const CIMProperty& key : CIMAccess::keys(path)) {
        const std::string text = valueText(CIMAccess::value(key));
        append(keys, ",", assigned(view(CIMAccess::name(key)), text, text));
    }
    target_.reserve(kUsualLine);
    appendName(target_, view(path.getNameSpace())).append(":");
    appendName(target_, view(path.getClassName())).append(keys.empty() ? "" : ".").append(keys);
}

std::string AuditRecord::remark(const CIMProperty& change) const {
    if (!present_) {
        return "";
    }
    const auto at = [&change](const CIMInstance& instance) {
        return valueText(instance.getPropertyValue(change.getName()));
    };
    const std::string present = at(present_);
    if (present == at(previous_)) {
        return " (reads unchanged)";
    }
    const bool other = present != valueText(change.getValue()) && !holdsSecret(view(change.getName()));
    return other && !holdsSecret(present) ? " (reads " + present + ")" : "";
}

std::string AuditRecord::changes() const {
    std::string list;
    for (const CIMProperty& change : *changes_) {
        const std::string text = valueText(change.getValue());
        append(list, ", ", assigned(view(change.getName()), text, text) + remark(change));
    }
    if (list.empty()) {
        list = "(nothing to change)";
    }
    return list;
}

std::string AuditRecord::text() {
    id_ = id_.empty() ? nextId() : id_;
    const bool known = changes_ && !target_.empty();
    const ChangeRequest change = known ? ChangeRequest() : changeRequestIn(message_);
    const std::string values = changes_ ? changes() : sentValues(change);
    std::string line;
    line.reserve(kUsualLine);
    line.append("id=").append(id_).append(" user=").append(context_.user.empty() ? "-" : named(context_.user));
    line.append(" peer=").append(context_.peer).append(" ").append(named(message_.name())).append(" ");
    if (!target_.empty()) {
        line.append(target_);
    } else {
        line.append(named(message_.nameSpace())).append(change.object ? ":" + objectText(change.object) : "");
    }
    line.append(values.empty() ? "" : " ").append(values);
    return line;
}

void AuditRecord::beforeChange() {
    begun_ = true;
    if (audit::isKept() && !audit::begin(text())) {
        throw CimError(Status::Failed, "the change was not made, because the audit record cannot be written");
    }
}

bool AuditRecord::wantsResult() const {
    return audit::isKept();
}

void AuditRecord::write(const Outcome& outcome) {
    const std::string result =
        outcome.code == 0 ? "ok"
                          : "error " + std::to_string(outcome.code) + " " + quoted(withoutSecrets(outcome.description));
    std::string line = text();
    line.append(" -> ").append(result);
    if (outcome.code == 0 || begun_) {
        audit::end(line);
    } else {
        audit::refused(context_.user.empty() ? "-" : named(context_.user), line);
    }
}

} // namespace cimserver::cimxml
