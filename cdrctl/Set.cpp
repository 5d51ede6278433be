#include "cdrctl/Client.hpp"
#include "cdrctl/Commands.hpp"
#include "cdrctl/Errors.hpp"
#include "cdrctl/Model.hpp"
#include "cdrctl/StatusCodes.hpp"
#include "cdrctl/Text.hpp"

#include <nlohmann/json.hpp>

#include <algorithm>
#include <cctype>
#include <optional>
#include <ostream>
#include <string_view>

namespace cdrctl {

using nlohmann::ordered_json;

namespace {

/// The property's name in the class that is most like the text.
std::string nearest(const Object& cimClass, const std::string& name) {
    const Property* best = nullptr;
    for (const Property& property : cimClass.properties) {
        if (best == nullptr || editDistance(property.name, name) < editDistance(best->name, name)) {
            best = &property;
        }
    }
    return best != nullptr && editDistance(best->name, name) <= 3 ? best->name : "";
}

const Property& settable(const Object& cimClass, const std::string& name) {
    const Property* const property = cimClass.find(name);
    if (property == nullptr) {
        const std::string like = nearest(cimClass, name);
        throw UsageError(cimClass.className + " has no property " + name +
                         (like.empty() ? "; cdrctl show lists them" : "; is it " + like + "?"));
    }
    if (!property->is("Write")) {
        throw UsageError(property->name + " is read-only");
    }
    return *property;
}

/// The class to change: the one named, or the first of those with one instance that has the property.
Object classOf(const Client& client, const std::string& className, const std::string& property) {
    if (!className.empty()) {
        return client.getClass(classNamed(className));
    }
    std::string like;
    for (const char* name : {kService, kPushSetting, kPullStatistics}) {
        Object cimClass = client.getClass(name);
        if (cimClass.find(property) != nullptr) {
            return cimClass;
        }
        like = like.empty() ? nearest(cimClass, property) : like;
    }
    throw UsageError("there is no setting " + property +
                     (like.empty() ? "; cdrctl show lists them" : "; is it " + like + "?"));
}

/// What became of one property of a request.
struct Outcome {
    const Property* asked;
    Property before;
    Property after;
    bool stored;
};

/// The property of the instance; without a value when there is none.
Property propertyOf(const Object& instance, const std::string& name) {
    const Property* const found = instance.find(name);
    return found == nullptr ? Property{name, "", std::nullopt, {}} : *found;
}

/// A server may not show a secret that it has stored.
bool isSame(const Property& asked, const Property& now) {
    const std::string value = now.value.value_or("");
    if (asked.isSecret()) {
        return asked.value.value_or("").empty() == value.empty();
    }
    return cimserver::equalsIgnoringCase(asked.value.value_or(""), value);
}

/// A change stops at the first property that is refused, and what was applied before stays.
std::vector<Outcome> outcomesOf(const std::vector<Property>& changed, const Object& before, const Object& after,
                                bool failed) {
    std::vector<Outcome> outcomes;
    bool stopped = false;
    for (const Property& property : changed) {
        Property now = propertyOf(after, property.name);
        stopped = stopped || (failed && !isSame(property, now));
        outcomes.push_back({&property, propertyOf(before, property.name), std::move(now), !stopped});
    }
    return outcomes;
}

std::string valueOrEmpty(const Property& property) {
    const std::string text = valueText(property);
    return text.empty() ? "(empty)" : text;
}

void writeStored(std::ostream& out, const Outcome& outcome) {
    const Property& asked = *outcome.asked;
    out << asked.name << ": " << valueOrEmpty(outcome.before) << " -> " << valueOrEmpty(outcome.after);
    if (!isSame(asked, outcome.after)) {
        out << " (asked for " << valueOrEmpty(asked) << ")";
    }
    out << "\n";
}

void writeRefused(std::ostream& out, const Outcome& outcome, const CimFault& fault) {
    out << outcome.asked->name << "=" << valueOrEmpty(*outcome.asked) << ": refused: " << printable(fault.what())
        << " (CIM error " << fault.code() << ")\n";
    if (const auto status = moduleStatusIn(fault.what())) {
        out << "  " << status->number << ": " << status->text << "\n  -> " << status->advice << "\n";
    }
}

/// Whether the text has the name as a word: "Format" is none of "DateFormat".
bool names(std::string_view text, std::string_view name) {
    const auto isWordCharacter = [&text](std::size_t at) {
        return at < text.size() && (std::isalnum(static_cast<unsigned char>(text[at])) != 0 || text[at] == '_');
    };
    auto at = text.find(name);
    while (at != std::string_view::npos && (isWordCharacter(at - 1) || isWordCharacter(at + name.size()))) {
        at = text.find(name, at + 1);
    }
    return at != std::string_view::npos;
}

/// The one that was refused: that which the fault names, for a server may check all before it stores any, else the
/// first that is not stored. Null when all are.
const Outcome* refusedOf(const std::vector<Outcome>& outcomes, const CimFault* fault) {
    const Outcome* first = nullptr;
    if (fault == nullptr) {
        return first;
    }
    for (const Outcome& outcome : outcomes) {
        if (!outcome.stored && names(fault->what(), outcome.asked->name)) {
            return &outcome;
        }
        first = first == nullptr && !outcome.stored ? &outcome : first;
    }
    return first;
}

void writeText(std::ostream& out, const std::vector<Outcome>& outcomes, const CimFault* fault) {
    const Outcome* const refused = refusedOf(outcomes, fault);
    for (const Outcome& outcome : outcomes) {
        if (outcome.stored) {
            writeStored(out, outcome);
        } else if (&outcome == refused) {
            writeRefused(out, outcome, *fault);
        } else {
            out << outcome.asked->name << ": not tried, because another was refused\n";
        }
    }
    if (fault != nullptr && refused == nullptr) { // all read as asked, and yet something failed, such as the scheduler
        out << "the server reports: " << printable(fault->what()) << " (CIM error " << fault->code() << ")\n"
            << "  -> all values read as asked for; cdrctl push why tells whether a push is scheduled\n";
    }
}

void writeJson(std::ostream& out, const std::string& className, const std::vector<Outcome>& outcomes,
               const CimFault* fault) {
    ordered_json result{{"class", className}};
    const Outcome* const refused = refusedOf(outcomes, fault);
    for (const Outcome& outcome : outcomes) {
        ordered_json& row = result["properties"][outcome.asked->name];
        row["result"] = outcome.stored ? "stored" : (&outcome == refused ? "refused" : "not tried");
        row["before"] = jsonValue(outcome.before);
        row["after"] = jsonValue(outcome.after);
    }
    if (fault != nullptr) {
        result["error"] = {{"code", fault->code()}, {"text", fault->what()}};
    }
    out << result.dump(2, ' ', false, ordered_json::error_handler_t::replace) << "\n";
}

Object sameInstance(const Client& client, const Object& instance) {
    for (Object& other : client.instances(instance.className)) {
        if (other.nameXml == instance.nameXml) {
            return std::move(other);
        }
    }
    throw std::runtime_error("the instance of " + instance.className + " is gone");
}

} // namespace

Assignment Assignment::parse(const std::string& text) {
    const auto equals = text.find('=');
    if (equals == std::string::npos || equals == 0) {
        throw UsageError("'" + text + "' is not NAME=VALUE");
    }
    return {text.substr(0, equals), text.substr(equals + 1)};
}

int setIn(const Context& context, const Object& instance, const std::vector<Property>& changed) {
    std::optional<CimFault> fault;
    try {
        context.client.modify(instance, changed);
    } catch (const CimFault& error) {
        fault = error;
    }
    const Object after = sameInstance(context.client, instance);
    const auto outcomes = outcomesOf(changed, instance, after, fault.has_value());
    const CimFault* const error = fault ? &*fault : nullptr;
    if (context.json) {
        writeJson(context.out, instance.className, outcomes, error);
    } else {
        writeText(context.out, outcomes, error);
    }
    return fault ? Refused : Done;
}

int set(const Context& context, const std::string& className, const std::vector<Assignment>& assignments) {
    const Object cimClass = classOf(context.client, className, assignments.front().name);
    std::vector<Property> changed;
    for (const Assignment& assignment : assignments) {
        Property property = settable(cimClass, assignment.name);
        if (std::any_of(changed.begin(), changed.end(),
                        [&](const Property& one) { return one.name == property.name; })) {
            throw UsageError(property.name + " is given twice");
        }
        property.value = valueMeant(property, assignment.value);
        changed.push_back(std::move(property));
    }
    const auto instances = context.client.instances(cimClass.className);
    if (instances.size() != 1) {
        throw UsageError(cimClass.className + " has " + std::to_string(instances.size()) +
                         " instances; cdrctl bins set changes one bin");
    }
    return setIn(context, instances.front(), changed);
}

int bins(const Context& context) {
    const auto prefixes = context.client.instances(kPrefixBin);
    const auto accesses = context.client.instances(kAccessBin);
    if (context.json) {
        ordered_json result;
        for (const Object& bin : prefixes) {
            result["prefix"].push_back(bin.value("PrefixBin"));
        }
        for (const Object& bin : accesses) {
            result["access"].push_back({{"digits", bin.value("AccessBin")}, {"suppress", bin.value("SuppressBin")}});
        }
        context.out << result.dump(2, ' ', false, ordered_json::error_handler_t::replace) << "\n";
        return Done;
    }
    Table table;
    table.row({"bin", "prefix", "access", "suppressed digits"});
    for (std::size_t i = 0; i < std::max(prefixes.size(), accesses.size()); ++i) {
        std::vector<std::string> row{std::to_string(i)};
        row.push_back(i < prefixes.size() ? printable(prefixes[i].value("PrefixBin")) : "");
        if (i < accesses.size()) {
            row.push_back(printable(accesses[i].value("AccessBin")));
            row.push_back(printable(accesses[i].value("SuppressBin")));
        }
        table.row(std::move(row));
    }
    context.out << table.text();
    return Done;
}

int setBin(const Context& context, const std::string& kind, unsigned number, const std::string& digits,
           const std::string& suppress) {
    const bool access = kind == "access";
    if (!access && !suppress.empty()) {
        throw UsageError("only an access bin has a number of suppressed digits");
    }
    const Object cimClass = context.client.getClass(access ? kAccessBin : kPrefixBin);
    std::vector<Property> changed{settable(cimClass, access ? "AccessBin" : "PrefixBin")};
    changed.front().value = digits;
    if (!suppress.empty()) {
        changed.push_back(settable(cimClass, "SuppressBin"));
        changed.back().value = suppress;
    }
    const std::string id = "_" + std::to_string(number);
    for (const Object& bin : context.client.instances(cimClass.className)) {
        const std::string own = bin.value("InstanceID");
        if (own.size() > id.size() && own.compare(own.size() - id.size(), id.size(), id) == 0) {
            return setIn(context, bin, changed);
        }
    }
    throw UsageError("there is no " + kind + " bin " + std::to_string(number));
}

} // namespace cdrctl
