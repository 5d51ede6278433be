// CIM objects as a client sees them: names, texts and qualifiers.
#pragma once

#include "cimserver/common/Text.hpp"

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace cdrctl {

/// The texts of a qualifier; a qualifier that is not an array has one.
using Qualifiers = cimserver::NameMap<std::vector<std::string>>;

struct Property {
    std::string name;
    std::string type;                 ///< "uint8", "datetime", ...
    std::optional<std::string> value; ///< nothing for NULL; the elements of an array joined by ", "
    Qualifiers qualifiers;

    /// The texts of the qualifier; empty when there is none.
    const std::vector<std::string>& texts(std::string_view qualifier) const;
    /// The qualifier's first text; empty when there is none.
    std::string text(std::string_view qualifier) const;
    /// Whether the boolean qualifier is there and true.
    bool is(std::string_view qualifier) const;
    /// Whether its value is not to be shown.
    bool isSecret() const { return cimserver::containsIgnoringCase(name, "password"); }
    /// False when the server says by the qualifier Applicable that the property has no meaning at present.
    bool applies() const { return qualifiers.count("Applicable") == 0 || is("Applicable"); }
};

/// A class or an instance.
struct Object {
    std::string className;
    std::string nameXml;  ///< INSTANCENAME of an instance
    std::string nameText; ///< the same as Class.Key="value",...
    std::vector<Property> properties;
    Qualifiers qualifiers;

    /// Null when there is none; names are compared ignoring case.
    const Property* find(std::string_view name) const;
    /// The value's text; empty for NULL and for a property that is not there.
    std::string value(std::string_view name) const;
};

/// A value's label of the qualifiers ValueMap and Values; empty when the class has none for it.
std::string labelOf(const Property& declared, const std::string& value);
/// The value that a person means: a label of the class or its first word, "yes" and "no" for a boolean; otherwise the
/// text itself, for the server to judge.
std::string valueMeant(const Property& declared, const std::string& text);

} // namespace cdrctl
