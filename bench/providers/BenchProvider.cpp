// Ten instances of 25 properties, held in memory: what is left of a request's cost when the provider does next to
// nothing.
#include "OW_CppProviderIncludes.hpp"

#include <string>

using namespace OpenWBEM;
using namespace OpenWBEM::WBEMFlags;

namespace {

constexpr int kThings = 10;

CIMInstance makeThing(int number) {
    CIMInstance thing("BENCH_Thing");
    const CIMProperty key("Name", CIMValue(String(number)));
    thing.setProperty(key);
    const auto add = [&](const char* name, int last, const auto& value) {
        for (int i = 1; i <= last; ++i) {
            thing.setProperty(CIMProperty((name + std::to_string(i)).c_str(), CIMValue(value)));
        }
    };
    add("Text", 4, String("a text of some length"));
    add("Small", 6, UInt8(200));
    add("Short", 3, UInt16(40000));
    add("Number", 4, UInt32(4000000000U));
    add("Big", 2, UInt64(9000000000000000000U));
    add("Flag", 4, true);
    thing.setProperty(CIMProperty("Since", CIMValue(CIMDateTime("20240229123456.000000+060"))));
    return thing.setKeys(CIMPropertyArray(1, key));
}

class BenchProvider : public CppInstanceProviderIFC {
  public:
    void initialize(const ProviderEnvironmentIFCRef& /*env*/) override {
        for (int i = 0; i < kThings; ++i) {
            things_.push_back(makeThing(i));
        }
    }
    void getInstanceProviderInfo(InstanceProviderInfo& info) override { info.addInstrumentedClass("BENCH_Thing"); }

    CIMInstance getInstance(const ProviderEnvironmentIFCRef& /*env*/, const String& /*ns*/, const CIMObjectPath& path,
                            ELocalOnlyFlag /*local*/, EIncludeQualifiersFlag /*qualifiers*/,
                            EIncludeClassOriginFlag /*origin*/, const StringArray* /*list*/,
                            const CIMClass& /*cimClass*/) override {
        return things_[path.getKeyValue("Name").toString().toUInt32()];
    }
    void enumInstances(const ProviderEnvironmentIFCRef& /*env*/, const String& /*ns*/, const String& /*className*/,
                       CIMInstanceResultHandlerIFC& result, ELocalOnlyFlag /*local*/, EDeepFlag /*deep*/,
                       EIncludeQualifiersFlag /*qualifiers*/, EIncludeClassOriginFlag /*origin*/,
                       const StringArray* /*list*/, const CIMClass& /*requested*/,
                       const CIMClass& /*cimClass*/) override {
        for (const CIMInstance& thing : things_) {
            result.handle(thing);
        }
    }
    void enumInstanceNames(const ProviderEnvironmentIFCRef& /*env*/, const String& ns, const String& /*className*/,
                           CIMObjectPathResultHandlerIFC& result, const CIMClass& /*cimClass*/) override {
        for (const CIMInstance& thing : things_) {
            result.handle(CIMObjectPath(ns, thing));
        }
    }
    CIMObjectPath createInstance(const ProviderEnvironmentIFCRef& /*env*/, const String& /*ns*/,
                                 const CIMInstance& /*thing*/) override {
        OW_THROWCIM(CIMException::NOT_SUPPORTED);
    }
    void modifyInstance(const ProviderEnvironmentIFCRef& /*env*/, const String& /*ns*/, const CIMInstance& /*now*/,
                        const CIMInstance& /*before*/, EIncludeQualifiersFlag /*qualifiers*/,
                        const StringArray* /*list*/, const CIMClass& /*cimClass*/) override {
        OW_THROWCIM(CIMException::NOT_SUPPORTED);
    }
    void deleteInstance(const ProviderEnvironmentIFCRef& /*env*/, const String& /*ns*/,
                        const CIMObjectPath& /*path*/) override {
        OW_THROWCIM(CIMException::NOT_SUPPORTED);
    }

  private:
    CIMInstanceArray things_;
};

} // namespace

OW_PROVIDERFACTORY(BenchProvider, BenchProvider)
