// Which provider serves which class: what the modules report, and the Provider qualifier.
#pragma once

#include "cimserver/common/Text.hpp"

#include "OW_CIM.hpp"
#include "OW_CppProviderBaseIFC.hpp"

#include <string>
#include <vector>

namespace cimserver::provider {

/// Names are compared ignoring case. Filled at start, constant afterwards.
class Registrations {
  public:
    /// Records what the provider's get...ProviderInfo functions report. A class that another provider has reported
    /// stays with that one, and the conflict is logged.
    void add(const std::string& id, OpenWBEM::CppProviderBaseIFC& provider);

    /// The id reported for exactly this class (in this namespace); empty when there is none.
    std::string instanceProvider(const OpenWBEM::String& ns, const OpenWBEM::String& className) const;
    std::string associatorProvider(const OpenWBEM::String& ns, const OpenWBEM::String& className) const;
    std::string methodProvider(const OpenWBEM::String& ns, const OpenWBEM::String& className,
                               const OpenWBEM::String& method) const;
    /// All ids reported, in the order of the reports. Those for this namespace count when there are none for all.
    std::vector<std::string> secondaryProviders(const OpenWBEM::String& ns, const OpenWBEM::String& className) const;

  private:
    using Table = NameMap<std::string>;              ///< "class", "ns:class" or either with "/method" to id
    using Lists = NameMap<std::vector<std::string>>; ///< the same to several ids

    static void put(Table& table, const std::string& key, const std::string& id);
    static void put(Lists& lists, const std::string& key, const std::string& id);
    /// The class's entry, default-constructed when there is none.
    template <class Entries>
    static typename Entries::mapped_type get(const Entries& entries, const std::string& ns,
                                             const std::string& className);
    /// Lists the classes that the provider reports; nothing for null.
    template <class Entries, class Provider, class Info>
    static void putClasses(Entries& entries, Provider* provider, void (Provider::*report)(Info&),
                           const std::string& id);

    Table instances_;
    Table associators_;
    Table methods_;
    Lists secondaries_;
};

/// The id of the Provider qualifier "c++::ID" (or "c++:ID"); empty without a qualifier or value. Throws CimError Failed
/// for another interface or a malformed text.
std::string idOfQualifier(const OpenWBEM::CIMQualifier& qualifier);
/// The same for a class or method.
template <class Element>
std::string idOfQualifier(const Element& element) {
    static const OpenWBEM::CIMName kProvider(OpenWBEM::CIMQualifier::CIM_QUAL_PROVIDER);
    return idOfQualifier(element.getQualifier(kProvider));
}

} // namespace cimserver::provider
