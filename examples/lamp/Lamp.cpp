// An example of a provider: lamps that can be created, dimmed and deleted, and the rooms that they stand in.

#include "OW_CppProviderIncludes.hpp"
#include "OW_CppSimpleAssociatorProviderIFC.hpp"

#include <map>
#include <mutex>
#include <set>

using namespace OpenWBEM;

namespace {

struct Lamp {
    String room;
    UInt8 brightness;
    UInt8Array history;
};

typedef std::map<String, Lamp> Lamps; // by name

const UInt8 kFullBrightness = 100;
const size_t kLongestHistory = 20;

UInt8 checkedBrightness(const CIMValue& value) {
    const UInt8 brightness = value ? value.toUInt8() : UInt8(0);
    if (brightness > kFullBrightness) {
        OW_THROWCIMMSG(CIMException::INVALID_PARAMETER, Format("%1 is more than 100", UInt32(brightness)).c_str());
    }
    return brightness;
}

void dim(Lamp& lamp, UInt8 brightness) {
    if (lamp.history.size() == kLongestHistory) {
        lamp.history.remove(0);
    }
    lamp.history.push_back(lamp.brightness);
    lamp.brightness = brightness;
}

CIMObjectPath pathOf(const String& className, const String& name, const String& ns) {
    return CIMObjectPath(className, ns).setKeyValue("Name", CIMValue(name));
}

/// newInstance() brings the class's qualifiers along, among them Key: the object manager makes the instance's name from
/// the properties that have it.
CIMInstance lampInstance(const CIMClass& lampClass, const String& name, const Lamp& lamp) {
    return lampClass.newInstance()
        .setProperty("Name", CIMValue(name))
        .setProperty("Room", CIMValue(lamp.room))
        .setProperty("Brightness", CIMValue(lamp.brightness))
        .setProperty("History", CIMValue(lamp.history));
}

CIMInstance linkInstance(const CIMClass& linkClass, const String& ns, const String& name, const Lamp& lamp) {
    return linkClass.newInstance()
        .setProperty("Lamp", CIMValue(pathOf("EX_Lamp", name, ns)))
        .setProperty("Room", CIMValue(pathOf("EX_Room", lamp.room, ns)));
}

/// Reads may come from several threads at once. The lock guards the lamps only and is not held while results are passed
/// to the handler: for associators the library calls back into this provider then.
class LampProvider : public CppSimpleInstanceProviderIFC,
                     public CppMethodProviderIFC,
                     public CppSimpleAssociatorProviderIFC {
  public:
    virtual void initialize(const ProviderEnvironmentIFCRef& env) {
        env->getLogger("lamp")->logInfo("The lamps are ready");
        lamps_["desk"] = {"study", 40, UInt8Array()};
        lamps_["ceiling"] = {"hall", 0, UInt8Array()};
    }

    virtual void doSimpleEnumInstances(const ProviderEnvironmentIFCRef&, const String& ns, const CIMClass& cimClass,
                                       CIMInstanceResultHandlerIFC& result, EPropertiesFlag) {
        const Lamps lamps = copyOfLamps();
        std::set<String> rooms;
        for (const auto& entry : lamps) {
            if (cimClass.getName().equalsIgnoreCase("EX_Lamp")) {
                result.handle(lampInstance(cimClass, entry.first, entry.second));
            } else if (cimClass.getName().equalsIgnoreCase("EX_LampInRoom")) {
                result.handle(linkInstance(cimClass, ns, entry.first, entry.second));
            } else if (rooms.insert(entry.second.room).second) {
                result.handle(cimClass.newInstance().setProperty("Name", CIMValue(entry.second.room)));
            }
        }
    }

    virtual CIMObjectPath createInstance(const ProviderEnvironmentIFCRef&, const String& ns,
                                         const CIMInstance& instance) {
        demandLamp(instance.getClassName());
        const CIMValue name = instance.getPropertyValue("Name");
        const CIMValue room = instance.getPropertyValue("Room");
        if (!name || !room) {
            OW_THROWCIMMSG(CIMException::INVALID_PARAMETER, "a lamp has a name and a room");
        }
        const UInt8 brightness = checkedBrightness(instance.getPropertyValue("Brightness"));
        const std::lock_guard<std::mutex> lock(mutex_);
        if (!lamps_.insert(std::make_pair(name.toString(), Lamp{room.toString(), brightness, UInt8Array()})).second) {
            OW_THROWCIMMSG(CIMException::ALREADY_EXISTS, name.toString().c_str());
        }
        return pathOf("EX_Lamp", name.toString(), ns);
    }

    virtual void modifyInstance(const ProviderEnvironmentIFCRef&, const String&, const CIMInstance& modified,
                                const CIMInstance& previous, WBEMFlags::EIncludeQualifiersFlag, const StringArray*,
                                const CIMClass&) {
        demandLamp(modified.getClassName());
        // A property that the client did not send is null or missing here.
        if (!modified.propertyHasValue("Brightness")) {
            return;
        }
        const UInt8 brightness = checkedBrightness(modified.getPropertyValue("Brightness"));
        const std::lock_guard<std::mutex> lock(mutex_);
        dim(find(previous.getPropertyValue("Name")), brightness);
    }

    virtual void deleteInstance(const ProviderEnvironmentIFCRef&, const String&, const CIMObjectPath& path) {
        demandLamp(path.getClassName());
        const std::lock_guard<std::mutex> lock(mutex_);
        find(path.getKeyValue("Name"));
        lamps_.erase(path.getKeyValue("Name").toString());
    }

    virtual CIMValue invokeMethod(const ProviderEnvironmentIFCRef&, const String&, const CIMObjectPath& path,
                                  const String& method, const CIMParamValueArray& in, CIMParamValueArray& out) {
        const std::lock_guard<std::mutex> lock(mutex_);
        if (method.equalsIgnoreCase("Fade")) {
            return fade(find(path.getKeyValue("Name")), in, out);
        }
        return switchOff(in, out);
    }

  protected:
    virtual void doReferences(const ProviderEnvironmentIFCRef&, CIMInstanceResultHandlerIFC& result, const String& ns,
                              const CIMObjectPath& object, const CIMClass& linkClass, const String& resultClass,
                              const String& role, const String&) {
        const bool ofLamp = object.getClassName().equalsIgnoreCase("EX_Lamp");
        const String otherClass = ofLamp ? "EX_Room" : "EX_Lamp";
        if ((!resultClass.empty() && !resultClass.equalsIgnoreCase(otherClass)) ||
            (!role.empty() && !role.equalsIgnoreCase(ofLamp ? "Lamp" : "Room"))) {
            return;
        }
        const CIMValue wanted = object.getKeyValue("Name");
        const Lamps lamps = copyOfLamps();
        for (const auto& entry : lamps) {
            if (wanted == CIMValue(ofLamp ? entry.first : entry.second.room)) {
                result.handle(linkInstance(linkClass, ns, entry.first, entry.second));
            }
        }
    }

  private:
    static void demandLamp(const String& className) {
        if (!className.equalsIgnoreCase("EX_Lamp")) {
            OW_THROWCIMMSG(CIMException::NOT_SUPPORTED, "only lamps can be changed");
        }
    }

    Lamps copyOfLamps() {
        const std::lock_guard<std::mutex> lock(mutex_);
        return lamps_;
    }

    /// The lamp of that name, with the lock held.
    Lamp& find(const CIMValue& name) {
        const Lamps::iterator found = lamps_.find(name ? name.toString() : String());
        if (found == lamps_.end()) {
            OW_THROWCIMMSG(CIMException::NOT_FOUND, name.toString().c_str());
        }
        return found->second;
    }

    /// The input parameters come in the order of the class, null where the client sent none; the output parameters are
    /// already there, with their names and without values.
    static CIMValue fade(Lamp& lamp, const CIMParamValueArray& in, CIMParamValueArray& out) {
        const int target = checkedBrightness(in[0].getValue());
        const int steps = in[1].getValue() ? in[1].getValue().toUInt16() : 1;
        const int start = lamp.brightness;
        UInt8Array levels;
        for (int i = 1; i <= steps; ++i) {
            dim(lamp, UInt8(start + (target - start) * i / steps));
            levels.push_back(lamp.brightness);
        }
        out[0].setValue(CIMValue(levels));
        return CIMValue(UInt32(0));
    }

    CIMValue switchOff(const CIMParamValueArray& in, CIMParamValueArray& out) {
        const StringArray names = in[0].getValue() ? in[0].getValue().toStringArray() : StringArray();
        StringArray unknown;
        for (size_t i = 0; i < names.size(); ++i) {
            const Lamps::iterator found = lamps_.find(names[i]);
            if (found == lamps_.end()) {
                unknown.push_back(names[i]);
            } else {
                dim(found->second, 0);
            }
        }
        out[0].setValue(CIMValue(unknown));
        return CIMValue(UInt32(names.size() - unknown.size()));
    }

    std::mutex mutex_;
    Lamps lamps_;
};

} // namespace

OW_PROVIDERFACTORY(LampProvider, Lamp)
