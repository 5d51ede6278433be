#include "cimserver/schema/InstanceBuilder.hpp"

#include "cimserver/schema/Qualifiers.hpp"
#include "cimserver/schema/Values.hpp"

#include <algorithm>
#include <set>

namespace cimserver::schema {

using namespace OpenWBEM;

namespace {

constexpr unsigned kDeepestReference = 16;
constexpr std::size_t kLongestPath = std::size_t{64} << 10;

const CIMClass& classOf(const ast::InstanceDeclaration& declaration, const Namespace& ns) {
    const CIMClass* const found = ns.findClass(declaration.className);
    if (found == nullptr) {
        fail(declaration.place, "the class \"" + declaration.className + "\" of the instance is not declared");
    }
    if (isTrue(found->getQualifiers(), "Abstract")) {
        fail(declaration.place, "the class \"" + declaration.className + "\" is abstract: it has no instances");
    }
    if (!found->isKeyed()) {
        fail(declaration.place, "the class \"" + declaration.className + "\" has no keys to name an instance by");
    }
    return *found;
}

const ast::Initializer* find(const ast::InstanceDeclaration& declaration, const String& name) {
    const auto found = std::find_if(declaration.initializers.begin(), declaration.initializers.end(),
                                    [&](const auto& one) { return sameName(one.name, name.c_str()); });
    return found == declaration.initializers.end() ? nullptr : &*found;
}

} // namespace

void InstanceBuilder::add(ast::InstanceDeclaration declaration, Namespace& ns) {
    items_.push_back({std::move(declaration), &ns, std::nullopt});
    const ast::InstanceDeclaration& added = items_.back().declaration;
    if (!added.alias.empty() && !aliases_.try_emplace(fold(added.alias), &items_.back()).second) {
        fail(added.place, "the alias \"$" + added.alias + "\" is given twice");
    }
}

void InstanceBuilder::finish() {
    for (Item& item : items_) {
        build(item);
    }
}

void InstanceBuilder::build(Item& item) {
    Namespace& ns = *item.ns;
    const CIMClass& cimClass = classOf(item.declaration, ns);
    CIMInstance instance = cimClass.newInstance();
    std::set<std::string> given;
    for (const ast::Initializer& initializer : item.declaration.initializers) {
        const CIMProperty declared = cimClass.getProperty(CIMName(initializer.name.c_str()));
        if (!declared) {
            fail(initializer.place,
                 "the class \"" + item.declaration.className + "\" has no property \"" + initializer.name + "\"");
        }
        if (!given.insert(fold(initializer.name)).second) {
            fail(initializer.place, "\"" + initializer.name + "\" is given twice in the instance");
        }
        within(item.declaration.className + "." + initializer.name,
               [&] { instance.setProperty(property(item, initializer, declared)); });
    }
    const CIMObjectPath& path = pathOf(item);
    instance.setKeys(path.getKeys());
    const auto built = std::make_shared<const CIMInstance>(instance);
    if (!ns.instances.try_emplace(ns.instanceKey(path), built).second) {
        fail(item.declaration.place, std::string("the instance ") + path.modelPath().c_str() + " is declared already");
    }
    ns.instancesOf[fold(item.declaration.className)].push_back(built);
}

/// The path by the keys, which may lead through the paths of other instances.
const CIMObjectPath& InstanceBuilder::pathOf(Item& item) {
    if (item.path) {
        return *item.path;
    }
    const Place& place = item.declaration.place;
    if (depth_ >= kDeepestReference) {
        fail(place, "references in keys go in a circle or deeper than " + std::to_string(kDeepestReference));
    }
    ++depth_;
    const CIMClass& cimClass = classOf(item.declaration, *item.ns);
    CIMPropertyArray keys = cimClass.getKeys();
    for (CIMProperty& key : keys) {
        const ast::Initializer* const written = find(item.declaration, key.getName());
        key = written != nullptr ? property(item, *written, key) : key;
        if (!key.getValue()) {
            fail(place, std::string("the key \"") + key.getName().c_str() + "\" of the instance of \"" +
                            item.declaration.className + "\" has no value");
        }
    }
    CIMObjectPath path(CIMName(cimClass.getName()), keys);
    path.setNameSpace(item.ns->name.c_str());
    if (path.toString().length() > kLongestPath) {
        fail(place, "the keys are longer than " + std::to_string(kLongestPath) + " bytes");
    }
    --depth_;
    return item.path.emplace(path);
}

CIMProperty InstanceBuilder::property(const Item& item, const ast::Initializer& initializer,
                                      const CIMProperty& declared) {
    const auto resolve = [&](const Token& alias) {
        const auto found = aliases_.find(fold(alias.text));
        if (found == aliases_.end()) {
            fail(alias.place, "there is no alias \"$" + alias.text + "\"");
        }
        return pathOf(*found->second);
    };
    const CIMDataType type = declared.getDataType();
    CIMValue written = value(initializer.value, type, resolve);
    if (written && type.isReferenceType() && !type.isArrayType()) {
        const CIMObjectPath path = written.toCIMObjectPath();
        written = CIMValue(completeReference(item, path, type.getRefClassName(), initializer.value.place));
    }
    return CIMProperty(declared).setValue(written);
}

/// A reference with its namespace and, as far as its class is known here, with keys of their types.
CIMObjectPath InstanceBuilder::completeReference(const Item& item, const CIMObjectPath& written,
                                                 const String& declaredClass, const Place& place) const {
    const Namespace& ns = *item.ns;
    const std::string where = localNamespace(written.getNameSpace().c_str());
    CIMObjectPath path(written);
    path.setNameSpace(where.empty() ? ns.name.c_str() : where.c_str());
    if (!written.getFullNameSpace().isLocal() || !sameName(path.getNameSpace().c_str(), ns.name)) {
        return path;
    }
    const CIMClass* const target = ns.findClass(path.getClassName().c_str());
    if (target == nullptr || !ns.isA(target->getName(), declaredClass)) {
        fail(place, std::string("\"") + path.getClassName().c_str() + "\" is no class derived from \"" +
                        declaredClass.c_str() + "\"");
    }
    try {
        return path.syncWithClass(*target);
    } catch (const Exception& error) {
        fail(place, std::string("the reference does not fit its class: ") + error.getMessage());
    }
}

} // namespace cimserver::schema
