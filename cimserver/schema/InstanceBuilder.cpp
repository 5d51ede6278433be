#include "cimserver/schema/InstanceBuilder.hpp"

#include "cimserver/common/Text.hpp"
#include "cimserver/schema/Qualifiers.hpp"
#include "cimserver/schema/Values.hpp"

#include <set>

namespace cimserver::schema {

using namespace OpenWBEM;

namespace {

constexpr unsigned kDeepestReference = 8;
constexpr std::size_t kLongestPath = std::size_t{64} << 10;

const CIMClass& classOf(const ast::InstanceDeclaration& declaration, const Namespace& ns) {
    const CIMClass* const found = ns.findClass(declaration.className);
    if (found == nullptr) {
        fail(declaration.location, "the class \"" + declaration.className + "\" of the instance is not declared");
    }
    if (isTrue(found->getQualifiers(), "Abstract")) {
        fail(declaration.location, "the class \"" + declaration.className + "\" is abstract: it has no instances");
    }
    if (!found->isKeyed()) {
        fail(declaration.location, "the class \"" + declaration.className + "\" has no keys to name an instance by");
    }
    return *found;
}

/// Adds the namespace to a reference, and the keys' types to one within `ns`.
CIMObjectPath completeReference(const CIMObjectPath& written, const Namespace& ns, const String& declaredClass,
                                const Location& location) {
    CIMObjectPath path(written);
    if (path.getNameSpace().empty()) {
        path.setNameSpace(ns.name);
    }
    if (!written.getFullNameSpace().isLocal() || !equalsIgnoringCase(path.getNameSpace().c_str(), ns.name.c_str())) {
        return path;
    }
    const CIMClass* const target = ns.findClass(path.getClassName().c_str());
    if (target == nullptr || !ns.isA(target->getName(), declaredClass)) {
        fail(location, std::string("\"") + path.getClassName().c_str() + "\" is no class derived from \"" +
                           declaredClass.c_str() + "\"");
    }
    try {
        return path.syncWithClass(*target);
    } catch (const Exception& error) {
        fail(location, std::string("the reference does not fit its class: ") + error.getMessage());
    }
}

} // namespace

void InstanceBuilder::add(ast::InstanceDeclaration declaration, Namespace& ns) {
    items_.push_back({std::move(declaration), &ns, std::nullopt});
    const ast::InstanceDeclaration& added = items_.back().declaration;
    if (!added.alias.empty() && !aliases_.try_emplace(folded(added.alias), &items_.back()).second) {
        fail(added.location, "the alias \"$" + added.alias + "\" is given twice");
    }
}

void InstanceBuilder::finish() {
    for (Item& item : items_) {
        build(item);
    }
}

/// Makes and stores the instance, after those that its references name by alias.
const CIMObjectPath& InstanceBuilder::build(Item& item) {
    if (item.path) {
        return *item.path;
    }
    const Location& location = item.declaration.location;
    if (++depth_ > kDeepestReference) {
        fail(location, "references go in a circle or deeper than " + std::to_string(kDeepestReference));
    }
    const CIMClass& cimClass = classOf(item.declaration, *item.ns);
    CIMInstance instance = instanceOf(item, cimClass);
    CIMPropertyArray keys = cimClass.getKeys();
    for (CIMProperty& key : keys) {
        key.setValue(instance.getPropertyValue(CIMName(key.getName())));
        if (!key.getValue()) {
            fail(location, std::string("the key \"") + key.getName().c_str() + "\" of the instance of \"" +
                               item.declaration.className + "\" has no value");
        }
    }
    item.path = CIMObjectPath(CIMName(cimClass.getName()), keys).setNameSpace(item.ns->name);
    const std::string shown = item.path->modelPath().c_str();
    if (shown.size() > kLongestPath) {
        fail(location, "the keys are longer than " + std::to_string(kLongestPath) + " bytes");
    }
    const auto built = std::make_shared<const CIMInstance>(instance.setKeys(keys));
    if (!item.ns->instances.try_emplace(item.ns->instanceKey(*item.path), built).second) {
        fail(location, "the instance " + shown + " is declared already");
    }
    item.ns->instancesOf[item.declaration.className].push_back(built);
    --depth_;
    return *item.path;
}

CIMInstance InstanceBuilder::instanceOf(const Item& item, const CIMClass& cimClass) {
    CIMInstance instance = cimClass.newInstance();
    std::set<std::string> given;
    for (const ast::Initializer& one : item.declaration.initializers) {
        within(item.declaration.className + "." + one.name, [&] {
            CIMProperty property = cimClass.getProperty(CIMName(one.name.c_str()));
            if (!property) {
                fail(one.location, "the class has no such property");
            }
            if (!given.insert(folded(one.name)).second) {
                fail(one.location, "the property is given twice");
            }
            instance.setProperty(property.setValue(valueOf(item, one.value, property.getDataType())));
        });
    }
    return instance;
}

CIMValue InstanceBuilder::valueOf(const Item& item, const ast::Literal& written, const CIMDataType& type) {
    const CIMValue result = value(written, type, [&](const Token& alias) {
        const auto found = aliases_.find(folded(alias.text));
        if (found == aliases_.end()) {
            fail(alias.location, "there is no alias \"$" + alias.text + "\"");
        }
        return build(*found->second);
    });
    if (!result || !type.isReferenceType() || type.isArrayType()) {
        return result;
    }
    return CIMValue(completeReference(result.toCIMObjectPath(), *item.ns, type.getRefClassName(), written.location));
}

} // namespace cimserver::schema
