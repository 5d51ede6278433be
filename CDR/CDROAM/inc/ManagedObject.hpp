// What the managed classes share. A managed class is a family:
//
//   C                     a getter for each property, a setter for each that can be modified, an operation for each
//                         method; its own getters and setters do not reach the registry
//   CInstanceManager      the list of the live objects, by their keys (InstanceManager.hpp)
//   CImplInstanceManager  the instance manager that the provider installs
//   CImpl                 C over the configuration registry
//   CProvider             C as a CIM class
//
// The order of the virtual functions of C and of its managers is part of the interface.
#pragma once

#include "OW_Array.hpp"
#include "OW_CIMFwd.hpp"
#include "OW_CIMQualifier.hpp"

#include <string>

/// What a getter may add to a property: "Applicable" and "ValidValueMap".
using QualifierArray = OpenWBEM::Array<OpenWBEM::CIMQualifier>;

namespace cdroam {

/// Status values of accessors, as a provider shows them in a CIM error.
enum Status : int { Success = 0, ReadFailed = 100, WriteFailed = 101, ValueRefused = 301 };

/// Base of a managed class. An object lists itself with the instance manager that is current in its class's
/// constructor, and takes itself off the list of the manager that is current in its destructor.
template <class Manager>
class ManagedObject {
  public:
    using InstanceManager = Manager;

    ManagedObject(const ManagedObject&) = delete;
    ManagedObject& operator=(const ManagedObject&) = delete;
    virtual ~ManagedObject() = default;

    // The bracket around a group of changes; each returns 0 or a status.
    virtual int startChange() { return Success; }
    virtual int endChange() { return Success; }

    /// Makes the manager the current one and calls its init(); the previous one is left alone.
    static void SetInstanceManager(Manager* manager) {
        theInstanceManager = manager;
        manager->init();
    }
    /// Makes the default manager the current one again.
    static void ClearInstanceManager() { theInstanceManager = &defaultInstanceManager; }
    static Manager* getInstanceManager() { return theInstanceManager; }

  protected:
    ManagedObject() = default;

    /// Body of a key getter.
    static int showKey(const std::string& key, std::string& value) {
        value = key;
        return Success;
    }

    /// The key getters' values, concatenated. The key getters are never overridden, so a managed class's constructor
    /// and destructor may call it.
    template <class Object, class... Getters>
    static std::string concatenated(const Object& object, Getters... getters) {
        std::string all;
        const auto append = [&](auto getter) {
            std::string key;
            QualifierArray ignored;
            (void)(object.*getter)(key, ignored);
            all += key;
        };
        (append(getters), ...);
        return all;
    }

  private:
    inline static Manager defaultInstanceManager;
    inline static Manager* theInstanceManager = &defaultInstanceManager;
};

} // namespace cdroam
