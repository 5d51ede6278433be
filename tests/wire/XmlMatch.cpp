#include "XmlMatch.hpp"

#include "cimserver/cimxml/XmlDocument.hpp"

#include <fnmatch.h>

#include <iterator>

namespace wire {
namespace {

using cimserver::cimxml::firstElement;
using cimserver::cimxml::nextElement;

/// Without the backslash and bracket rules of file names: only * is special.
bool matches(std::string pattern, const std::string& text) {
    for (std::size_t at = pattern.find_first_of("[?\\"); at != std::string::npos;
         at = pattern.find_first_of("[?\\", at + 2)) {
        pattern.insert(at, "\\");
    }
    return fnmatch(pattern.c_str(), text.c_str(), 0) == 0;
}

std::string attributeDifference(pugi::xml_node expected, pugi::xml_node actual) {
    for (const pugi::xml_attribute wanted : expected.attributes()) {
        const std::string value = actual.attribute(wanted.name()).value();
        if (!actual.attribute(wanted.name()) || !matches(wanted.value(), value)) {
            return std::string(wanted.name()) + "=\"" + value + "\" instead of \"" + wanted.value() + "\"";
        }
    }
    const auto count = [](pugi::xml_node node) {
        return std::distance(node.attributes_begin(), node.attributes_end());
    };
    return count(expected) == count(actual) ? "" : "more attributes than expected";
}

std::string namedDifference(pugi::xml_node expected, pugi::xml_node actual) {
    if (std::string(expected.name()) != actual.name()) {
        return "element " + std::string(actual.name()) + " instead of " + expected.name();
    }
    if (std::string wrong = attributeDifference(expected, actual); !wrong.empty()) {
        return wrong;
    }
    pugi::xml_node wanted = firstElement(expected);
    pugi::xml_node given = firstElement(actual);
    if (!wanted && !given) {
        const bool same = matches(expected.child_value(), actual.child_value());
        return same ? ""
                    : "\"" + std::string(actual.child_value()) + "\" instead of \"" + expected.child_value() + "\"";
    }
    while (wanted && given) {
        if (std::string inside = difference(wanted, given); !inside.empty()) {
            return inside;
        }
        wanted = nextElement(wanted);
        given = nextElement(given);
    }
    return wanted || given ? (wanted ? "no " : "unexpected ") + std::string((wanted ? wanted : given).name()) : "";
}

} // namespace

std::string difference(pugi::xml_node expected, pugi::xml_node actual) {
    const std::string inside = namedDifference(expected, actual);
    const std::string name = expected.attribute("NAME").value();
    return inside.empty() ? ""
                          : "/" + std::string(expected.name()) + (name.empty() ? "" : "(" + name + ")") + " " + inside;
}

} // namespace wire
