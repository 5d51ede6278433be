// A Cimom over a small schema whose provider writes down what it is asked.
#pragma once

#include "cimserver/cimom/Cimom.hpp"
#include "cimserver/cimom/Interop.hpp"
#include "cimserver/provider/ProviderHost.hpp"
#include "cimserver/schema/Repository.hpp"

#include "OW_CppAssociatorProviderIFC.hpp"
#include "OW_CppMethodProviderIFC.hpp"
#include "OW_ResultHandlers.hpp"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <functional>
#include <string>
#include <vector>

namespace cimserver::cimom {

using namespace OpenWBEM;

/// What the recording provider answers and has been asked.
struct Record {
    std::vector<std::string> calls;
    CIMInstance present{CIMNULL};      ///< what getInstance and enumInstances deliver
    CIMInstance handed{CIMNULL};       ///< what modifyInstance got last
    CIMObjectPath created{CIMNULL};    ///< what createInstance returns
    CIMParamValueArray in;             ///< what invokeMethod got last
    CIMParamValueArray out;            ///< what it replaces the values of its output parameters by, in order
    std::function<void()> beforeReply; ///< runs in every call; may throw
    ProviderEnvironmentIFCRef env;     ///< of the last call
};

class Recorder : public CppMethodProviderIFC, public CppAssociatorProviderIFC {
  public:
    explicit Recorder(Record& record) : record_(record) {}

    void enumInstanceNames(const ProviderEnvironmentIFCRef& env, const String& ns, const String& className,
                           CIMObjectPathResultHandlerIFC& result, const CIMClass&) override;
    void enumInstances(const ProviderEnvironmentIFCRef& env, const String& ns, const String& className,
                       CIMInstanceResultHandlerIFC& result, WBEMFlags::ELocalOnlyFlag, WBEMFlags::EDeepFlag,
                       WBEMFlags::EIncludeQualifiersFlag, WBEMFlags::EIncludeClassOriginFlag, const StringArray* list,
                       const CIMClass& requestedClass, const CIMClass& cimClass) override;
    CIMInstance getInstance(const ProviderEnvironmentIFCRef& env, const String& ns, const CIMObjectPath& path,
                            WBEMFlags::ELocalOnlyFlag, WBEMFlags::EIncludeQualifiersFlag,
                            WBEMFlags::EIncludeClassOriginFlag, const StringArray* list, const CIMClass&) override;
    CIMObjectPath createInstance(const ProviderEnvironmentIFCRef& env, const String& ns,
                                 const CIMInstance& instance) override;
    void modifyInstance(const ProviderEnvironmentIFCRef& env, const String& ns, const CIMInstance& modified,
                        const CIMInstance& previous, WBEMFlags::EIncludeQualifiersFlag, const StringArray* list,
                        const CIMClass&) override;
    void deleteInstance(const ProviderEnvironmentIFCRef& env, const String& ns, const CIMObjectPath& path) override;
    CIMValue invokeMethod(const ProviderEnvironmentIFCRef& env, const String& ns, const CIMObjectPath& path,
                          const String& method, const CIMParamValueArray& in, CIMParamValueArray& out) override;
    void associatorNames(const ProviderEnvironmentIFCRef& env, CIMObjectPathResultHandlerIFC& result, const String& ns,
                         const CIMObjectPath& object, const String& assoc, const String& resultClass,
                         const String& role, const String& resultRole) override;
    void associators(const ProviderEnvironmentIFCRef&, CIMInstanceResultHandlerIFC&, const String&,
                     const CIMObjectPath&, const String&, const String&, const String&, const String&,
                     WBEMFlags::EIncludeQualifiersFlag, WBEMFlags::EIncludeClassOriginFlag,
                     const StringArray*) override {}
    void references(const ProviderEnvironmentIFCRef&, CIMInstanceResultHandlerIFC&, const String&, const CIMObjectPath&,
                    const String&, const String&, WBEMFlags::EIncludeQualifiersFlag, WBEMFlags::EIncludeClassOriginFlag,
                    const StringArray*) override {}
    void referenceNames(const ProviderEnvironmentIFCRef&, CIMObjectPathResultHandlerIFC&, const String&,
                        const CIMObjectPath&, const String&, const String&) override {}

  private:
    void note(const ProviderEnvironmentIFCRef& env, const std::string& call);

    Record& record_;
};

/// The names in the list, or "all".
std::string shown(const StringArray* list);
/// "Name=value" of each property, separated by blanks.
std::string shown(const CIMPropertyArray& properties);

class CimomTest : public testing::Test {
  protected:
    CimomTest();

    static CIMObjectPath path(const char* className = "T_Thing", const char* name = "one");
    static CIMProperty text(const char* name, const char* value) { return {CIMName(name), CIMValue(value)}; }

    CIMInstanceArray instances(const char* className, const InstanceSelection& selection = {});

    schema::Repository repository;
    Record record;
    provider::ProviderHost host{provider::HostSettings()};
    Cimom cimom;
    RequestContext context;
};

/// The code and text of the CIMException that the call throws; 0 and empty when it throws none.
template <class Call>
std::pair<int, std::string> thrownBy(Call&& call) {
    try {
        call();
    } catch (const CIMException& e) {
        return {e.getErrNo(), e.getMessage()};
    }
    return {};
}

} // namespace cimserver::cimom
