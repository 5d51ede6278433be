// What a per-class provider does, written once for all classes.
#pragma once

#include "CFG_Exception.hpp"
#include "PropertyRow.hpp"
#include "RequestLock.hpp"

#include "OW_CIM.hpp"
#include "OW_CppInstanceProviderIFC.hpp"
#include "OW_CppMethodProviderIFC.hpp"

#include <array>
#include <cstddef>
#include <string>
#include <tuple>
#include <type_traits>
#include <vector>

namespace cdroam {

/// Raises CIM error 1 with the status in decimal as its message.
[[noreturn]] void throwFailed(const char* source, int line, int status);

/// How many keys an instance manager's operation takes.
template <class Manager, class Object, class... Keys>
constexpr std::size_t countKeys(Object* (Manager::* /*operation*/)(Keys...)) {
    return sizeof...(Keys);
}

/// Serves the instance and method operations of a CIM class over the live objects of its managed class. `Provider` is
/// the class's provider, which derives from this; `ManagedType` is the managed class, const when its getters are const;
/// `InstalledManager` is the instance manager that `initialize` installs.
///
/// A CIM error is an OpenWBEM::CIMException with the provider's source file; other exceptions of the framework and the
/// accessors pass through. Request flags, property lists and passed-in classes are ignored.
template <class Provider, class ManagedType, class InstalledManager>
class ClassProvider : public OpenWBEM::CppMethodProviderIFC, public OpenWBEM::CppInstanceProviderIFC {
  public:
    using Object = std::remove_const_t<ManagedType>;
    using Managed = ManagedType;
    using Manager = typename Object::InstanceManager;

    /// The operations named after the class; the CIM operations call these.
    struct NamedOperations {
        /// Fills the instance with the object's properties and keys; a property that cannot be read is left out.
        void (Provider::*toInstance)(const OpenWBEM::String& ns, Managed& object,
                                     OpenWBEM::CIMInstance& instance) const;
        /// Replaces the path's keys with the object's.
        void (Provider::*toPath)(const Object& object, OpenWBEM::CIMObjectPath& path) const;
        /// The object that the keys name; CIM error 6 when a key is absent or null, or there is no such object.
        Object* (Provider::*ofPath)(const OpenWBEM::CIMObjectPath& path) const;
        Object* (Provider::*ofInstance)(const OpenWBEM::CIMInstance& instance) const;
        /// Applies the instance's properties to the object, in their order. CIM error 4 for a refused value, 1 with the
        /// status as message for a failure; what was applied before stays.
        void (Provider::*modify)(Object& object, const OpenWBEM::CIMInstance& instance) const;
        /// The instance manager's operations named after the class.
        decltype(&Manager::get) create;
        void (Manager::*destroy)(Object* object);
    };

    /// What differs between classes.
    struct Definition {
        OpenWBEM::CIMName className;
        const char* source;                           ///< the file that its CIM errors carry
        std::vector<PropertyRow<Managed>> properties; ///< in the order in which instances show them
        std::vector<MethodRow<Object>> methods;
        NamedOperations operations;
        /// Whether changes of a single property may run together; a change of several is always alone.
        ChangeLock::Sharing singleChanges = ChangeLock::Sharing::Alone;
    };

    /// CIM error 17 for an unknown method, 6 for an unknown object; otherwise the operation's result as uint32.
    OpenWBEM::CIMValue invokeMethod(const OpenWBEM::ProviderEnvironmentIFCRef& /*env*/, const OpenWBEM::String& /*ns*/,
                                    const OpenWBEM::CIMObjectPath& path, const OpenWBEM::String& methodName,
                                    const OpenWBEM::CIMParamValueArray& /*in*/,
                                    OpenWBEM::CIMParamValueArray& /*out*/) override {
        for (const MethodRow<Object>& row : definition().methods) {
            if (methodName.equals(row.name)) {
                return OpenWBEM::CIMValue(OpenWBEM::UInt32((objectOf(path)->*row.run)()));
            }
        }
        throw OpenWBEM::CIMException(definition().source, SourceLine::kUnknownMethod,
                                     OpenWBEM::CIMException::METHOD_NOT_FOUND);
    }

    /// Installs a new instance manager, which does not list objects made before.
    void initialize(const OpenWBEM::ProviderEnvironmentIFCRef& /*env*/) override {
        // Never freed: the objects it lists live as long as the process.
        Object::SetInstanceManager(new InstalledManager);
    }

    void enumInstanceNames(const OpenWBEM::ProviderEnvironmentIFCRef& /*env*/, const OpenWBEM::String& ns,
                           const OpenWBEM::String& className, OpenWBEM::CIMObjectPathResultHandlerIFC& result,
                           const OpenWBEM::CIMClass& /*cimClass*/) override {
        OpenWBEM::CIMObjectPath path(className, ns);
        forEach([&](Object& object) {
            toPath(object, path);
            result.handle(path);
        });
    }

    /// All objects are written into the same CIMInstance in turn: a property that cannot be read keeps an earlier
    /// object's value. That is deliberate.
    void enumInstances(const OpenWBEM::ProviderEnvironmentIFCRef& /*env*/, const OpenWBEM::String& ns,
                       const OpenWBEM::String& /*className*/, OpenWBEM::CIMInstanceResultHandlerIFC& result,
                       OpenWBEM::WBEMFlags::ELocalOnlyFlag /*localOnly*/, OpenWBEM::WBEMFlags::EDeepFlag /*deep*/,
                       OpenWBEM::WBEMFlags::EIncludeQualifiersFlag /*includeQualifiers*/,
                       OpenWBEM::WBEMFlags::EIncludeClassOriginFlag /*includeClassOrigin*/,
                       const OpenWBEM::StringArray* /*propertyList*/, const OpenWBEM::CIMClass& /*requestedClass*/,
                       const OpenWBEM::CIMClass& /*cimClass*/) override {
        OpenWBEM::CIMInstance instance(definition().className);
        forEach([&](Object& object) {
            toInstance(ns, object, instance);
            result.handle(instance);
        });
    }

    /// CIM error 6 for an unknown object.
    OpenWBEM::CIMInstance getInstance(const OpenWBEM::ProviderEnvironmentIFCRef& /*env*/, const OpenWBEM::String& ns,
                                      const OpenWBEM::CIMObjectPath& instanceName,
                                      OpenWBEM::WBEMFlags::ELocalOnlyFlag /*localOnly*/,
                                      OpenWBEM::WBEMFlags::EIncludeQualifiersFlag /*includeQualifiers*/,
                                      OpenWBEM::WBEMFlags::EIncludeClassOriginFlag /*includeClassOrigin*/,
                                      const OpenWBEM::StringArray* /*propertyList*/,
                                      const OpenWBEM::CIMClass& /*cimClass*/) override {
        Object* const object = objectOf(instanceName);
        OpenWBEM::CIMInstance instance(definition().className);
        toInstance(ns, *object, instance);
        return instance;
    }

    /// CIM error 7 with every manager of the module. With a manager that can create, the new object is modified like an
    /// existing one, and destroyed again when that gives a CIM error.
    OpenWBEM::CIMObjectPath createInstance(const OpenWBEM::ProviderEnvironmentIFCRef& /*env*/,
                                           const OpenWBEM::String& ns,
                                           const OpenWBEM::CIMInstance& cimInstance) override {
        Object* const object = create(cimInstance);
        try {
            modify(*object, cimInstance);
        } catch (const OpenWBEM::CIMException& failure) {
            destroy(object);
            throw OpenWBEM::CIMException(failure);
        }
        OpenWBEM::CIMObjectPath path(definition().className.toString(), ns);
        toPath(*object, path);
        return path;
    }

    /// CIM error 6 for an unknown object, otherwise 7 with every manager of the module.
    void deleteInstance(const OpenWBEM::ProviderEnvironmentIFCRef& /*env*/, const OpenWBEM::String& /*ns*/,
                        const OpenWBEM::CIMObjectPath& cop) override {
        Object* const object = objectOf(cop);
        try {
            destroy(object);
        } catch (const CFG_InstanceDeletionFailed&) {
            throw OpenWBEM::CIMException(definition().source, __LINE__, OpenWBEM::CIMException::NOT_SUPPORTED);
        }
    }

    /// CIM error 6 for an unknown object; otherwise the errors of NamedOperations::modify.
    void modifyInstance(const OpenWBEM::ProviderEnvironmentIFCRef& /*env*/, const OpenWBEM::String& /*ns*/,
                        const OpenWBEM::CIMInstance& modifiedInstance,
                        const OpenWBEM::CIMInstance& /*previousInstance*/,
                        OpenWBEM::WBEMFlags::EIncludeQualifiersFlag /*includeQualifiers*/,
                        const OpenWBEM::StringArray* /*propertyList*/,
                        const OpenWBEM::CIMClass& /*theClass*/) override {
        modify(*objectOf(modifiedInstance), modifiedInstance);
    }

    /// Does nothing: the installed manager and its objects stay.
    void cleanup() {}

  protected:
    using CIMInstance = OpenWBEM::CIMInstance;
    using CIMObjectPath = OpenWBEM::CIMObjectPath;
    using String = OpenWBEM::String;

    // The bodies of the named operations.

    void fillInstance(Managed& object, OpenWBEM::CIMInstance& instance) const {
        OpenWBEM::CIMPropertyArray properties;
        OpenWBEM::CIMPropertyArray keys;
        properties.reserve(definition().properties.size());
        keys.reserve(kKeys);
        for (const PropertyRow<Managed>& row : definition().properties) {
            OpenWBEM::CIMValue value(OpenWBEM::CIMNULL);
            QualifierArray qualifiers;
            if (row.readProperty(object, value, qualifiers) != Success) {
                continue;
            }
            OpenWBEM::CIMProperty property(row.name, value);
            if (row.isKey()) {
                keys.push_back(property);
            }
            if (!qualifiers.empty()) {
                property.setQualifiers(qualifiers);
            }
            properties.push_back(property);
        }
        if (properties.size() == definition().properties.size()) {
            instance.setProperties(properties);
        } else {
            for (const OpenWBEM::CIMProperty& property : properties) {
                instance.setProperty(property); // a property that cannot be read stays as it was
            }
        }
        // An object manager builds the instance's name from its keys, not from its properties.
        instance.setKeys(keys);
    }

    void fillPath(const Object& object, OpenWBEM::CIMObjectPath& path) const {
        OpenWBEM::CIMPropertyArray keys;
        for (const PropertyRow<Managed>& row : definition().properties) {
            if (!row.isKey()) {
                continue;
            }
            OpenWBEM::CIMValue value(OpenWBEM::CIMNULL);
            if (row.readKey(object, value) != Success) {
                throwNotFound(__LINE__);
            }
            keys.push_back(OpenWBEM::CIMProperty(row.name, value));
        }
        path.setKeys(keys);
    }

    Object* find(const OpenWBEM::CIMObjectPath& path) const {
        return findBy([&path](const OpenWBEM::CIMName& name) { return path.getKey(name); });
    }

    Object* find(const OpenWBEM::CIMInstance& instance) const {
        return findBy([&instance](const OpenWBEM::CIMName& name) { return instance.getProperty(name); });
    }

    /// Skips null values and properties that cannot be modified. Stops at the first failure, without endChange().
    void apply(Object& object, const OpenWBEM::CIMInstance& instance) const {
        const std::vector<Change> wanted = changesIn(instance);
        const ChangeLock lock(wanted.size() > 1 ? ChangeLock::Sharing::Alone : definition().singleChanges);
        requireSuccess(object.startChange(), SourceLine::kStartChange);
        for (const Change& change : wanted) {
            requireSuccess(change.row->write(object, change.value, *change.row, definition().source),
                           SourceLine::kSetter);
        }
        requireSuccess(object.endChange(), SourceLine::kEndChange);
    }

  private:
    static constexpr std::size_t kKeys = countKeys(&Manager::get);
    using Keys = std::array<std::string, kKeys>;

    static const Definition& definition() { return Provider::definition(); }
    const Provider& provider() const { return static_cast<const Provider&>(*this); }

    // Calls of the named operations.
    void toInstance(const OpenWBEM::String& ns, Managed& object, OpenWBEM::CIMInstance& instance) const {
        (provider().*definition().operations.toInstance)(ns, object, instance);
    }
    void toPath(const Object& object, OpenWBEM::CIMObjectPath& path) const {
        (provider().*definition().operations.toPath)(object, path);
    }
    Object* objectOf(const OpenWBEM::CIMObjectPath& path) const {
        return (provider().*definition().operations.ofPath)(path);
    }
    Object* objectOf(const OpenWBEM::CIMInstance& instance) const {
        return (provider().*definition().operations.ofInstance)(instance);
    }
    void modify(Object& object, const OpenWBEM::CIMInstance& instance) const {
        (provider().*definition().operations.modify)(object, instance);
    }
    static void destroy(Object* object) { (Object::getInstanceManager()->*definition().operations.destroy)(object); }

    static void requireSuccess(int status, int line) {
        if (status != Success) {
            throwFailed(definition().source, line, status);
        }
    }

    [[noreturn]] static void throwNotFound(int line) {
        throw OpenWBEM::CIMException(definition().source, line, OpenWBEM::CIMException::NOT_FOUND);
    }

    template <class Use>
    static void forEach(Use use) {
        Object::getInstanceManager()->startIteration();
        while (Object::getInstanceManager()->hasNext()) {
            use(*Object::getInstanceManager()->next());
        }
        Object::getInstanceManager()->endIteration();
    }

    struct Change {
        const PropertyRow<Managed>* row;
        OpenWBEM::CIMValue value;
    };

    static std::vector<Change> changesIn(const OpenWBEM::CIMInstance& instance) {
        std::vector<Change> changes;
        const OpenWBEM::CIMPropertyArray properties = instance.getProperties();
        for (const OpenWBEM::CIMProperty& property : properties) {
            const PropertyRow<Managed>* const row = writableRow(property.getName());
            const OpenWBEM::CIMValue value = property.getValue();
            if (row != nullptr && value) {
                changes.push_back({row, value});
            }
        }
        return changes;
    }

    static const PropertyRow<Managed>* writableRow(const OpenWBEM::String& name) {
        for (const PropertyRow<Managed>& row : definition().properties) {
            if (row.write != nullptr && name.equals(row.name.toString())) {
                return &row;
            }
        }
        return nullptr;
    }

    /// Calls `keyValue` with the name of each key, in the order of the properties, and gathers the texts it returns.
    template <class KeyValue>
    static Keys gatherKeys(KeyValue keyValue) {
        Keys keys;
        std::size_t filled = 0;
        for (const PropertyRow<Managed>& row : definition().properties) {
            if (row.isKey()) {
                keys.at(filled++) = keyValue(row.name);
            }
        }
        return keys;
    }

    template <class KeyProperty>
    static Object* findBy(KeyProperty keyProperty) {
        const Keys keys = gatherKeys([&keyProperty](const OpenWBEM::CIMName& name) {
            const OpenWBEM::CIMProperty property = keyProperty(name);
            if (!property || !property.getValue()) {
                throwNotFound(__LINE__);
            }
            return std::string(property.getValue().toString().c_str());
        });
        try {
            return callWith(&Manager::get, keys);
        } catch (const CFG_NoInstance&) {
            throwNotFound(__LINE__);
        }
    }

    static Object* create(const OpenWBEM::CIMInstance& instance) {
        const Keys keys = gatherKeys([&instance](const OpenWBEM::CIMName& name) {
            const OpenWBEM::CIMProperty property = instance.getProperty(name);
            const bool given = property && property.getValue();
            return std::string(given ? property.getValue().toString().c_str() : "");
        });
        try {
            return callWith(definition().operations.create, keys);
        } catch (const CFG_InstanceCreationFailed&) {
            throw OpenWBEM::CIMException(definition().source, __LINE__, OpenWBEM::CIMException::NOT_SUPPORTED);
        }
    }

    /// Calls an operation of the current manager that takes the key values.
    template <class Operation>
    static Object* callWith(Operation operation, const Keys& keys) {
        return std::apply(
            [operation](const auto&... key) { return (Object::getInstanceManager()->*operation)(key...); }, keys);
    }
};

} // namespace cdroam
