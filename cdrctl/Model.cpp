#include "cdrctl/Model.hpp"

#include <algorithm>

namespace cdrctl {

using cimserver::equalsIgnoringCase;

const std::vector<std::string>& Property::texts(std::string_view qualifier) const {
    static const std::vector<std::string> none;
    const auto found = qualifiers.find(qualifier);
    return found == qualifiers.end() ? none : found->second;
}

std::string Property::text(std::string_view qualifier) const {
    const auto& all = texts(qualifier);
    return all.empty() ? "" : all.front();
}

bool Property::is(std::string_view qualifier) const {
    return equalsIgnoringCase(text(qualifier), "true");
}

const Property* Object::find(std::string_view name) const {
    const auto found = std::find_if(properties.begin(), properties.end(), [name](const Property& property) {
        return equalsIgnoringCase(property.name, name);
    });
    return found == properties.end() ? nullptr : &*found;
}

std::string Object::value(std::string_view name) const {
    const Property* const property = find(name);
    return property == nullptr ? "" : property->value.value_or("");
}

std::string labelOf(const Property& declared, const std::string& value) {
    const auto& map = declared.texts("ValueMap");
    const auto& labels = declared.texts("Values");
    const auto at = static_cast<std::size_t>(std::find(map.begin(), map.end(), value) - map.begin());
    return at < map.size() && at < labels.size() ? labels[at] : "";
}

std::string valueMeant(const Property& declared, const std::string& text) {
    if (declared.type == "boolean") {
        for (const auto* word : {"yes", "on", "true"}) {
            if (equalsIgnoringCase(text, word)) {
                return "TRUE";
            }
        }
        return equalsIgnoringCase(text, "no") || equalsIgnoringCase(text, "off") ? "FALSE" : text;
    }
    const auto& map = declared.texts("ValueMap");
    const auto& labels = declared.texts("Values");
    for (std::size_t i = 0; i < std::min(map.size(), labels.size()); ++i) {
        if (equalsIgnoringCase(labels[i], text) || equalsIgnoringCase(labels[i].substr(0, labels[i].find(' ')), text)) {
            return map[i];
        }
    }
    return text;
}

} // namespace cdrctl
