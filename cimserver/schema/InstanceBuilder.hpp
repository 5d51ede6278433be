// Makes the instances that a MOF text declares.
#pragma once

#include "cimserver/schema/Ast.hpp"
#include "cimserver/schema/Namespace.hpp"

#include <deque>
#include <map>
#include <optional>
#include <string>

namespace cimserver::schema {

/// Gathers the instance declarations of one run and puts the instances into their namespaces at its end, since an alias
/// may be used before it is declared.
class InstanceBuilder {
  public:
    /// `ns` must outlive the builder. Throws MofError for an alias that is taken.
    void add(ast::InstanceDeclaration declaration, Namespace& ns);

    /// Throws MofError for an instance whose class is unknown, abstract or without keys, that has an unknown property
    /// or a value of the wrong type, that lacks a key value or has the keys of another instance.
    void finish();

  private:
    struct Item {
        ast::InstanceDeclaration declaration;
        Namespace* ns;
        std::optional<OpenWBEM::CIMObjectPath> path;
    };

    const OpenWBEM::CIMObjectPath& build(Item& item);
    OpenWBEM::CIMInstance instanceOf(const Item& item, const OpenWBEM::CIMClass& cimClass);
    OpenWBEM::CIMValue valueOf(const Item& item, const ast::Literal& written, const OpenWBEM::CIMDataType& type);

    std::deque<Item> items_;
    std::map<std::string, Item*> aliases_; ///< by folded name
    unsigned depth_ = 0;                   ///< of the references that are being followed
};

} // namespace cimserver::schema
