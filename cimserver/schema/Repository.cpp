#include "cimserver/schema/Repository.hpp"

#include "cimserver/common/Text.hpp"
#include "cimserver/schema/Compiler.hpp"
#include "cimserver/schema/Namespace.hpp"

namespace cimserver::schema {

using namespace OpenWBEM;

struct Repository::Impl {
    Namespaces namespaces;
    Compiler::Aliases aliases;

    const Namespace* find(const String& ns) const {
        const std::string_view name = withoutSlashes(trimmed(ns.c_str()));
        const auto alias = aliases.find(name);
        const auto found = namespaces.find(alias == aliases.end() ? name : alias->second);
        return found == namespaces.end() ? nullptr : &found->second;
    }
};

Repository::Repository() : impl_(std::make_unique<Impl>()) {}

Repository::~Repository() = default;

void Repository::compileFile(const std::filesystem::path& file, const std::string& ns) {
    Namespaces staged = impl_->namespaces;
    Compiler(staged, impl_->aliases, ns).compileFile(file);
    impl_->namespaces = std::move(staged);
}

void Repository::compileText(const std::string& mof, const std::string& name, const std::string& ns) {
    Namespaces staged = impl_->namespaces;
    Compiler(staged, impl_->aliases, ns).compileText(mof, name);
    impl_->namespaces = std::move(staged);
}

void Repository::addAlias(const std::string& alias, const std::string& ns) {
    impl_->aliases[std::string(withoutSlashes(trimmed(alias)))] = withoutSlashes(trimmed(ns));
}

bool Repository::hasNamespace(const String& ns) const {
    return impl_->find(ns) != nullptr;
}

std::vector<String> Repository::namespaces() const {
    std::vector<String> names;
    for (const auto& [key, ns] : impl_->namespaces) {
        names.push_back(ns.name);
    }
    return names;
}

std::vector<String> Repository::aliases() const {
    std::vector<String> names;
    for (const auto& [alias, ns] : impl_->aliases) {
        names.emplace_back(alias.c_str());
    }
    return names;
}

String Repository::canonicalNamespace(const String& ns) const {
    const Namespace* const found = impl_->find(ns);
    return found == nullptr ? String() : found->name;
}

const CIMClass* Repository::findClass(const String& ns, const String& name) const {
    const Namespace* const found = impl_->find(ns);
    return found == nullptr ? nullptr : found->findClass(name.c_str());
}

namespace {

void collect(const Namespace& ns, std::string_view key, bool deep, std::vector<const CIMClass*>& result) {
    const auto children = ns.children.find(key);
    if (children == ns.children.end()) {
        return;
    }
    for (const auto& child : children->second) {
        result.push_back(child.get());
        if (deep) {
            collect(ns, child->getName().c_str(), deep, result);
        }
    }
}

} // namespace

std::vector<const CIMClass*> Repository::subclasses(const String& ns, const String& name, bool deep) const {
    std::vector<const CIMClass*> result;
    if (const Namespace* const found = impl_->find(ns)) {
        collect(*found, name.c_str(), deep, result);
    }
    return result;
}

bool Repository::isA(const String& ns, const String& name, const String& ancestor) const {
    const Namespace* const found = impl_->find(ns);
    return found != nullptr && found->isA(name, ancestor);
}

std::vector<const CIMInstance*> Repository::instances(const String& ns, const String& className) const {
    std::vector<const CIMInstance*> result;
    const Namespace* const space = impl_->find(ns);
    if (space == nullptr) {
        return result;
    }
    if (const auto found = space->instancesOf.find(className.c_str()); found != space->instancesOf.end()) {
        for (const auto& instance : found->second) {
            result.push_back(instance.get());
        }
    }
    return result;
}

const CIMInstance* Repository::findInstance(const String& ns, const CIMObjectPath& path) const {
    const Namespace* const space = impl_->find(ns);
    if (space == nullptr) {
        return nullptr;
    }
    const auto found = space->instances.find(space->instanceKey(CIMObjectPath(path).setNameSpace("")));
    return found == space->instances.end() ? nullptr : found->second.get();
}

const CIMQualifierType* Repository::findQualifierType(const String& ns, const String& name) const {
    const Namespace* const found = impl_->find(ns);
    return found == nullptr ? nullptr : found->findQualifier(name.c_str());
}

std::vector<const CIMQualifierType*> Repository::qualifierTypes(const String& ns) const {
    std::vector<const CIMQualifierType*> result;
    if (const Namespace* const found = impl_->find(ns)) {
        for (const auto& [key, type] : found->qualifiers) {
            result.push_back(type.get());
        }
    }
    return result;
}

} // namespace cimserver::schema
