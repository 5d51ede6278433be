// The fixed schema the server serves: qualifier declarations, classes and instances by namespace, compiled from MOF at
// start.
#pragma once

#include "cimserver/schema/MofError.hpp"

#include "OW_CIM.hpp"

#include <filesystem>
#include <memory>
#include <string>
#include <vector>

namespace cimserver::schema {

/// Names of namespaces, classes and qualifiers are compared ignoring case; a namespace's leading slash is ignored.
/// Filled at start, constant afterwards: lookups take no lock. Pointers stay valid as long as the repository.
class Repository {
  public:
    Repository();
    ~Repository();
    Repository(const Repository&) = delete;
    Repository& operator=(const Repository&) = delete;

    /// Compiles a MOF file into the namespace (a "#pragma namespace" in it switches to another). When it throws
    /// MofError, the repository is unchanged.
    void compileFile(const std::filesystem::path& file, const std::string& ns);
    /// The same from a text; `name` stands for the file in messages.
    void compileText(const std::string& mof, const std::string& name, const std::string& ns);

    /// Makes `alias` another name of the namespace `ns`.
    void addAlias(const std::string& alias, const std::string& ns);

    bool hasNamespace(const OpenWBEM::String& ns) const;
    /// The namespaces in their own spelling, without aliases, sorted.
    std::vector<OpenWBEM::String> namespaces() const;
    /// The aliases as they were given, sorted.
    std::vector<OpenWBEM::String> aliases() const;
    /// A namespace's own spelling for any spelling or alias of it; empty when there is none.
    OpenWBEM::String canonicalNamespace(const OpenWBEM::String& ns) const;

    /// The complete class: with inherited properties, methods and qualifiers, class origins and propagated marks. Null
    /// if unknown.
    const OpenWBEM::CIMClass* findClass(const OpenWBEM::String& ns, const OpenWBEM::String& name) const;
    /// The direct (or with `deep` all) subclasses in declaration order, as complete as those of findClass; an empty
    /// name asks from the top.
    std::vector<const OpenWBEM::CIMClass*> subclasses(const OpenWBEM::String& ns, const OpenWBEM::String& name,
                                                      bool deep) const;

    /// True for the class itself and its superclasses; false in an unknown namespace.
    bool isA(const OpenWBEM::String& ns, const OpenWBEM::String& name, const OpenWBEM::String& ancestor) const;

    /// The instances declared of the class itself, without its subclasses, as declared but after those they refer to by
    /// alias. Each has all properties of its class with their qualifiers, and its keys; references carry their
    /// namespace.
    std::vector<const OpenWBEM::CIMInstance*> instances(const OpenWBEM::String& ns,
                                                        const OpenWBEM::String& className) const;
    /// The instance that the path names, null when there is none. Key values must be of their class's types; the path's
    /// namespace is ignored.
    const OpenWBEM::CIMInstance* findInstance(const OpenWBEM::String& ns, const OpenWBEM::CIMObjectPath& path) const;

    /// The namespace's declaration of the qualifier, else the standard one; null if there is none.
    const OpenWBEM::CIMQualifierType* findQualifierType(const OpenWBEM::String& ns, const OpenWBEM::String& name) const;
    /// The qualifier types declared in the namespace.
    std::vector<const OpenWBEM::CIMQualifierType*> qualifierTypes(const OpenWBEM::String& ns) const;

  private:
    struct Impl;
    std::unique_ptr<Impl> impl_;
};

} // namespace cimserver::schema
