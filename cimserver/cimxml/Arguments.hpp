// The parameters of an operation, read against a declared list.
#pragma once

#include "OW_Array.hpp"
#include "OW_String.hpp"

#include <boost/container/small_vector.hpp>
#include <pugixml.hpp>

#include <cstdint>
#include <optional>
#include <string_view>
#include <vector>

namespace cimserver::cimxml {

/// What a parameter's element must be.
enum class ParameterKind {
    Flag,
    Text,
    TextArray,
    Number, ///< uint32
    ClassName,
    InstanceName,
    ObjectName, ///< class or instance name
    Instance,
    NamedInstance,
    Value ///< any value, also NULL
};

enum class Presence { Required, Optional, DefaultFalse, DefaultTrue };

struct Parameter {
    std::string_view name;
    ParameterKind kind;
    Presence presence;
};

/// The parameters that a request gave. The getters take names of the declared list.
class Arguments {
  public:
    /// Throws CimError InvalidParameter naming a parameter that is unknown, given twice, missing or of another kind.
    /// `declared` and the document must outlive the object.
    Arguments(pugi::xml_node call, const std::vector<Parameter>& declared);

    /// True when it was given and is not NULL.
    bool has(std::string_view name) const { return static_cast<bool>(element(name)); }
    /// The flag's value or its default.
    bool flag(std::string_view name) const;
    /// Empty when not given.
    OpenWBEM::String text(std::string_view name) const;
    std::optional<OpenWBEM::StringArray> texts(std::string_view name) const;
    std::optional<std::uint32_t> number(std::string_view name) const;
    /// NAME of a CLASSNAME; empty when not given.
    OpenWBEM::String className(std::string_view name) const;
    /// The element inside IPARAMVALUE; null when not given or NULL.
    pugi::xml_node element(std::string_view name) const;
    /// The IPARAMVALUE itself.
    pugi::xml_node findParameter(std::string_view name) const;

  private:
    struct Given {
        const Parameter* parameter;
        pugi::xml_node parameterElement;
    };

    void take(pugi::xml_node parameterElement);
    void requireAll() const;

    const std::vector<Parameter>& declared_;
    boost::container::small_vector<Given, 8> given_;
};

} // namespace cimserver::cimxml
