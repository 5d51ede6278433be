#include "cdrctl/Commands.hpp"
#include "cdrctl/Model.hpp"
#include "cdrctl/StatusCodes.hpp"
#include "cdrctl/Text.hpp"

#include <nlohmann/json.hpp>

#include <charconv>
#include <cstdio>
#include <ostream>

namespace cdrctl {

using cimserver::equalsIgnoringCase;
using nlohmann::ordered_json;

namespace {

struct ShortName {
    const char* name;
    const char* className;
};

constexpr ShortName kShortNames[] = {{"service", kService},  {"prefix", kPrefixBin},      {"access", kAccessBin},
                                     {"push", kPushSetting}, {"pushed", kPushStatistics}, {"pull", kPullStatistics}};

std::string joined(const std::vector<std::string>& texts) {
    std::string result;
    for (const std::string& text : texts) {
        result += (result.empty() ? "" : ", ") + text;
    }
    return result;
}

/// The value with its label, for people.
std::string shown(const Property& declared, const Property& property) {
    if (!property.applies()) {
        return "-";
    }
    if (!property.value) {
        return "(not readable)";
    }
    const std::string label = property.isSecret() ? "" : labelOf(declared, *property.value);
    return valueText(property) + (label.empty() ? "" : " (" + printable(label) + ")");
}

std::string rangeOf(const Property& declared, const Property& property) {
    if (!property.texts("ValidValueMap").empty()) {
        return "valid: " + joined(property.texts("ValidValueMap"));
    }
    if (!declared.text("MinValue").empty()) {
        return declared.text("MinValue") + " to " + declared.text("MaxValue");
    }
    return "";
}

std::string notesOf(const Property& declared, const Property& property) {
    std::vector<std::string> notes;
    for (const std::string& note : {declared.text("Units"), rangeOf(declared, property)}) {
        if (!note.empty()) {
            notes.push_back(note);
        }
    }
    if (!property.applies()) {
        notes.emplace_back("does not apply now");
    } else if (!declared.is("Write")) {
        notes.emplace_back("read-only");
    }
    return printable(joined(notes));
}

const Property& declarationOf(const Object& cimClass, const Property& property) {
    const Property* const declared = cimClass.find(property.name);
    return declared == nullptr ? property : *declared;
}

std::string keyText(const Object& instance) {
    std::vector<std::string> keys;
    for (const Property& property : instance.properties) {
        if (property.is("Key")) {
            keys.push_back(property.value.value_or(""));
        }
    }
    return joined(keys);
}

/// The first sentence of the class's description.
std::string headingOf(const Object& cimClass) {
    const auto found = cimClass.qualifiers.find("Description");
    const std::string text = found == cimClass.qualifiers.end() || found->second.empty() ? "" : found->second.front();
    const std::string sentence = text.substr(0, text.find(". "));
    return cimClass.className + (sentence.empty() ? "" : ": " + printable(sentence)) + "\n";
}

std::string describedBy(const Property& declared, const std::string& notes) {
    return notes + (notes.empty() ? "" : "; ") + printable(declared.text("Description"));
}

/// One instance: a property a line.
std::string instanceText(const Object& cimClass, const Object& instance, bool describe) {
    Table table;
    for (const Property& property : instance.properties) {
        const Property& declared = declarationOf(cimClass, property);
        if (!property.is("Key")) {
            const std::string notes = notesOf(declared, property);
            table.row({property.name, shown(declared, property), describe ? describedBy(declared, notes) : notes});
        }
    }
    return table.text("  ");
}

/// Several: an instance a line, and what the properties mean below.
std::string instancesText(const Object& cimClass, const std::vector<Object>& instances, bool describe) {
    Table table;
    for (const Object& instance : instances) {
        std::vector<std::string> names{""};
        std::vector<std::string> values{printable(keyText(instance))};
        for (const Property& property : instance.properties) {
            if (!property.is("Key")) {
                names.push_back(property.name);
                values.push_back(shown(declarationOf(cimClass, property), property));
            }
        }
        if (table.empty()) {
            table.row(std::move(names));
        }
        table.row(std::move(values));
    }
    Table meanings;
    for (const Property& declared : cimClass.properties) {
        if (describe && !declared.is("Key")) {
            meanings.row({declared.name, describedBy(declared, notesOf(declared, declared))});
        }
    }
    return table.text("  ") + meanings.text("  ");
}

ordered_json instanceJson(const Object& cimClass, const Object& instance) {
    ordered_json result;
    for (const Property& property : instance.properties) {
        const Property& declared = declarationOf(cimClass, property);
        ordered_json& row = result[property.name];
        row["value"] = jsonValue(property);
        const std::string label = labelOf(declared, property.value.value_or(""));
        if (!label.empty()) {
            row["label"] = label;
        }
        if (!declared.text("Units").empty()) {
            row["units"] = declared.text("Units");
        }
        row["applies"] = property.applies();
        row["writable"] = declared.is("Write");
    }
    return result;
}

} // namespace

std::string classNamed(const std::string& name) {
    for (const ShortName& known : kShortNames) {
        if (equalsIgnoringCase(name, known.name)) {
            return known.className;
        }
    }
    return name;
}

std::string valueText(const Property& property) {
    const std::string text = property.value.value_or("");
    if (property.isSecret() && !text.empty()) {
        return "***";
    }
    if (property.type == "boolean" && (equalsIgnoringCase(text, "true") || equalsIgnoringCase(text, "false"))) {
        return equalsIgnoringCase(text, "true") ? "yes" : "no";
    }
    return printable(text);
}

ordered_json jsonValue(const Property& property) {
    if (!property.value || !property.applies()) {
        return nullptr;
    }
    const std::string& text = *property.value;
    if (property.isSecret() && !text.empty()) {
        return "***";
    }
    if (property.type == "boolean") {
        return equalsIgnoringCase(text, "true");
    }
    std::int64_t number = 0;
    const auto [rest, error] = std::from_chars(text.data(), text.data() + text.size(), number);
    const bool integer = property.type.find("int") != std::string::npos;
    if (integer && error == std::errc() && rest == text.data() + text.size()) {
        return number;
    }
    return text;
}

int show(const Context& context, const std::string& className, bool describe) {
    std::vector<std::string> classes{classNamed(className)};
    if (className.empty()) {
        classes = {kService, kPrefixBin, kAccessBin, kPushSetting, kPushStatistics, kPullStatistics};
    }
    ordered_json all = ordered_json::object();
    for (const std::string& name : classes) {
        const Object cimClass = context.client.getClass(name);
        const auto instances = context.client.instances(name);
        if (!context.json) {
            context.out << headingOf(cimClass)
                        << (instances.size() == 1 ? instanceText(cimClass, instances.front(), describe)
                                                  : instancesText(cimClass, instances, describe));
        }
        for (const Object& instance : instances) {
            all[instance.className].push_back(instanceJson(cimClass, instance));
        }
    }
    if (context.json) {
        context.out << all.dump(2, ' ', false, ordered_json::error_handler_t::replace) << "\n";
    }
    return Done;
}

int explainStatus(std::ostream& out, bool json, const std::string& code) {
    const auto meanings = meaningsOf(code);
    ordered_json list = ordered_json::array();
    for (const StatusMeaning& meaning : meanings) {
        if (json) {
            list.push_back({{"number", meaning.number},
                            {"source", meaning.source},
                            {"name", meaning.name},
                            {"meaning", meaning.text},
                            {"advice", meaning.advice}});
            continue;
        }
        char number[48];
        std::snprintf(number, sizeof number, "%u (0x%X)", meaning.number, meaning.number);
        out << number << " " << meaning.source << (meaning.name.empty() ? "" : " " + meaning.name) << "\n  "
            << meaning.text << "\n"
            << (meaning.advice.empty() ? "" : "  -> " + meaning.advice + "\n");
    }
    if (json) {
        out << list.dump(2) << "\n";
    } else if (meanings.empty()) {
        out << "no status has the number or name '" << printable(code) << "'\n";
    }
    return meanings.empty() ? Refused : Done;
}

} // namespace cdrctl
