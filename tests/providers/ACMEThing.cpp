// A provider as somebody else would write it for an OpenWBEM object manager: one header, instances in memory, a method,
// an association and a secondary provider. It writes on standard output and holds a text that is not UTF-8, as
// providers do.
#include "OW_CppProviderIncludes.hpp"

#include <algorithm>
#include <cstdint>
#include <cstdlib>
#include <iostream>
#include <map>
#include <stdexcept>
#include <string>
#include <thread>

using namespace OpenWBEM;
using namespace OpenWBEM::WBEMFlags;

namespace {

typedef std::map<std::string, CIMInstance> Things;
typedef const ProviderEnvironmentIFCRef& Env;
typedef const String& Text;
typedef const CIMObjectPath& Path;
typedef CIMObjectPathResultHandlerIFC Paths;
typedef CIMInstanceResultHandlerIFC Instances;
typedef const StringArray* List;

template <class T>
Array<T> two(const T& a, const T& b) {
    Array<T> result;
    result.push_back(a);
    result.push_back(b);
    return result;
}

/// Keeps a diary of the watched things and shows it in them; hides those named "hidden", objects to "objected".
class Diary : public CppSecondaryInstanceProviderIFC {
  public:
    void getSecondaryInstanceProviderInfo(SecondaryInstanceProviderInfo& info) override {
        info.addInstrumentedClass("acme_watched");
        info.addInstrumentedClass("ACME_Shelf");
    }
    void filterInstances(const ProviderEnvironmentIFCRef&, const String&, const String& className,
                         CIMInstanceArray& instances, ELocalOnlyFlag, EDeepFlag, EIncludeQualifiersFlag,
                         EIncludeClassOriginFlag, const StringArray*, const CIMClass&, const CIMClass&) override {
        instances[0].setProperty("Diary", CIMValue(m_pages + "seen as " + className));
        if (instances[0].getPropertyValue("Name").toString().equals("hidden")) {
            instances.clear();
        }
    }
    void createInstance(const ProviderEnvironmentIFCRef&, const String&, const CIMInstance& made) override {
        if (made.getPropertyValue("Name").toString().equals("objected")) {
            OW_THROWCIMMSG(CIMException::FAILED, "an objection");
        }
        m_pages += "created " + made.getClassName() + ", ";
    }
    void modifyInstance(const ProviderEnvironmentIFCRef&, const String&, const CIMInstance& modified,
                        const CIMInstance& previous, EIncludeQualifiersFlag, const StringArray*,
                        const CIMClass&) override {
        m_pages += "modified " + modified.getClassName() + " " + previous.getPropertyValue("Diary").toString() + ", ";
    }
    void deleteInstance(const ProviderEnvironmentIFCRef&, const String&, const CIMObjectPath& path) override {
        m_pages += "deleted " + path.getClassName() + ", ";
    }

  private:
    String m_pages;
};

class ACMEThing : public CppMethodProviderIFC, public CppAssociatorProviderIFC {
  public:
    void initialize(Env env) override {
        std::cout << "ACMEThing: ready" << std::endl;
        env->getLogger("acme.thing")->logInfo("ACMEThing is ready");
        addThing("full", "ACME_Thing");
        fill(m_things["full"]);
        addThing("empty", "ACME_Thing");
        addThing("latin", "ACME_Thing");
        m_things["latin"].setProperty(CIMProperty("Text", CIMValue("caf\xe9\x01")));
        addThing("crate", "ACME_Crate");
        addThing("special", "ACME_SpecialThing");
        m_things["special"].setProperty("Speciality", CIMValue("everything"));
    }

    void enumInstanceNames(Env, Text ns, Text className, Paths& result, const CIMClass&) override {
        if (className.equalsIgnoreCase("ACME_Slot")) {
            result.handle(slotPath(ns, 1));
            result.handle(slotPath(ns, 2));
        } else if (className.equalsIgnoreCase("ACME_ThingInSlot")) {
            result.handle(CIMObjectPath(ns, link(ns)));
        } else {
            for (const auto& thing : m_things) {
                if (thing.second.getClassName().equalsIgnoreCase(className)) {
                    result.handle(CIMObjectPath(ns, thing.second));
                }
            }
        }
    }

    CIMInstance getInstance(Env, Text ns, Path path, ELocalOnlyFlag localOnly, EIncludeQualifiersFlag,
                            EIncludeClassOriginFlag origin, List propertyList, const CIMClass& cimClass) override {
        if (path.getClassName().equalsIgnoreCase("ACME_Slot")) {
            return slot(path.getKeyValue("Number"), cimClass);
        }
        if (path.getClassName().equalsIgnoreCase("ACME_ThingInSlot")) {
            return link(ns);
        }
        if (path.getKeyValue("Name").toString().equals("stuck")) {
            OW_THROWCIM(CIMException::FAILED);
        }
        return find(path).clone(localOnly, E_INCLUDE_QUALIFIERS, origin, propertyList);
    }

    CIMObjectPath createInstance(Env, Text ns, const CIMInstance& instance) override {
        const std::string name = instance.getPropertyT("Name").getValueT().toString().c_str();
        if (m_things.count(name) != 0) {
            OW_THROWCIMMSG(CIMException::ALREADY_EXISTS, name.c_str());
        }
        m_things[name] = instance;
        return CIMObjectPath(ns, instance);
    }

    void modifyInstance(Env, Text ns, const CIMInstance& modified, const CIMInstance&, EIncludeQualifiersFlag,
                        List propertyList, const CIMClass& cimClass) override {
        CIMInstance& thing = find(CIMObjectPath(ns, modified));
        for (const CIMProperty& declared : cimClass.getAllProperties()) {
            if (listed(propertyList, declared.getName())) {
                CIMProperty property(declared.getName(), declared.getDataType());
                thing.setProperty(property.setValue(modified.getPropertyValue(declared.getName())));
            }
        }
    }

    void deleteInstance(Env, Text, Path path) override {
        find(path);
        m_things.erase(path.getKeyValue("Name").toString().c_str());
    }

    CIMValue invokeMethod(Env env, Text ns, Path, Text method, const CIMParamValueArray& in,
                          CIMParamValueArray& out) override {
        if (method.equalsIgnoreCase("Add")) {
            const UInt32 b = in[1].getValue() ? in[1].getValue().toUInt32() : 0;
            out[0].setValue(CIMValue(UInt64(in[0].getValue().toUInt32()) + b));
            return CIMValue(UInt32(0));
        }
        if (method.equalsIgnoreCase("Reverse")) {
            const std::string text = in[0].getValue() ? in[0].getValue().toString().c_str() : "";
            out[0].setValue(CIMValue(std::string(text.rbegin(), text.rend()).c_str()));
            return out[0].getValue();
        }
        if (method.equalsIgnoreCase("Relabel")) {
            return in[0].getValue();
        }
        if (method.equalsIgnoreCase("Count")) {
            return CIMValue(UInt32(env->getCIMOMHandle()->enumInstanceNamesA(ns, "ACME_Thing").size()));
        }
        failAs(in[0].getValue() ? in[0].getValue().toString() : String());
        return CIMValue(CIMNULL);
    }

    void associators(Env env, Instances& result, Text ns, Path object, Text, Text resultClass, Text role,
                     Text resultRole, EIncludeQualifiersFlag, EIncludeClassOriginFlag, List) override {
        if (const CIMObjectPath other = otherEnd(ns, object, role, resultRole, resultClass)) {
            result.handle(env->getCIMOMHandle()->getInstance(ns, other));
        }
    }

    void associatorNames(Env, Paths& result, Text ns, Path object, Text, Text resultClass, Text role,
                         Text resultRole) override {
        if (const CIMObjectPath other = otherEnd(ns, object, role, resultRole, resultClass)) {
            result.handle(other);
        }
    }

    void references(Env, Instances& result, Text ns, Path object, Text, Text role, EIncludeQualifiersFlag,
                    EIncludeClassOriginFlag, List) override {
        if (otherEnd(ns, object, role)) {
            result.handle(link(ns));
        }
    }

    void referenceNames(Env, Paths& result, Text ns, Path object, Text, Text role) override {
        if (otherEnd(ns, object, role)) {
            result.handle(CIMObjectPath(ns, link(ns)));
        }
    }

    CppSecondaryInstanceProviderIFC* getSecondaryInstanceProvider() override { return &m_diary; }

  private:
    static CIMProperty key(Text name, const CIMValue& value) {
        CIMProperty property(name, value);
        return property.addQualifier(CIMQualifier::createKeyQualifier());
    }

    void addThing(Text name, Text className) {
        CIMInstance thing(className);
        m_things[name.c_str()] = thing.setProperty(key("Name", CIMValue(name)));
    }

    /// Every type, with a qualifier of its own on one of the properties.
    static void fill(CIMInstance& thing) {
        thing.setProperty("U8", CIMValue(UInt8(255))).setProperty("S8", CIMValue(Int8(-128)));
        thing.setProperty("U16", CIMValue(UInt16(65535))).setProperty("S16", CIMValue(Int16(-32768)));
        thing.setProperty("U32", CIMValue(UInt32(4294967295u))).setProperty("S32", CIMValue(Int32(-2147483647)));
        thing.setProperty("U64", CIMValue(~UInt64(0))).setProperty("S64", CIMValue(Int64(-5)));
        thing.setProperty("R32", CIMValue(Real32(1.5))).setProperty("R64", CIMValue(Real64(-0.25)));
        thing.setProperty("Letter", CIMValue(Char16('A')));
        CIMProperty flag("Flag", CIMValue(true));
        CIMQualifier applicable("Applicable");
        thing.setProperty(flag.addQualifier(applicable.setValue(CIMValue(false))));
        thing.setProperty("Text", CIMValue("<a> & \"b\""));
        thing.setProperty("When", CIMValue(CIMDateTime(String("20240229235959.123456+060"))));
        thing.setProperty("HowLong", CIMValue(CIMDateTime(String("00000001020304.000000:000"))));
        thing.setProperty("Numbers", CIMValue(two<UInt16>(1, 2)));
        thing.setProperty("Texts", CIMValue(two<String>("", "x y")));
        thing.setProperty("Flags", CIMValue(two<Bool>(true, false)));
        thing.setProperty("Times", CIMValue(two(CIMDateTime(String("20240101000000.000000+000")), CIMDateTime())));
    }

    static bool listed(List list, Text name) {
        const auto isName = [&name](Text each) { return each.equalsIgnoreCase(name); };
        return list == nullptr || std::any_of(list->begin(), list->end(), isName);
    }

    CIMInstance& find(Path path) {
        const Things::iterator found = m_things.find(path.getKeyValue("Name").toString().c_str());
        if (found == m_things.end()) {
            OW_THROWCIMMSG(CIMException::NOT_FOUND, path.toString().c_str());
        }
        return found->second;
    }

    static CIMObjectPath slotPath(Text ns, UInt16 number) {
        CIMObjectPath path("ACME_Slot", ns);
        return path.setKeyValue("Number", CIMValue(number));
    }

    static CIMInstance slot(const CIMValue& number, const CIMClass& cimClass) {
        if (!number || number.toUInt16() < 1 || number.toUInt16() > 2) {
            OW_THROWCIM(CIMException::NOT_FOUND);
        }
        CIMInstance instance = cimClass.newInstance();
        return instance.setProperty("Number", number).setProperty("Label", CIMValue("slot " + number.toString()));
    }

    /// The thing "full" lies in slot 1.
    static CIMInstance link(Text ns) {
        CIMObjectPath thing("ACME_Thing", ns);
        CIMInstance instance("ACME_ThingInSlot");
        instance.setProperty(CIMProperty("Thing", CIMValue(thing.setKeyValue("Name", CIMValue("full")))));
        return instance.setProperty(CIMProperty("Slot", CIMValue(slotPath(ns, 1))));
    }

    /// What the link joins with the object, when the object plays the role, and the other the result role and is of the
    /// result class.
    static CIMObjectPath otherEnd(Text ns, Path object, Text role, Text resultRole = "", Text resultClass = "") {
        const CIMInstance both = link(ns);
        for (const char* end : {"Thing", "Slot"}) {
            const String other = String(end).equals("Thing") ? "Slot" : "Thing";
            const CIMObjectPath result = both.getPropertyValue(other).toCIMObjectPath();
            if ((role.empty() || role.equals(end)) && (resultRole.empty() || resultRole.equals(other)) &&
                (resultClass.empty() || resultClass.equalsIgnoreCase(result.getClassName())) &&
                object == both.getPropertyValue(end).toCIMObjectPath()) {
                return result;
            }
        }
        return CIMObjectPath(CIMNULL);
    }

    static void crash() {
        volatile std::uintptr_t nowhere = 16;
        *reinterpret_cast<volatile int*>(nowhere) = 1;
    }
    static int overflow(volatile int depth) {
        volatile char frame[4096];
        frame[0] = static_cast<char>(depth);
        return depth < 0 ? 0 : overflow(depth + 1) + frame[0];
    }

    static void failAs(Text how) {
        const std::map<std::string, void (*)()> ways = {
            {"cim", [] { OW_THROWCIMMSG(CIMException::ACCESS_DENIED, "keep <out>"); }},
            {"own code", [] { OW_THROWCIMMSG(CIMException::ErrNoType(30), "odd"); }},
            {"no text", [] { OW_THROWCIM(CIMException::FAILED); }},
            {"openwbem", [] { String("abc").toUInt32(); }},
            {"null object", [] { CIMInstance(CIMNULL).getProperties(); }},
            {"std", [] { throw std::runtime_error("out of paper"); }},
            {"crash", crash},
            {"crash in a thread", [] { std::thread(crash).join(); }},
            {"abort", [] { std::abort(); }},
            {"overflow", [] { overflow(0); }},
        };
        const auto way = ways.find(how.c_str());
        way == ways.end() ? throw 5 : way->second();
    }

    Things m_things;
    Diary m_diary;
};

} // namespace

OW_PROVIDERFACTORY(ACMEThing, ACMEThing)
