// A Cimom over a small schema whose provider writes down what it is asked.
#pragma once

#include "Support.hpp"
#include "cimserver/cim/CimError.hpp"
#include "cimserver/cimom/Cimom.hpp"
#include "cimserver/cimom/Interop.hpp"
#include "cimserver/provider/ProviderHost.hpp"
#include "cimserver/schema/Repository.hpp"

#include "OW_ResultHandlers.hpp"

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

template <class T>
Array<T> listOf(std::initializer_list<T> items) {
    return Array<T>(items.begin(), items.end());
}

/// The names in the list, or "all".
std::string shown(const StringArray* list);
/// "Name=value" of each property, separated by blanks.
std::string shown(const CIMPropertyArray& properties);

class CimomTest : public testing::Test {
  protected:
    CimomTest();

    static CIMObjectPath path(const char* className = "T_Thing", const char* name = "one");
    static CIMProperty text(const char* name, const char* value) { return {CIMName(name), CIMValue(value)}; }

    /// Their paths, one after the other.
    std::string names(const char* className);
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
    const Outcome outcome = outcomeOf(call);
    return {outcome.code, outcome.description};
}

} // namespace cimserver::cimom
