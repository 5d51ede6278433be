// A provider module for the tests: instances with a key and a number, one method.

#include "OW_CppProviderIncludes.hpp"
#include "OW_NoSuchPropertyException.hpp"

using namespace OpenWBEM;

namespace {

class TestProvider : public CppInstanceProviderIFC, public CppMethodProviderIFC {
  public:
    void enumInstanceNames(const ProviderEnvironmentIFCRef&, const String& ns, const String& className,
                           CIMObjectPathResultHandlerIFC& result, const CIMClass&) override {
        for (UInt32 i = 1; i <= 3; ++i) {
            CIMObjectPath name(className, ns);
            name.setKeyValue("ID", CIMValue(i));
            result.handle(name);
        }
    }
    CIMInstance getInstance(const ProviderEnvironmentIFCRef&, const String&, const CIMObjectPath& name,
                            WBEMFlags::ELocalOnlyFlag, WBEMFlags::EIncludeQualifiersFlag,
                            WBEMFlags::EIncludeClassOriginFlag, const StringArray*, const CIMClass&) override {
        if (name.getKeyValue("ID").toUInt32() == 3) {
            OW_THROWCIMMSG(CIMException::NOT_FOUND, "3");
        }
        CIMInstance instance(name.getClassName());
        instance.setProperty("ID", name.getKeyValue("ID"));
        return instance;
    }
    CIMObjectPath createInstance(const ProviderEnvironmentIFCRef&, const String&, const CIMInstance&) override {
        OW_THROWCIM(CIMException::NOT_SUPPORTED);
    }
    void modifyInstance(const ProviderEnvironmentIFCRef&, const String&, const CIMInstance&, const CIMInstance&,
                        WBEMFlags::EIncludeQualifiersFlag, const StringArray*, const CIMClass&) override {
        OW_THROW(NoSuchPropertyException, "Nope");
    }
    void deleteInstance(const ProviderEnvironmentIFCRef&, const String&, const CIMObjectPath& name) override {
        CIMInstance(CIMNULL).setClassName(name.getClassName());
    }
    CIMValue invokeMethod(const ProviderEnvironmentIFCRef&, const String&, const CIMObjectPath&, const String&,
                          const CIMParamValueArray& in, CIMParamValueArray& out) override {
        out = in;
        return CIMValue(CIMNULL);
    }
};

} // namespace

OW_PROVIDERFACTORY(TestProvider, Test)
