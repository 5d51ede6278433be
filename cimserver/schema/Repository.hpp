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

    /// Compiles a MOF file into the namespace (a "#pragma namespace" in it moves on). Throws MofError, and then
    /// nothing of the file was taken in.
    void compileFile(const std::filesystem::path& file, const std::string& ns);
    /// The same from a text; `name` stands for the file in messages.
    void compileText(const std::string& mof, const std::string& name, const std::string& ns);

    /// Makes `alias` another name of the namespace `ns`.
    void addAlias(const std::string& alias, const std::string& ns);

    bool hasNamespace(const OpenWBEM::String& ns) const;
    /// The namespaces in their own spelling, without aliases, sorted.
    std::vector<OpenWBEM::String> namespaces() const;
    /// A namespace's own spelling for any spelling or alias of it; empty when there is none.
    OpenWBEM::String canonicalNamespace(const OpenWBEM::String& ns) const;

    /// The class whole: inherited properties, methods and qualifiers, class origins, propagated marks. Null if unknown.
    const OpenWBEM::CIMClass* findClass(const OpenWBEM::String& ns, const OpenWBEM::String& name) const;
    /// The direct (or with `deep` all) subclasses in declaration order; an empty name asks from the top. Complete
    /// classes, as findClass gives them.
    std::vector<const OpenWBEM::CIMClass*> subclasses(const OpenWBEM::String& ns, const OpenWBEM::String& name,
                                                      bool deep) const;

    /// True for the class itself and its superclasses; false in an unknown namespace.
    bool isA(const OpenWBEM::String& ns, const OpenWBEM::String& name, const OpenWBEM::String& ancestor) const;

    /// The instances declared of the class itself, without its subclasses, as declared but after those they refer to by
    /// alias. Each has all properties of its class with their qualifiers, and its keys; references carry their
    /// namespace.
    std::vector<const OpenWBEM::CIMInstance*> instances(const OpenWBEM::String& ns,
                                                        const OpenWBEM::String& className) const;
    /// The instance that the path names, null when there is none. Key values are to be of their class's types; the
    /// path's namespace is not looked at.
    const OpenWBEM::CIMInstance* findInstance(const OpenWBEM::String& ns, const OpenWBEM::CIMObjectPath& path) const;

    /// Of a qualifier that the namespace does not declare, the standard declaration; null if there is none.
    const OpenWBEM::CIMQualifierType* findQualifierType(const OpenWBEM::String& ns, const OpenWBEM::String& name) const;
    /// Those declared in the namespace.
    std::vector<const OpenWBEM::CIMQualifierType*> qualifierTypes(const OpenWBEM::String& ns) const;

  private:
    struct Impl;
    std::unique_ptr<Impl> impl_;
};

} // namespace cimserver::schema
