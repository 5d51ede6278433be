#include "tests/cimserver/cimom/Fixture.hpp"

#include "OW_CppAssociatorProviderIFC.hpp"
#include "OW_CppMethodProviderIFC.hpp"

namespace cimserver::cimom {

namespace {

constexpr const char* kMof = R"MOF(
Qualifier Key : boolean = false, Scope(property, reference), Flavor(DisableOverride, ToSubclass);
Qualifier Provider : string = null, Scope(any);
Qualifier Abstract : boolean = false, Scope(class, association), Flavor(Restricted);
Qualifier Association : boolean = false, Scope(association), Flavor(DisableOverride, ToSubclass);
Qualifier In : boolean = true, Scope(parameter), Flavor(DisableOverride, ToSubclass);
Qualifier Out : boolean = false, Scope(parameter), Flavor(DisableOverride, ToSubclass);
Qualifier Required : boolean = false, Scope(parameter), Flavor(DisableOverride, ToSubclass);

[Provider("c++::Recorder")]
class T_Thing
{
    [Key] string Name;
    uint8 A;
    string B = "default";
    uint16 C[];
    uint32 Act([In, Required] uint8 Level, [In] string Note, [In, Out] string Both, [In(false), Out] uint16 Result);
};
[Provider("c++::Recorder")]
class T_Special : T_Thing { string Extra; };
[Provider("c++::Recorder"), Abstract]
class T_Idea { [Key] string Name; };
class T_Orphan { [Key] string Name; uint32 Act(); };
[Provider("c++::NoSuchProvider")]
class T_Broken { [Key] string Name; };
[Association, Provider("c++::Recorder")]
class T_Link { [Key] T_Thing REF Left; [Key] T_Orphan REF Right; };
[Association, Provider("c++::Recorder")]
class T_SpecialLink : T_Link {};
[Association, Provider("c++::Recorder")]
class T_Elsewhere { [Key] T_Idea REF Left; [Key] T_Orphan REF Right; };
)MOF";

} // namespace

std::string shown(const StringArray* list) {
    std::string result = list != nullptr ? "" : "all";
    for (std::size_t i = 0; list != nullptr && i < list->size(); ++i) {
        result += std::string(i > 0 ? "," : "") + (*list)[i].c_str();
    }
    return result;
}

std::string shown(const CIMPropertyArray& properties) {
    std::string result;
    for (const CIMProperty& p : properties) {
        result += std::string(result.empty() ? "" : " ") + p.getName().c_str() + "=" + p.getValue().toString().c_str();
    }
    return result;
}

namespace {

using Env = const ProviderEnvironmentIFCRef&;
using Text = const String&;
using Path = const CIMObjectPath&;
using Paths = CIMObjectPathResultHandlerIFC;
using Instances = CIMInstanceResultHandlerIFC;
using List = const StringArray*;
using Origin = WBEMFlags::EIncludeClassOriginFlag;
using Qualifiers = WBEMFlags::EIncludeQualifiersFlag;

class Recorder : public CppMethodProviderIFC, public CppAssociatorProviderIFC {
  public:
    explicit Recorder(Record& record) : record_(record) {}

    void enumInstanceNames(Env env, Text ns, Text className, Paths& result, const CIMClass&) override {
        note(env, std::string("names ") + ns.c_str() + " " + className.c_str());
        if (record_.present && className.equalsIgnoreCase(record_.present.getClassName())) {
            result.handle(CIMObjectPath("", record_.present));
        }
    }
    void enumInstances(Env env, Text ns, Text className, Instances& result, WBEMFlags::ELocalOnlyFlag,
                       WBEMFlags::EDeepFlag, Qualifiers, Origin, List list, const CIMClass& requestedClass,
                       const CIMClass& cimClass) override {
        note(env, std::string("enum ") + ns.c_str() + " " + className.c_str() + " for " +
                      requestedClass.getName().c_str() + " " + shown(list));
        if (cimClass.getName().equalsIgnoreCase(requestedClass.getName())) {
            result.handle(record_.present);
        }
    }
    CIMInstance getInstance(Env env, Text ns, Path path, WBEMFlags::ELocalOnlyFlag, Qualifiers, Origin, List list,
                            const CIMClass&) override {
        note(env, std::string("get ") + ns.c_str() + " " + path.toString().c_str() + " " + shown(list));
        return record_.present;
    }
    CIMObjectPath createInstance(Env env, Text, const CIMInstance& instance) override {
        note(env, "create " + shown(instance.getProperties()));
        return record_.created;
    }
    void modifyInstance(Env env, Text ns, const CIMInstance& modified, const CIMInstance& previous, Qualifiers,
                        List list, const CIMClass&) override {
        note(env, "modify " + shown(modified.getProperties()) + " [" + shown(list) + "] of " +
                      CIMObjectPath(ns, modified).toString().c_str() + (previous ? "" : " without previous"));
        record_.handed = modified;
    }
    void deleteInstance(Env env, Text, Path path) override {
        note(env, std::string("delete ") + path.toString().c_str());
    }
    CIMValue invokeMethod(Env env, Text, Path path, Text method, const CIMParamValueArray& in,
                          CIMParamValueArray& out) override {
        note(env, std::string("invoke ") + method.c_str() + " " + path.toString().c_str());
        record_.in = in;
        for (std::size_t i = 0; i < out.size() && i < record_.out.size(); ++i) {
            out[i].setValue(record_.out[i].getValue());
        }
        return CIMValue(UInt32(7));
    }
    void associatorNames(Env env, Paths& result, Text, Path object, Text assoc, Text resultClass, Text role,
                         Text resultRole) override {
        note(env, std::string("associatorNames ") + object.toString().c_str() + " " + assoc.c_str() + "|" +
                      resultClass.c_str() + "|" + role.c_str() + "|" + resultRole.c_str());
        result.handle(CIMObjectPath("", record_.present));
    }
    void associators(Env, Instances&, Text, Path, Text, Text, Text, Text, Qualifiers, Origin, List) override {}
    void references(Env, Instances&, Text, Path, Text, Text, Qualifiers, Origin, List) override {}
    void referenceNames(Env, Paths&, Text, Path, Text, Text) override {}

  private:
    void note(Env env, const std::string& call) {
        record_.calls.push_back(call);
        record_.env = env;
        if (const auto script = record_.beforeReply) { // a copy: it may replace itself
            script();
        }
    }

    Record& record_;
};

} // namespace

CimomTest::CimomTest() : cimom(repository, host, {}) {
    addInterop(repository, host);
    repository.compileText(kMof, "t.mof", "root/test");
    host.addBuiltIn("Recorder", [this] { return new Recorder(record); });
    CIMInstance thing("T_Thing");
    CIMProperty name = text("Name", "one");
    thing.setProperty(name.addQualifier(CIMQualifier::createKeyQualifier()));
    thing.setProperty(CIMProperty(CIMName("A"), CIMValue(UInt8(5))));
    record.present = thing.setProperty(text("B", "old"));
}

CIMObjectPath CimomTest::path(const char* className, const char* name) {
    CIMObjectPath result((CIMName(className)));
    return result.setKeyValue(CIMName("name"), CIMValue(name));
}

std::string CimomTest::names(const char* className) {
    CIMObjectPathArray all;
    CIMObjectPathArrayBuilder builder(all);
    cimom.enumInstanceNames(context, "root/test", className, builder);
    std::string texts;
    for (const CIMObjectPath& name : all) {
        texts += name.toString().c_str();
    }
    return texts;
}

CIMInstanceArray CimomTest::instances(const char* className, const InstanceSelection& selection) {
    CIMInstanceArray all;
    CIMInstanceArrayBuilder builder(all);
    cimom.enumInstances(context, "root/test", className, selection, builder);
    return all;
}

} // namespace cimserver::cimom
